// What stands in one field of a table: a number, a year, a mark for what is missing, or words.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vorn {

// A number as it is written.
struct FieldNumber {
  double value = 0;
  int decimals = 0;    // digits behind the point
  bool comma = false;  // that stands for the point
};

// The decimal number that `text` is, blanks around it apart: digits with a sign, one point and an exponent,
// or none of these. Nothing where it is none, or is longer than any number needs to be.
//
// Given:    commas  whether a comma may stand for the point
std::optional<FieldNumber> number_in(std::string_view text, bool commas);

// A whole number; one that is followed by a point and zeros is one too.
std::optional<std::int64_t> whole_number_in(std::string_view text);

// A year as tables have it, where it is none of a plain number.
struct WrittenYear {
  std::int64_t year = 0;
  bool of_date = false;  // of a date, 1990-12-31, 31.12.1990 and the like
};

// A whole number; as R names columns, "X1990", "X.5" for -5; or the year of a date. Nothing where it is none.
std::optional<WrittenYear> year_written(std::string_view text);

// Whether `text` is what people write where no value is: nothing, "NA", "NaN", ".", "-" and the like.
bool says_missing(std::string_view text);

// Without blanks, tabs and no-break spaces around it.
std::string_view bare(std::string_view text);

// With so many digits behind the point, in every country.
std::string decimal(double value, int decimals);

// In small letters of ASCII.
std::string lower_case(std::string_view text);

// `text` in small letters, without what is neither letter nor digit: "Ring width (mm)" is "ringwidthmm".
std::string letters_of(std::string_view text);

}  // namespace vorn
