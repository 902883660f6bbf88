#include "made_up_trees.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "seeded_random.h"

namespace vorn::examples {
namespace {

// Persistence 0.3 and the weight that keeps the standard deviation at 1.
constexpr double persistence = 0.3, novelty = 0.954;

std::vector<double> persistent_noise(Random& random, int years) {
  std::vector<double> values;
  double value = random.deviate();
  for (int y = 0; y < years; ++y) {
    values.push_back(value);
    value = persistence * value + novelty * random.deviate();
  }
  return values;
}

int thousandths(double millimetres) {
  return static_cast<int>(std::lround(millimetres * 1000.0));
}

// How fast a tree grows: wide rings while it is young, then a slow decline.
double growth_curve(double vigour, int age) {
  return vigour * (0.45 + 1.3 / (1.0 + age / 35.0));
}

// Below this share of the expected width the tree forms no ring where it was cored.
constexpr double too_poor_a_year = 0.17;

std::vector<int> grow(const Core& core, std::uint64_t seed, const double* site_climate) {
  const int years = core.last - core.first + 1;
  Random random(seed);
  const double vigour = 1.0 + 0.15 * random.deviate();
  const std::vector<double> own = persistent_noise(random, years);
  double suppression = 0;  // neighbours come and go: decades of better or poorer growth
  std::vector<int> widths;
  for (int age = 0; age < years; ++age) {
    suppression = 0.97 * suppression + 0.05 * random.deviate();
    const double year = 1.0 + 0.25 * site_climate[age] + 0.19 * own[static_cast<std::size_t>(age)];
    const double width = growth_curve(vigour, age) * std::max(0.4, 1.0 + suppression) * std::max(0.05, year);
    const bool outermost = age == 0 || age == years - 1;  // there a missing ring would go unnoticed
    widths.push_back(year < too_poor_a_year && !outermost ? missing_ring : thousandths(width));
  }
  return widths;
}

Series with_error(const Core& core, std::vector<int> widths) {
  Series series{core.name, core.first, std::move(widths)};
  const auto ring = series.widths.begin() + (core.year - core.first);
  switch (core.planted) {
    case Planted::nothing:
      break;
    case Planted::lost_ring:
      series.widths.erase(ring);
      break;
    case Planted::false_ring: {  // the ring as a narrower one and a false one after it
      const int whole = *ring;
      *ring = whole * 55 / 100;
      series.widths.insert(ring + 1, whole - whole * 55 / 100);
      break;
    }
    case Planted::shifted:
      series.first += shift_years;
      break;
  }
  return series;
}

}  // namespace

std::vector<double> climate(std::uint64_t seed, int years) {
  Random random(seed);
  return persistent_noise(random, years);
}

std::vector<Series> measure(const Site& site, const std::vector<double>& regional, int climate_first) {
  const std::vector<double> local = climate(site.seed, static_cast<int>(regional.size()));
  std::vector<double> here;
  for (std::size_t y = 0; y < regional.size(); ++y) {
    here.push_back(site.shared * regional[y] + site.own * local[y]);
  }
  std::vector<Series> all;
  std::uint64_t seed = site.seed + 1000U * static_cast<std::uint64_t>(site.trees_before);
  for (const Core& core : site.cores) {
    seed += 1000;
    all.push_back(with_error(core, grow(core, seed, here.data() + (core.first - climate_first))));
  }
  return all;
}

std::vector<IndexYear> reference_chronology(std::uint64_t seed, const std::vector<double>& regional) {
  Random random(seed);
  std::vector<IndexYear> years;
  for (std::size_t y = 0; y < regional.size(); ++y) {
    const double index = 1.0 + 0.2 * regional[y] + 0.1 * random.deviate();
    const int depth = 4 + std::min(38, static_cast<int>(y) / 9);
    years.push_back({std::max(60, thousandths(index)), depth});
  }
  return years;
}

}  // namespace vorn::examples
