#include "study/ring_alignment.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "base/loud_failure.h"

namespace vorn {
namespace {

constexpr int nowhere = std::numeric_limits<int>::min() / 2;

// How far from the outer ends back to the inner ones a number of changes leads. On diagonal k, where what is
// left of AFTER has k rings more than what is left of BEFORE, that is the greatest number of BEFORE's rings
// that so many changes account for; any smaller number needs no more of them.
class Reach {
 public:
  Reach(const RingWidths& before, const RingWidths& after)
      : before_(before),
        after_(after),
        n_(static_cast<int>(before.mm.size())),
        m_(static_cast<int>(after.mm.size())) {}

  // Finds the least number of changes. Answers false where it is more than `most`.
  bool find(int most);
  // After that: how they go from the inner ends.
  std::vector<RingStep> steps(std::optional<std::int64_t> same_year);

 private:
  // The diagonals that matter after some changes: with those left over they lead to the inner ends.
  struct Level {
    int lowest = 0;
    std::vector<int> rings;
  };
  Level level(int changes, int most) const;
  int rings_at(int changes, int diagonal) const;
  int with_one_more(int changes, int diagonal) const;
  int extended(int rings, int diagonal) const;
  // Whether so many changes make the rings of BEFORE from i on those of AFTER from j on.
  bool suffice(int changes, int i, int j) const {
    return changes >= 0 && rings_at(changes, (m_ - j) - (n_ - i)) >= n_ - i;
  }
  // Of the ways with the fewest changes from ring i of BEFORE and j of AFTER on the one in which most kept
  // rings keep their years: how many. Nothing where other than so many changes are needed, or no such way
  // leads there.
  std::optional<int> years_kept(int changes, int i, int j) const;
  std::optional<int> most_years_kept(int changes, int i, int j) const;
  void count_years_kept();
  int counts(int i, int j) const { return same_year_ && j - i == *same_year_ && same(i, j) ? 1 : 0; }
  bool same(int i, int j) const {
    return same_ring(before_, static_cast<std::size_t>(i), after_, static_cast<std::size_t>(j));
  }

  const RingWidths& before_;
  const RingWidths& after_;
  int n_, m_;
  std::vector<Level> levels_;  // by changes
  std::optional<std::int64_t> same_year_;

