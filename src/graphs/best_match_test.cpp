#include "graphs/best_match.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "support/test_store.h"

namespace vorn {
namespace {

std::vector<std::string> marks(Workspace& w) {
  std::ostringstream page;
  w.plot.page().write_text(page);
  std::vector<std::string> found;
  std::istringstream lines(page.str());
  for (std::string line; std::getline(lines, line);) found.push_back(line);
  return found;
}

TEST(BestMatch, IsDrawnInColumnsOfYearsCorrelationsAndOffsets) {
  TestStore store;
  const std::vector<double> a{1, 2, 3, 4, 3, 2, 4};
  store.w.seg = 4;
  // Stretch 1 2 3 4 with 1 2 4 3 (0.8), 2 4 3 1 (-0.4), 4 3 1 2 (-0.8): products of deviations 4, -2, -4
  // over 5.
  store.set_pair(1900, a, 1890, {1, 2, 4, 3, 1, 2});
  cor_best(store.w);
  EXPECT_EQ(marks(store.w), (std::vector<std::string>{
                                "text 9 25 168 370 \" 1900 1903\"",
                                "text 15 25 200 445 \"0.80\"",
                                "text 12 25 280 445 \"   10\"",
                                "text 15 25 200 490 \"-.40\"",
                                "text 12 25 280 490 \"    9\"",
                                "text 15 25 200 535 \"-.80\"",
                                "text 12 25 280 535 \"    8\"",
                                "text 15 25 200 580 \"****\"",
                                "text 12 25 280 580 \"    0\"",
                                "text 15 25 200 625 \"****\"",
                                "text 12 25 280 625 \"    0\"",
                                "text 15 25 200 670 \"****\"",
                                "text 12 25 280 670 \"    0\"",
                            }));
}

TEST(BestMatch, DrawsNothingForASampleShorterThanASegment) {
  TestStore store;
  store.set_pair(1900, noise(49, 1), 1800, noise(300, 2));
  cor_best(store.w);
  EXPECT_TRUE(store.w.plot.page().marks().empty());
}

TEST(BestMatch, DrawsEachStretch225UnitsFurtherRightAndLeavesTheColourAtInk) {
  TestStore store;
  store.set_pair(1900, noise(120, 1), 1800, noise(300, 2));
  cor_best(store.w);
  const auto drawn = marks(store.w);
  ASSERT_EQ(drawn.size(), 26u);
  EXPECT_EQ(drawn[13].substr(0, 31), "text 9 25 393 370 \" 1949 1998\"");
  EXPECT_EQ(drawn[14].substr(0, 19), "text 15 25 425 445 ");
  store.w.plot.messag("x", 1, 1);
  EXPECT_EQ(marks(store.w).back(), "text 15 25 1 1 \"x\"");
}

}  // namespace
}  // namespace vorn
