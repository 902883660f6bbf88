#include "statistics/segment_grid.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(SegmentGrid, StartsAtTheMultipleOfTheStepAtOrBeforeTheFirstYear) {
  EXPECT_EQ(SegmentGrid({1653, 1990}, 50, 10).block(0).start, 1650);
  EXPECT_EQ(SegmentGrid({1650, 1990}, 50, 10).block(0).start, 1650);
  EXPECT_EQ(SegmentGrid({1649, 1990}, 50, 10).block(0).start, 1640);
}

// Step 10 and length 10: the last year of the last segment is the last year of the grid.
std::int64_t end_of_grid(std::int64_t last_year) {
  const SegmentGrid grid({last_year - 100, last_year}, 10, 10);
  const SegmentBlock block = grid.block(grid.blocks() - 1);
  EXPECT_EQ(block.end, block.last_year(block.segments));
  return block.end;
}

TEST(SegmentGrid, EndsBeforeALastYearOnAMultipleOfTheStep) {
  EXPECT_EQ(end_of_grid(1990), 1989);
  EXPECT_EQ(end_of_grid(1987), 1989);
  EXPECT_EQ(end_of_grid(1989), 1989);
  EXPECT_EQ(end_of_grid(1991), 1999);
}

TEST(SegmentGrid, CutsDivisionsTowardsZeroBeforeYearZero) {
  const SegmentGrid grid({-1653, -25}, 50, 10);
  EXPECT_EQ(grid.block(0).start, -1650);
  // (-25 - 1) / 10 is -2, and 10 (-2 + 1) - 1 = -11: 1640 years, 160 segments.
  const SegmentBlock last = grid.block(grid.blocks() - 1);
  EXPECT_EQ(last.end, -11);
  EXPECT_EQ(grid.blocks(), 7);
  EXPECT_EQ(last.segments, 160 - 6 * 24);
}

TEST(SegmentGrid, GivesThirtySegmentsTwoBlocksOfTwentyFourAndSix) {
  // 29 x 25 + 50 years: 1000 to 1774.
  const SegmentGrid grid({1000, 1775}, 50, 25);
  ASSERT_EQ(grid.blocks(), 2);
  EXPECT_EQ(grid.block(0).segments, 24);
  EXPECT_EQ(grid.block(0).start, 1000);
  EXPECT_EQ(grid.block(0).end, 1624);
  EXPECT_EQ(grid.block(0).last_year(24), 1624);
  EXPECT_EQ(grid.block(1).segments, 6);
  EXPECT_EQ(grid.block(1).start, 1600);
  EXPECT_EQ(grid.block(1).end, 1774);
  EXPECT_EQ(grid.block(1).first_year(6), 1725);
}

TEST(SegmentGrid, HasOneBlockForAnyNumberOfSegmentsFromMinusTwentyTwoToTwentyFour) {
  // With a step of 1 and first and last used year 100 the grid is empty: 1 - length segments.
  EXPECT_EQ(SegmentGrid({100, 100}, 1, 1).blocks(), 1);
  EXPECT_EQ(SegmentGrid({100, 100}, 1, 1).block(0).segments, 0);
  EXPECT_EQ(SegmentGrid({100, 100}, 23, 1).blocks(), 1);
  EXPECT_EQ(SegmentGrid({100, 100}, 23, 1).block(0).segments, -22);
  EXPECT_EQ(SegmentGrid({100, 100}, 24, 1).blocks(), 0);
  EXPECT_EQ(SegmentGrid({100, 124}, 1, 1).blocks(), 1);
  EXPECT_EQ(SegmentGrid({100, 124}, 1, 1).block(0).segments, 24);
  EXPECT_EQ(SegmentGrid({100, 125}, 1, 1).blocks(), 2);
}

TEST(SegmentGrid, CountsOneSegmentWhereLessThanAStepIsWantingToIt) {
  // 40 years for segments of 50 with a step of 20: (40 - 50) / 20 cuts to 0, and 0 + 1 = 1.
  const SegmentGrid grid({1900, 1940}, 50, 20);
  EXPECT_EQ(grid.block(0).end, 1939);
  EXPECT_EQ(grid.block(0).segments, 1);
  EXPECT_EQ(grid.block(0).last_year(1), 1949);
}

TEST(SegmentGrid, OfNoYearsOrOfAStepThatIsNoneHasNoSegments) {
  // No year of depth 2 in 1900 to 1999: used are 2000 to 1999.
  const SegmentGrid none({2000, 1999}, 50, 25);
  ASSERT_EQ(none.blocks(), 1);
  EXPECT_EQ(none.block(0).segments, -1);
  EXPECT_EQ(SegmentGrid({1900, 1999}, 50, 0).blocks(), 0);
}

TEST(SegmentGrid, TakesTheLargestSegmentsAndYearsThatAFileCanName) {
  EXPECT_EQ(SegmentGrid({2147483000, 2147483647}, 12000, 11999).blocks(), 1);
  EXPECT_EQ(SegmentGrid({-2147483648, -2147483000}, 4, 3).blocks(), 9);  // 216 segments and 1
}

SegmentBlock one_segment(std::int64_t start, std::int64_t length, std::int64_t step) {
  return {start, start + length - 1, 1, length, step};
}

TEST(CellYears, AreTheSegmentWhereTheSeriesCoversIt) {
  EXPECT_TRUE(*cell_years(one_segment(1900, 50, 25), 1, {1800, 2000}) == YearSpan({1900, 1949}));
}

TEST(CellYears, KeepTheFullLengthForATreeThatStartsInTheSegment) {
  EXPECT_TRUE(*cell_years(one_segment(1900, 50, 25), 1, {1910, 2000}) == YearSpan({1910, 1959}));
  EXPECT_TRUE(*cell_years(one_segment(1900, 50, 25), 1, {1910, 1955}) == YearSpan({1910, 1955}));
}

TEST(CellYears, KeepTheFullLengthForATreeThatEndsInTheSegment) {
  EXPECT_TRUE(*cell_years(one_segment(1900, 50, 25), 1, {1800, 1940}) == YearSpan({1891, 1940}));
  EXPECT_TRUE(*cell_years(one_segment(1900, 50, 25), 1, {1895, 1940}) == YearSpan({1895, 1940}));
}

TEST(CellYears, AreNoneUnlessTheyReachMoreThanAStepBehindTheFirst) {
  // 1924 to 1949: 26 years, a difference of 25.
  EXPECT_FALSE(cell_years(one_segment(1900, 50, 25), 1, {1924, 2000}).has_value());
  EXPECT_TRUE(*cell_years(one_segment(1900, 50, 25), 1, {1923, 2000}) == YearSpan({1923, 1972}));
  EXPECT_FALSE(cell_years(one_segment(1900, 50, 25), 1, {2000, 2100}).has_value());
}

}  // namespace
}  // namespace vorn
