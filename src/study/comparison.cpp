#include "study/comparison.h"

#include <algorithm>
#include <cstdlib>
#include <map>

#include "study/ring_alignment.h"

namespace vorn {
namespace {

using Steps = std::vector<RingStep>;
using Places = std::vector<std::optional<std::size_t>>;

RingWidths rings_of(const NamedCore& core) {
  return {core.widths.values, core.widths.present, core.unit};
}

bool in_both(const RingStep& step) {
  return step.kind == RingStep::Kind::kept || step.kind == RingStep::Kind::changed;
}

// --- Years: how far the rings of a core moved

class Years {
 public:
  Years(const SeriesView& before, const SeriesView& after) : before_(before), after_(after) {}

  std::int64_t before(const RingStep& step) const { return year(before_, step.before); }
  std::int64_t after(const RingStep& step) const { return year(after_, step.after); }
  std::int64_t moved(const RingStep& step) const { return after(step) - before(step); }
  bool inner_end_stays() const { return before_.first == after_.first; }
  bool outer_end_stays() const { return before_.years().last == after_.years().last; }

 private:
  static std::int64_t year(const SeriesView& core, std::size_t ring) {
    return core.first + static_cast<std::int64_t>(ring);
  }
  const SeriesView& before_;
  const SeriesView& after_;
};

// By how many years the core as a whole moved; 0 where it did not, and where no ring is in both.
std::int64_t years_moved(const Steps& steps, const Years& years) {
  std::map<std::int64_t, std::size_t> rings;
  for (const RingStep& step : steps) {
    if (in_both(step)) ++rings[years.moved(step)];
  }
  if (rings.empty() || rings.contains(0) || years.inner_end_stays() || years.outer_end_stays()) return 0;
  return std::ranges::max_element(rings,
                                  [](const auto& a, const auto& b) {
                                    return a.second != b.second ? a.second < b.second
                                                                : std::abs(a.first) > std::abs(b.first);
                                  })
      ->first;
}

// --- One core

std::optional<double> width(const SeriesView& core, std::size_t ring) {
  if (!core.present[ring]) return std::nullopt;
  return core.values[ring];
}

RingChange ring_change(const NamedCore& before, const NamedCore& after, const RingStep& step, KeptEnd end) {
  const Years years(before.widths, after.widths);
  if (step.kind == RingStep::Kind::deleted)
    return {RingChange::Kind::deleted, years.before(step), width(before.widths, step.before), std::nullopt,
            end};
  if (step.kind == RingStep::Kind::inserted)
    return {RingChange::Kind::inserted, years.after(step), std::nullopt, width(after.widths, step.after),
            end};
  return {RingChange::Kind::changed, years.after(step), width(before.widths, step.before),
          width(after.widths, step.after), end};
}

// How the rings of the one become those of the other. Rings should keep their years; but a few that by chance
// could do so tell nothing of a core of which neither end has the year it had.
std::optional<Steps> alignment(const NamedCore& before, const NamedCore& after) {
  const std::int64_t same_year = before.widths.first - after.widths.first;
  auto steps = aligned_rings(rings_of(before), rings_of(after), same_year);
  const Years years(before.widths, after.widths);
  if (!steps || years.inner_end_stays() || years.outer_end_stays()) return steps;
  const auto keep = std::ranges::count_if(*steps, [&](const RingStep& step) {
    return step.kind == RingStep::Kind::kept && years.moved(step) == 0;
  });
  const std::size_t rings = std::min(before.widths.values.size(), after.widths.values.size());
  if (keep == 0 || 2 * static_cast<std::size_t>(keep) > rings) return steps;
  return aligned_rings(rings_of(before), rings_of(after));
}

// The change of two that are the same core under whatever name; `steps` align their rings.
SeriesChange core_change(const NamedCore& before, const NamedCore& after, const Steps& steps) {
  SeriesChange change;
  change.renamed = before.name != after.name;
  const Years years(before.widths, after.widths);
  const std::int64_t moved = years_moved(steps, years);
  const auto stays = std::ranges::find_if(
      steps, [&](const RingStep& step) { return in_both(step) && years.moved(step) == moved; });
  if (moved != 0) change.redated = {years.before(*stays), years.after(*stays)};
  for (auto step = steps.begin(); step != steps.end(); ++step) {
    if (step->kind == RingStep::Kind::kept) continue;
    const bool outer_side = stays == steps.end() ? !years.inner_end_stays() : step < stays;
    change.rings.push_back(ring_change(before, after, *step, outer_side ? KeptEnd::outer : KeptEnd::inner));
  }
  return change;
}

// --- Which core is which

class Comparison {
 public:
  Comparison(std::span<const NamedCore> before, std::span<const NamedCore> after)
      : before_(before), after_(after), partner_(before.size()), taken_(after.size()) {}

