// How well dating errors are found: errors are planted into the cores of real files, and looked for.
#pragma once

#include <array>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "study/reference.h"
#include "study/ring_errors.h"
#include "study/studied_cores.h"

namespace vorn::measures {

// A core as it was read, widths in mm.
struct Core {
  std::string name = {};
  std::int64_t first = 0;
  std::vector<double> widths = {};
  std::shared_ptr<const bool[]> present = {};

  SeriesView view() const { return {first, widths, {present.get(), widths.size()}}; }
};

// A file of ring widths as the program reads it.
struct Site {
  std::string file = {};
  std::vector<Core> cores = {};
};

// Throws std::runtime_error where `file` is none that the program reads ring widths from.
Site read_site(const std::string& file);

// --- Planted errors. Ring k is counted from 0; the years of the core's end that is kept stay.

Core without_ring(const Core& core, std::size_t k, KeptEnd kept);
// `share` of ring k becomes the first of two rings.
Core with_split_ring(const Core& core, std::size_t k, double share, KeptEnd kept);

// --- What is measured.

inline constexpr std::array<int, 4> distances = {0, 1, 2, 5};     // years
inline constexpr std::array<double, 3> gains = {5.0, 7.0, 10.0};  // of alarms

// Of errors of one kind, one in a core each.
struct Planted {
  int errors = 0;
  int kind_right = 0;                             // the best candidate is of the right kind
  std::array<int, distances.size()> within = {};  // and so many years away at most
  int in_set = 0;                                 // and its set holds the year
  std::array<int, gains.size()> found = {};       // the best candidate gains so much, of whatever kind
};

struct Measures {
  int cores = 0;                              // that can be tried: r at least 0.4 over 60 years
  std::array<int, gains.size()> alarms = {};  // among them, as they are
  int pair_alarms = 0;                        // a pair is told where no single error is worth a look
  Planted missing;                            // anywhere, without the prior of narrow years
  Planted absent;                             // recorded absent rings, with it
  Planted false_rings;
  int pairs = 0;            // cores with two errors
  int pairs_told = 0;       // as a pair
  int pairs_found = 0;      // both within five years
  double milliseconds = 0;  // that 25 cores take, from widths to candidates
  int timed = 0;            // cores that were timed

  Measures& operator+=(const Measures& other);
};

struct MeasureOptions {
  std::uint64_t seed = 7;
  int plants = 4;  // of each kind, in each core that can be tried
  bool pairs = true;
};

// Errors are planted into the cores that nothing is found in: who has one of his own cannot tell.
Measures measure(const Site& site, const MeasureOptions& options);

void write_tables(const Measures& measures, std::ostream& out);

}  // namespace vorn::measures
