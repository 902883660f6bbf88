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
  std::vector<RingStep> steps() const;

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
  bool same(int i, int j) const {
    return same_ring(before_, static_cast<std::size_t>(i), after_, static_cast<std::size_t>(j));
  }

  const RingWidths& before_;
  const RingWidths& after_;
  int n_, m_;
  std::vector<Level> levels_;  // by changes
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

std::vector<RingStep> Reach::steps() const {
  std::vector<RingStep> all;
  int changes = static_cast<int>(levels_.size()) - 1, i = 0, j = 0;
  const auto step = [&](RingStep::Kind kind, int rings_before, int rings_after) {
    all.push_back({kind, static_cast<std::size_t>(i), static_cast<std::size_t>(j)});
    i += rings_before;
    j += rings_after;
    changes -= kind != RingStep::Kind::kept;
  };
  while (i < n_ || j < m_) {
    const bool both = i < n_ && j < m_;
    if (both && same(i, j)) {
      step(RingStep::Kind::kept, 1, 1);
    } else if (both && suffice(changes - 1, i + 1, j + 1)) {
      step(RingStep::Kind::changed, 1, 1);
    } else if (i < n_ && suffice(changes - 1, i + 1, j)) {
      step(RingStep::Kind::deleted, 1, 0);
    } else {
      VORN_ASSERT(j < m_);
      step(RingStep::Kind::inserted, 0, 1);
    }
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

std::optional<std::vector<RingStep>> aligned_rings(const RingWidths& before, const RingWidths& after) {
  const std::size_t shorter = std::min(before.mm.size(), after.mm.size());
  const auto by_length = static_cast<int>(std::max(before.mm.size(), after.mm.size()) - shorter);
  const auto most = static_cast<int>(std::clamp<std::size_t>(shorter / 2, 1, most_ring_changes));
  Reach reach(before, after);
  // Few are looked for first, which is cheap where the lengths differ much.
  for (int more = 1;; more = std::min(2 * more, most)) {
    if (reach.find(by_length + more)) return reach.steps();
    if (more == most) return std::nullopt;
  }
}

}  // namespace vorn
