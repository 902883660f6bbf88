// The panel Files, drawn from reports.
#include <gtest/gtest.h>

#include <algorithm>

#include "panels/panel_desk.h"

namespace vorn {
namespace {

FileFinding finding(const FindingKind* of, std::int64_t line, std::string words) {
  return {.kind = of, .line = line, .words = std::move(words)};
}

FileReport whole(const std::string& file) {
  return {.file = file,
          .layout = "Tuscon Raw",
          .cores = 2,
          .first_year = 1900,
          .last_year = 1990,
          .was_read = true,
          .is_whole = true};
}

FileReport broken(const std::string& file) {
  FileReport report = whole(file);
  report.is_whole = false;
  for (int k = 1; k <= 5; ++k)
    report.findings.push_back(finding(kind("lost-series"), 10 * k, "loss " + std::to_string(k)));
  report.findings.push_back(finding(kind("gap"), 3, "a gap"));
  report.findings.push_back(finding(kind("zeros"), 4, "some zeros"));
  report.copies.push_back({});
  return report;
}

struct FilesPanelShown : testing::Test {
  void look(std::vector<FileReport> reports, const std::string& working = "") {
    std::vector<SharedReport> shared;
    for (FileReport& report : reports)
      shared.push_back(std::make_shared<const FileReport>(std::move(report)));
    desk.looked(std::make_shared<const std::vector<SharedReport>>(std::move(shared)), working);
  }
  Panel panel(PanelView view = {}) { return desk.panel(PanelName::files, view); }
  static bool writes(const Panel& panel, const std::string& text) {
    return std::ranges::any_of(
        panel.page.marks(), [&](const Mark& mark) { return mark.writing.find(text) != std::string::npos; });
  }
  static std::vector<Spot> spots_of(const Panel& panel, PanelChange::Kind kind) {
    std::vector<Spot> all;
    std::ranges::copy_if(panel.spots, std::back_inserter(all),
                         [kind](const Spot& spot) { return spot.change.kind == kind; });
    return all;
  }
  PanelDesk desk;
  std::string trouble;
};

TEST_F(FilesPanelShown, BeforeAnythingWasLookedAtItSaysSo) {
  EXPECT_TRUE(writes(panel(), "Nothing was looked at yet."));
  desk.looked(nullptr, "file 1 of 2: a.rwl");
  EXPECT_TRUE(writes(panel(), "Looking: file 1 of 2: a.rwl..."));
}

TEST_F(FilesPanelShown, CountsWhatIsReadWhole) {
  look({whole("a.rwl"), broken("b.rwl")}, "file 3 of 3: c.rwl");
  EXPECT_TRUE(writes(panel(), "2 files, 1 read whole (looking: file 3 of 3: c.rwl)"));
  look({whole("a.rwl")});
  EXPECT_TRUE(writes(panel(), "1 file, all read whole"));
  EXPECT_TRUE(writes(panel(), "Tuscon Raw, 2 cores, 1900 to 1990"));
}

TEST_F(FilesPanelShown, WhatIsReadBetterCarefullyIsOffered) {
  FileReport report = whole("a.rwl");
  report.findings.push_back(finding(kind("behind-end"), 7, "lines behind a blank one"));
  look({report});
  EXPECT_FALSE(writes(panel(), "Read carefully")) << "nothing is known of how the program reads";
  auto now = std::make_shared<Situation>();
  const auto stand = [&] {
    auto standing = std::make_shared<Standing>();
    standing->situation = std::make_shared<const Situation>(*now);
    desk.stand(standing);
  };
  stand();
  const Panel offered = panel();
  EXPECT_TRUE(writes(offered, "Read carefully"));
  const auto spot = std::ranges::find_if(offered.spots, [](const Spot& one) { return one.play.has_value(); });
  ASSERT_NE(spot, offered.spots.end());
  ASSERT_EQ(spot->play->steps.size(), 1u);
  EXPECT_EQ(spot->play->steps[0].kind, PlayStep::Kind::careful);
  EXPECT_EQ(spot->play->steps[0].number, static_cast<int>(Mend::blank_line));
  now->settings.careful.set(Mend::blank_line, true);
  stand();
  EXPECT_FALSE(writes(panel(), "Read carefully"));
}

// The reports are of how the files will be read, which is not how the cores at work were.
TEST_F(FilesPanelShown, ASwitchThatCountsFromTheNextReadingOnIsSaid) {
  look({whole("a.rwl")});
  auto now = std::make_shared<Situation>();
  now->cores_file = "a.rwl";
  const auto says_so = [&] {
    auto standing = std::make_shared<Standing>();
    standing->situation = std::make_shared<const Situation>(*now);
    desk.stand(standing);
    return writes(panel(), "So from the next reading on: the cores at work were read otherwise");
  };
  EXPECT_FALSE(says_so());
  now->settings.careful.set(Mend::prompts, true);
  EXPECT_FALSE(says_so()) << "it has nothing to do with reading";
  now->settings.careful.set(Mend::blank_line, true);
  EXPECT_TRUE(says_so());
  now->read_as = reading_of(now->settings.careful);
  EXPECT_FALSE(says_so());
}

TEST_F(FilesPanelShown, AFileShowsItsGravestUntilItIsOpened) {
  look({broken("b.rwl")});
  EXPECT_TRUE(writes(panel(), "Line 30: loss 3"));
  EXPECT_FALSE(writes(panel(), "loss 4"));
  EXPECT_TRUE(writes(panel(), "3 more"));  // two losses and a gap; a note is none that matters
  const auto titles = spots_of(panel(), PanelChange::Kind::open_file);
  ASSERT_EQ(titles.size(), 1u);
  EXPECT_FALSE(desk.click(titles[0], trouble));
  EXPECT_TRUE(writes(panel(), "Line 50: loss 5"));
  EXPECT_TRUE(writes(panel(), "Line 4: some zeros"));
  EXPECT_FALSE(writes(panel(), " more"));
  desk.click(titles[0], trouble);
  EXPECT_FALSE(writes(panel(), "loss 4"));
}

TEST_F(FilesPanelShown, OffersACopyForEachGuess) {
  FileReport report = broken("b.rwl");
  report.copies = {{{.unit = 100.0}, {}}, {{.unit = 1000.0}, {}}};
  look({report});
  const auto copies = spots_of(panel(), PanelChange::Kind::copy_file);
  ASSERT_EQ(copies.size(), 2u);
  EXPECT_EQ(copies[0].change.file, "b.rwl");
  EXPECT_EQ(copies[0].change.unit, 100.0);
  EXPECT_EQ(copies[1].change.unit, 1000.0);
  EXPECT_TRUE(writes(panel(), "Clean copy, in thousandths"));
}

// A table that the program does not load looks other than what nobody can read.
TEST_F(FilesPanelShown, WhatCanBeReadAsACopyIsNotLost) {
  FileReport table = whole("table.csv"), hopeless{.file = "photo.jpg", .layout = "Format not recognised"};
  table.layout = "table of ring widths";
  table.was_read = table.is_whole = false;
  table.copies.push_back({});
  look({whole("a.rwl"), table, hopeless});
  EXPECT_TRUE(writes(panel(), "3 files, 1 read whole, 1 can be read as a copy"));
  EXPECT_TRUE(writes(panel(), "table of ring widths, 2 cores, 1900 to 1990"));
  const auto colour_of = [this](const std::string& text) {
    const Panel shown = panel();
    const auto mark =
        std::ranges::find_if(shown.page.marks(), [&](const Mark& one) { return one.writing == text; });
    return mark == shown.page.marks().end() ? Colour() : mark->colour;
  };
  EXPECT_TRUE(writes(panel(), "can be read as a copy"));
  EXPECT_EQ(colour_of("can be read as a copy"), colour::muted);
  table.copies.clear();
  look({table});
  EXPECT_EQ(colour_of("not read"), colour::vermilion);
}

TEST_F(FilesPanelShown, SaysWhyThereIsNoCopy) {
  FileReport report = broken("b.rwl");
  report.copies.clear();
  report.no_copy = {"OAK1: a series without a name"};
  look({report});
  EXPECT_TRUE(writes(panel(), "No copy: OAK1: a series without a name"));
}

// Whatever the width, names of files are not pushed aside.
TEST_F(FilesPanelShown, InANarrowPanelTheNameStandsAlone) {
  look({broken("a-rather-long-name.rwl")});
  EXPECT_TRUE(writes(panel({.width = 480}), "a-rather-long-name.rwl"));
  for (const int width : {200, 480, 900, 4000}) {
    const Panel shown = panel({.width = width});
    for (const Spot& spot : shown.spots) EXPECT_LT(spot.place.x1, spot.place.x2);
  }
}

TEST_F(FilesPanelShown, ManyFilesScroll) {
  std::vector<FileReport> many;
  for (int k = 0; k < 100; ++k) many.push_back(broken("f" + std::to_string(k) + ".rwl"));
  look(many);
  const Panel top = panel();
  EXPECT_GT(top.content_height, 10'000);
  EXPECT_LT(top.page.marks().size(), 500u);
  const Panel end = panel({.scroll = top.content_height - 1200});
  EXPECT_TRUE(writes(end, "f99.rwl"));
  EXPECT_FALSE(writes(end, "f0.rwl"));
}

TEST_F(FilesPanelShown, ItsTableIsThatOfCheck) {
  look({broken("b.rwl")});
  const std::string csv = desk.csv(PanelName::files);
  EXPECT_TRUE(csv.starts_with("file,line,series,")) << csv.substr(0, 60);
  EXPECT_NE(csv.find("b.rwl,10,,lost-series,error"), std::string::npos) << csv;
  EXPECT_EQ(std::ranges::count(csv, '\n'), 8);
}

}  // namespace
}  // namespace vorn
