// Copies of Heidelberg and compact files that are taken whole, and what is not written without being told
// how.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "batch/collection.h"
#include "batch/difference.h"
#include "batch/reading_check.h"
#include "batch/repair.h"
#include "records/memory_files.h"

namespace vorn {
namespace {

Repair repair(const std::string& bytes) {
  MemoryFiles files;
  files.put("a file", bytes);
  return repaired(Collection(files, "a file", untreated()), bytes, {});
}

bool is_whole(const std::string& bytes) {
  MemoryFiles files;
  files.put("the copy", bytes);
  return is_read_whole(Collection(files, "the copy", untreated()));
}

using Words = std::vector<std::string>;

const std::string header = "HEADER:\nKeyCode=OAK1\nUnit=1/100 mm\n";
const std::string values = "   101   102   103   104   105   106   107   108   109   110\n   111   112\n";
const std::string record = header + "DateEnd=1990\nLength=12\nDATA:Tree\n" + values;

TEST(RepairHeidelberg, LinesBeforeTheFirstRecordAreLeftOut) {
  EXPECT_EQ(repair("\xef\xbb\xbf" + record).bytes, record);
  const Repair made = repair("From here\n\n" + record);
  EXPECT_EQ(made.bytes, record);
  EXPECT_EQ(made.done, (Words{"line 1, no data, left out: From here", "line 2, empty, left out"}));
}

TEST(RepairHeidelberg, ValuesThatAreNotTenToALineAreWrittenSo) {
  const std::string loose = "101 102 103 104 105 106\n107\t108;109 110 111\n\n112 0 0\n";
  const Repair made = repair(header + "DateEnd=1990\nLength=12\nDATA:Tree\n" + loose);
  EXPECT_EQ(made.bytes,
            record.substr(0, record.size() - 1) + "     0     0     0     0     0     0     0     0\n");
  EXPECT_EQ(made.done, Words{"lines 7 to 10, values written anew in their columns"});
}

TEST(RepairHeidelberg, ALengthThatTheYearsSayIsPutIn) {
  const Repair made = repair(header + "DateBegin=1979\nDateEnd=1990\nDATA:Tree\n" + values);
  EXPECT_EQ(made.bytes, header + "DateBegin=1979\nDateEnd=1990\nLength=12\nDATA:Tree\n" + values);
  EXPECT_EQ(made.done, Words{"line 6, Length=12 put before it, as its first and last year say"});
}

TEST(RepairHeidelberg, WhatWouldBeAGuessIsSaid) {
  const std::string dated = header + "DateEnd=1990\n";
  EXPECT_EQ(repair(dated + "Length=13\nDATA:Tree\n" + values).refused,
            Words{"line 1: its length says 13 rings, and 12 values stand there"});
  EXPECT_EQ(repair(dated + "Length=12\nDATA:Double\n" + values).refused,
            Words{"line 6: a width and other numbers take turns; save it again with widths alone"});
  EXPECT_EQ(repair(record + header).refused, Words{"line 9: a record without values"});
  EXPECT_EQ(repair(dated + "Length=2\nDATA:Tree\n101 1o2\n").refused,
            Words{"line 1: what is its width 1o2?"});
  EXPECT_EQ(
      repair("1 1950 101 102 103\n" + record).refused,
      Words{"line 1 may hold data and is not understood, put it right or take it out: 1 1950 101 102 103"});
}

// What its own lines do not say the importers read, into another layout.
TEST(RepairHeidelberg, WithoutALengthThereAreAsManyRingsAsValues) {
  const Repair made = repair(header + "DateEnd=1990\nDATA:Tree\n" + values);
  EXPECT_EQ(made.ending, ".rwl");
  EXPECT_TRUE(made.bytes.starts_with("OAK1    1979")) << made.bytes;
}

// In a copy they would be lost.
TEST(RepairHeidelberg, ValuesBehindTheLengthAreNotLeftOut) {
  const Repair made = repair(header + "DateEnd=1990\nLength=5\nDATA:Tree\n101 102 103 104 105 106 107\n");
  EXPECT_EQ(made.bytes, "");
  EXPECT_EQ(made.refused, Words{"line 1: more values than its length says, and not in columns"});
  const Repair pairs = repair(header + "DateEnd=1990\nLength=2\nDATA:Double\n101 7 103 8 105 9\n");
  EXPECT_EQ(pairs.bytes, "");
  EXPECT_FALSE(pairs.refused.empty());
}

std::string series(const std::string& name, const std::string& lines) {
  return "       5=N    1953=I " + name + std::string(50 - name.size(), ' ') + "( 3F4.0)\n" + lines;
}
const std::string two =
    series("OAK1", " 101 102 103\n 104 105\n") + series("OAK2", " 201 202 203\n 204 205\n");

TEST(RepairCompact, EmptyLinesAreLeftOut) {
  std::string spoilt = "\n\n" + two;
  spoilt.insert(spoilt.find(" 104"), "\n");
  EXPECT_EQ(repair(spoilt).bytes, two);
  EXPECT_EQ(repair(spoilt).done,
            (Words{"line 1, empty, left out", "line 2, empty, left out", "line 5, empty, left out"}));
}

TEST(RepairCompact, WhatWouldBeAGuessIsSaid) {
  EXPECT_EQ(
      repair("\n" + series("OAK1", " 101 102 103\n") + series("OAK2", " 201 202 203\n 204 205\n")).refused,
      Words{"line 2 says that there are more values than stand behind it"});
  EXPECT_EQ(repair("\n" + two + "some words\n").refused,
            Words{"line 8 is no header of a series, and behind the values of one"});
}

// Whatever is changed in a file: a copy that is written has no error, and one that is not says why.
TEST(RepairKeyed, ACopyIsAlwaysReadWhole) {
  for (const std::string& text : {record + record, two}) {
    for (std::size_t k = 0; k < text.size(); ++k) {
      for (const char c : {'\n', ' ', '\t', '7', '-', 'x', '\0'}) {
        std::string changed = text;
        changed[k] = c;
        const Repair made = repair(changed);
        EXPECT_TRUE(made.bytes.empty() || is_whole(made.bytes)) << changed;
        EXPECT_TRUE(made.bytes.empty() || made.refused.empty());
        EXPECT_TRUE(is_whole(changed) || !made.bytes.empty() || !made.refused.empty()) << changed;
      }
    }
  }
}

}  // namespace
}  // namespace vorn
