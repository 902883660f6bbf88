#include "study/ring_errors.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "study/error_pairs.h"
#include "study/lagged_sums.h"
#include "study/likely_years.h"

namespace vorn {
namespace {

constexpr int least_side = 3;  // pairs on each side of an error, so that its year can be told at all
constexpr int same_peak = 2;   // years to either side that belong to one peak

// How narrow the reference is in a year, as the logarithm of the weight of a ring missing then.
class NarrowYears {
 public:
  // Mean and deviation are those of the years given.
  NarrowYears(const SeriesView& reference, YearSpan years) : reference_(reference) {
    double sum = 0, squares = 0, count = 0;
    const auto each = [&](auto use) {
      for (std::int64_t year = years.first; year <= years.last; ++year) {
        if (usable(year)) use(reference.at(year));
      }
    };
    each([&](double value) { sum += value, ++count; });
    mean_ = count > 0 ? sum / count : 0;
    each([&](double value) { squares += (value - mean_) * (value - mean_); });
    deviation_ = count > 1 ? std::sqrt(squares / (count - 1)) : 0;
  }

  double weight_of(std::int64_t year) const {
    if (!(deviation_ > 0) || !usable(year)) return 0;
    const double z = (reference_.at(year) - mean_) / deviation_;
    return std::log(0.2 + 0.8 * std::exp(-1.9 * z - 1.8));
  }

 private:
  bool usable(std::int64_t year) const { return reference_.has(year) && std::isfinite(reference_.at(year)); }

  SeriesView reference_;
  double mean_ = 0, deviation_ = 0;
};

class Locator {
 public:
  Locator(const StudiedCore& core, const SeriesView& reference, const RingErrorSwitches& switches)
      : core_(core.compared.years()),
        sums_(core, reference),
        narrow_years_(reference, {core_.first - farthest_lag, core_.last + farthest_lag}),
        switches_(switches) {}

  RingErrors run() {
    const Sums dated = sums_.at(0).all();
    found_.years = static_cast<int>(dated.n);
    if (dated.n == 0) return found_;
    found_.r = dated.r();
    found_.score = best_unweighed_ = dated.score();
    for (const Correction kind : {Correction::insert, Correction::merge}) {
      for (const KeptEnd end : {KeptEnd::inner, KeptEnd::outer}) look_for(kind, end);
    }
    std::stable_sort(found_.candidates.begin(), found_.candidates.end(),
                     [](const auto& a, const auto& b) { return a.all > b.all; });
    if (switches_.pairs) look_for_pair();
    return found_;
  }

 private:
  Sums corrected(Correction kind, KeptEnd end, std::int64_t year) const {
    const Lags lags = lags_of(kind, end);
    const Sums left = sums_.at(lags.before).before(year), right = sums_.at(lags.behind).behind(year);
    if (left.n < least_side || right.n < least_side) return {};
    Sums sums = left + right;
    if (kind == Correction::merge) sums_.add_merged(sums, lags.before, year);
    return sums;
  }

  void look_for(Correction kind, KeptEnd end) {
    const bool weighed = switches_.narrow_years && kind == Correction::insert;
    Evidence evidence{kind, end, core_.first, {}};
    for (std::int64_t year = core_.first; year <= core_.last; ++year) {
      const Sums sums = corrected(kind, end, year);
      const double score = sums.n > 0 ? sums.score() : no_score;
      best_unweighed_ = std::max(best_unweighed_, score);
      evidence.scores.push_back(score + (weighed ? narrow_years_.weight_of(year) : 0));
    }
    if (const auto candidate = best_of(evidence)) found_.candidates.push_back(*candidate);
    found_.evidence.push_back(std::move(evidence));
  }

  std::optional<ErrorCandidate> best_of(const Evidence& evidence) const {
    const auto& scores = evidence.scores;
    const auto best = std::max_element(scores.begin(), scores.end());
    if (best == scores.end() || *best == no_score) return {};
    ErrorCandidate found{.kind = evidence.kind, .end = evidence.end};
    found.year = evidence.first + (best - scores.begin());
    found.score = *best;
    found.gain = *best - found_.score;
    found.r = corrected(found.kind, found.end, found.year).r();
    double second = no_score;
    std::vector<double> likelihoods;
    for (const double score : scores) {
      const std::int64_t year = evidence.first + static_cast<std::int64_t>(likelihoods.size());
      if (std::abs(year - found.year) > same_peak) second = std::max(second, score);
      likelihoods.push_back(std::exp(score - *best));
    }
    found.margin = *best - second;
    found.all = *best + std::log(std::accumulate(likelihoods.begin(), likelihoods.end(), 0.0));
    const YearSpan set = likely_years(likelihoods, evidence.first);
    found.from = set.first;
    found.to = set.last;
    return found;
  }

  // Without the weights of narrow years, two of which outdo what the values say.
  void look_for_pair() {
    std::optional<ErrorPair> pair = best_pair(sums_, core_);
    if (!pair) return;
    const double over_one = pair->gain - best_unweighed_;
    pair->gain -= found_.score;
    if (pair->gain >= gain_of_a_pair && over_one >= gain_of_a_second) found_.pair = pair;
  }

  YearSpan core_;
  LaggedSums sums_;
  NarrowYears narrow_years_;
  RingErrorSwitches switches_;
  double best_unweighed_ = 0;  // the score of the core as it is dated, or of the best single correction
  RingErrors found_;
};

}  // namespace

// Behind a ring that is put in, what is read lies one year earlier than before it.
Lags lags_of(Correction kind, KeptEnd end) {
  const int step = kind == Correction::insert ? -1 : 1;
  return end == KeptEnd::inner ? Lags{0, step} : Lags{-step, 0};
}

RingErrors ring_errors(const StudiedCore& core, const SeriesView& reference,
                       const RingErrorSwitches& switches) {
  return Locator(core, reference, switches).run();
}

}  // namespace vorn
