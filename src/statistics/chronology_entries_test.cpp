#include "statistics/chronology_entries.h"

#include <gtest/gtest.h>

#include "support/test_store.h"

namespace vorn {
namespace {

TEST(ChronologyName, IsTheFileNameWithoutPathAndExtensionCutToEight) {
  EXPECT_EQ(chronology_name("dir/abcdefghij.crn").view(), "abcdefgh");
  EXPECT_EQ(chronology_name("ab.crn").view(), "ab      ");
  EXPECT_EQ(chronology_name("a/b\\c/oak.rwl").view(), "oak     ");
  EXPECT_EQ(chronology_name("c:\\data\\pine.txt").view(), "pine    ");
}

TEST(ChronologyName, LosesItsExtensionBeforeItsPath) {
  EXPECT_EQ(chronology_name("dir/ab").view(), "di      ");  // "/ab" and one more go first
  EXPECT_EQ(chronology_name("dir/a.crn").view(), "a       ");
  EXPECT_EQ(chronology_name("dir/.crn").view(), "        ");
  EXPECT_EQ(chronology_name("abc").view(), "        ");
  EXPECT_EQ(chronology_name("").view(), "        ");
}

TEST(ChronologyEntries, CountThoseThatFindNoRoom) {
  TestStore store;
  store.w.nc = 2;
  for (int file = 1; file <= 3; ++file) store.set_chronology(file, "a.rwl", 1900, {1, 2}, {1, 1});
  store.w.ad(3) = max_pool - 2;  // room for three values
  EXPECT_EQ(place_chronologies(store.w, store.w), 2);
  EXPECT_EQ(store.w.nd, 5);
  EXPECT_EQ(store.w.yr(3), 2);
  EXPECT_EQ(store.w.yr(4), 0);
  EXPECT_EQ(store.w.yr(5), 0);
  store.w.ad(3) = max_pool - 5;
  EXPECT_EQ(place_chronologies(store.w, store.w), 0);
  EXPECT_EQ(store.w.ad(6), max_pool + 1);
}

}  // namespace
}  // namespace vorn
