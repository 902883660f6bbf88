#include "statistics/cohorts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <map>
#include <utility>

#include "base/parallel_for.h"
#include "statistics/pair_rows.h"

namespace vorn {
namespace {

// A cohort stands in strips of so many series, year by year.
constexpr std::size_t lanes = 8;
using Lanes = std::array<double, lanes>;

// So many strips are a piece of work.
constexpr std::size_t strips_a_piece = 8;

// So many numbers of sums are held at once, or those of one cohort.
constexpr std::size_t most_numbers = 2'000'000;

// Rows of the table of correlations that are held at once.
constexpr std::size_t rows_at_once = 64;

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

// How far a correlation of a series may lie from that of cov, at most; of a pair it is what both give
// together. Sums of n numbers are off by n roundings, those of squares of 1 / scale^2 are left of 1.
double error_of(std::size_t years, double scale) {
  constexpr double rounding = std::numeric_limits<double>::epsilon() / 2;
  return 4 * (1 + scale * scale) * static_cast<double>(years) * rounding;
}

double across(const Lanes& a) {
  return ((a[0] + a[4]) + (a[1] + a[5])) + ((a[2] + a[6]) + (a[3] + a[7]));
}

// The sum, year by year, of standardised series of a cohort over the years that it has in common with
// another.
struct Sum {
  std::size_t of;  // which cohort
  YearSpan years;
  std::vector<double> values = {};
  double total = 0;         // of the values: nought, but for rounding
  std::int32_t series = 0;  // so many are in it
};

// Series of a cohort that keep too little of their squares over the years that it has in common with another.
struct Doubtful {
  std::size_t of, with;  // which cohorts
  std::vector<std::size_t> series;
};

class CohortPairs {
 public:
  CohortPairs(std::span<const SeriesView> series, std::vector<Cohort> cohorts, std::int64_t fewest_years,
              std::size_t threads, PairSums& sums, std::span<double> errors)
      : series_(series),
        cohorts_(std::move(cohorts)),
        fewest_years_(std::max<std::int64_t>(fewest_years, 1)),
        threads_(threads),
        sums_(sums),
        errors_(errors) {}

  void add(const ShareDone& told) {
    if (cohorts_.empty()) return;
    for (Cohort& cohort : cohorts_) cohort.rows.resize(cohort.strips() * cohort.length());
    const std::vector<Piece> all = pieces_of(0, cohorts_.size());
    parallel_for(all.size(), threads_, [&](std::size_t k) { fill(all[k]); });
    std::size_t done = 0;
    const auto tell = [&](std::size_t more) {
      if (told) told(static_cast<double>(done + more) / static_cast<double>(all.size()));
    };
    for (std::size_t from = 0; from < cohorts_.size();) {
      const std::size_t end = end_of_batch(from);
      done += add(from, end, tell);
      from = end;
    }
    add_doubtful();
    tell(0);
  }

 private:
  // Some strips of a cohort, next to each other.
  struct Piece {
    std::size_t cohort, first_strip, end_strip;
  };

  static std::size_t pieces_in(const Cohort& cohort) {
    return (cohort.strips() + strips_a_piece - 1) / strips_a_piece;
  }
  std::vector<Piece> pieces_of(std::size_t first, std::size_t end) const {
    std::vector<Piece> pieces;
    for (std::size_t c = first; c < end; ++c) {
      const std::size_t strips = cohorts_[c].strips();
      for (std::size_t s = 0; s < strips; s += strips_a_piece)
        pieces.push_back({c, s, std::min(s + strips_a_piece, strips)});
    }
    return pieces;
  }

  void fill(const Piece& piece) {
    Cohort& cohort = cohorts_[piece.cohort];
    for (std::size_t s = piece.first_strip; s < piece.end_strip; ++s) {
      const auto members = cohort.members_of(s);
      for (std::size_t k = 0; k < members.size(); ++k)
        put_lane(series_[members[k]].values, cohort.rows.data() + s * cohort.length(), k);
    }
  }

  YearSpan years_of_both(std::size_t a, std::size_t b) const {
    return common(cohorts_[a].years, cohorts_[b].years);
  }
  bool meet(std::size_t a, std::size_t b) const { return years_of_both(a, b).count() >= fewest_years_; }

  // Where those end, from `from` on, whose sums are held at once.
  std::size_t end_of_batch(std::size_t from) const {
    std::size_t numbers = 0, end = from;
    for (; end < cohorts_.size() && (end == from || numbers < most_numbers); ++end) {
      for (std::size_t other = 0; other < cohorts_.size(); ++other) {
        if (meet(end, other))
          numbers += pieces_in(cohorts_[other]) * static_cast<std::size_t>(years_of_both(end, other).count());
      }
    }
    return end;
  }

  // Adds the pairs of some cohorts with all others. Result: how many pieces they are.
  template <class Tell>
  std::size_t add(std::size_t first, std::size_t end, const Tell& tell) {
    const std::vector<std::vector<Sum>> sums = sums_for(first, end);
    const std::vector<Piece> pieces = pieces_of(first, end);
    std::vector<std::vector<Doubtful>> doubtful(pieces.size());
    parallel_for(
        pieces.size(), threads_,
        [&](std::size_t k) {
          for (const Sum& sum : sums[pieces[k].cohort - first]) correlate(pieces[k], sum, doubtful[k]);
        },
        tell);
    for (auto& more : doubtful) std::move(more.begin(), more.end(), std::back_inserter(doubtful_));
    return pieces.size();
  }

