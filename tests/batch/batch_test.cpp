// The verbs of the command line against what the program itself writes of the same files.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "batch/collection.h"
#include "batch/verbs.h"
#include "records/disk_files.h"
#include "records/memory_files.h"
#include "support/places.h"
#include "support/raw_text.h"
#include "support/whole_program.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

std::vector<Row> rows_of(Files& files, const std::string& file, const char* verb,
                         const Settings& settings = {}, const VerbSwitches& switches = {}) {
  Collection collection(files, file, settings);
  std::vector<Row> rows;
  verb_named(verb)->rows(collection, switches, [&](const Row& row) { rows.push_back(row); });
  return rows;
}

double value(const Row& row, std::size_t column) {
  const auto* real = std::get_if<double>(&row[column]);
  return real ? *real : 0;
}

std::int64_t whole(const Row& row, std::size_t column) {
  return std::get<std::int64_t>(row[column]);
}

std::string printed(const char* format, double value) {
  char text[40];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

// The line that Stats.prn has of a core.
std::string report_line(const Row& row) {
  char text[100];
  std::snprintf(text, sizeof text, "%-8s%7d%7d%7d", std::get<std::string>(row[1]).c_str(),
                static_cast<int>(whole(row, 2)), static_cast<int>(whole(row, 3)),
                static_cast<int>(whole(row, 4)));
  std::string line = text;
  for (const std::size_t column : {5u, 6u, 7u, 8u}) line += printed("%7.2f", value(row, column));
  return line;
}

class BatchOfExamples : public WholeProgram {
 protected:
  void lay_out(const std::string& name) {
    fs::copy(source_folder() / "examples" / name, name);
    folder.write("Vorn.fil", name + "\n");
  }
  std::string text(const std::string& name) { return folder.read(name); }
};

TEST_F(BatchOfExamples, StatsAreThoseOfTheReport) {
  for (const char* name : {"nowhere.rwl", "nearby.fh", "faraway.rwm", "yonder.rwl", "adrift.rwl"}) {
    SCOPED_TRACE(name);
    lay_out(name);
    press(button::stats_report);
    play();
    const std::string report = text("Stats.prn");
    const auto rows = rows_of(disk, name, "stats");
    EXPECT_FALSE(rows.empty());
    for (const Row& row : rows)
      EXPECT_NE(report.find(report_line(row) + "\n"), std::string::npos) << report_line(row);
    w = std::make_unique<Workspace>(plot, disk);
    w->log = &log;
  }
}

TEST_F(BatchOfExamples, StatsFollowTheSettings) {
  lay_out("nowhere.rwl");
  press(button::spline_on);
  press(button::log_on);
  press(button::crossdate);
  press(button::exit_crossdating);
  press(button::stats_report);
  play();
  Settings settings;
  settings.splineon = settings.logon = false;
  const auto rows = rows_of(disk, "nowhere.rwl", "stats", settings);
  ASSERT_EQ(rows.size(), 25u);
  for (const Row& row : rows)
    EXPECT_NE(text("Stats.prn").find(report_line(row)), std::string::npos) << report_line(row);
}

TEST_F(BatchOfExamples, ChronIsTheTableOfTheChronology) {
  lay_out("nowhere.rwl");
  press(button::crn_column);
  press(button::save_crn);
  play();
  std::istringstream table(text("Column.prn"));
  std::vector<std::string> lines;
  for (std::string line; std::getline(table, line);) lines.push_back(line);
  const auto rows = rows_of(disk, "nowhere.rwl", "chron");
  ASSERT_EQ(rows.size(), 300u);
  std::size_t found = 0;
  for (const Row& row : rows) {
    const std::string year = std::to_string(whole(row, 1));
    for (const std::string& line : lines) {
      std::istringstream fields(line);
      std::string first, index, depth;
      fields >> first >> index >> depth;
      if (first != year) continue;
      ++found;
      EXPECT_EQ(depth, std::to_string(whole(row, 3))) << year;
      EXPECT_NEAR(std::stod(index), value(row, 2) * 1000, 0.51) << year;
    }
  }
  EXPECT_EQ(found, rows.size());
}

TEST_F(BatchOfExamples, LocateNamesTheTwoPlantedErrorsAndNoOther) {
  lay_out("nowhere.rwl");
  const auto rows = rows_of(disk, "nowhere.rwl", "locate");
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(std::get<std::string>(rows[0][1]), "NOW07");
  EXPECT_EQ(std::get<std::string>(rows[0][2]), "insert");
  EXPECT_LE(whole(rows[0], 4), 1868);
  EXPECT_GE(whole(rows[0], 5), 1868);
  EXPECT_EQ(std::get<std::string>(rows[0][9]), "inner");
  EXPECT_EQ(std::get<std::string>(rows[1][1]), "NOW14");
  EXPECT_EQ(std::get<std::string>(rows[1][2]), "merge");
  EXPECT_EQ(whole(rows[1], 3), 1876);
  EXPECT_EQ(rows_of(disk, "nowhere.rwl", "locate", {}, {.least_gain = 0}).size(), 25u);
  const auto by_widths = rows_of(disk, "nowhere.rwl", "locate", {}, {.narrow_years = false});
  EXPECT_EQ(whole(by_widths.at(0), 3), 1868);
}

// The cores of a file, two rings of NOW01 left out: 60 years apart, the end by the pith as it was.
std::string with_two_errors(Files& files, const std::string& file) {
  const Collection collection(files, file, {});
  std::string text;
  const auto cores = collection.cores();
  for (std::size_t k = 0; k < cores.size(); ++k) {
    const std::string name(collection.state().nam(static_cast<int>(k) + 1).trimmed());
    std::vector<int> widths;
    for (const double width : cores[k].values) widths.push_back(static_cast<int>(std::lround(1000 * width)));
    if (name == "NOW01") {
      widths.erase(widths.begin() + 160);
      widths.erase(widths.begin() + 100);
    }
    text += raw_text(name, static_cast<int>(cores[k].first), widths);
  }
  return text;
}

TEST_F(BatchOfExamples, LocateHoldsPairsToTheLeastGainToo) {
  lay_out("nowhere.rwl");
  MemoryFiles files;
  files.put("two.rwl", with_two_errors(disk, "nowhere.rwl"));
  const auto of_core = [&](double least_gain) {
    auto rows = rows_of(files, "two.rwl", "locate", {}, {.least_gain = least_gain});
    std::erase_if(rows, [](const Row& row) { return std::get<std::string>(row[1]) != "NOW01"; });
    return rows;
  };
  const auto found = of_core(gain_to_look_at);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(std::get<std::string>(found[0][10]), "insert");
  const double gain = value(found[0], 6);
  EXPECT_EQ(of_core(gain - 1).size(), 1u);
  EXPECT_EQ(of_core(gain + 1).size(), 0u);
  EXPECT_EQ(of_core(0).size(), 1u);
}

TEST_F(BatchOfExamples, DateNamesTheYearsOfTheBeams) {
  lay_out("adrift.rwl");
  fs::copy(source_folder() / "examples" / "anywhere.crn", "anywhere.crn");
  Collection chronology(disk, "anywhere.crn", {});
  VerbSwitches switches;
  switches.references.push_back(std::make_shared<const DatingReference>(chronology));
  const auto rows = rows_of(disk, "adrift.rwl", "date", {}, switches);
  ASSERT_EQ(rows.size(), 5u);
  for (const Row& row : rows) {
    EXPECT_EQ(std::get<std::string>(row[2]), "anywhere.crn");
    EXPECT_EQ(whole(row, 4), 1651);
    EXPECT_LT(value(row, 10), 1e-4);
    EXPECT_GT(value(row, 11), 1);
  }
  EXPECT_EQ(whole(rows[0], 3), 1652);
  EXPECT_EQ(whole(rows[0], 5), 120);
}

TEST_F(BatchOfExamples, DateTakesTheOthersOfTheFileWhereNoneIsNamed) {
  lay_out("nowhere.rwl");
  const auto rows = rows_of(disk, "nowhere.rwl", "date");
  ASSERT_EQ(rows.size(), 25u);
  for (const Row& row : rows) {
    EXPECT_EQ(std::get<std::string>(row[2]), "rest of nowhere.rwl");
    // Most of NOW07 and NOW14 lies behind a ring not seen, or counted twice, and is dated a year wrong.
    const std::map<std::string, std::int64_t> wrong = {{"NOW07", 1}, {"NOW14", -1}, {"NOW19", -7}};
    const std::string core = std::get<std::string>(row[1]);
    const auto found = wrong.find(core);
    EXPECT_EQ(whole(row, 4), found == wrong.end() ? 0 : found->second) << core;
  }
}

TEST(Batch, DatesNothingInSilence) {
  MemoryFiles files;
  files.put("short.rwl", raw_core_text("ONE", 1900, 10, 7) + raw_core_text("TWO", 1990, 10, 9));
  const auto rows = rows_of(files, "short.rwl", "date");
  ASSERT_EQ(rows.size(), 2u);
  for (const Row& row : rows) {
    EXPECT_EQ(whole(row, 5), 0);
    EXPECT_TRUE(std::holds_alternative<std::monostate>(row[4]));
  }
}

TEST_F(BatchOfExamples, SitePutsFirstWhatNeedsWork) {
  lay_out("nowhere.rwl");
  const auto rows = rows_of(disk, "nowhere.rwl", "site");
  ASSERT_EQ(rows.size(), 25u);
  const std::vector<std::string> first = {"NOW19", "NOW07", "NOW14"};
  for (std::size_t k = 0; k < rows.size(); ++k) {
    if (k < first.size()) {
      EXPECT_EQ(std::get<std::string>(rows[k][1]), first[k]);
    }
    EXPECT_EQ(std::get<std::string>(rows[k][8]).empty(), k >= first.size()) << k;
  }
  EXPECT_EQ(std::get<std::string>(rows[0][8]), "Move it by -7 years, to 1808 to 2003");
}

TEST(Batch, LagsOfASegmentThatBeginsBeforeTheReferenceAreNotGiven) {
  MemoryFiles files;
  files.put("oak.rwl", raw_core_text("ONE", 1800, 100, 7) + raw_core_text("TWO", 1800, 100, 9));
  files.put("short.rwl", raw_core_text("TEN", 1840, 40, 7) + raw_core_text("TWENTY", 1840, 40, 9));
  const Collection reference(files, "short.rwl", {});
  VerbSwitches switches{.grid = CorrelationGrid::lags,
                        .farthest_lag = 1,
                        .beside = std::make_shared<const OtherChronology>(reference)};
  EXPECT_TRUE(rows_of(files, "oak.rwl", "corr", {}, switches).empty());
  Settings shorter;
  shorter.seg = 40;
  const auto rows = rows_of(files, "oak.rwl", "corr", shorter, switches);
  ASSERT_EQ(rows.size(), 6u);  // one segment, three lags, for each core
  EXPECT_EQ(whole(rows[0], 2), 1840);
  EXPECT_EQ(whole(rows[0], 3), 1879);
  EXPECT_EQ(whole(rows[0], 4), -1);
}

TEST(Batch, FlagsWhatAgreesLessThanChanceAndWhatAgreesBetterElsewhere) {
  MemoryFiles files;
  std::string text;
  for (const int k : {0, 1, 2, 3}) text += raw_core_text("A" + std::to_string(k), 1800, 100, 7);
  text += raw_core_text("LATE", 1810, 100, 7);  // the same rings, ten years too late
  files.put("site.rwl", text);
  VerbSwitches switches{.grid = CorrelationGrid::lags};
  int low = 0, alike = 0;
  for (const Row& row : rows_of(files, "site.rwl", "corr", {}, switches)) {
    const auto* flag = std::get_if<std::string>(&row[6]);
    if (whole(row, 4) != 0) {
      EXPECT_FALSE(flag);
      continue;
    }
    low += flag && *flag == "AB" && std::get<std::string>(row[1]) == "LATE";
    alike += !flag && std::get<std::string>(row[1]) == "A1";
  }
  EXPECT_GE(low, 2);
  EXPECT_EQ(alike, 3);
  // The report has one figure a segment, and so no other lag.
  for (const Row& row : rows_of(files, "site.rwl", "corr")) {
    EXPECT_EQ(whole(row, 4), 0);
    const bool is_late = std::get<std::string>(row[1]) == "LATE";
    EXPECT_EQ(std::holds_alternative<std::string>(row[6]), is_late);
  }
}

TEST(Batch, ChecksWhatWasReadAndWhatWasNot) {
  MemoryFiles files;
  std::string text = raw_core_text("OAK1", 1900, 60, 7);
  text += "\n" + raw_core_text("OAK2", 1900, 60, 14);
  files.put("oak.rwl", text);
  bool told_behind = false, told_series = false, told_layout = false;
  for (const Row& row : rows_of(files, "oak.rwl", "check")) {
    const std::string check = std::get<std::string>(row[3]);
    if (check == "behind-end") {
      told_behind = true;
      EXPECT_EQ(whole(row, 1), 8);
      EXPECT_EQ(severity_of(row), Severity::error);
    }
    if (check == "series") {
      told_series = true;
      EXPECT_EQ(std::get<std::string>(row[2]), "OAK1");
      EXPECT_EQ(whole(row, 7), 60);
      EXPECT_EQ(severity_of(row), Severity::note);
    }
    if (check == "layout") told_layout = true;
  }
  EXPECT_TRUE(told_behind);
  EXPECT_TRUE(told_series);
  EXPECT_TRUE(told_layout);
}

// What a folder, a cut file and a field that is no number are told in.
TEST(Batch, CheckTellsTroublesInTheWordsOfTheOtherVerbs) {
  MemoryFiles files;
  files.make_folder("folder.rwl");
  files.put("bad.rwl", raw_core_text("OAK1", 1900, 60, 7) + "OAK2    1900  frob  frob\n");
  for (const char* file : {"gone.rwl", "folder.rwl", "bad.rwl"}) {
    SCOPED_TRACE(file);
    Collection collection(files, file, {});
    std::vector<std::string> told;
    for (const Row& row : rows_of(files, file, "check")) {
      if (std::get<std::string>(row[3]) == "read") told.push_back(std::get<std::string>(row[8]));
    }
    ASSERT_FALSE(told.empty());
    for (std::size_t k = 0; k < told.size(); ++k) {
      EXPECT_TRUE(collection.words().at(k).ends_with(": " + told[k])) << told[k];
      EXPECT_EQ(told[k].find("status"), std::string::npos) << told[k];
    }
  }
}

TEST(Batch, AFileThatIsNoneGivesWordsAndNoRows) {
  MemoryFiles files;
  files.put("README", "This is no file of ring widths.\n");
  EXPECT_TRUE(rows_of(files, "README", "stats").empty());
  Collection unknown(files, "README", {});
  EXPECT_EQ(unknown.words(), std::vector<std::string>{"README: no layout that is known"});
  Collection gone(files, "gone.rwl", {});
  EXPECT_EQ(gone.words(), std::vector<std::string>{"gone.rwl: Open: No such file or directory"});
}

TEST(Batch, SaysByWhatRecipe) {
  Settings settings;
  EXPECT_EQ(recipe_of(settings), "spline 32, ar 11, log");
  settings.splineon = settings.aron = settings.logon = false;
  EXPECT_EQ(recipe_of(settings), "no spline, no ar, no log");
}

}  // namespace
}  // namespace vorn
