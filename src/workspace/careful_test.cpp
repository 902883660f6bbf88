#include "workspace/careful.h"

#include <gtest/gtest.h>

#include <set>

namespace vorn {
namespace {

TEST(Careful, IsOffAtFirst) {
  EXPECT_FALSE(Careful().any());
  EXPECT_EQ(names_of(Careful()), "");
}

TEST(Careful, EveryMendHasANameAndWordsOfItsOwn) {
  std::set<std::string_view> names, words;
  for (const MendRow& row : mends()) {
    names.insert(row.name);
    words.insert(row.does);
    EXPECT_EQ(row.name.find_first_not_of("abcdefghijklmnopqrstuvwxyz-"), std::string_view::npos) << row.name;
    EXPECT_EQ(mend_named(row.name), &row);
    EXPECT_EQ(&row_of(row.mend), &row);
  }
  EXPECT_EQ(names.size(), mends().size());
  EXPECT_EQ(words.size(), mends().size());
  EXPECT_FALSE(names.contains(every_mend));
}

TEST(Careful, NamesComeBackFromTheirList) {
  std::string wrong;
  for (const MendRow& row : mends()) {
    Careful one;
    one.set(row.mend, true);
    EXPECT_EQ(names_of(one), row.name);
    EXPECT_EQ(careful_of(row.name, wrong), one);
  }
  const Careful two = careful_of("help,blank-line", wrong).value();
  EXPECT_EQ(names_of(two), "blank-line,help");
  EXPECT_EQ(careful_of("all", wrong), Careful::everything());
  EXPECT_EQ(names_of(Careful::everything()), "all");
  EXPECT_EQ(careful_of("", wrong), Careful());
  EXPECT_EQ(wrong, "");
}

TEST(Careful, UnknownNameIsTold) {
  std::string wrong;
  EXPECT_FALSE(careful_of("help,hepl", wrong));
  EXPECT_EQ(wrong, "hepl");
}

TEST(Careful, BitsOfNoMendAreDropped) {
  EXPECT_EQ(Careful::of_bits(0xFFFFFFFF), Careful::everything());
  EXPECT_EQ(Careful::of_bits(Careful::everything().bits()), Careful::everything());
}

TEST(Careful, OfReadingLeavesOutTheRest) {
  EXPECT_EQ(names_of(reading_of(Careful::everything())), "blank-line,end-mark,statistics-line,early-years");
  EXPECT_EQ(reading_of(Careful()), Careful());
}

TEST(CarefulSwitch, TextComesBack) {
  for (const char* text : {"blank-line on", "blank-line off", "all on", "all off", "thin-labels on"}) {
    const auto read = careful_switch(text);
    ASSERT_TRUE(read) << text;
    EXPECT_EQ(read->text(), text);
  }
  for (const char* text : {"", "on", "blank-line", "blank-line ", "blank-line maybe", "no-such on", " on"})
    EXPECT_FALSE(careful_switch(text)) << text;
}

TEST(CarefulSwitch, OfAllSwitchesAll) {
  Careful careful;
  CarefulSwitch{}.apply(careful);
  EXPECT_EQ(careful, Careful::everything());
  CarefulSwitch{.mend = Mend::help, .on = false}.apply(careful);
  EXPECT_FALSE(careful.has(Mend::help));
  EXPECT_TRUE(careful.has(Mend::blank_line));
  CarefulSwitch{.on = false}.apply(careful);
  EXPECT_FALSE(careful.any());
}

}  // namespace
}  // namespace vorn
