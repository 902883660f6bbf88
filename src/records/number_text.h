// Numbers as they stand in the columns of a record.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "records/status.h"

namespace vorn {

// What a real is that stands as `number` in a field without a point: at most so many of its digits stand
// behind one.
inline constexpr int most_plain_decimals = 22;
double with_decimals(std::int32_t number, int decimals);

// Reads an integer from its field. Blanks within are passed over, an all-blank field is 0. Answers
// status::ok, not_a_number or number_too_large; `value` is touched only by the first.
Status read_integer(std::string_view field, std::int32_t& value);

// Reads a real from its field; without a point in it the last `decimals` digits stand behind the point.
// Blanks within are passed over, an all-blank field is 0. Exponents follow E, D, Q or a sign. What is too
// large is infinite. Answers status::ok or not_a_number; `value` is touched only by the first.
Status read_real(std::string_view field, int decimals, double& value);

// Appends `value` right-justified in `width` columns, asterisks where it does not fit; with `plus` positive
// ones have a sign.
void append_integer(std::string& record, std::int32_t value, std::size_t width, bool plus);

// Appends `value` with `decimals` digits behind the point, right-justified in `width` columns, the exact
// value rounded to nearest, ties to even digits. A zero before the point gives way where it must; what does
// not fit then is written as asterisks. Not a number is "NaN" without a sign; infinities are spelled out
// where there is room.
void append_real(std::string& record, double value, std::size_t width, int decimals, bool plus);

}  // namespace vorn
