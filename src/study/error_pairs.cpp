#include "study/error_pairs.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "study/likely_years.h"

namespace vorn {
namespace {

constexpr int least_end = 5;       // pairs of values before and behind both errors
constexpr int least_between = 15;  // and between them: a few years that disagree look like two errors
constexpr std::int64_t all_years_to = 400;    // years of a core up to which every pair of years is tried
constexpr std::int64_t around_the_best = 50;  // years to either side that can take part in the sets

using Places = std::pair<std::int64_t, std::int64_t>;  // of both errors, from 0 in the core

// All pairs of years for two errors of given kinds. What a pair of years adds up to falls into two parts, one
// of each year.
class PairOfKinds {
 public:
  // Read from the kept end, the first correction shifts what lies behind it, the second what lies behind
  // both.
  PairOfKinds(const LaggedSums& sums, YearSpan core, const ErrorPair& kinds)
      : kinds_(kinds), first_(core.first), years_(core.count()), most_(static_cast<double>(years_)) {
    const Lags early = lags_of(kinds.kinds[0], kinds.end), late = lags_of(kinds.kinds[1], kinds.end);
    const int between = early.behind + late.before;
    const int before = between + early.before - early.behind, behind = between + late.behind - late.before;
    const RunningSums &left = sums.at(before), &middle = sums.at(between), &right = sums.at(behind);
    for (std::int64_t year = core.first; year <= core.last; ++year) {
      Sums head = left.before(year) - middle.before(year + 1);
      Sums tail = middle.before(year) + right.behind(year);
      if (kinds.kinds[0] == Correction::merge) sums.add_merged(head, before, year);
      if (kinds.kinds[1] == Correction::merge) sums.add_merged(tail, between, year);
      head_.push_back(head);
      tail_.push_back(tail);
      up_to_.push_back(middle.before(year).n);
      if (left.before(year).n < least_end) earliest_ = year - first_ + 1;
      if (right.behind(year).n >= least_end) latest_ = year - first_;
    }
  }

  // Tries every pair of places `step` apart within `span` years of `near`, and keeps the best.
  void look(std::int64_t step, Places near, std::int64_t span) {
    const auto [from, to] = range(near.first, span);
    for (std::int64_t k = from; k <= to; k += step) {
      const auto [other_from, other_to] = range(near.second, span);
      for (std::int64_t m = std::max(k + least_between, other_from); m <= other_to; m += step)
        try_places(k, m);
    }
  }

  double score() const { return score_; }
  Places places() const { return best_; }

  ErrorPair pair() const {
    ErrorPair found = kinds_;
    found.r = sums_of(best_.first, best_.second).r();
    found.gain = score_;
    const auto [early_from, early_to] = range(best_.first, around_the_best);
    const auto [late_from, late_to] = range(best_.second, around_the_best);
    std::vector<double> early(static_cast<std::size_t>(early_to - early_from + 1), 0.0);
    std::vector<double> late(static_cast<std::size_t>(late_to - late_from + 1), 0.0);
    for (std::int64_t k = early_from; k <= early_to; ++k) {
      for (std::int64_t m = std::max(k + least_between, late_from); m <= late_to; ++m) {
        if (between(k, m) < least_between) continue;
        const double likelihood = std::exp(sums_of(k, m).score() - score_);
        early[static_cast<std::size_t>(k - early_from)] += likelihood;
        late[static_cast<std::size_t>(m - late_from)] += likelihood;
      }
    }
    found.years[0] = likeliest_year(early, first_ + early_from);
    found.years[1] = likeliest_year(late, first_ + late_from);
    found.sets[0] = likely_years(early, first_ + early_from);
    found.sets[1] = likely_years(late, first_ + late_from);
    return found;
  }

 private:
  Places range(std::int64_t near, std::int64_t span) const {
    return {std::max(near - span, earliest_), std::min(near + span, latest_)};
  }
  const Sums& head(std::int64_t k) const { return head_[static_cast<std::size_t>(k)]; }
  const Sums& tail(std::int64_t k) const { return tail_[static_cast<std::size_t>(k)]; }
  Sums sums_of(std::int64_t k, std::int64_t m) const { return head(k) + tail(m); }
  double between(std::int64_t k, std::int64_t m) const {
    return up_to_[static_cast<std::size_t>(m)] - up_to_[static_cast<std::size_t>(k + 1)];
  }

  // No logarithm for a pair that leaves so much unexplained that it cannot be the best.
  void try_places(std::int64_t k, std::int64_t m) {
    if (between(k, m) < least_between) return;
    const Sums sums = sums_of(k, m);
    if (sums.unexplained() > enough_) return;
    const double score = sums.score();
    if (score <= score_) return;
    score_ = score;
    best_ = {k, m};
    enough_ = std::exp(-2 * score / (most_ + farthest_lag));
  }

  ErrorPair kinds_;
  std::int64_t first_, years_;
  double most_;                              // pairs of values that there can be
  std::vector<Sums> head_, tail_;            // by the place of the earlier error, of the later one
  std::vector<double> up_to_;                // pairs of values before a place, read as between the errors
  std::int64_t earliest_ = 0, latest_ = -1;  // places that leave enough before and behind
  Places best_ = {0, 0};
  double score_ = no_score;
  double enough_ = 1;  // the best pair leaves no more unexplained
};

// With one ring too few and one too many both ends keep their years: that is tried once.
std::vector<ErrorPair> kinds_of_pairs() {
  using enum Correction;
  return {
      {.kinds = {insert, insert}, .end = KeptEnd::inner}, {.kinds = {insert, insert}, .end = KeptEnd::outer},
      {.kinds = {merge, merge}, .end = KeptEnd::inner},   {.kinds = {merge, merge}, .end = KeptEnd::outer},
      {.kinds = {insert, merge}, .end = KeptEnd::inner},  {.kinds = {merge, insert}, .end = KeptEnd::inner}};
}

}  // namespace

std::optional<ErrorPair> best_pair(const LaggedSums& sums, YearSpan core) {
  const std::int64_t step = (core.count() - 1) / all_years_to + 1;
  std::optional<PairOfKinds> best;
  for (const ErrorPair& kinds : kinds_of_pairs()) {
    PairOfKinds pair(sums, core, kinds);
    pair.look(step, {0, 0}, core.count());
    if (step > 1 && pair.score() > no_score) pair.look(1, pair.places(), 2 * step);
    if (pair.score() > (best ? best->score() : no_score)) best = std::move(pair);
  }
  if (!best) return {};
  return best->pair();
}

}  // namespace vorn
