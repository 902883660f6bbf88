#include "statistics/absolute_difference.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "support/test_store.h"

namespace vorn {
namespace {

TEST(AbsmissMessage, ShowsTheFiveNumbersWhereNothingIsMissing) {
  TestStore store;
  const std::array<bool, 3> all{true, true, true};
  const auto result =
      absmiss(std::vector<double>{1, 2, 3}, std::vector<double>{10, 30, 20}, all, store.tells());
  EXPECT_DOUBLE_EQ(result.d, 2.0 / 3.0);
  EXPECT_EQ(store.messages.str(),
            "    2.0000   20.0000    1.0000   10.0000    0.6667" + std::string(70, ' ') + "\n");
}

TEST(AbsmissMessage, IsNotShownWhereAValueIsMissing) {
  TestStore store;
  std::array<bool, 12> ok{};
  ok.fill(true);
  ok[3] = false;
  const auto a = noise(12, 1), b = noise(12, 2);
  EXPECT_TRUE(absmiss(a, b, ok, store.tells()).valid);
  ok[4] = false;
  EXPECT_FALSE(absmiss(a, b, ok, store.tells()).valid);
  EXPECT_EQ(store.messages.str(), "");
}

}  // namespace
}  // namespace vorn
