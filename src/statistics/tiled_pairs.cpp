#include "statistics/tiled_pairs.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <utility>

#include "base/parallel_for.h"
#include "statistics/correlation.h"

namespace vorn {
namespace {

// So many tiles are correlated with those behind them before what they gave is added up.
constexpr std::size_t tiles_at_once = 32;

// As many tiles, and what they give, are held at once, twice.
constexpr std::size_t most_bytes = std::size_t{40} << 20;

std::size_t room_of(const TilePlan& tile) {
  return tile.bytes() + tiles_at_once * sizeof(TileSums);
}

// Tiles one behind the other.
struct Part {
  std::size_t from, end;

  bool holds(std::size_t t) const { return t >= from && t < end; }
};

// The longest part from `from` on that may be held at once, up to `end`.
Part part_of(const std::vector<TilePlan>& plans, std::size_t from, std::size_t end) {
  Part part{from, from};
  std::size_t bytes = 0;
  while (part.end < end && (part.end == from || bytes + room_of(plans[part.end]) <= most_bytes))
    bytes += room_of(plans[part.end++]);
  return part;
}

// The tiles that are there. They are filled by several threads; the memory of those that go is for those that
// come, so that few pages are touched.
class Tiles {
 public:
  Tiles(std::span<const SeriesView> series, const std::vector<TilePlan>& plans)
      : series_(series), plans_(plans), tiles_(plans.size()) {}

  // Lets those go that lie in neither part and makes those of them that are `needed`.
  template <class Needed>
  void hold(Part one, Part other, std::size_t threads, const Needed& needed) {
    for (std::size_t t = 0; t < tiles_.size(); ++t) {
      if (tiles_[t] && !one.holds(t) && !other.holds(t)) spare_.push_back(std::move(tiles_[t]));
    }
    std::vector<std::size_t> missing;
    for (std::size_t t = one.from; t < std::max(one.end, other.end); ++t) {
      if (tiles_[t] || !(one.holds(t) || other.holds(t)) || !needed(t)) continue;
      missing.push_back(t);
      tiles_[t] = with_room(plans_[t]);
    }
    spare_.clear();
    parallel_for(missing.size(), threads,
                 [&](std::size_t k) { tiles_[missing[k]]->fill(series_, plans_[missing[k]]); });
  }
  // Null for one that is not there.
  const Tile* operator[](std::size_t t) const { return tiles_[t].get(); }

 private:
  std::unique_ptr<Tile> with_room(const TilePlan& plan) {
    auto tile = std::make_unique<Tile>();
    if (!spare_.empty()) {
      tile = std::move(spare_.back());
      spare_.pop_back();
    }
    tile->make_room(plan);
    return tile;
  }

  std::span<const SeriesView> series_;
  const std::vector<TilePlan>& plans_;
  std::vector<std::unique_ptr<Tile>> tiles_, spare_;
};

// What one tile gave with those of a group that it meets.
struct MetTile {
  const Tile* tile;
  TileSums sums;
};
struct TileResult {
  TileSums own;
  std::vector<MetTile> others;
};

class TiledPairs {
 public:
  // The tiles are in the order of their first years.
  TiledPairs(std::span<const SeriesView> series, const std::vector<TilePlan>& plans,
             std::int64_t fewest_years, std::size_t threads, const ShareDone& told, PairSums& sums)
      : series_(series),
        plans_(plans),
        tiles_(series, plans),
        fewest_years_(fewest_years),
        threads_(threads),
        told_(told),
        sums_(sums) {}

  void add() {
    for (std::size_t t = 0; t < plans_.size(); ++t)
      for_each_met(t, {0, plans_.size()}, [this](std::size_t) { ++all_pairs_; });
    for (std::size_t from = 0; from < plans_.size();) {
      const Part rows = part_of(plans_, from, std::min(from + tiles_at_once, plans_.size()));
      std::size_t reach = rows.end;
      for (std::size_t t = rows.from; t < rows.end; ++t) reach = std::max(reach, reach_of(t));
      for (std::size_t other = from; other < reach;) {
        const Part others = part_of(plans_, other, reach);
        add(rows, others);
        other = others.end;
      }
      from = rows.end;
    }
  }

