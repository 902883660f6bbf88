// The skeleton plot of a series: which rings are narrow beside their neighbours, and how narrow.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace vorn {

// What the plot says of one ring.
struct SkeletonMark {
  enum class Kind : std::uint8_t {
    none,
    narrow,   // a bar of `length`
    wide,     // marked by a letter
    missing,  // a ring that is not there
  };
  Kind kind = Kind::none;
  int length = 0;  // of a narrow ring: 1 to 10, the longer the narrower
  bool operator==(const SkeletonMark&) const = default;
};

// How many rings before and behind a ring it is compared with.
inline constexpr int skeleton_neighbours = 5;

// The marks of rings of `values` (widths or indices, one a year), of which those count that are `present`; as
// many flags as values.
//
// Each present ring is standardised within the window of the five years before it, itself and the five behind
// it, as far as the series has them: z = (value - mean) / deviation (divisor n - 1) of the present rings
// there. A ring has a bar of round((-z - 0.5) / 0.15), from 1, at z about -0.6, to 10 at most, at -1.9 and
// below; from z = 2 on it is wide. None is marked where fewer than five rings of its window are present or
// all are the same or one is not finite.
//
// Source: the skeleton plot of Stokes and Smiley (1968), drawn by eye with bars to ten for the narrowest
// rings and a letter b for big ones; Schweingruber (1988). That the neighbours be a moving window and
// narrowness be counted in its standard deviations follows Cropper (1979, Tree-Ring Bulletin 39).
std::vector<SkeletonMark> skeleton(std::span<const double> values, std::span<const bool> present);

}  // namespace vorn
