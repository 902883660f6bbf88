#include "statistics/cohorts.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/parallel_for.h"
#include "statistics/correlation.h"

namespace vorn {
namespace {

// A cohort stands in strips of so many series, year by year.
constexpr std::size_t lanes = 8;
using Lanes = std::array<double, lanes>;

// So many strips are a piece of work.
constexpr std::size_t strips_a_piece = 8;

// As measured: a year of a series that is met, on either side.
constexpr double met_year = 4;

struct Cohort {
  YearSpan years;
  std::vector<std::size_t> members;  // numbers of the series
  // Strip by strip, in each year by year: every series less its mean, divided by the root of its squares. 0
  // where a strip has no more series.
  std::vector<Lanes> rows;

  std::size_t length() const { return static_cast<std::size_t>(years.count()); }
  std::size_t strips() const { return (members.size() + lanes - 1) / lanes; }
  const Lanes* strip(std::size_t s, std::int64_t from) const {
    return rows.data() + s * length() + static_cast<std::size_t>(from - years.first);
  }
  std::span<const std::size_t> members_of(std::size_t s) const {
    return std::span(members).subspan(s * lanes, std::min(lanes, members.size() - s * lanes));
  }
};

// Tiles of the same years stand one behind the other.
std::vector<Cohort> cohorts_of(const std::vector<TilePlan>& tiles) {
  std::vector<Cohort> cohorts;
  for (const TilePlan& tile : tiles) {
    if (!tile.in_cohort) continue;
    if (cohorts.empty() || cohorts.back().years != tile.years) cohorts.push_back({tile.years, {}, {}});
    auto& members = cohorts.back().members;
    members.insert(members.end(), tile.members.begin(), tile.members.end());
  }
  return cohorts;
}

void put_lane(std::span<const double> values, Lanes* rows, std::size_t lane) {
  const double mean = quick_mean(values);
  const double scale =
      1 / std::sqrt(quick_sum(values, [mean](double value) { return (value - mean) * (value - mean); }));
  for (const double value : values) (*rows++)[lane] = (value - mean) * scale;
}

// How the series of a strip are standardised over some years: less the mean, times the scale, which is 0
// where there is no series or one that keeps too little of its squares.
struct Standard {
  Lanes mean{}, scale{};
};

Standard standard_of(const Lanes* rows, std::size_t years, double least_squares) {
  Lanes sum{}, squares{};
  for (std::size_t y = 0; y < years; ++y) {
    for (std::size_t k = 0; k < lanes; ++k) {
      const double value = rows[y][k];
      sum[k] += value;
      squares[k] += value * value;
    }
  }
  Standard standard;
  for (std::size_t k = 0; k < lanes; ++k) {
    standard.mean[k] = sum[k] / static_cast<double>(years);
    const double kept = squares[k] - sum[k] * standard.mean[k];
    if (kept >= least_squares) standard.scale[k] = 1 / std::sqrt(kept);
  }
  return standard;
}

Standard standard_over(const Cohort& cohort, std::size_t strip, const YearSpan& years) {
  if (years != cohort.years)
    return standard_of(cohort.strip(strip, years.first), static_cast<std::size_t>(years.count()),
                       least_share(static_cast<double>(cohort.length())));
  Standard all;
  std::fill_n(all.scale.begin(), cohort.members_of(strip).size(), 1.0);
  return all;
}

void add_standardised(const Lanes* rows, const Standard& standard, std::span<Lanes> sums) {
  for (Lanes& sum : sums) {
    for (std::size_t k = 0; k < lanes; ++k) sum[k] += ((*rows)[k] - standard.mean[k]) * standard.scale[k];
    ++rows;
  }
}

Lanes products_with(const Lanes* rows, std::span<const double> sums) {
  Lanes products{};
  for (const double sum : sums) {
    for (std::size_t k = 0; k < lanes; ++k) products[k] += sum * (*rows)[k];
    ++rows;
  }
  return products;
}

double across(const Lanes& a) {
  return ((a[0] + a[4]) + (a[1] + a[5])) + ((a[2] + a[6]) + (a[3] + a[7]));
}

// The sum, year by year, of standardised series of a cohort over the years that it has in common with
// another.
struct Sum {
  const Cohort* of;
  YearSpan years;
  std::vector<double> values = {};
  double total = 0;                        // of the values: nought, but for rounding
  std::int32_t series = 0;                 // so many are in it
  std::vector<std::size_t> doubtful = {};  // numbers of those that are not

  void add(std::size_t first_strip, std::size_t last_strip) {
    std::vector<Lanes> sums(static_cast<std::size_t>(years.count()));
    for (std::size_t s = first_strip; s < last_strip; ++s) {
      const Standard standard = standard_over(*of, s, years);
      add_standardised(of->strip(s, years.first), standard, sums);
      const auto members = of->members_of(s);
      for (std::size_t k = 0; k < members.size(); ++k) {
        if (standard.scale[k] > 0)
          ++series;
        else
          doubtful.push_back(members[k]);
      }
    }
    for (const Lanes& sum : sums) values.push_back(across(sum));
  }

