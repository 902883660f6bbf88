#include "study/reference.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <vector>

namespace vorn {
namespace {

constexpr std::array<bool, 4> all_present = {true, true, true, true};
constexpr std::array<bool, 4> one_missing = {true, true, false, true};

class FourCores : public ::testing::Test {
 protected:
  // Years 1900 to 1903, the last core a year later; the second lacks its third ring.
  const std::vector<std::vector<double>> values_ = {
      {1, 2, 3, 4}, {3, 4, 99, 6}, {5, 6, 7, 8}, {10, 20, 30, 40}};
  const std::vector<SeriesView> cores_ = {{1900, values_[0], all_present},
                                          {1900, values_[1], one_missing},
                                          {1900, values_[2], all_present},
                                          {1901, values_[3], all_present}};
};

TEST_F(FourCores, AReferenceIsTheMeanOfTheOthersPresentRings) {
  const Reference reference(cores_, 0, 1);
  const SeriesView mean = reference.view();
  EXPECT_EQ(mean.first, 1900);
  EXPECT_EQ(mean.years().last, 1904);
  EXPECT_DOUBLE_EQ(mean.at(1900), 4);         // 3, 5
  EXPECT_DOUBLE_EQ(mean.at(1901), 20.0 / 3);  // 4, 6, 10
  EXPECT_DOUBLE_EQ(mean.at(1902), 13.5);      // 7, 20; the missing 99 does not count
  EXPECT_DOUBLE_EQ(mean.at(1903), (6 + 8 + 30) / 3.0);
  EXPECT_DOUBLE_EQ(mean.at(1904), 40);
}

TEST_F(FourCores, YearsOfTooFewRingsDoNotCount) {
  const Reference reference(cores_, 0);
  const SeriesView mean = reference.view();
  EXPECT_FALSE(mean.has(1900));
  EXPECT_TRUE(mean.has(1901));
  EXPECT_FALSE(mean.has(1902));
  EXPECT_TRUE(mean.has(1903));
  EXPECT_FALSE(mean.has(1904));
  EXPECT_FALSE(mean.has(1800));
}

TEST(Reference, TakesNoValueThatIsNoNumber) {
  const std::vector<double> good = {1, 3}, bad = {std::log(0.0), 5};
  const std::vector<SeriesView> cores = {{1900, good}, {1900, bad}};
  const Reference reference(cores, 2, 1);
  EXPECT_DOUBLE_EQ(reference.view().at(1900), 1);
  EXPECT_DOUBLE_EQ(reference.view().at(1901), 4);
}

TEST_F(FourCores, WithNoneLeftOutAllCount) {
  EXPECT_DOUBLE_EQ(Reference(cores_, cores_.size(), 1).view().at(1900), 3);
}

TEST_F(FourCores, OfOneCoreThereAreNoOthers) {
  const Reference reference(std::span<const SeriesView>(cores_).first(1), 0, 1);
  EXPECT_TRUE(reference.view().values.empty());
  EXPECT_FALSE(reference.view().has(1900));
}

}  // namespace
}  // namespace vorn
