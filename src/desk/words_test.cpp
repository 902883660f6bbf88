#include "desk/words.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace vorn {
namespace {

using Names = std::vector<std::string>;

TEST(Words, NamesAreJoinedAsInASentence) {
  EXPECT_EQ(named(Names{}), "");
  EXPECT_EQ(named(Names{"T001"}), "T001");
  EXPECT_EQ(named(Names{"T001", "T002"}), "T001 and T002");
  EXPECT_EQ(named(Names{"T001", "T002", "T003"}), "T001, T002 and T003");
}

TEST(Words, OfManyNamesTheFirstTenAreTold) {
  Names names;
  for (int k = 0; k < 10; ++k) names.push_back(std::string(1, static_cast<char>('A' + k)));
  EXPECT_EQ(named(names), "A, B, C, D, E, F, G, H, I and J");
  names.insert(names.end(), 5, "Z");
  EXPECT_EQ(named(names), "A, B, C, D, E, F, G, H, I, J and 5 more");
}

TEST(Words, OneIsNoPlural) {
  EXPECT_EQ(counted(1, "core"), "1 core");
  EXPECT_EQ(counted(0, "core"), "0 cores");
  EXPECT_EQ(counted(1629, "year"), "1629 years");
}

TEST(Words, ValuesHaveTwoDecimals) {
  EXPECT_EQ(two_decimals(1.234), "1.23");
  EXPECT_EQ(two_decimals(-1.0), "-1.00");
  EXPECT_EQ(two_decimals(-0.001), "0.00");
  EXPECT_EQ(two_decimals(std::numeric_limits<double>::max()).size(), 309u + 3);
}

}  // namespace
}  // namespace vorn
