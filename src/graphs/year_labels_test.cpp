#include "graphs/year_labels.h"

#include <gtest/gtest.h>

#include <limits>

namespace vorn {
namespace {

YearLabels labels_of(std::int64_t first, std::int32_t years) {
  View view;
  view.show_width(years);
  view.show_from(first);
  return thinned_year_labels(view, 20);
}

TEST(YearLabels, AreAsCloseAsTheyHaveRoom) {
  for (const auto& [years, step, ticks] : {std::tuple{21, 10, 10},
                                           {60, 10, 10},
                                           {100, 10, 10},
                                           {250, 10, 10},
                                           {400, 20, 4},
                                           {1'000, 50, 5},
                                           {2'000, 100, 10},
                                           {3'000, 200, 4},
                                           {12'000, 500, 5}}) {
    const YearLabels labels = labels_of(1900, years);
    EXPECT_EQ(labels.step, step) << years;
    EXPECT_EQ(labels.ticks, ticks) << years;
  }
}

TEST(YearLabels, BeginAtTheFirstRoundYearShownTheFirstOneIncluded) {
  for (const auto& [first, label] :
       {std::pair{1900, 1900}, {1901, 1910}, {0, 0}, {-5, 0}, {-10, -10}, {-1605, -1600}})
    EXPECT_EQ(labels_of(first, 100).first, label) << first;
}

TEST(YearLabels, OfFarYearsLeaveRoomForTheirDigits) {
  const auto last = std::numeric_limits<std::int32_t>::max();
  EXPECT_EQ(labels_of(last - 100, 100).step, 10);
  EXPECT_EQ(labels_of(last - 12'000, 12'000).step, 1'000);
  EXPECT_EQ(labels_of(std::numeric_limits<std::int32_t>::min(), 12'000).step, 1'000);
}

}  // namespace
}  // namespace vorn