 private:
  // Where those end, from a tile on, that may meet it.
  std::size_t reach_of(std::size_t tile) const {
    const std::int64_t last_start = plans_[tile].years.last - fewest_years_ + 1;
    const auto behind =
        std::upper_bound(plans_.begin() + static_cast<std::ptrdiff_t>(tile) + 1, plans_.end(), last_start,
                         [](std::int64_t year, const TilePlan& plan) { return year < plan.years.first; });
    return static_cast<std::size_t>(behind - plans_.begin());
  }

  bool meet(std::size_t a, std::size_t b) const {
    return !(plans_[a].in_cohort && plans_[b].in_cohort) &&
           common(plans_[a].years, plans_[b].years).count() >= fewest_years_;
  }

  // Calls do_with(other) for each of the tiles that a tile meets, from itself on.
  template <class Do>
  void for_each_met(std::size_t tile, Part others, const Do& do_with) const {
    const std::size_t end = std::min(reach_of(tile), others.end);
    for (std::size_t other = std::max(tile, others.from); other < end; ++other) {
      if (meet(tile, other)) do_with(other);
    }
  }

  // Adds the pairs of some tiles with those of others, each once: with those from itself on.
  void add(Part rows, Part others) {
    std::vector<bool> needed(std::max(rows.end, others.end) - rows.from);
    for (std::size_t t = rows.from; t < rows.end; ++t) {
      for_each_met(t, others, [&](std::size_t other) {
        needed[t - rows.from] = true;
        needed[other - rows.from] = true;
      });
    }
    tiles_.hold(rows, others, threads_, [&](std::size_t t) { return needed[t - rows.from]; });
    std::vector<TileResult> results(rows.end - rows.from);
    parallel_for(
        results.size(), threads_, [&](std::size_t k) { correlate(rows.from + k, others, results[k]); },
        [this](std::size_t) { tell(); });
    for (std::size_t k = 0; k < results.size(); ++k) {
      if (!results[k].others.empty()) take(*tiles_[rows.from + k], results[k]);
    }
  }

  void correlate(std::size_t tile, Part others, TileResult& result) {
    for_each_met(tile, others, [&](std::size_t other) { result.others.push_back({tiles_[other], {}}); });
    for (MetTile& other : result.others) correlate(*tiles_[tile], result.own, *other.tile, other.sums);
    pairs_done_ += result.others.size();
  }

  void correlate(const Tile& a, TileSums& of_a, const Tile& b, TileSums& of_b) const {
    std::vector<std::pair<std::size_t, std::size_t>> doubtful;
    correlate_tiles(a, of_a, b, of_b, fewest_years_, doubtful);
    for (const auto& [i, j] : doubtful) {
      const double r = plain(a.members[i], b.members[j]);
      of_a.sum_of[i] += r, ++of_a.pairs_of[i];
      of_b.sum_of[j] += r, ++of_b.pairs_of[j];
    }
  }

  double plain(std::size_t i, std::size_t j) const {
    const YearSpan both = common(series_[i].years(), series_[j].years());
    return cov(series_[i].over(both).values, series_[j].over(both).values);
  }

  // In the order of the tiles, whichever was done first.
  void take(const Tile& tile, const TileResult& result) {
    take(tile, result.own);
    for (const MetTile& other : result.others) take(*other.tile, other.sums);
  }

  void take(const Tile& tile, const TileSums& more) {
    for (std::size_t c = 0; c < tile.members.size(); ++c) {
      sums_.sum_of[tile.members[c]] += more.sum_of[c];
      sums_.pairs_of[tile.members[c]] += static_cast<std::int32_t>(more.pairs_of[c]);
    }
  }

  void tell() const {
    if (told_)
      told_(static_cast<double>(pairs_done_) / static_cast<double>(std::max(all_pairs_, std::size_t{1})));
  }

  std::span<const SeriesView> series_;
  const std::vector<TilePlan>& plans_;
  Tiles tiles_;
  std::int64_t fewest_years_;
  std::size_t threads_;
  const ShareDone& told_;
  PairSums& sums_;
  std::size_t all_pairs_ = 0;  // of tiles
  std::atomic<std::size_t> pairs_done_{0};
};

}  // namespace

// A tile then meets those that stand close behind it, and they need not be there for long.
void add_tiled_pairs(std::span<const SeriesView> series, std::vector<TilePlan> tiles,
                     std::int64_t fewest_years, std::size_t threads, const ShareDone& told, PairSums& sums) {
  std::ranges::stable_sort(tiles, {}, [](const TilePlan& tile) { return tile.years.first; });
  TiledPairs(series, tiles, fewest_years, threads, told, sums).add();
}

}  // namespace vorn