  std::vector<SeriesChange> run();

 private:
  using Candidates = std::vector<std::size_t>;  // among AFTER's
  void pair(std::size_t i, std::size_t j) {
    partner_[i] = j;
    taken_[j] = true;
  }
  template <class Fits>
  void pair_first(std::size_t i, const Candidates& candidates, Fits fits);
  void pair_by_name();
  void pair_by_rings();
  void part_the_unlike();
  bool same(std::size_t i, std::size_t j) const {
    return same_rings(rings_of(before_[i]), rings_of(after_[j]));
  }

  std::span<const NamedCore> before_, after_;
  Places partner_;  // of each of BEFORE
  std::vector<bool> taken_;
  std::map<std::size_t, SeriesChange> changes_;  // of the pairs that differ, by BEFORE's place
};

// Pairs core i with the first of some that fits and is not taken, unless it has a partner.
template <class Fits>
void Comparison::pair_first(std::size_t i, const Candidates& candidates, Fits fits) {
  if (partner_[i]) return;
  const auto found = std::ranges::find_if(candidates, [&](std::size_t j) { return !taken_[j] && fits(j); });
  if (found != candidates.end()) pair(i, *found);
}

void Comparison::pair_by_name() {
  std::map<std::string_view, Candidates> named;
  for (std::size_t j = 0; j < after_.size(); ++j) named[after_[j].name].push_back(j);
  for (std::size_t i = 0; i < before_.size(); ++i)
    pair_first(i, named[before_[i].name], [&](std::size_t j) { return same(i, j); });
  for (std::size_t i = 0; i < before_.size(); ++i)
    pair_first(i, named[before_[i].name], [](std::size_t) { return true; });
}

// Looks at the pairs: those that are no one core are pairs no more.
void Comparison::part_the_unlike() {
  for (std::size_t i = 0; i < before_.size(); ++i) {
    if (!partner_[i]) continue;
    const std::size_t j = *partner_[i];
    if (const auto steps = alignment(before_[i], after_[j])) {
      changes_[i] = core_change(before_[i], after_[j], *steps);
    } else {
      partner_[i].reset();
      taken_[j] = false;
    }
  }
}

void Comparison::pair_by_rings() {
  std::map<std::size_t, Candidates> left;  // by their number of rings
  for (std::size_t j = 0; j < after_.size(); ++j) {
    if (!taken_[j]) left[after_[j].widths.values.size()].push_back(j);
  }
  left.erase(0);  // without a ring nothing tells them apart
  const auto candidates = [&](std::size_t i) { return left[before_[i].widths.values.size()]; };
  for (std::size_t i = 0; i < before_.size(); ++i)
    pair_first(i, candidates(i), [&](std::size_t j) {
      return before_[i].widths.first == after_[j].widths.first && same(i, j);
    });
  for (std::size_t i = 0; i < before_.size(); ++i)
    pair_first(i, candidates(i), [&](std::size_t j) { return same(i, j); });
}

std::vector<SeriesChange> Comparison::run() {
  pair_by_name();
  part_the_unlike();
  pair_by_rings();
  part_the_unlike();
  std::vector<SeriesChange> all;
  for (std::size_t i = 0; i < before_.size(); ++i) {
    SeriesChange change = partner_[i] ? std::move(changes_[i]) : SeriesChange();
    if (partner_[i] && !change.renamed && !change.redated && change.rings.empty()) continue;
    change.before = i;
    change.after = partner_[i];
    all.push_back(std::move(change));
  }
  for (std::size_t j = 0; j < after_.size(); ++j) {
    if (taken_[j]) continue;
    all.emplace_back().after = j;
  }
  return all;
}

}  // namespace

std::vector<SeriesChange> changes_between(std::span<const NamedCore> before,
                                          std::span<const NamedCore> after) {
  return Comparison(before, after).run();
}

}  // namespace vorn
