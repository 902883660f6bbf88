// What became of the cores of a collection: two readings of it, ring by ring.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "study/ring_errors.h"
#include "workspace/series_view.h"

namespace vorn {

struct NamedCore {
  std::string_view name;
  SeriesView widths;   // mm; a ring without presence is marked as missing, its width an estimate
  double unit = 1000;  // values a millimetre of the file that it comes from; more than 0
};

// A ring that is not as it was.
struct RingChange {
  enum class Kind { inserted, deleted, changed };
  Kind kind = Kind::changed;
  std::int64_t year = 0;                // that it has now; of a deleted one, that it had
  std::optional<double> before, after;  // mm; nothing where there is no ring, or one marked as missing
  KeptEnd end = KeptEnd::inner;         // inserted, deleted: the side of it whose rings keep their years
};

// By `after` - `before` years: both of the innermost ring that moved by so many.
struct Redating {
  std::int64_t before = 0, after = 0;
};

// A core that is not as it was.
struct SeriesChange {
  std::optional<std::size_t> before, after;  // its places in the collections, from 0: new without the first,
                                             // gone without the second
  bool renamed = false;
  std::optional<Redating> redated;
  std::vector<RingChange> rings;  // from the innermost on
};

// The cores that changed: first those that were, in their order, then the new ones in theirs. None for a
// collection and itself, in whatever order its cores stand.
//
// A core is the one of the same name, unless aligned_rings() finds too little of the one in the other: then
// the one is gone, the other new. (Of several of one name it is first the one with the same rings, then the
// next.) Of the cores left over one with the same rings under another name is that core renamed; first one of
// the same years, then one of any. Widths are the same as far as their files can tell (same_ring()), and
// which rings were put in, left out or changed is what aligned_rings() says: of ways with as few changes the
// one in which most rings that kept their widths keep their years, if an end of the core does so or more than
// half of its rings, or else whatever their years. Two rings made one are the inner one, changed, and the
// outer one, deleted; a ring made two likewise.
//
// A ring put in or left out moves the years on one side of it, and that alone is no redating: one end keeps
// its year, or rings between. Redated is a core of which neither end has the year it had, nor any ring; and
// by as many years as most of its rings (the fewer, where as many moved by either). The side of a ring that
// keeps its years is the one on which the innermost ring lies that is dated as before or, in a redated core,
// as most are; where there is none, the end that has the year it had.
std::vector<SeriesChange> changes_between(std::span<const NamedCore> before,
                                          std::span<const NamedCore> after);

}  // namespace vorn
