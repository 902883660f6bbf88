#include "records/text.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(FixedText, IsPaddedWithBlanksAndCutToItsLength) {
  EXPECT_EQ(Text<8>("ABC").view(), "ABC     ");
  EXPECT_EQ(Text<3>("ABCDE").view(), "ABC");
  EXPECT_EQ(Text<4>().view(), "    ");
}

TEST(FixedText, TrimmingTakesTrailingBlanksOnly) {
  EXPECT_EQ(Text<8>("  A B").trimmed(), "  A B");
  EXPECT_TRUE(Text<8>("   ").blank());
  EXPECT_FALSE(Text<8>("   .").blank());
}

TEST(FixedText, ColumnsCountFromOne) {
  Text<8> name("KREUZ01");
  EXPECT_EQ(name(1), 'K');
  name(8) = '-';
  EXPECT_EQ(name.view(), "KREUZ01-");
}

TEST(FixedText, TextsAreEqualWhenAllCharactersAre) {
  EXPECT_EQ(Text<8>("AB"), Text<8>("AB  "));
  EXPECT_NE(Text<8>("AB"), Text<8>(" AB"));
}

TEST(FixedText, CharactersCanBeWrittenOver) {
  Text<4> text("ABCD");
  text.characters()[3] = '!';
  EXPECT_EQ(text.view(), "ABC!");
}

}  // namespace
}  // namespace vorn
