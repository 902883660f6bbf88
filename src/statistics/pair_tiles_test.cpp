#include "statistics/pair_tiles.h"

#include <gtest/gtest.h>
#include <hwy/highway.h>

#include <bit>
#include <cstdint>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "statistics/pair_correlations.h"
#include "support/test_store.h"

namespace vorn {
namespace {

// Makes the kernel run with one kind of vector instructions, until it goes.
class OnlyTarget {
 public:
  explicit OnlyTarget(std::int64_t target) { use(target); }
  ~OnlyTarget() { use(0); }  // all that there are
  OnlyTarget(const OnlyTarget&) = delete;
  OnlyTarget& operator=(const OnlyTarget&) = delete;

 private:
  static void use(std::int64_t targets) {
    hwy::SetSupportedTargetsForTest(targets);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
  }
};

// The kinds of vector instructions that the kernel was compiled for and that this machine has.
std::vector<std::int64_t> targets_here() {
  std::vector<std::int64_t> all;
  for (std::int64_t left = hwy::SupportedTargets() & HWY_TARGETS; left != 0; left &= left - 1) {
    all.push_back(left & -left);
  }
  return all;
}

std::vector<std::uint64_t> bits(const PairSums& sums) {
  std::vector<std::uint64_t> all = {std::bit_cast<std::uint64_t>(sums.sum),
                                    std::bit_cast<std::uint64_t>(sums.pairs)};
  for (const double sum : sums.sum_of) all.push_back(std::bit_cast<std::uint64_t>(sum));
  return all;
}

std::string printed(double mean) {
  char text[80];
  std::snprintf(text, sizeof text, "%.2f %.6g", mean, mean);
  return text;
}

// 330 series of 60 to 159 years from 400 years, none a round number: of seven tiles the last is not full.
// Some are constant for a time, so that pairs of theirs are left out of the tiles.
struct PairTiles : ::testing::Test {
  PairTiles() {
    for (unsigned i = 0; i < 330; ++i) {
      values.push_back(noise(static_cast<int>(60 + i * 7 % 100), i + 1));
      if (i % 11 == 0) std::fill_n(values.back().begin(), 45, 0.1);
    }
    for (unsigned i = 0; i < 330; ++i) series.push_back({static_cast<int>(i * 37 % 300), values[i]});
  }
  std::vector<std::vector<double>> values;
  std::vector<SeriesView> series;
};

// Whether a kind of vector instructions has a fused multiply-add.
bool is_fused(std::int64_t target) {
  std::int64_t without = HWY_SCALAR | HWY_EMU128 | HWY_SSSE3 | HWY_SSE4;
#ifdef HWY_SSE2  // newer versions of the library
  without |= HWY_SSE2;
#endif
  return (target & without) == 0;
}

// To the last bit two results are to be had: fused and not.
TEST_F(PairTiles, GiveTheSameBitsWithEveryKindOfVectorInstructionsThatFusesAlike) {
  const auto targets = targets_here();
  ASSERT_FALSE(targets.empty());
  std::map<bool, std::vector<std::uint64_t>> expected;
  std::string names;
  for (const std::int64_t target : targets) {
    const OnlyTarget only(target);
    const auto found = bits(pair_correlations_tiled(series, 40));
    const auto [known, is_new] = expected.try_emplace(is_fused(target), found);
    EXPECT_EQ(found, known->second) << hwy::TargetName(target);
    names += std::string(hwy::TargetName(target)) + " ";
  }
  RecordProperty("targets", names);
}

// What they give is what they give on every machine: there is no order of its own.
TEST_F(PairTiles, GiveTheseBitsOnEveryMachine) {
  for (const std::int64_t target : targets_here()) {
    const OnlyTarget only(target);
    const PairSums sums = pair_correlations_tiled(series, 40);
    EXPECT_EQ(sums.pairs, 21741);
    EXPECT_EQ(sums.sum, is_fused(target) ? 0x1.a2cb2f605b2bdp+1 : 0x1.a2cb2f605b27ep+1);
    EXPECT_EQ(sums.sum_of[329], is_fused(target) ? -0x1.c08192cf3a9ebp-1 : -0x1.c08192cf3a9fp-1);
  }
}

TEST_F(PairTiles, ArePrintedAlikeWithEveryKindOfVectorInstructions) {
  const PairSums plain = pair_correlations_plain(series, 40);
  for (const std::int64_t target : targets_here()) {
    const OnlyTarget only(target);
    const PairSums found = pair_correlations(series, 40);
    for (std::size_t i = 0; i < series.size(); ++i)
      EXPECT_EQ(printed(found.sum_of[i] / found.pairs_of[i]), printed(plain.sum_of[i] / plain.pairs_of[i]));
  }
}

// No result of these hangs on the machine.
TEST_F(PairTiles, RowsHaveTheBitsOfThePlainDefinitionWithEveryKindOfVectorInstructions) {
  const auto expected = bits(pair_correlations_plain(series, 40));
  for (const std::int64_t target : targets_here()) {
    const OnlyTarget only(target);
    EXPECT_EQ(bits(pair_correlations_in_rows(series, 40)), expected) << hwy::TargetName(target);
  }
}

}  // namespace
}  // namespace vorn
