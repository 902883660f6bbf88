#include "statistics/overlaps.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace vorn {
namespace {

constexpr std::size_t word_bits = 64;

}  // namespace

Overlaps::Overlaps(std::span<const SeriesView> series, std::int64_t fewest_years)
    : fewest_years_(fewest_years), marks_((series.size() + word_bits - 1) / word_bits, 0) {
  placed_.reserve(series.size());
  for (std::size_t i = 0; i < series.size(); ++i) {
    const YearSpan years = series[i].years();
    placed_.push_back({years.first, years.last, i});
    if (years.count() < fewest_years) continue;
    by_first_.push_back(placed_.back());
    most_years_ = std::max(most_years_, years.count());
  }
  std::ranges::sort(by_first_, {}, [](const Placed& one) { return std::pair(one.first, one.number); });
  found_.reserve(series.size());
}

std::span<const std::size_t> Overlaps::behind(std::size_t i) {
  const Placed& one = placed_[i];
  if (one.last - one.first + 1 < fewest_years_) return {};
  // None that starts earlier reaches far enough into this one.
  const std::int64_t earliest = one.first + fewest_years_ - most_years_;
  const std::int64_t latest = one.last - fewest_years_ + 1, reached = one.first + fewest_years_ - 1;
  for (auto other = std::ranges::lower_bound(by_first_, earliest, {}, &Placed::first);
       other != by_first_.end() && other->first <= latest; ++other) {
    if (other->number > i && other->last >= reached) mark(*other);
  }
  return marked();
}

void Overlaps::mark(const Placed& one) {
  marks_[one.number / word_bits] |= std::uint64_t{1} << one.number % word_bits;
}

// Takes the marks away.
std::span<const std::size_t> Overlaps::marked() {
  found_.clear();
  for (std::size_t w = 0; w < marks_.size(); ++w) {
    for (std::uint64_t word = std::exchange(marks_[w], 0); word != 0; word &= word - 1)
      found_.push_back(w * word_bits + static_cast<std::size_t>(std::countr_zero(word)));
  }
  return found_;
}

}  // namespace vorn
