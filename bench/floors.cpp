#include "floors.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "chronology/burg_model.h"
#include "statistics/tree_correlations.h"

namespace vorn::bench {
namespace {

using Years = std::pair<int, int>;  // the first and the last

// What has the same years in common.
struct Meeting {
  double pairs = 0, series = 0;
  Years latest{1, 0};  // the series that were added last: they come one after the other

  void add(const Years& own, double count, double more) {
    pairs += more;
    if (latest != own) series += count;
    latest = own;
  }
};

}  // namespace

double Floors::rings() const {
  return w.ad(w.nc + 1) - 1;
}

double Floors::file_bytes() const {
  double bytes = 0;
  for (int f = 1; f <= w.nfil; ++f) {
    bytes += static_cast<double>(std::filesystem::file_size(std::string(w.cnam(f).trimmed())));
  }
  return bytes;
}

double Floors::recognising() const {
  return w.nfil / rates_.files;
}

double Floors::reading() const {
  return file_bytes() / rates_.scanned;
}

double Floors::estimates() const {
  return rings() * 9 / rates_.bytes;
}

double Floors::spline() const {
  return rings() * 9 / rates_.multiply_adds;
}

// An order is tried behind the one that is chosen; of a model that was dropped at least two were.
double Floors::model() const {
  double work = 0;
  std::vector<double> coefficients(max_ar_order);
  for (int i = 1; i <= w.nc; ++i) {
    const auto index = w.tx.range(w.ad(i), w.yr(i));
    const int order = memcof2(index, w.jpr, coefficients).order;
    work += w.yr(i) * (5.0 * std::max(order + 1, 2) + order);
  }
  return work / rates_.multiply_adds;
}

double Floors::logarithm() const {
  return rings() / rates_.logarithms;
}

// A root and a division a pair; or a series, where a series has the same years in common with many.
double Floors::pairs() const {
  std::map<Years, double> series_of;
  int longest = 0;
  for (int i = 1; i <= w.nc; ++i) {
    ++series_of[{w.fy(i), w.ly(i)}];
    longest = std::max(longest, w.yr(i));
  }
  double work = 0;
  std::map<Years, Meeting> meetings;
  for (const auto& [own, count] : series_of) {
    for (auto at = series_of.lower_bound({own.first - longest, own.first - longest}); at != series_of.end();
         ++at) {
      const auto& [other, others] = *at;
      if (other.first > own.second) break;
      const Years common{std::max(own.first, other.first), std::min(own.second, other.second)};
      const int years = common.second - common.first + 1;
      const double pairs = count * (other == own ? count - 1 : others) / 2;  // each is met from both sides
      if (years < fewest_common_years || pairs == 0) continue;
      work += pairs * years;
      meetings[common].add(own, count, pairs);
    }
  }
  double ends = 0;
  for (const auto& [common, meeting] : meetings) ends += std::min(meeting.pairs, meeting.series);
  return work / rates_.multiply_adds + ends / rates_.pair_ends;
}

double Floors::with_rest() const {
  return rings() * 3 / rates_.multiply_adds;
}

double Floors::segment_cells() const {
  double work = 0;
  for (int i = 1; i <= w.nd; ++i) work += 3.0 * w.seg * std::max(w.yr(i) / w.olap, 1);
  return work / rates_.multiply_adds;
}

double Floors::lag_table() const {
  const int common = std::min(w.ly(w.nd + 1), w.ly(w.nd + 2)) - std::max(w.fy(w.nd + 1), w.fy(w.nd + 2)) + 1;
  const int segments = std::clamp(common / std::max(w.seg - w.olap, 1), 1, max_segments);
  return 3.0 * w.seg * (2 * max_lag + 1) * segments / rates_.multiply_adds;
}

double Floors::best_match() const {
  const int length = std::max(w.seg, w.yr(w.nd + 1) / 8);
  const double places = std::max(w.yr(w.nd + 2) - length + 1, 0);
  return places * std::max(w.yr(w.nd + 1), length) / rates_.multiply_adds;
}

// Twice as many numbers lie in a vector.
double Floors::single_precision(double multiply_adds) const {
  return multiply_adds / (2 * rates_.multiply_adds);
}

double Floors::start() const {
  // The store holds the first file; the others are taken to be like it.
  return rates_.start + recognising() + reading() +
         w.nfil * (estimates() + spline() + model() + logarithm()) + pairs() + with_rest();
}

}  // namespace vorn::bench
