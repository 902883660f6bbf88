#include "situation/series_copies.h"

#include <gtest/gtest.h>

#include "support/test_store.h"

namespace vorn {
namespace {

class SeriesCopies : public ::testing::Test {
 protected:
  SeriesCopies() {
    for (const char* name : {"ONE", "TWO", "THREE"}) store.add_tree(name, 1900, noise(12, 5), "++-+++++++++");
  }
  std::vector<SharedSeries> copies(const std::vector<SharedSeries>& before = {}) {
    return copies_of_cores(store.w, before);
  }
  static SharedSeries core(const std::string& name, int first, std::vector<double> widths) {
    const std::vector<std::uint8_t> all(widths.size(), 1);
    return std::make_shared<const SeriesCopy>(SeriesCopy{name, first, std::move(widths), all});
  }
  TestStore store;
};

TEST_F(SeriesCopies, HoldNameYearsWidthsAndPresence) {
  const SeriesCopy copy = copy_of(store.w, 2);
  EXPECT_EQ(copy.name, "TWO");
  EXPECT_EQ(copy.first_year, 1900);
  EXPECT_EQ(copy.last_year(), 1911);
  EXPECT_EQ(copy.widths, noise(12, 5));
  EXPECT_EQ(copy.presence[2], 0);
  EXPECT_EQ(copy.presence[3], 1);
}

TEST_F(SeriesCopies, ShareWhatWasNotChanged) {
  const auto before = copies();
  store.w.x(store.w.ad(2) + 3) += 1e-12;
  const auto after = copies(before);
  EXPECT_EQ(after[0], before[0]);
  EXPECT_NE(after[1], before[1]);
  EXPECT_EQ(after[2], before[2]);
}

TEST_F(SeriesCopies, AreSharedBehindADeletedCore) {
  const auto before = copies();
  TestStore fewer;
  for (const char* name : {"ONE", "THREE"}) fewer.add_tree(name, 1900, noise(12, 5), "++-+++++++++");
  const auto after = copies_of_cores(fewer.w, before);
  ASSERT_EQ(after.size(), 2u);
  EXPECT_EQ(after[0], before[0]);
  EXPECT_EQ(after[1], before[2]);
}

TEST_F(SeriesCopies, OfAnEntryWhoseStartLiesBeforeThePoolAreNoMistake) {
  store.w.ad(1) = 0;
  EXPECT_EQ(copy_of(store.w, 1).widths.size(), 12u);
  EXPECT_EQ(copy_of(store.w, 1).widths[0], 0);
}

TEST_F(SeriesCopies, TellWhatBecameOfEachCore) {
  const auto one = core("ONE", 1900, {1, 2, 3, 4}), two = core("TWO", 1900, {5, 6, 7});
  const auto gone = core("GONE", 1900, {1, 1}), made = core("MEAN", 1900, {3, 4});
  const auto dated = core("TWO", 1910, {5, 6, 7}), ring = core("ONE", 1900, {1, 2, 9, 3, 4});
  const auto changes = changes_between({one, two, gone}, {ring, dated, made});
  ASSERT_EQ(changes.size(), 4u);
  EXPECT_EQ(changes[0].kind, CoreChange::Kind::rings);
  EXPECT_EQ(changes[0].before, one);
  EXPECT_EQ(changes[0].after, ring);
  EXPECT_EQ(changes[1].kind, CoreChange::Kind::dated);
  EXPECT_EQ(changes[2].kind, CoreChange::Kind::made);
  EXPECT_FALSE(changes[2].before);
  EXPECT_EQ(changes[3].kind, CoreChange::Kind::gone);
  EXPECT_FALSE(changes[3].after);
}

TEST_F(SeriesCopies, KnowCoresOfOneNameByTheirOrder) {
  const auto first = core("SAME", 1900, {1, 2}), second = core("SAME", 1900, {3, 4});
  const auto changed = core("SAME", 1900, {3, 5});
  const auto changes = changes_between({first, second}, {first, changed});
  ASSERT_EQ(changes.size(), 1u);
  EXPECT_EQ(changes[0].kind, CoreChange::Kind::widths);
  EXPECT_EQ(changes[0].before, second);
}

TEST_F(SeriesCopies, FindNoChangeInEqualCopiesThatAreNotShared) {
  EXPECT_TRUE(changes_between({core("ONE", 1900, {1, 2})}, {core("ONE", 1900, {1, 2})}).empty());
}

TEST(InsertedYears, AreThoseOfTheLongerSeries) {
  const SeriesCopy shorter{"A", 1900, {1, 2, 3}, {1, 1, 1}};
  EXPECT_EQ(inserted_years(shorter, {"A", 1900, {1, 9, 2, 3}, {1, 0, 1, 1}}), std::vector{1901});
  EXPECT_EQ(inserted_years(shorter, {"A", 1899, {9, 1, 2, 8, 3}, {1, 1, 1, 1, 1}}),
            (std::vector{1899, 1902}));
  EXPECT_TRUE(inserted_years(shorter, {"A", 1900, {1, 9, 3, 4}, {1, 1, 1, 1}}).empty());
  EXPECT_TRUE(inserted_years(shorter, shorter).empty());
}

}  // namespace
}  // namespace vorn