  // For each of some cohorts the sums of those that meet it, itself among them.
  std::vector<std::vector<Sum>> sums_for(std::size_t first, std::size_t end) const {
    std::vector<std::pair<Piece, Sum>> parts;
    for (std::size_t c = first; c < end; ++c) {
      for (const Piece& piece : pieces_of(0, cohorts_.size())) {
        if (meet(c, piece.cohort)) parts.push_back({piece, {piece.cohort, years_of_both(c, piece.cohort)}});
      }
    }
    parallel_for(parts.size(), threads_, [&](std::size_t k) { sum_up(parts[k].first, parts[k].second); });
    std::vector<std::vector<Sum>> sums(end - first);
    auto part = parts.begin();
    for (std::size_t c = first; c < end; ++c) {
      for (std::size_t other = 0; other < cohorts_.size(); ++other) {
        if (!meet(c, other)) continue;
        Sum& sum = sums[c - first].emplace_back(std::move((part++)->second));
        for (std::size_t k = 1; k < pieces_in(cohorts_[other]); ++k) add((part++)->second, sum);
        sum.total = quick_sum(sum.values, [](double value) { return value; });
      }
    }
    return sums;
  }

  void sum_up(const Piece& piece, Sum& sum) const {
    const Cohort& cohort = cohorts_[piece.cohort];
    std::vector<Lanes> sums(static_cast<std::size_t>(sum.years.count()));
    for (std::size_t s = piece.first_strip; s < piece.end_strip; ++s) {
      const Standard standard = standard_over(cohort, s, sum.years);
      add_standardised(cohort.strip(s, sum.years.first), standard, sums);
      sum.series += static_cast<std::int32_t>(lanes - std::ranges::count(standard.scale, 0.0));
    }
    for (const Lanes& row : sums) sum.values.push_back(across(row));
  }

  static void add(const Sum& part, Sum& sum) {
    for (std::size_t y = 0; y < sum.values.size(); ++y) sum.values[y] += part.values[y];
    sum.series += part.series;
  }

  // Adds the pairs of some series with all that the sum is of. Nobody else writes to them meanwhile.
  void correlate(const Piece& piece, const Sum& with, std::vector<Doubtful>& doubtful) {
    const Cohort& cohort = cohorts_[piece.cohort];
    const bool with_itself = with.of == piece.cohort;
    std::vector<std::size_t> left;
    for (std::size_t s = piece.first_strip; s < piece.end_strip; ++s) {
      const Standard standard = standard_over(cohort, s, with.years);
      const Lanes products = products_with(cohort.strip(s, with.years.first), with.values);
      const auto members = cohort.members_of(s);
      for (std::size_t k = 0; k < members.size(); ++k) {
        const std::size_t m = members[k];
        const double scale = standard.scale[k];
        if (scale == 0) {
          left.push_back(m);
          continue;
        }
        const double own = with_itself ? 1 : 0;
        sums_.sum_of[m] += (products[k] - standard.mean[k] * with.total) * scale - own;
        sums_.pairs_of[m] += with.series - static_cast<std::int32_t>(own);
        errors_[m] = std::max(errors_[m], error_of(cohort.length(), scale));
      }
    }
    if (!left.empty()) doubtful.push_back({piece.cohort, with.of, std::move(left)});
  }

  // Each pair once: of two that both are doubtful with the cohort that comes first.
  void add_doubtful() {
    std::map<std::pair<std::size_t, std::size_t>, std::vector<std::size_t>> doubtful;
    for (const Doubtful& some : doubtful_) {
      auto& all = doubtful[{some.of, some.with}];
      all.insert(all.end(), some.series.begin(), some.series.end());
    }
    for (const auto& [which, some] : doubtful) {
      const auto& [of, with] = which;
      std::vector<std::size_t> others = cohorts_[with].members;
      if (const auto also = doubtful.find({with, of}); of > with && also != doubtful.end()) {
        std::vector<std::size_t> sure;
        std::set_difference(others.begin(), others.end(), also->second.begin(), also->second.end(),
                            std::back_inserter(sure));
        others = std::move(sure);
      }
      add_by_definition(some, others);
    }
  }

  void add_by_definition(const std::vector<std::size_t>& some, const std::vector<std::size_t>& others) {
    const PairRows all(series_, others, fewest_years_);
    std::vector<std::vector<double>> rows(std::min(rows_at_once, some.size()),
                                          std::vector<double>(series_.size()));
    for (std::size_t from = 0; from < some.size(); from += rows.size()) {
      const std::size_t count = std::min(rows.size(), some.size() - from);
      parallel_for(count, threads_, [&](std::size_t k) { all.row(some[from + k], -1, rows[k]); });
      for (std::size_t k = 0; k < count; ++k) {
        for (const std::size_t j : others) sums_.add(some[from + k], j, rows[k][j]);
      }
    }
  }

  std::span<const SeriesView> series_;
  std::vector<Cohort> cohorts_;
  std::int64_t fewest_years_;
  std::size_t threads_;
  PairSums& sums_;
  std::span<double> errors_;
  std::vector<Doubtful> doubtful_;
};

}  // namespace

void add_cohort_pairs(std::span<const SeriesView> series, const std::vector<TilePlan>& tiles,
                      std::int64_t fewest_years, std::size_t threads, const ShareDone& told, PairSums& sums,
                      std::span<double> errors) {
  CohortPairs(series, cohorts_of(tiles), fewest_years, threads, sums, errors).add(told);
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
