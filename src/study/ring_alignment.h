// Which rings of two measurements of a core are the same.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace vorn {

// The rings of a core from the innermost one on, whatever years they have.
struct RingWidths {
  std::span<const double> mm = {};
  std::span<const bool> present = {};  // as many; false where a ring is marked as missing, whatever its width
  double unit = 1000;                  // values a millimetre of the file that they come from; more than 0
};

// Whether ring i of one is ring j of the other: both are marked as missing, or their widths differ by no more
// than half of the coarser of both units, so that a width written in hundredths is the one in thousandths
// that rounds to it, up or down. An absent ring of width 0 is not one that is marked as missing.
bool same_ring(const RingWidths& before, std::size_t i, const RingWidths& after, std::size_t j);

// Whether all their rings are.
bool same_rings(const RingWidths& before, const RingWidths& after);

// What became of a ring. Places count from 0; of a ring that only one of both has the other place is that of
// the next ring there.
struct RingStep {
  enum class Kind { kept, changed, deleted, inserted };
  Kind kind = Kind::kept;
  std::size_t before = 0, after = 0;
  bool operator==(const RingStep&) const = default;
};

// No more changes than these are looked for beyond those that the lengths ask for.
inline constexpr std::size_t most_ring_changes = 1'000;

// The fewest changes that make one series of the other, from the innermost ring on, where a ring put in, a
// ring left out and another width count as one each (Levenshtein 1966). Of several ways with as few the one
// is taken in which most of the kept rings keep their years, too: ring i of BEFORE has the year of ring
// i + same_year of AFTER. Of these again, and where the years are not told, it is the one that, ring by ring
// from the innermost, keeps or changes a ring before it leaves one out, and leaves one out before it puts one
// in: among neighbours of the same width it is the outermost one that was put in or left out.
//
// Nothing where the series are not the same core: where more than half of the shorter one's rings (but for a
// single one), or more than most_ring_changes, would have to change beside the difference of their lengths.
//
// Takes O(rings x changes) (Ukkonen 1985).
std::optional<std::vector<RingStep>> aligned_rings(const RingWidths& before, const RingWidths& after,
                                                   std::optional<std::int64_t> same_year = {});

}  // namespace vorn
