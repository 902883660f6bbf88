// The unit of ring widths: as words say it, or as the values let guess.
#pragma once

#include <optional>
#include <string_view>

namespace vorn {

// Values a millimetre that words of a unit say: 1 of "mm", 100 of "1/100 mm", "0.01mm" and "hundredths", 1000
// of "um", "micron" and "thousandths". Nothing where they say none.
std::optional<double> unit_said(std::string_view words);

// That of the name of a column, "Ring width (mm)", "rw_um"; only what stands in brackets or behind the last
// separator is looked at.
std::optional<double> unit_in_name(std::string_view name);

// "mm", "hundredths of a millimetre"; nothing else than what the two above say is asked for.
std::string_view unit_words(double unit);

// What is known of the values of a file, whose unit is to be guessed.
struct ValuesSeen {
  // Median of those that are no zeros; of a Heidelberg record the mean, as the program has it.
  double middle = 0;
  bool has_decimals = false;  // at least one has digits other than 0 behind the point
  bool has_points = false;    // at least one has a point
};

inline constexpr double most_mean_of_mm = 20;             // of rings, in millimetres
inline constexpr double least_mean_in_mm = 0.02;          // of rings; a smaller one is not likely
inline constexpr double least_mean_of_thousandths = 300;  // as the program guesses for Heidelberg files

// Values with a point are millimetres, unless their middle is above most_mean_of_mm. Others are thousandths
// where their middle is above least_mean_of_thousandths, or else hundredths.
double unit_guessed(const ValuesSeen& values);

}  // namespace vorn
