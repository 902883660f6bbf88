// The cores of a file made ready in one way, and each compared with the others.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "study/chronology_parts.h"
#include "study/recipe_ways.h"

namespace vorn {

// By year the values of all cores, the least first.
class YearValues {
 public:
  explicit YearValues(std::span<const ReadyCore> cores);
  // Tukey's biweight robust mean (biweight_mean.h) of a year, without one core that has this value in it; not
  // a number of none. Of no core where the value is not a number.
  double biweight(std::int64_t year, double left_out) const;

 private:
  YearSpan years_;
  std::vector<std::vector<double>> values_;
};

// The values of both where both are numbers.
struct Pairs {
  std::vector<double> a, b;
};
Pairs pairs_of(std::span<const double> a, std::span<const double> b);

class RecipeCores {
 public:
  // `go_on` is asked after each core; once it says no, no core is compared.
  RecipeCores(std::span<const SeriesView> widths, const Ways& ways, const Settings& settings,
              const std::function<bool()>& go_on);

  // From now on cores are compared so: a step behind those that made them ready.
  void compare_by(RecipeStep step, RecipeOf recipe);

  const ReadyCore& core(std::size_t i) const { return cores_[i]; }
  // What core i is compared with, in its years; not a number where there is none. That of the core asked for
  // last is kept: not for several threads at a time.
  const std::vector<double>& master(std::size_t i) const;
  // The correlation of the whole core with the others; nothing where too few years have both.
  std::optional<double> correlation(std::size_t i) const;
  // The same of some of its years, not by the program's mean: rings that do not count are left out.
  std::optional<double> correlation_over(std::size_t i, YearSpan years) const;
  // How probable its correlation of ranks is by chance (rank_correlation.h); nothing where it is none of
  // ranks or cannot be told.
  std::optional<double> probability(std::size_t i) const;
  // The plain mean of the other cores in any years; not a number where there is none.
  std::vector<double> mean_of_others(std::size_t i, YearSpan years) const;
  // The years in which core i and its master both have a value.
  int years_in_common(std::size_t i) const;
  const ChronologyParts& chronology() const { return chronology_; }
  // Of the program's own way, whether a ring is at each year of core i.
  SeriesView with_rings(std::size_t i) const;

 private:
  std::optional<double> correlation_of(const Pairs& pairs) const;
  std::vector<double> biweight_of_others(std::size_t i) const;

  bool is_by_ranks() const { return ways_.of(RecipeStep::coefficient) == RecipeOf::dplr; }

  std::span<const SeriesView> widths_;
  Ways ways_;
  std::vector<ReadyCore> cores_;
  ChronologyParts chronology_;
  std::optional<YearValues> by_year_;  // where the master asks for it
  mutable std::optional<std::size_t> of_kept_;
  mutable std::vector<double> kept_;
};

// With fewer pairs there is no correlation.
inline constexpr std::size_t fewest_recipe_pairs = 10;

}  // namespace vorn
