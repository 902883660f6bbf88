#include "workspace/fingerprint.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <vector>

namespace vorn {
namespace {

using Rows = std::vector<std::vector<double>>;

Fingerprint of(const Rows& rows) {
  Fingerprint all;
  for (const auto& row : rows) all.add(row);
  return all;
}

TEST(Fingerprint, IsTheSameOfTheSameNumbers) {
  EXPECT_EQ(of({{1, 2}, {3}}), of({{1, 2}, {3}}));
  EXPECT_EQ(of({}), of({}));
  const double none = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(of({{none}}), of({{none}}));
}

TEST(Fingerprint, TellsRowsApartThatDifferInABitAnOrderOrAnEnd) {
  const std::vector<Rows> all = {{},
                                 {{}},
                                 {{}, {}},
                                 {{0.0}},
                                 {{-0.0}},
                                 {{0.0, 0.0}},
                                 {{1, 2}, {3}},
                                 {{1, 2, 3}},
                                 {{1}, {2, 3}},
                                 {{2, 1}, {3}},
                                 {{3}, {1, 2}},
                                 {{std::nextafter(1.0, 2.0), 2}, {3}},
                                 {{1, 2}, {4}},
                                 {{1, 2}, {-3}}};
  for (std::size_t i = 0; i < all.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) EXPECT_NE(of(all[i]), of(all[j])) << i << " " << j;
  }
}

// Each of the 64 bits of each number counts.
TEST(Fingerprint, SeesEveryBit) {
  std::vector<Fingerprint> seen;
  for (int place = 0; place < 20; ++place) {
    for (int bit = 0; bit < 64; ++bit) {
      Fingerprint one;
      for (int k = 0; k < 20; ++k) one.add(k == place ? std::uint64_t{1} << bit : 0u);
      EXPECT_EQ(std::count(seen.begin(), seen.end(), one), 0) << place << " " << bit;
      seen.push_back(one);
    }
  }
}

}  // namespace
}  // namespace vorn
