#include "statistics/overlaps.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace vorn {
namespace {

// Series of so many years, from such a year on.
struct Placed {
  std::int64_t first;
  std::size_t count;
};

std::vector<SeriesView> views(const std::vector<Placed>& all) {
  static const std::vector<double> values(5'000, 1.0);
  std::vector<SeriesView> series;
  for (const Placed& one : all) series.push_back({one.first, std::span(values).first(one.count)});
  return series;
}

std::vector<std::size_t> behind_plainly(const std::vector<SeriesView>& series, std::int64_t fewest_years,
                                        std::size_t i) {
  std::vector<std::size_t> found;
  for (std::size_t j = i + 1; j < series.size(); ++j) {
    if (common(series[i].years(), series[j].years()).count() >= fewest_years) found.push_back(j);
  }
  return found;
}

void expect_all_found(const std::vector<Placed>& all) {
  const auto series = views(all);
  for (const std::int64_t fewest_years : {1, 2, 30, 200}) {
    Overlaps overlaps(series, fewest_years);
    for (std::size_t i = 0; i < series.size(); ++i) {
      const auto found = overlaps.behind(i);
      EXPECT_EQ(std::vector(found.begin(), found.end()), behind_plainly(series, fewest_years, i))
          << i << " of " << all.size() << ", " << fewest_years << " years";
    }
  }
}

TEST(Overlaps, OfSeriesThatMeetByOneYearMoreOrLess) {
  expect_all_found(
      {{100, 60}, {130, 60}, {131, 60}, {159, 60}, {160, 60}, {70, 60}, {71, 60}, {41, 60}, {40, 60}});
}

TEST(Overlaps, OfSeriesWithinOneThatIsLonger) {
  expect_all_found(
      {{-700, 40}, {-1000, 3'000}, {1500, 30}, {1990, 29}, {-1000, 3'000}, {-1030, 30}, {1971, 40}});
}

TEST(Overlaps, OfSeriesWithoutAYear) {
  expect_all_found({{10, 0}, {0, 30}, {15, 0}, {10, 1}, {29, 1}, {30, 1}});
  expect_all_found({{10, 0}});
  expect_all_found({});
}

// More than fit into one word, and as many as fill it.
TEST(Overlaps, OfSeriesOfAllKinds) {
  for (const std::uint64_t count : {63, 64, 65, 200, 1'000}) {
    std::vector<Placed> all;
    for (std::uint64_t i = 0; i < count; ++i)
      all.push_back(
          {static_cast<std::int64_t>(i * 7'919 % 4'001) - 2'000, i % 50 == 0 ? 2'000 : i * 104'729 % 300});
    expect_all_found(all);
  }
}

}  // namespace
}  // namespace vorn
