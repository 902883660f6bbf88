#include "formats/core_loading.h"

#include "chronology/missing_rings.h"
#include "workspace/capacity.h"

namespace vorn {

void start_store(SeriesStore& w) {
  ++w.loads;
  w.nc = 0;
  w.ad(1) = 1;
}

namespace {

// Where there were so many rings there will be as many more.
constexpr int rings_at_once = 1 << 15;

}  // namespace

bool take_places(SeriesStore& w, int i, int years, const Reading& reading, std::int64_t line) {
  const bool fits = years <= max_pool - (w.ad(i) - 1);
  w.yr(i) = fits ? years : 0;
  w.ad(i + 1) = w.ad(i) + w.yr(i);
  if (const int part = w.ad(i + 1) / rings_at_once; part > w.ad(i) / rings_at_once)
    w.x.expect_use(w.ad(i + 1), (part + 1) * rings_at_once);
  if (!fits) tell_words(reading, "Would be too many rings", line);
  return fits;
}

std::int32_t finish_cores(SeriesStore& w) {
  const int rings = w.ad(w.nc + 1) - 1;
  w.xok.expect_use(1, rings);
  const auto widths = w.x.range(1, rings);
  const auto present = w.xok.range(1, rings);
  std::int32_t missing = 0;
  for (std::size_t p = 0; p < widths.size(); ++p) {
    present[p] = widths[p] >= 0;
    missing += present[p] ? 0 : 1;
  }
  if (missing > 0) mdet_miss(w, 1, w.nc);
  return missing;
}

}  // namespace vorn
