#include "situation/series_copies.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <type_traits>

namespace vorn {
namespace {

template <class T>
bool same_bytes(std::span<const T> values, const void* copy) {
  return values.empty() || std::memcmp(values.data(), copy, values.size_bytes()) == 0;
}

// Whether entry i is this one, to the last bit.
bool is_copy(const SeriesStore& w, int i, const SeriesCopy& copy) {
  const auto widths = w.widths(i);
  const auto presence = w.presence(i);
  static_assert(sizeof(bool) == 1);
  return widths.size() == copy.widths.size() && w.fy(i) == copy.first_year &&
         w.nam(i).trimmed() == copy.name && same_bytes(widths, copy.widths.data()) &&
         same_bytes(presence, copy.presence.data());
}

// What the pool holds from place `first` on. A start that formulas led to may lie before the first place.
template <class T>
auto values_of(const Pool<T>& pool, int first, int count) {
  std::vector<std::conditional_t<std::is_same_v<T, bool>, std::uint8_t, T>> values;
  if (count <= 0) return values;
  if (pool.holds(first) && pool.size() - first >= count - 1) {
    using Value = typename decltype(values)::value_type;
    const auto* const all =
        reinterpret_cast<const Value*>(pool.range(first, count).data());  // bytes for bools
    values.assign(all, all + count);
    return values;
  }
  values.reserve(static_cast<std::size_t>(count));
  for (int p = first; p < first + count; ++p) values.push_back(pool.at(p));
  return values;
}

bool same_rings(const SeriesCopy& a, const SeriesCopy& b) {
  return a.widths == b.widths && a.presence == b.presence;
}

CoreChange::Kind kind_of(const SeriesCopy& before, const SeriesCopy& after) {
  if (before.widths.size() != after.widths.size()) return CoreChange::Kind::rings;
  if (same_rings(before, after)) return CoreChange::Kind::dated;
  return inserted_years(before, after).empty() && before.first_year == after.first_year
             ? CoreChange::Kind::widths
             : CoreChange::Kind::rings;
}

}  // namespace

SeriesCopy copy_of(const SeriesStore& w, int i) {
  return {std::string(w.nam(i).trimmed()), w.fy(i), values_of(w.x, w.ad(i), w.yr(i)),
          values_of(w.xok, w.ad(i), w.yr(i))};
}

// What was deleted lies before what follows it, so the older copies are gone through once.
std::vector<SharedSeries> copies_of_cores(const SeriesStore& w, const std::vector<SharedSeries>& before) {
  std::vector<SharedSeries> copies;
  copies.reserve(static_cast<std::size_t>(w.nc));
  std::size_t next = 0;
  std::map<std::string_view, std::vector<std::size_t>> places;  // by name; filled when it is needed
  const auto place_of = [&](std::string_view name) {
    if (places.empty()) {
      for (std::size_t k = 0; k < before.size(); ++k) places[before[k]->name].push_back(k);
    }
    const auto named = places.find(name);
    if (named == places.end()) return before.end();
    const auto at = std::ranges::lower_bound(named->second, next);
    return at == named->second.end() ? before.end() : before.begin() + static_cast<std::ptrdiff_t>(*at);
  };
  for (int i = 1; i <= w.nc; ++i) {
    const auto is_it = [&](const SharedSeries& older) { return is_copy(w, i, *older); };
    const auto same_place = before.begin() + static_cast<std::ptrdiff_t>(std::min(next, before.size()));
    auto found = same_place;
    if (found != before.end() && !is_it(*found)) {
      // One that has another name was deleted, or this one is new.
      found = (*found)->name == w.nam(i).trimmed() ? found : place_of(w.nam(i).trimmed());
    }
    if (found != before.end()) next = static_cast<std::size_t>(found - before.begin()) + 1;
    copies.push_back(
        found != before.end() && is_it(*found) ? *found : std::make_shared<const SeriesCopy>(copy_of(w, i)));
  }
  return copies;
}

std::vector<CoreChange> changes_between(const std::vector<SharedSeries>& before,
                                        const std::vector<SharedSeries>& after) {
  if (before == after) return {};
  // The places of what is not shared, by name and in order.
  std::map<std::string_view, std::vector<SharedSeries>> open;
  std::map<const SeriesCopy*, int> kept;
  for (const auto& core : after) ++kept[core.get()];
  for (const auto& core : before) {
    if (const auto found = kept.find(core.get()); found != kept.end() && found->second > 0) {
      --found->second;
    } else {
      open[core->name].push_back(core);
    }
  }
  std::map<const SeriesCopy*, int> known;
  for (const auto& core : before) ++known[core.get()];
  std::vector<CoreChange> changes;
  for (const auto& core : after) {
    if (const auto found = known.find(core.get()); found != known.end() && found->second > 0) {
      --found->second;
      continue;
    }
    auto& older = open[core->name];
    if (older.empty()) {
      changes.push_back({CoreChange::Kind::made, {}, core});
      continue;
    }
    const SharedSeries before_it = older.front();
    older.erase(older.begin());
    if (*before_it != *core) changes.push_back({kind_of(*before_it, *core), before_it, core});
  }
  for (const auto& core : before) {
    auto& left = open[core->name];
    if (const auto found = std::find(left.begin(), left.end(), core); found != left.end()) {
      left.erase(found);
      changes.push_back({CoreChange::Kind::gone, core, {}});
    }
  }
  return changes;
}

std::vector<int> inserted_years(const SeriesCopy& shorter, const SeriesCopy& longer) {
  std::vector<int> years;
  std::size_t s = 0;
  for (std::size_t l = 0; l < longer.widths.size(); ++l) {
    const bool same = s < shorter.widths.size() && shorter.widths[s] == longer.widths[l] &&
                      shorter.presence[s] == longer.presence[l];
    if (same) {
      ++s;
    } else {
      years.push_back(longer.first_year + static_cast<int>(l));
    }
  }
  if (s != shorter.widths.size()) years.clear();
  return years;
}

}  // namespace vorn
