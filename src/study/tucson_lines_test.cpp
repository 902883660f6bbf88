#include "study/tucson_lines.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

std::vector<std::int32_t> numbers_of(const DecadeLine& decade) {
  std::vector<std::int32_t> all;
  for (const DecadeField& field : decade.fields) all.push_back(field.number);
  return all;
}

DecadeLine decade(std::string_view text) {
  const auto found = decade_of(text, 1);
  EXPECT_TRUE(found) << text;
  return found.value_or(DecadeLine{});
}

TEST(TucsonLines, GiveNameYearAndWidths) {
  const DecadeLine line = decade("OAK 1   1957   101   102 -9999");
  EXPECT_EQ(line.name, "OAK 1");
  EXPECT_EQ(line.year, 1957);
  EXPECT_EQ(numbers_of(line), (std::vector<std::int32_t>{101, 102, -9999}));
  EXPECT_TRUE(line.in_columns);
  EXPECT_EQ(line.next_year(), 1960);
}

TEST(TucsonLines, ReadBothWaysToWriteYearsBefore0) {
  EXPECT_EQ(decade("OAK1   -2102   162   111").year, -2102);
  EXPECT_EQ(decade("OAK1   -2102   162   111").name, "OAK1");
  EXPECT_EQ(decade("OAK1    -384   200   130").year, -384);
  EXPECT_EQ(decade("OAK1    -384   200   130").next_year(), -380);
}

// A tab is one column to the reader and a gap to people.
TEST(TucsonLines, AreUnderstoodOutsideTheirColumns) {
  const DecadeLine tabs = decade("OAK1\t1950\t101\t102\t103");
  EXPECT_FALSE(tabs.in_columns);
  EXPECT_EQ(tabs.year, 1950);
  EXPECT_EQ(numbers_of(tabs), (std::vector<std::int32_t>{101, 102, 103}));
  const DecadeLine single = decade("OAK1 1950 101 102 103 104");
  EXPECT_FALSE(single.in_columns);
  EXPECT_EQ(single.year, 1950);
}

TEST(TucsonLines, TellThatTheyStandToTheLeft) {
  EXPECT_TRUE(decade("EGR108 1790    96    65    57").is_shifted);
  EXPECT_FALSE(decade("EGR108  1790    96    65    57").is_shifted);
}

TEST(TucsonLines, KeepFieldsThatAreNoNumbersWhereMostAre) {
  const DecadeLine line = decade("OAK1    1950   101   1o2   103");
  ASSERT_EQ(line.fields.size(), 3u);
  EXPECT_EQ(line.fields[1].kind, DecadeField::Kind::bad);
  EXPECT_EQ(line.fields[1].column, 19);
}

TEST(TucsonLines, AreNoneWhereWordsStand) {
  for (const char* text : {"", "   ", "OAK1", "OAK1    1950", "RAG    1 Ragati Forest Station     PRMA",
                           "RAG    2 Kenya        Previa maxima     2010M -0035+03703    __    1935 1994",
                           "# 1950 12 13", "Some words of 1950 and 1951", "OAK1 99999 1 2"})
    EXPECT_FALSE(decade_of(text, 1)) << text;
}

std::vector<CoreLines> cores(std::string_view bytes) {
  static std::vector<FileLine> lines;
  lines = lines_of(bytes);
  return cores_on(lines, 0);
}

TEST(TucsonCores, EndAtAnotherNameAndBehindAMark) {
  const auto all = cores(
      "OAK1    1957   101   102   103\nOAK1    1960   104   999\n"
      "OAK2    1950   101 -9999\nOAK2    1970   101 -9999\n");
  ASSERT_EQ(all.size(), 3u);
  EXPECT_EQ(all[0].decades.size(), 2u);
  EXPECT_EQ(all[0].unit, 100.0);
  EXPECT_EQ(all[0].rings_on(1), 1u);
  EXPECT_EQ(all[1].unit, 1000.0);
  EXPECT_EQ(all[2].decades.front().year, 1970);
}

// Without a mark between them two stretches of one name are one core with a gap.
TEST(TucsonCores, GoOnOverGapsBlankLinesAndLinesWithoutAName) {
  const auto all = cores(
      "OAK1    1957   101   102   103\n\nOAK1    1970   104   105\n            \n"
      "        1980   106   999\n");
  ASSERT_EQ(all.size(), 1u);
  EXPECT_EQ(all[0].decades.size(), 3u);
  EXPECT_EQ(all[0].unit, 100.0);
}

}  // namespace
}  // namespace vorn
