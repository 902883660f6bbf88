// What readers tell and decide, with no page anywhere.
#include "formats/read_decisions.h"

#include <gtest/gtest.h>

#include <memory>

#include "formats/layouts.h"
#include "formats/recognition.h"
#include "records/disk_files.h"
#include "support/format_bench.h"

namespace vorn {
namespace {

class Decisions : public FormatBench {
 protected:
  // The ranges of lines that were not taken for this reason.
  static std::vector<std::pair<std::int64_t, std::int64_t>> left_out(const ReadDecisions& decided,
                                                                     NotTaken why) {
    std::vector<std::pair<std::int64_t, std::int64_t>> ranges;
    for (const LinesNotTaken& lines : decided.not_taken) {
      if (lines.why == why) ranges.emplace_back(lines.first, lines.last);
    }
    return ranges;
  }
  using Ranges = std::vector<std::pair<std::int64_t, std::int64_t>>;
};

// No Workspace, no Plot: a store, a table of files and a list of what is told.
TEST(ReadersWithoutAPage, FillAStoreAndTellTheLineAndColumnOfABadField) {
  const ScratchFolder folder;
  ScratchFolder::write("site.rwl",
                       "Oak, 12 samples\n"
                       "CORE01  1953   101   102   103   104   105   106   107\n"
                       "CORE01  1960   108   10x   999\n");
  std::ostringstream log;
  KeptTroubles troubles(log);
  DiskFiles disk;
  const Recognition found = find_rftyp(disk, "site.rwl", troubles);
  ASSERT_EQ(found.layout, Layout::tucson_raw);
  EXPECT_EQ(found.line, 2);

  const auto store = std::make_unique<SeriesStore>();
  const ReadDecisions decided =
      row_of(found.layout)->read_cores(*store, {disk, "site.rwl", found.header_lines, troubles});
  EXPECT_EQ(store->nc, 1);
  EXPECT_EQ(decided.series.size(), 1u);

  ASSERT_EQ(troubles.all.size(), 1u);
  const Trouble& bad = troubles.all[0];
  EXPECT_EQ(bad.label, "Read2");
  EXPECT_EQ(bad.file, "site.rwl");
  EXPECT_EQ(bad.status, status::not_a_number);
  EXPECT_EQ(bad.line, 3);
  EXPECT_EQ(bad.column, 19);  // the second value
  EXPECT_EQ(bad.series, "CORE01");
  EXPECT_EQ(bad.words, "");
}

TEST(ReadersWithoutAPage, PutAChronologyIntoAnyColumnOfATable) {
  const ScratchFolder folder;
  ScratchFolder::write("site.crn",
                       "SITE0119509990  09990  09990  0 987  1 995  21015  31170  4 880  5 956  61021123\n");
  std::ostringstream log;
  KeptTroubles troubles(log);
  DiskFiles disk;
  const auto files = std::make_unique<FileTable>();
  row_of(Layout::tucson_index)->read_chronology(*files, 7, {disk, "site.crn", 0, troubles});
  EXPECT_EQ(files->cfy(7), 1950);
  EXPECT_EQ(files->crn(4, 7), 987.0);
  EXPECT_EQ(files->num(10, 7), 123);
  EXPECT_TRUE(troubles.all.empty());
}

TEST_F(Decisions, OfTucsonRawFollowFromTheEndMark) {
  current_file("site.rwl", "Oak\n" + raw_line("A", 1953, {101, 102, 999}) +
                               raw_line("B", 1953, {101, -9999}) +
                               raw_line("C", 1950, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}) +
                               raw_line("C", 1960, {11, 12, 13}) + "\nnotes\n");
  w.rfhead(1) = 1;
  const ReadDecisions decided = read_raw(w);
  EXPECT_EQ(decided.layout, Layout::tucson_raw);
  EXPECT_EQ(decided.header_lines, 1);
  ASSERT_EQ(decided.series.size(), 3u);
  const SeriesRead &a = decided.series[0], &b = decided.series[1], &c = decided.series[2];
  EXPECT_EQ(a.name, Name("A"));
  EXPECT_EQ(a.first_line, 2);
  EXPECT_EQ(a.last_line, 2);
  EXPECT_EQ(a.rings, 2);
  EXPECT_EQ(a.unit, 100.0);
  EXPECT_EQ(a.unit_by, UnitBy::hundredths_mark);
  EXPECT_TRUE(a.end_mark);
  EXPECT_EQ(b.unit, 1000.0);
  EXPECT_EQ(b.unit_by, UnitBy::thousandths_mark);
  EXPECT_EQ(c.unit_by, UnitBy::no_mark);
  EXPECT_FALSE(c.end_mark);
  EXPECT_EQ(c.first_line, 4);
  EXPECT_EQ(c.last_line, 5);
  EXPECT_EQ(left_out(decided, NotTaken::header), (Ranges{{1, 1}}));
  EXPECT_EQ(left_out(decided, NotTaken::no_end_mark), (Ranges{{5, 5}}));
  EXPECT_EQ(left_out(decided, NotTaken::behind_end), (Ranges{{6, LinesNotTaken::to_the_end}}));
  EXPECT_EQ(limits_passed(decided, "site.rwl"), std::vector<std::string>{});
}

TEST_F(Decisions, OfHeidelbergFollowFromUnitAndMean) {
  current_file(
      "site.fh",
      "HEADER:\nKeyCode=A\nSpecies=QUSP\nProject=x\nUnit=1/100 mm\nLength=2\nDATA:Tree\n   101   102\n"
      "HEADER:\nKeyCode=B\nLength=2\nDATA:Tree\n   301   302\n"
      "HEADER:\nKeyCode=C\nLength=2\nDATA:Tree\n    30   -30\nHEADER:\nKeyCode=D\n");
  const ReadDecisions decided = read_heidel(w);
  ASSERT_EQ(decided.series.size(), 3u);
  EXPECT_EQ(decided.series[0].unit_by, UnitBy::unit_line);
  EXPECT_EQ(decided.series[0].unit, 100.0);
  EXPECT_EQ(decided.series[1].unit_by, UnitBy::mean);
  EXPECT_EQ(decided.series[1].unit, 1000.0);
  EXPECT_EQ(decided.series[1].first_line, 9);
  EXPECT_EQ(decided.series[1].last_line, 13);
  EXPECT_EQ(decided.series[2].unit, 100.0);
  EXPECT_EQ(decided.missing_rings, 1);
  EXPECT_EQ(left_out(decided, NotTaken::unknown_key), (Ranges{{3, 4}}));
  EXPECT_EQ(left_out(decided, NotTaken::cut_header), (Ranges{{19, 20}}));
  ASSERT_EQ(troubles.all.size(), 1u);
  EXPECT_EQ(troubles.all[0].line, 20);
}

TEST_F(Decisions, AHeidelbergLineThatIsNoNumberIsToldWithItsLine) {
  current_file("site.fh", "HEADER:\nKeyCode=A\nDateEnd=19x0\nLength=1\nDATA:Tree\n   101\n");
  read_heidel(w);
  ASSERT_EQ(troubles.all.size(), 1u);
  EXPECT_EQ(trimmed(troubles.all[0].shown), "DateEnd=19x0");
  EXPECT_EQ(troubles.all[0].file, "site.fh");
  EXPECT_EQ(troubles.all[0].line, 3);
  EXPECT_EQ(troubles.all[0].column, 9);
  EXPECT_EQ(troubles.all[0].series, "A");
}

TEST_F(Decisions, OfCompactFollowFromExponentAndFormat) {
  const auto header = [](const char* name, const char* exponent) {
    char text[128];
    std::snprintf(text, sizeof text, "%8d=N%8d=I %-8s%39s%3s%-8s\n", 2, 1953, name, "", exponent, "(19F4.0)");
    return std::string(text);
  };
  current_file("site.rwm", header("A", "-2") + " 101 102\n" + header("B", "") + " 101 102\n\nnotes\n");
  const ReadDecisions decided = read_compact(w);
  ASSERT_EQ(decided.series.size(), 2u);
  EXPECT_EQ(decided.series[0].unit_by, UnitBy::exponent);
  EXPECT_EQ(decided.series[0].unit, 100.0);
  EXPECT_EQ(decided.series[1].unit_by, UnitBy::edit_format);
  EXPECT_EQ(decided.series[1].unit, 1000.0);
  EXPECT_EQ(decided.series[1].first_line, 3);
  EXPECT_EQ(decided.series[1].last_line, 4);
  EXPECT_EQ(left_out(decided, NotTaken::behind_end), (Ranges{{5, LinesNotTaken::to_the_end}}));
}

TEST_F(Decisions, ASeriesThatThePoolHasNoRoomForIsLeftOut) {
  current_file("site.rwm", " 1200001=N    1953=I A" + std::string(50, ' ') + "(19F4.0)\n 101\n");
  const ReadDecisions decided = read_compact(w);
  EXPECT_EQ(messages(), Messages{"Would be too many rings"});
  EXPECT_EQ(troubles.all[0].line, 1);
  EXPECT_EQ(left_out(decided, NotTaken::no_room), (Ranges{{1, LinesNotTaken::to_the_end}}));
}

TEST(ReadDecisionsLists, StayAsShortAsAStore) {
  ReadDecisions decided;
  for (int k = 1; k <= 3 * max_series; ++k) decided.leave_out(2 * k, 2 * k, NotTaken::unknown_key);
  EXPECT_EQ(decided.not_taken.size(), static_cast<std::size_t>(max_series));
  EXPECT_EQ(decided.more_not_taken, static_cast<std::size_t>(2 * max_series));
}

TEST(ReadDecisionsLists, JoinLinesThatFollowEachOtherForOneReason) {
  ReadDecisions decided;
  decided.leave_out(1, 1, NotTaken::header);
  decided.leave_out(2, 2, NotTaken::header);
  decided.leave_out(3, 3, NotTaken::unknown_key);
  ASSERT_EQ(decided.not_taken.size(), 2u);
  EXPECT_EQ(decided.not_taken[0].last, 2);
}

// --- The list of layouts.

TEST(Layouts, HaveARowEachThatReads) {
  for (const LayoutRow& row : layouts()) {
    EXPECT_EQ(row_of(row.layout), &row);
    EXPECT_NE(row.read_cores == nullptr, row.read_chronology == nullptr) << row.name;
    EXPECT_EQ(holds_ring_widths(row.layout), row.read_cores != nullptr);
  }
  EXPECT_EQ(row_of(Layout::none), nullptr);
  EXPECT_EQ(row_of(Layout::not_recognised), nullptr);
  EXPECT_EQ(name_of(Layout::not_recognised), "Format not recognised");
  EXPECT_EQ(name_of(Layout::tucson_index), "Tuscon Indices");
}

TEST_F(Decisions, OfARecognitionNameTheLineAndTheTest) {
  current_file("site.rwl", "Oak\nsecond line\nCORE01  1953   101   102   103   104   105   106   107\n");
  const Recognition found = find_rftyp(w);
  EXPECT_EQ(found.layout, Layout::tucson_raw);
  EXPECT_EQ(found.header_lines, 2);
  EXPECT_EQ(found.line, 3);
  EXPECT_EQ(found.test, "is as long as its year asks for, and all numbers");
  current_file("notes.txt", "Oak\n");
  EXPECT_EQ(find_rftyp(w).line, 0);
}

}  // namespace
}  // namespace vorn
