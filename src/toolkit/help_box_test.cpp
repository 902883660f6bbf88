#include "toolkit/help_box.h"

#include <gtest/gtest.h>

#include "plot/font_metrics.h"

namespace vorn::help_box {
namespace {

using Lines = std::vector<std::string>;

TEST(HelpBox, BreaksBehindWords) {
  const double width = text_width("narrow rings", 20, Font::arial);
  EXPECT_EQ(broken("narrow rings are dated first", 20, width), (Lines{"narrow rings", "are dated", "first"}));
}

TEST(HelpBox, BreaksAWordThatIsTooWideWithin) {
  const double width = text_width("WW", 20, Font::arial);
  EXPECT_EQ(broken("WWWWW", 20, width), (Lines{"WW", "WW", "W"}));
  EXPECT_EQ(broken("WW", 20, 1), (Lines{"W", "W"}));
}

TEST(HelpBox, LeavesWhatFitsAsItIs) {
  EXPECT_EQ(broken("", 20, 100), (Lines{""}));
  EXPECT_EQ(broken("  set in", 20, 1000), (Lines{"  set in"}));
}

}  // namespace
}  // namespace vorn::help_box
