#include "situation/situation.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(Situation, FindsTheButtonThatAClickHits) {
  Situation situation;
  situation.buttons = {{{100, 100, 200, 150}, button::spline_on, "Yes", false},
                       {{150, 100, 300, 150}, button::ar_on, "No", true}};
  ASSERT_TRUE(situation.at(100, 150));
  EXPECT_EQ(situation.at(100, 150)->number, button::spline_on);
  EXPECT_EQ(situation.at(170, 120)->number, button::spline_on);  // where two meet, the first
  EXPECT_EQ(situation.at(300, 100)->number, button::ar_on);
  EXPECT_EQ(situation.at(99, 120), nullptr);
  EXPECT_EQ(situation.at(250, 151), nullptr);
  ASSERT_TRUE(situation.shown(button::ar_on));
  EXPECT_TRUE(situation.shown(button::ar_on)->lit);
  EXPECT_EQ(situation.shown(button::quit), nullptr);
}

}  // namespace
}  // namespace vorn
