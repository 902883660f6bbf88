// Cores as they are compared with the file that they come from, whoever holds them.
#pragma once

#include <cstdint>
#include <deque>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "study/comparison.h"
#include "workspace/owned_series.h"

namespace vorn {

// The name of a core without blanks around it and without the "-" that says in its eighth column that its
// years, from `first` on, are negative: what it is called in any layout.
std::string plain_name(std::string_view name, std::int64_t first);

// Copies of the cores of a store, under their plain names.
class HeldCores {
 public:
  // Widths in mm, and of each whether its ring is present (not 0) or marked as missing; as many of the one as
  // of the other.
  void add(std::string_view name, std::int64_t first, std::span<const double> mm,
           std::span<const std::uint8_t> present);
  void add(std::string_view name, const SeriesView& widths);
  // In the order in which they came; they live as long as this does, moved or not, and until the next add().
  std::span<const NamedCore> cores() const { return cores_; }

 private:
  std::deque<std::string> names_;
  std::deque<OwnedSeries> widths_;
  std::vector<NamedCore> cores_;
};

// The cores with widths that are compared as they stand, digit by digit: those of a store and those of the
// file that it was filled from.
std::vector<NamedCore> compared_exactly(std::span<const NamedCore> cores);

}  // namespace vorn
