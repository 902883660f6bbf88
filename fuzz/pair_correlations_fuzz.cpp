// The correlations of every pair of many series: the fast way against the plain definition.
//
// Input: a byte for the fewest years in common; then for each series, at most 48, a byte for its first year,
// one for its length and one for its kind, and what that kind takes: noise (0), a constant (1), a period (2),
// the series before with other size and level (3), values of which every byte is one (4), noise with values
// that are not finite (5), noise about a level that is far larger (6).
//
// What must hold: the same pairs are counted; the mean of each series' correlations, and that of all, are the
// same to within 1e-8, or both are no numbers. In rows they are the same to the last bit.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "statistics/pair_correlations.h"
#include "target.h"

namespace vorn::fuzz {
namespace {

constexpr std::size_t most_series = 48;
constexpr double most_error = 1e-8;

struct Series {
  std::int64_t first = 0;
  std::vector<double> values;
};

class Noise {
 public:
  explicit Noise(int seed) : state_(static_cast<std::uint32_t>(seed) * 2654435761u + 1u) {}
  double next() {
    state_ = state_ * 1664525u + 1013904223u;
    return static_cast<double>(state_ >> 8) / 16777216.0;
  }

 private:
  std::uint32_t state_;
};

double special(int which) {
  constexpr double inf = std::numeric_limits<double>::infinity();
  constexpr double all[] = {inf, -inf, std::numeric_limits<double>::quiet_NaN(), 1e300, -1e300, 1e-300, 0.0};
  return all[which % 7];
}

double scale(int byte) {
  return std::pow(10.0, byte % 16 - 8);
}

Series next_series(Bytes& bytes, const Series& before) {
  Series series{bytes.byte() % 64, {}};
  const int length = bytes.byte(), kind = bytes.byte() % 7;
  const int one = kind == 4 ? 0 : bytes.byte(), two = kind == 4 ? 0 : bytes.byte();
  Noise noise(one);
  for (int k = 0; k < length; ++k) {
    const auto at = static_cast<std::size_t>(k);
    const double old = at < before.values.size() ? before.values[at] : 0.0;
    switch (kind) {
      case 0:
        series.values.push_back(scale(two) * (noise.next() - 0.5));
        break;
      case 1:
        series.values.push_back(scale(two) * one);
        break;
      case 2:
        series.values.push_back(scale(two) * std::sin(k * one / 20.0));
        break;
      case 3:
        series.values.push_back(scale(two) * old + one);
        break;
      case 4:
        series.values.push_back(bytes.byte() / 100.0);
        break;
      case 5:
        series.values.push_back(k % (1 + one) == two % (1 + one) ? special(one + two) : noise.next());
        break;
      default:
        series.values.push_back(scale(two) + noise.next());
        break;
    }
  }
  return series;
}

// In rows to the last bit; what is no number need not be the same one.
void must_be_same(double rows, double plain) {
  must_hold(std::bit_cast<std::uint64_t>(rows) == std::bit_cast<std::uint64_t>(plain) ||
                (std::isnan(rows) && std::isnan(plain)),
            "rows have the sums of the plain definition");
}

// The means of sums over so many pairs, as the reports print them.
void must_agree(double fast, double plain, double pairs, const char* what) {
  if (!std::isfinite(plain) || !std::isfinite(fast)) {
    must_hold(std::isfinite(plain) == std::isfinite(fast), what);
    return;
  }
  must_hold(std::abs(fast - plain) <= most_error * std::max(pairs, 1.0), what);
}

}  // namespace
}  // namespace vorn::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorn;
  using namespace vorn::fuzz;
  Bytes bytes(as_text(data, size));
  const int fewest_years = 1 + bytes.byte() % 64;
  std::vector<Series> series;
  while (!bytes.empty() && series.size() < most_series) {
    series.push_back(next_series(bytes, series.empty() ? Series() : series.back()));
  }
  std::vector<SeriesView> dated;
  for (const Series& one : series) dated.push_back({one.first, one.values});

  const PairSums plain = pair_correlations_plain(dated, fewest_years);
  const PairSums fast = pair_correlations_tiled(dated, fewest_years);
  must_hold(fast.pairs == plain.pairs, "as many pairs are counted");
  must_agree(fast.sum, plain.sum, plain.pairs, "the mean of all correlations is the same");
  for (std::size_t i = 0; i < series.size(); ++i) {
    must_hold(fast.pairs_of[i] == plain.pairs_of[i], "as many pairs of a series are counted");
    must_agree(fast.sum_of[i], plain.sum_of[i], plain.pairs_of[i], "the mean of a series is the same");
  }

  const PairSums rows = pair_correlations_in_rows(dated, fewest_years, {{}, 1});
  must_hold(rows.pairs_of == plain.pairs_of, "as many pairs are counted in rows");
  must_be_same(rows.sum, plain.sum);
  for (std::size_t i = 0; i < series.size(); ++i) must_be_same(rows.sum_of[i], plain.sum_of[i]);
  return 0;
}
