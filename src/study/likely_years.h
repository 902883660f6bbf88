// From how likely each year is to what is told of them.
#pragma once

#include <cstdint>
#include <span>

#include "workspace/years.h"

namespace vorn {

inline constexpr double share_of_set = 0.9;
inline constexpr std::int64_t years_around = 5;

// Given: likelihoods  of the years from `first` on, in any measure; one at least, none negative
//
// The year with the most of them near it: the likelihood of a year counts the less the farther it is, in
// equal steps, and not at all beyond years_around. So a lone peak does not outdo a broad one that holds more.
std::int64_t likeliest_year(std::span<const double> likelihoods, std::int64_t first);
// The years that the least set spans that holds share_of_set of their sum.
YearSpan likely_years(std::span<const double> likelihoods, std::int64_t first);

}  // namespace vorn
