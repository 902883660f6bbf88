#include "platform/web/situation_bytes.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

#include "desk/specimens_for_tests.h"

namespace vorn {
namespace {

// A situation in which every member differs from what it is at first.
Situation rich_situation() {
  Situation now = situation_at(Place::crossdating);
  now.wait = Wait::year;
  now.cores_file = "cores.rwl";
  now.read_as.set(Mend::early_years, true);
  now.references = {
      std::make_shared<const ListedChronology>(ListedChronology{"far.rwl", *curve(1500, {1.5, 2})})};
  now.own_reference = 0;
  now.unwritten = {"T002"};
  now.curves_are_indices = false;
  now.years_shown = 250;
  now.sample.changed = now.sample.can_be_saved = true;
  now.sample.series = now.cores.front();
  now.sample.compared = curve(1701, {0.25, -0.25});
  now.reference.stored_first_year = 1651;
  now.settings.ss = 67;
  now.settings.aron = false;
  now.settings.raw_output = Layout::compact;
  now.settings.crn_output = ChronologyOutput::column;
  now.inserts = true;
  now.picked_year = 1750;
  now.mode = button::pick_cores;
  now.marked = {"T001", ""};
  now.destination = "far.rwl";
  now.listed = {"a", "b"};
  now.first_listed = 31;
  now.editor_first_year = 1700;
  now.editor_columns = {"T001"};
  now.replaces_other_file = now.two_column_list_missing = true;
  return now;
}

bool same_curve(const std::shared_ptr<const Curve>& a, const std::shared_ptr<const Curve>& b) {
  return (!a && !b) || (a && b && *a == *b);
}

void expect_same(const PairMember& a, const PairMember& b) {
  EXPECT_EQ(a.entry, b.entry);
  EXPECT_EQ(a.name, b.name);
  EXPECT_EQ(a.is_core, b.is_core);
  EXPECT_EQ(a.first_year, b.first_year);
  EXPECT_EQ(a.last_year, b.last_year);
  EXPECT_EQ(a.changed, b.changed);
  EXPECT_EQ(a.can_be_saved, b.can_be_saved);
  EXPECT_EQ(a.stored_first_year, b.stored_first_year);
  EXPECT_TRUE(same_curve(a.curve, b.curve));
  EXPECT_TRUE(same_curve(a.compared, b.compared));
  ASSERT_EQ(a.series == nullptr, b.series == nullptr);
  EXPECT_TRUE(a.series == b.series || *a.series == *b.series);
}

void expect_same(const Settings& a, const Settings& b) {
  EXPECT_EQ(a.ss, b.ss);
  EXPECT_EQ(a.jpr, b.jpr);
  EXPECT_EQ(a.splineon, b.splineon);
  EXPECT_EQ(a.aron, b.aron);
  EXPECT_EQ(a.logon, b.logon);
  EXPECT_EQ(a.seg, b.seg);
  EXPECT_EQ(a.olap, b.olap);
  EXPECT_EQ(a.raw_output, b.raw_output);
  EXPECT_EQ(a.crn_output, b.crn_output);
}

void expect_same(const Situation& a, const Situation& b) {
  EXPECT_EQ(a.wait, b.wait);
  EXPECT_EQ(a.place, b.place);
  ASSERT_EQ(a.buttons.size(), b.buttons.size());
  for (std::size_t k = 0; k < a.buttons.size(); ++k) {
    EXPECT_EQ(a.buttons[k].number, b.buttons[k].number);
    EXPECT_EQ(a.buttons[k].label, b.buttons[k].label);
    EXPECT_EQ(a.buttons[k].x1, b.buttons[k].x1);
    EXPECT_EQ(a.buttons[k].y2, b.buttons[k].y2);
    EXPECT_EQ(a.buttons[k].lit, b.buttons[k].lit);
  }
  EXPECT_EQ(a.file, b.file);
  EXPECT_EQ(a.cores_file, b.cores_file);
  EXPECT_EQ(a.read_as, b.read_as);
  ASSERT_EQ(a.cores.size(), b.cores.size());
  for (std::size_t k = 0; k < a.cores.size(); ++k) EXPECT_EQ(*a.cores[k], *b.cores[k]);
  ASSERT_EQ(a.references.size(), b.references.size());
  for (std::size_t k = 0; k < a.references.size(); ++k) EXPECT_EQ(*a.references[k], *b.references[k]);
  EXPECT_EQ(a.own_reference, b.own_reference);
  EXPECT_EQ(a.unwritten, b.unwritten);
  EXPECT_EQ(a.curves_are_indices, b.curves_are_indices);
  EXPECT_EQ(a.first_year, b.first_year);
  EXPECT_EQ(a.years_shown, b.years_shown);
  expect_same(a.sample, b.sample);
  expect_same(a.reference, b.reference);
  expect_same(a.settings, b.settings);
  EXPECT_EQ(a.passes_left, b.passes_left);
  EXPECT_EQ(a.inserts, b.inserts);
  EXPECT_EQ(a.picked_year, b.picked_year);
  EXPECT_EQ(a.mode, b.mode);
  EXPECT_EQ(a.marked, b.marked);
  EXPECT_EQ(a.destination, b.destination);
  EXPECT_EQ(a.listed, b.listed);
  EXPECT_EQ(a.first_listed, b.first_listed);
  EXPECT_EQ(a.editor_first_year, b.editor_first_year);
  EXPECT_EQ(a.editor_columns, b.editor_columns);
  ASSERT_EQ(a.chronologies.size(), b.chronologies.size());
  for (std::size_t k = 0; k < a.chronologies.size(); ++k) {
    EXPECT_EQ(a.chronologies[k].name, b.chronologies[k].name);
    EXPECT_EQ(a.chronologies[k].has_cores, b.chronologies[k].has_cores);
  }
  EXPECT_EQ(a.raw_output, b.raw_output);
  EXPECT_EQ(a.replaces_other_file, b.replaces_other_file);
  EXPECT_EQ(a.two_column_list_missing, b.two_column_list_missing);
}

TEST(SituationBytes, EveryMemberArrives) {
  SituationWriter writer;
  SituationReader reader;
  for (const Situation& now : {rich_situation(), situation_at(Place::start), Situation()}) {
    Standing standing = standing_at(now);
    const SharedStanding read = reader.read(writer.write(standing));
    expect_same(*read->situation, now);
    EXPECT_FALSE(read->question);
    standing.question.emplace();
    EXPECT_TRUE(reader.read(writer.write(standing))->question);
  }
}

TEST(SituationBytes, WhatDidNotChangeIsKnownByItsAddress) {
  SituationWriter writer;
  SituationReader reader;
  Situation now = rich_situation();
  const std::string all = writer.write(standing_at(now));
  const SharedSituation first = reader.read(all)->situation;
  EXPECT_EQ(first->sample.series, first->cores.front());

  now.cores[1] = core("T002", 1720, {1, 2, 3});
  const std::string change = writer.write(standing_at(now));
  const SharedSituation second = reader.read(change)->situation;
  EXPECT_EQ(second->cores[0], first->cores[0]);
  EXPECT_NE(second->cores[1], first->cores[1]);
  EXPECT_EQ(second->cores[1]->widths, (std::vector<double>{1, 2, 3}));
  EXPECT_EQ(second->references, first->references);
  EXPECT_EQ(second->sample.curve, first->sample.curve);
  EXPECT_LT(change.size(), all.size() / 2);
}

// What was gone for one situation is sent anew.
TEST(SituationBytes, NothingIsKeptForLong) {
  SituationWriter writer;
  SituationReader reader;
  Situation now = rich_situation();
  reader.read(writer.write(standing_at(now)));
  Situation without = now;
  without.cores.clear();
  without.sample.series = nullptr;
  reader.read(writer.write(standing_at(without)));
  expect_same(*reader.read(writer.write(standing_at(now)))->situation, now);
}

TEST(SituationBytes, DamagedBytesAreRefused) {
  SituationWriter writer;
  const std::string whole = writer.write(standing_at(rich_situation()));
  for (std::size_t length = 0; length < whole.size(); length += 5)
    EXPECT_THROW(SituationReader().read(std::string_view(whole).substr(0, length)), std::runtime_error)
        << length;
  std::mt19937 random(7);
  for (int k = 0; k < 2000; ++k) {
    std::string damaged = whole;
    for (int hits = 0; hits < 3; ++hits) damaged[random() % damaged.size()] = static_cast<char>(random());
    try {
      EXPECT_TRUE(SituationReader().read(damaged)->situation);
    } catch (const std::runtime_error&) {
      continue;  // refused with words
    }
  }
}

}  // namespace
}  // namespace vorn