  // On a diagonal the rings left, from `first` on, that need so many changes and no fewer.
  struct Run {
    int first = 0;
    std::vector<int> years_kept;
  };
  struct Runs {
    int lowest = 0;
    std::vector<Run> all;
  };
  std::vector<Runs> years_kept_;  // by changes
};

int Reach::rings_at(int changes, int diagonal) const {
  const Level& all = levels_[static_cast<std::size_t>(changes)];
  const int k = diagonal - all.lowest;
  if (k < 0 || k >= static_cast<int>(all.rings.size())) return nowhere;
  return all.rings[static_cast<std::size_t>(k)];
}

int Reach::with_one_more(int changes, int diagonal) const {
  if (changes == 0) return 0;
  const int changed = rings_at(changes - 1, diagonal) + 1;
  const int inserted = rings_at(changes - 1, diagonal - 1);
  const int deleted = rings_at(changes - 1, diagonal + 1) + 1;
  return std::min({std::max({changed, inserted, deleted}), n_, m_ - diagonal});
}

int Reach::extended(int rings, int diagonal) const {
  while (rings < n_ && rings + diagonal < m_ && same(n_ - 1 - rings, m_ - 1 - rings - diagonal)) ++rings;
  return rings;
}

Reach::Level Reach::level(int changes, int most) const {
  const int left = most - changes, last = m_ - n_;
  Level made{std::max({-changes, -n_, last - left}), {}};
  const int highest = std::min({changes, m_, last + left});
  for (int k = made.lowest; k <= highest; ++k) made.rings.push_back(extended(with_one_more(changes, k), k));
  return made;
}

bool Reach::find(int most) {
  levels_.clear();
  for (int changes = 0; changes <= most; ++changes) {
    levels_.push_back(level(changes, most));
    if (suffice(changes, 0, 0)) return true;
  }
  return false;
}

std::optional<int> Reach::years_kept(int changes, int i, int j) const {
  if (changes < 0) return std::nullopt;
  const Runs& runs = years_kept_[static_cast<std::size_t>(changes)];
  const int k = (m_ - j) - (n_ - i) - runs.lowest;
  if (k < 0 || k >= static_cast<int>(runs.all.size())) return std::nullopt;
  const Run& run = runs.all[static_cast<std::size_t>(k)];
  const int ring = n_ - i - run.first;
  if (ring < 0 || ring >= static_cast<int>(run.years_kept.size())) return std::nullopt;
  return run.years_kept[static_cast<std::size_t>(ring)];
}

std::optional<int> Reach::most_years_kept(int changes, int i, int j) const {
  if (i == n_ && j == m_) return 0;
  std::optional<int> most;
  const auto take = [&](std::optional<int> rest, int more) {
    if (rest) most = std::max(most.value_or(0), *rest + more);
  };
  if (i < n_ && j < m_) take(years_kept(changes - (same(i, j) ? 0 : 1), i + 1, j + 1), counts(i, j));
  if (i < n_) take(years_kept(changes - 1, i + 1, j), 0);
  if (j < m_) take(years_kept(changes - 1, i, j + 1), 0);
  return most;
}

// From the outer ends inwards. Diagonals from which the changes left over do not lead to the inner ends do
// not matter.
void Reach::count_years_kept() {
  const int fewest = static_cast<int>(levels_.size()) - 1, last = m_ - n_;
  years_kept_.clear();
  for (int changes = 0; changes <= fewest; ++changes) {
    const int left = fewest - changes;
    const Level& level = levels_[static_cast<std::size_t>(changes)];
    const int lowest = std::max(level.lowest, last - left);
    const int highest = std::min(level.lowest + static_cast<int>(level.rings.size()) - 1, last + left);
    years_kept_.push_back({lowest, {}});
    for (int k = lowest; k <= highest; ++k) {
      const int fewer = changes == 0 ? nowhere : rings_at(changes - 1, k);
      const int first = std::max({fewer + 1, 0, -k});
      years_kept_.back().all.push_back({first, {}});
      for (int rings = first; rings <= rings_at(changes, k); ++rings) {
        const auto most = most_years_kept(changes, n_ - rings, m_ - rings - k);
        VORN_ASSERT(most);
        years_kept_.back().all.back().years_kept.push_back(*most);
      }
    }
  }
}

std::vector<RingStep> Reach::steps(std::optional<std::int64_t> same_year) {
  same_year_ = same_year;
  count_years_kept();
  std::vector<RingStep> all;
  int changes = static_cast<int>(levels_.size()) - 1, i = 0, j = 0;
  while (i < n_ || j < m_) {
    const int wanted = years_kept(changes, i, j).value();
    const auto step = [&](RingStep::Kind kind, int rings_before, int rings_after, int kept) {
      const int left = changes - (kind == RingStep::Kind::kept ? 0 : 1);
      if (i + rings_before > n_ || j + rings_after > m_) return false;
      const auto rest = years_kept(left, i + rings_before, j + rings_after);
      if (!rest || *rest + kept != wanted) return false;
      all.push_back({kind, static_cast<std::size_t>(i), static_cast<std::size_t>(j)});
      i += rings_before;
      j += rings_after;
      changes = left;
      return true;
    };
    const bool both = i < n_ && j < m_;
    const auto in_both = both && same(i, j) ? RingStep::Kind::kept : RingStep::Kind::changed;
    const bool found = (both && step(in_both, 1, 1, counts(i, j))) ||
                       step(RingStep::Kind::deleted, 1, 0, 0) || step(RingStep::Kind::inserted, 0, 1, 0);
    VORN_ASSERT(found);
  }
  return all;
}

}  // namespace

bool same_ring(const RingWidths& before, std::size_t i, const RingWidths& after, std::size_t j) {
  if (!before.present[i] || !after.present[j]) return before.present[i] == after.present[j];
  constexpr double rounding = 1 + 1e-6;  // of decimal fractions in binary
  return std::abs(before.mm[i] - after.mm[j]) <= 0.5 / std::min(before.unit, after.unit) * rounding;
}

bool same_rings(const RingWidths& before, const RingWidths& after) {
  bool same = before.mm.size() == after.mm.size();
  for (std::size_t k = 0; same && k < before.mm.size(); ++k) same = same_ring(before, k, after, k);
  return same;
}

std::optional<std::vector<RingStep>> aligned_rings(const RingWidths& before, const RingWidths& after,
                                                   std::optional<std::int64_t> same_year) {
  const std::size_t shorter = std::min(before.mm.size(), after.mm.size());
  const auto by_length = static_cast<int>(std::max(before.mm.size(), after.mm.size()) - shorter);
  const auto most = static_cast<int>(std::clamp<std::size_t>(shorter / 2, 1, most_ring_changes));
  Reach reach(before, after);
  // Few are looked for first, which is cheap where the lengths differ much.
  for (int more = 1;; more = std::min(2 * more, most)) {
    if (reach.find(by_length + more)) return reach.steps(same_year);
    if (more == most) return std::nullopt;
  }
}

}  // namespace vorn
