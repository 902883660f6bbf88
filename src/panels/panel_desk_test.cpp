#include "panels/panel_desk.h"

#include <gtest/gtest.h>

#include <cmath>

#include "desk/specimens_for_tests.h"
#include "panels/moving_findings.h"
#include "panels/recipe_findings.h"
#include "records/memory_files.h"

namespace vorn {
namespace {

// Five cores of one signal, 80 rings each; of the second, ring 40 is missing.
std::vector<SharedSeries> five_cores() {
  std::vector<SharedSeries> cores;
  for (int c = 0; c < 5; ++c) {
    std::vector<double> widths;
    for (int k = 0; k < 81; ++k) {
      const double common = std::sin(k * k * 0.37), own = std::sin(k * (3.1 + c));
      if (k == 80 && c != 1) break;
      if (k == 40 && c == 1) continue;
      widths.push_back(1.5 + common + 0.3 * own);
    }
    widths.resize(80, 1.5);
    cores.push_back(core("T00" + std::to_string(c + 1), 1900, widths));
  }
  return cores;
}

SharedStanding standing_with_five(Place place, int sample) {
  Situation now = situation_at(place);
  now.cores = five_cores();
  now.settings.splineon = now.settings.aron = now.settings.logon = false;
  now.settings.seg = 30;
  now.settings.olap = 15;
  now.references = {std::make_shared<const ListedChronology>(
      ListedChronology{"near.rwl", *curve(1900, std::vector<double>(80, 1.0))})};
  now.own_reference = 0;
  now.cores_file = now.file;
  const SharedSeries& core = now.cores[static_cast<std::size_t>(sample) - 1];
  now.sample = {
      sample, core->name, true, 1900, 1979, false, false, nullptr, 1900, core, curve(1900, core->widths)};
  now.reference = {6,
                   "near",
                   false,
                   1900,
                   1979,
                   false,
                   false,
                   nullptr,
                   1900,
                   nullptr,
                   curve(1900, std::vector<double>(80, 1.0))};
  return std::make_shared<const Standing>(standing_at(std::move(now)));
}

const Studies::GoOn go_on = [](const std::string&) { return true; };

class Desk : public ::testing::Test {
 protected:
  void stand(Place place, int sample) {
    standing = standing_with_five(place, sample);
    desk.stand(standing);
    studies.study(standing->situation, go_on, [this](const SharedFindings& found) {
      findings = found;
      desk.found(found, "");
    });
  }
  const Spot* spot_with(const Panel& panel, const std::string& text) {
    for (const Spot& spot : panel.spots) {
      if (spot.tip.find(text) != std::string::npos) return &spot;
    }
    return nullptr;
  }
  SharedStanding standing;
  PanelDesk desk;
  Studies studies;
  SharedFindings findings;
  std::string trouble;
};

TEST_F(Desk, FindsTheMissingRingAndPlaysItsCorrection) {
  stand(Place::crossdating, 2);
  ASSERT_TRUE(findings->pair);
  EXPECT_EQ(findings->pair->against, "the 4 others of near.rwl");
  EXPECT_EQ(findings->pair->errors.candidates.front().year, 1940);
  const Panel rings = desk.panel(PanelName::rings, usual_view(PanelName::rings));
  const Spot* insert = spot_with(rings, "Inserts a ring at 1940");
  ASSERT_TRUE(insert);
  const auto play = desk.click(*insert, trouble);
  ASSERT_TRUE(play);
  EXPECT_EQ(play->what, "Insert 1940 in T002");
  // The candidate is looked at from now on, and its lags are shown.
  EXPECT_GT(desk.panel(PanelName::rings, usual_view(PanelName::rings)).content_height, rings.content_height);
  EXPECT_TRUE(desk.csv(PanelName::around).starts_with("year,series,value\n1925,T002,"));
}

TEST_F(Desk, StepsThroughTheCoresThatAreToDoByNeed) {
  stand(Place::crossdating, 2);
  ASSERT_EQ(findings->site->survey.order.front(), 1u);
  EXPECT_FALSE(desk.step_core(-1));
  const auto next = desk.step_core(1);
  ASSERT_TRUE(next);
  const int second = static_cast<int>(findings->site->survey.order[1]) + 1;
  EXPECT_EQ(next->steps[3].number, second);
  // The one behind it, once that one is done.
  desk.click({.change = {.kind = PanelChange::Kind::mark, .core = "T00" + std::to_string(second)}}, trouble);
  EXPECT_EQ(desk.step_core(1)->steps[3].number, static_cast<int>(findings->site->survey.order[2]) + 1);
}

TEST_F(Desk, LeavesOutWhatIsDone) {
  stand(Place::start, 2);
  const auto rows = [this] {
    const std::string csv = desk.csv(PanelName::site);
    return std::count(csv.begin(), csv.end(), '\n') - 1;
  };
  EXPECT_EQ(rows(), 5);
  desk.click({.change = {.kind = PanelChange::Kind::mark, .core = "T001"}}, trouble);
  EXPECT_EQ(rows(), 5);
  desk.click({.change = {.kind = PanelChange::Kind::only_to_do}}, trouble);
  EXPECT_EQ(rows(), 4);
}

TEST_F(Desk, SaysWhenItsValuesAreOlder) {
  stand(Place::crossdating, 2);
  Situation changed = *standing->situation;
  changed.cores[0] = core("T001", 1901, changed.cores[0]->widths);
  desk.stand(std::make_shared<const Standing>(standing_at(std::move(changed))));
  const Panel site = desk.panel(PanelName::site, usual_view(PanelName::site));
  const bool says = std::ranges::any_of(site.page.marks(), [](const Mark& mark) {
    return mark.writing.find("as it was before") != std::string::npos;
  });
  EXPECT_TRUE(says);
}

// --- What is computed again, and what is kept.

TEST_F(Desk, WhatDidNotChangeIsKept) {
  stand(Place::crossdating, 2);
  const SharedFindings before = findings;
  // The very same situation, told anew.
  studies.study(std::make_shared<const Situation>(*standing->situation), go_on,
                [this](const SharedFindings& found) { findings = found; });
  EXPECT_EQ(findings->site, before->site);
  EXPECT_EQ(findings->pair, before->pair);
  EXPECT_EQ(findings->dates, before->dates);
  // Another pair of the same cores.
  Situation other = *standing->situation;
  other.sample.entry = 3;
  other.sample.name = "T003";
  other.sample.series = other.cores[2];
  other.sample.compared = curve(1900, other.cores[2]->widths);
  studies.study(std::make_shared<const Situation>(other), go_on,
                [this](const SharedFindings& found) { findings = found; });
  EXPECT_EQ(findings->site, before->site);
  EXPECT_NE(findings->pair, before->pair);
  EXPECT_EQ(findings->pair->core->series().name, "T003");
}

TEST_F(Desk, WhileARingIsLookedAtWhatWasFoundStays) {
  stand(Place::crossdating, 2);
  Situation asked = *standing->situation;
  asked.place = Place::keep_edit;
  bool came = false;
  studies.study(std::make_shared<const Situation>(asked), go_on, [&](const SharedFindings&) { came = true; });
  EXPECT_FALSE(came);
}

TEST(Studies, EndWhenTheyAreTold) {
  Studies studies;
  const SharedStanding standing = standing_with_five(Place::crossdating, 2);
  SharedFindings last;
  int asked = 0;
  studies.study(
      standing->situation, [&](const std::string&) { return ++asked < 8; },
      [&](const SharedFindings& found) { last = found; });
  EXPECT_EQ(asked, 8);
  ASSERT_TRUE(last);
  EXPECT_FALSE(last->site);
  // And take up where they left off.
  studies.study(standing->situation, go_on, [&](const SharedFindings& found) { last = found; });
  EXPECT_TRUE(last->site);
  EXPECT_TRUE(last->pair);
  EXPECT_TRUE(last->dates);
}

TEST_F(Desk, OtherProgramsAndMovesAreToldOfTheCoreOnThePage) {
  stand(Place::crossdating, 2);
  ASSERT_TRUE(findings->recipe && findings->moving);
  EXPECT_TRUE(desk.csv(PanelName::recipe).starts_with("file,series,figure,from,to,vorn,"));
  EXPECT_NE(desk.csv(PanelName::recipe).find("T002,r,"), std::string::npos);
  EXPECT_NE(desk.csv(PanelName::moving).find("\nnear.rwl,5,4,"), std::string::npos)
      << desk.csv(PanelName::moving);
  const Panel moving = desk.panel(PanelName::moving, {});
  EXPECT_NE(spot_with(moving, "5 to 4 cores, mean correlation "), nullptr);
}

TEST_F(Desk, OtherProgramsAndMovesFitIntoPanelsOfAnyWidth) {
  stand(Place::crossdating, 2);
  for (const PanelName name : {PanelName::recipe, PanelName::moving}) {
    for (const int width : {200, 432, 700, 1480, 4000}) {
      const Panel panel = desk.panel(name, {.width = width, .height = 3000});
      EXPECT_GT(panel.content_height, 100);
      for (const Mark& mark : panel.page.marks()) {
        for (const PagePoint& at : mark.points) {
          EXPECT_GE(at.x, 0) << id_of(name) << width << mark.writing;
          EXPECT_LE(at.x, width) << id_of(name) << width << mark.writing;
        }
      }
    }
  }
}

// A file that cannot be read is said to be so; so is one where nobody reads any.
TEST_F(Desk, AFileThatCannotBeJoinedIsNamed) {
  MemoryFiles files;
  files.put("words.rwl", "no rings\n");
  for (Files* folder : {static_cast<Files*>(nullptr), static_cast<Files*>(&files)}) {
    Situation now = *standing_with_five(Place::chooser, 1)->situation;
    now.mode = button::move_core;
    now.marked = {"T003", "T004"};
    now.destination = "words.rwl";
    Studies anew;
    anew.read_from(folder);
    SharedFindings found;
    anew.study(std::make_shared<const Situation>(now), go_on,
               [&](const SharedFindings& come) { found = come; });
    ASSERT_TRUE(found->moving);
    EXPECT_EQ(found->moving->cores, (std::vector<std::string>{"T003", "T004"}));
    EXPECT_EQ(found->moving->left.after.cores, 3u);
    EXPECT_FALSE(found->moving->joined);
    EXPECT_TRUE(found->moving->why_not_joined.starts_with("words.rwl ")) << found->moving->why_not_joined;
  }
}

}  // namespace
}  // namespace vorn
