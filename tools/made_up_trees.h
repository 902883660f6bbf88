// Made-up tree-ring series for the examples: a shared climate, growth trends, and dating errors planted on
// purpose.
//
// The numbers come out the same on every machine: whole-number random bits, and of floating point only the
// four operations, whose results are fixed by the standard. Nothing here calls the mathematical library.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vorn::examples {

// The width written for a ring that the tree did not form and that was noticed when the core was measured.
inline constexpr int missing_ring = -1;

// A dating error. Cores are counted from their inner end, so that what is older than a wrong ring is dated
// rightly.
enum class Planted {
  nothing,
  lost_ring,   // the ring of the year was overlooked: later rings are dated one year too early
  false_ring,  // the ring of the year was counted as two: later rings are dated one year too late
  shifted,     // the whole series is dated `shift_years` too late
};
inline constexpr int shift_years = 7;

// One core as it grew: the true years of its first and last ring, and what went wrong when it was dated.
struct Core {
  std::string name;
  int first = 0, last = 0;
  Planted planted = Planted::nothing;
  int year = 0;  // of the ring lost or counted twice
};

// A place, and how much of its year-to-year growth it shares with the region.
struct Site {
  std::uint64_t seed = 0;      // of everything that happens here alone
  double shared = 0, own = 0;  // weights of the regional and the local climate; their squares sum to about 1
  std::vector<Core> cores;
  int trees_before = 0;  // cored here earlier, and not among `cores`
};

// One core as it was measured and dated: widths in thousandths of a millimetre, or missing_ring.
struct Series {
  std::string name;
  int first = 0;
  std::vector<int> widths;
  int last() const { return first + static_cast<int>(widths.size()) - 1; }
};

// A yearly signal of mean 0 and standard deviation 1 with a little persistence (first-order, 0.3).
std::vector<double> climate(std::uint64_t seed, int years);

// What the cores of `site` look like under a regional climate whose first value is for `climate_first`; the
// climate covers every core. The dating errors of the cores are built in.
std::vector<Series> measure(const Site& site, const std::vector<double>& regional, int climate_first);

// One year of a chronology: mean index in thousandths, and how many cores it rests on.
struct IndexYear {
  int index = 0;
  int depth = 0;
};

// A reference chronology as an index file brings it: the shared climate with what so many cores leave of
// noise.
std::vector<IndexYear> reference_chronology(std::uint64_t seed, const std::vector<double>& regional);

}  // namespace vorn::examples
