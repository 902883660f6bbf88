#include "statistics/tiled_pairs.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <utility>

#include "base/parallel_for.h"
#include "base/zero_memory.h"
#include "statistics/correlation.h"

namespace vorn {
namespace {

// So many tiles are correlated with all others before what they gave is added up.
constexpr std::size_t tiles_at_once = 32;

// As many tiles, and what they give, are held at once, twice; those behind are made anew for each such group.
constexpr std::size_t group_bytes = std::size_t{40} << 20;

using Group = std::span<const TilePlan>;

struct GiveBack {
  void operator()(double* memory) const { give_back_memory(memory, bytes); }
  std::size_t bytes = 0;
};

// The tiles of a group, side by side in memory.
class Tiles {
 public:
  explicit Tiles(Group group) : tiles_(group.size()), starts_(group.size()) {
    std::size_t numbers = 0;
    for (std::size_t t = 0; t < group.size(); ++t) {
      starts_[t] = numbers;
      numbers += group[t].numbers();
    }
    const std::size_t bytes = numbers * sizeof(double);
    room_ = {static_cast<double*>(zero_memory(bytes)), GiveBack{bytes}};
    expect_use(room_.get(), bytes);
  }

  void make(std::size_t t, std::span<const SeriesView> series, const TilePlan& plan) {
    const std::span<double> room(room_.get() + starts_[t], plan.numbers());
    tiles_[t] = std::make_unique<const Tile>(series, plan, room);
  }
  std::size_t size() const { return tiles_.size(); }
  // Null for one that was not made, since it meets none of the others.
  const Tile* operator[](std::size_t t) const { return tiles_[t].get(); }

 private:
  std::unique_ptr<double, GiveBack> room_;
  std::vector<std::unique_ptr<const Tile>> tiles_;
  std::vector<std::size_t> starts_;  // in the room
};

std::size_t room_of(const TilePlan& tile) {
  return tile.bytes() + tiles_at_once * sizeof(TileSums);
}

std::vector<Group> groups_of(const std::vector<TilePlan>& tiles) {
  std::vector<Group> groups;
  for (std::size_t from = 0; from < tiles.size();) {
    std::size_t end = from, bytes = 0;
    while (end < tiles.size() && (end == from || bytes + room_of(tiles[end]) <= group_bytes))
      bytes += room_of(tiles[end++]);
    groups.push_back(Group(tiles).subspan(from, end - from));
    from = end;
  }
  return groups;
}

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
  TiledPairs(std::span<const SeriesView> series, std::int64_t fewest_years, std::size_t threads,
             const ShareDone& told, PairSums& sums)
      : series_(series), fewest_years_(fewest_years), threads_(threads), told_(told), sums_(sums) {}

  void add(const std::vector<TilePlan>& plans) {
    all_pairs_ = 0.5 * static_cast<double>(plans.size()) * static_cast<double>(plans.size() + 1);
    const std::vector<Group> groups = groups_of(plans);
    for (std::size_t g = 0; g < groups.size(); ++g) {
      const Tiles tiles = made(groups[g], groups[g]);
      add(tiles, tiles);
      for (std::size_t h = g + 1; h < groups.size(); ++h) add(tiles, made(groups[h], groups[g]));
    }
  }

 private:
  bool meets(const TilePlan& tile, Group others) const {
    return std::ranges::any_of(others, [&](const TilePlan& other) {
      return common(tile.years, other.years).count() >= fewest_years_;
    });
  }

  // The tiles of a group, for others.
  Tiles made(Group group, Group others) const {
    Tiles tiles(group);
    parallel_for(group.size(), threads_, [&](std::size_t t) {
      if (meets(group[t], others)) tiles.make(t, series_, group[t]);
    });
    return tiles;
  }

  // Adds the pairs of two groups; of a group with itself each once.
  void add(const Tiles& tiles, const Tiles& others) {
    const bool same = &tiles == &others;
    for (std::size_t from = 0; from < tiles.size(); from += tiles_at_once) {
      const std::size_t count = std::min(tiles_at_once, tiles.size() - from);
      std::vector<TileResult> results(count);
      parallel_for(
          count, threads_,
          [&](std::size_t k) { correlate(tiles, from + k, others, same ? from + k : 0, results[k]); },
          [this](std::size_t) { tell(); });
      for (std::size_t k = 0; k < count; ++k) take(tiles[from + k], results[k]);
    }
  }

  void correlate(const Tiles& tiles, std::size_t tile, const Tiles& others, std::size_t from,
                 TileResult& result) {
    for (std::size_t t = from; t < others.size(); ++t) {
      if (meet(tiles[tile], others[t])) result.others.push_back({others[t], {}});
    }
    for (MetTile& other : result.others) correlate(*tiles[tile], result.own, *other.tile, other.sums);
    pairs_done_ += others.size() - from;
  }

  bool meet(const Tile* a, const Tile* b) const {
    return a != nullptr && b != nullptr &&
           common({a->first, a->last}, {b->first, b->last}).count() >= fewest_years_;
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
  void take(const Tile* tile, const TileResult& result) {
    if (tile == nullptr) return;
    take(*tile, result.own);
    for (const MetTile& other : result.others) take(*other.tile, other.sums);
  }

  void take(const Tile& tile, const TileSums& more) {
    for (std::size_t c = 0; c < tile.members.size(); ++c) {
      sums_.sum_of[tile.members[c]] += more.sum_of[c];
      sums_.pairs_of[tile.members[c]] += static_cast<std::int32_t>(more.pairs_of[c]);
    }
  }

  void tell() const {
    if (told_) told_(static_cast<double>(pairs_done_) / all_pairs_);
  }

  std::span<const SeriesView> series_;
  std::int64_t fewest_years_;
  std::size_t threads_;
  const ShareDone& told_;
  PairSums& sums_;
  double all_pairs_ = 0;  // of tiles
  std::atomic<std::size_t> pairs_done_{0};
};

}  // namespace

void add_tiled_pairs(std::span<const SeriesView> series, const std::vector<TilePlan>& tiles,
                     std::int64_t fewest_years, std::size_t threads, const ShareDone& told, PairSums& sums) {
  TiledPairs(series, fewest_years, threads, told, sums).add(tiles);
}

}  // namespace vorn