  void add(const Sum& more) {
    values.resize(more.values.size());
    for (std::size_t y = 0; y < values.size(); ++y) values[y] += more.values[y];
    series += more.series;
    doubtful.insert(doubtful.end(), more.doubtful.begin(), more.doubtful.end());
  }
};

class CohortPairs {
 public:
  CohortPairs(std::span<const SeriesView> series, const std::vector<TilePlan>& tiles,
              std::int64_t fewest_years, std::size_t threads, PairSums& sums)
      : series_(series),
        cohorts_(cohorts_of(tiles)),
        fewest_years_(std::max<std::int64_t>(fewest_years, 1)),
        threads_(threads),
        sums_(sums) {}

  void add() {
    parallel_for(cohorts_.size(), threads_, [this](std::size_t c) { fill(cohorts_[c]); });
    for (const Cohort& cohort : cohorts_) {
      const std::vector<Sum> sums = sums_over_years_of(cohort);
      parallel_for(pieces_of(cohort), threads_, [&](std::size_t piece) {
        for (std::size_t s = piece * strips_a_piece; s < end_of(cohort, piece); ++s) {
          for (const Sum& sum : sums) correlate(cohort, s, sum);
        }
      });
    }
  }

 private:
  void fill(Cohort& cohort) const {
    cohort.rows.resize(cohort.strips() * cohort.length());
    for (std::size_t m = 0; m < cohort.members.size(); ++m)
      put_lane(series_[cohort.members[m]].values, cohort.rows.data() + m / lanes * cohort.length(),
               m % lanes);
  }

  static std::size_t pieces_of(const Cohort& cohort) {
    return (cohort.strips() + strips_a_piece - 1) / strips_a_piece;
  }
  static std::size_t end_of(const Cohort& cohort, std::size_t piece) {
    return std::min((piece + 1) * strips_a_piece, cohort.strips());
  }

  // Of each cohort that meets this one, itself among them.
  std::vector<Sum> sums_over_years_of(const Cohort& cohort) const {
    struct Piece {
      Sum sum;
      std::size_t number;
    };
    std::vector<Piece> pieces;
    for (const Cohort& other : cohorts_) {
      const YearSpan both = common(cohort.years, other.years);
      if (both.count() < fewest_years_) continue;
      for (std::size_t p = 0; p < pieces_of(other); ++p) pieces.push_back({{&other, both}, p});
    }
    parallel_for(pieces.size(), threads_, [&pieces](std::size_t k) {
      auto& [sum, number] = pieces[k];
      sum.add(number * strips_a_piece, end_of(*sum.of, number));
    });
    std::vector<Sum> sums;
    for (const auto& [sum, number] : pieces) {
      if (number == 0) sums.push_back({sum.of, sum.years});
      sums.back().add(sum);
    }
    for (Sum& sum : sums) sum.total = quick_sum(sum.values, [](double value) { return value; });
    return sums;
  }

  // Adds the pairs of a strip with all that the sum is of. Nobody else writes to its series meanwhile.
  void correlate(const Cohort& cohort, std::size_t strip, const Sum& with) {
    const bool with_itself = with.of == &cohort;
    const Lanes* const rows = cohort.strip(strip, with.years.first);
    const Standard standard = standard_over(cohort, strip, with.years);
    const Lanes products = products_with(rows, with.values);
    const auto members = cohort.members_of(strip);
    for (std::size_t k = 0; k < members.size(); ++k) {
      const std::size_t m = members[k];
      if (standard.scale[k] == 0) {
        for (const std::size_t other : with.of->members) add_plain(m, other);
        continue;
      }
      const double own = with_itself ? 1 : 0;
      sums_.sum_of[m] += (products[k] - standard.mean[k] * with.total) * standard.scale[k] - own;
      sums_.pairs_of[m] += with.series - static_cast<std::int32_t>(own);
      for (const std::size_t other : with.doubtful) add_plain(m, other);
    }
  }

  // Of two cohorts: over the years of its own no series is doubtful, so none meets itself here.
  void add_plain(std::size_t m, std::size_t other) {
    const YearSpan both = common(series_[m].years(), series_[other].years());
    sums_.sum_of[m] += cov(series_[m].over(both).values, series_[other].over(both).values);
    ++sums_.pairs_of[m];
  }

  std::span<const SeriesView> series_;
  std::vector<Cohort> cohorts_;
  std::int64_t fewest_years_;
  std::size_t threads_;
  PairSums& sums_;
};

}  // namespace

void add_cohort_pairs(std::span<const SeriesView> series, const std::vector<TilePlan>& tiles,
                      std::int64_t fewest_years, std::size_t threads, PairSums& sums) {
  CohortPairs(series, tiles, fewest_years, threads, sums).add();
}

double work_of_cohorts(const std::vector<TilePlan>& tiles, std::int64_t fewest_years) {
  const std::vector<Cohort> cohorts = cohorts_of(tiles);
  double work = 0;
  for (const Cohort& one : cohorts) {
    for (const Cohort& other : cohorts) {
      const std::int64_t years = common(one.years, other.years).count();
      if (years >= fewest_years)
        work += met_year * static_cast<double>(one.members.size() + other.members.size()) *
                static_cast<double>(years);
    }
  }
  return work;
}

}  // namespace vorn
