#include "study/core_move.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "statistics/correlation.h"
#include "statistics/tree_correlations.h"

namespace vorn {
namespace {

// The sum of some correlations of pairs, and their number.
struct Pairwise {
  double sum = 0, pairs = 0;
};

void add_pair(Pairwise& all, const SeriesView& a, const SeriesView& b) {
  const YearSpan years = common(a.years(), b.years());
  if (years.count() < fewest_common_years) return;
  all.sum += cov(a.over(years).values, b.over(years).values);
  ++all.pairs;
}

Pairwise among(std::span<const SeriesView> cores) {
  Pairwise all;
  for (std::size_t i = 0; i < cores.size(); ++i) {
    for (std::size_t j = i + 1; j < cores.size(); ++j) add_pair(all, cores[i], cores[j]);
  }
  return all;
}

// Cores that have enough years in common with another one. Those that have not say nothing of the signal.
std::size_t count_of_paired(std::span<const SeriesView> cores) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < cores.size(); ++i) {
    for (std::size_t j = 0; j < cores.size(); ++j) {
      if (i == j || common(cores[i].years(), cores[j].years()).count() < fewest_common_years) continue;
      ++count;
      break;
    }
  }
  return count;
}

std::optional<double> mean_r(std::span<const SeriesView> cores, const ChronologyParts& chronology) {
  double sum = 0, count = 0;
  for (const SeriesView& core : cores) {
    if (core.values.empty()) continue;
    const auto r = chronology.correlation(core);
    if (!r) continue;
    sum += *r;
    ++count;
  }
  return count > 0 ? std::optional(sum / count) : std::nullopt;
}

FileAgreement agreement(std::span<const SeriesView> cores, const ChronologyParts& chronology, Pairwise all) {
  FileAgreement found{cores.size(), mean_r(cores, chronology), {}, {}};
  if (all.pairs < 1 || !std::isfinite(all.sum)) return found;
  found.rbar = all.sum / all.pairs;
  const auto n = static_cast<double>(count_of_paired(cores));
  const double eps = n * *found.rbar / (1 + (n - 1) * *found.rbar);
  if (std::isfinite(eps)) found.eps = eps;
  return found;
}

bool differs_anywhere(const SeriesView& widths) {
  std::optional<double> first;
  for (std::int64_t year = widths.first; year <= widths.years().last; ++year) {
    if (!widths.has(year)) continue;
    if (first && widths.at(year) != *first) return true;
    if (!first) first = widths.at(year);
  }
  return false;
}

}  // namespace

AgreeingFile::AgreeingFile(std::vector<SeriesView> compared, const PairWork& work)
    : cores_(std::move(compared)),
      pairs_(pair_correlations(cores_, fewest_common_years, work)),
      chronology_(cores_) {}

FileAgreement AgreeingFile::now() const {
  return agreement(cores_, chronology_, {pairs_.sum, pairs_.pairs});
}

FileAgreement AgreeingFile::without(std::span<const std::size_t> leaving) const {
  ChronologyParts chronology = chronology_;
  Pairwise all{pairs_.sum, pairs_.pairs};
  std::vector<SeriesView> gone, stay = cores_;
  for (const std::size_t k : leaving) {
    chronology.take(cores_[k]);
    all.sum -= pairs_.sum_of[k];
    all.pairs -= pairs_.pairs_of[k];
    gone.push_back(cores_[k]);
  }
  const Pairwise twice = among(gone);  // were taken with either of the two
  std::vector<std::size_t> order(leaving.begin(), leaving.end());
  std::ranges::sort(order, std::ranges::greater());
  for (const std::size_t k : order) stay.erase(stay.begin() + static_cast<std::ptrdiff_t>(k));
  return agreement(stay, chronology, {all.sum + twice.sum, all.pairs + twice.pairs});
}

FileAgreement AgreeingFile::with(std::span<const SeriesView> joining) const {
  std::vector<SeriesView> cores = cores_;
  Pairwise all = among(joining);
  all.sum += pairs_.sum;
  all.pairs += pairs_.pairs;
  for (const SeriesView& core : joining) {
    for (const SeriesView& other : cores_) add_pair(all, core, other);
  }
  cores.insert(cores.end(), joining.begin(), joining.end());
  return agreement(cores, ChronologyParts(cores), all);
}

std::vector<SeriesView> those_that_count(std::span<const SeriesView> widths,
                                         std::span<const SeriesView> compared, const Careful& careful) {
  std::vector<SeriesView> all(compared.begin(), compared.end());
  if (!careful.has(Mend::constant_series)) return all;
  for (std::size_t k = 0; k < all.size(); ++k) {
    const bool is_one = widths[k].values.size() > 1 && !differs_anywhere(widths[k]);
    if (is_one || !std::ranges::all_of(all[k].values, [](double value) { return std::isfinite(value); }))
      all[k] = {all[k].first, {}, {}};
  }
  return all;
}

}  // namespace vorn
