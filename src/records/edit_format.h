// Edit formats such as "(A8,I4,10I6)": how a record of text is cut into items and how items make a record.
//
// One interpreter serves every layout of the program, so that code shows the same format strings as the
// descriptions of the files do. Known descriptors: Aw, A, Iw, Fw.d, nX, literals in single or double quotes,
// SP and SS, repeat counts and groups. Blanks in a format mean nothing; letters may be of either case.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "records/text.h"

namespace vorn {

// What `ios` holds after a read or write by edit format. Positive numbers below 5000 are the operating
// system's own (2 no such file, 13 no permission, 21 a directory, 28 disk full).
namespace status {
inline constexpr int ok = 0;
inline constexpr int end_of_file = -1;
inline constexpr int format_unusable = 5006;  // an edit format that cannot be read, or does not suit its items
inline constexpr int not_a_number = 5010;     // a field that is no number
inline constexpr int number_too_large = 5011; // an integer beyond 32 bits
}  // namespace status

// An integer to be written; nothing stands for a value that no integer can show, written as asterisks.
using Integer = std::optional<std::int32_t>;

// round(1000 w), halves away from zero, the product formed in 64 bits; nothing when that is not a number or does
// not fit 32 bits. Every width and index of an output file goes through here.
Integer thousandths(double w);

// Where a read puts its items, in order. A span stands for that many items.
using ReadItem = std::variant<std::int32_t*, double*, std::span<char>, std::span<std::int32_t>, std::span<double>>;
// What a write takes its items from, in order.
using WriteItem = std::variant<Integer, double, std::string_view, std::span<const std::int32_t>,
                               std::span<const Integer>, std::span<const double>>;

class EditFormat {
 public:
  // Parses `text`, from its opening to its closing parenthesis. A text that is no format gives an object whose
  // every use answers status::format_unusable.
  explicit EditFormat(std::string_view text);
  bool usable() const;
  // ... (parsed form is private)
};

}  // namespace vorn
