// Numbers as nearly all fields have them, read at once.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace vorn {

// How many characters plain_number_before() looks at.
inline constexpr std::size_t widest_plain_number = 8;
inline constexpr std::int32_t no_plain_number = -1;

// The number that ends before `end` and is `width` characters wide, 1 to 8 of them, where these are blanks
// and then at least one digit. For any other field no_plain_number: it has to be looked at closely. The eight
// characters before `end` must be there, whatever the width.
inline std::int32_t plain_number_before(const char* end, std::size_t width) {
  if (width == 0 || width > widest_plain_number || std::endian::native != std::endian::little)
    return no_plain_number;
  constexpr std::uint64_t each = 0x0101010101010101, all_bits = ~std::uint64_t{0};
  // The first character is the lowest byte. A blank becomes 0, as does what stands before the field, a digit
  // 0x10 and its value.
  std::uint64_t field = 0;
  std::memcpy(&field, end - widest_plain_number, sizeof field);
  field = (field ^ ' ' * each) & all_bits << 8 * (widest_plain_number - width);
  if (field == 0) return no_plain_number;
  const std::uint64_t behind_blanks = all_bits << (std::countr_zero(field) & ~7);
  const std::uint64_t digits = field | (0x10 * each & ~behind_blanks);
  const bool are_digits =
      (digits & 0xf0 * each) == 0x10 * each && ((digits + 0x06 * each) & 0xf0 * each) == 0x10 * each;
  if (!are_digits) return no_plain_number;
  // Neighbours are put together: digits, then pairs of them, then fours.
  std::uint64_t number = digits & 0x0f * each;
  number = number * (10 * 0x100 + 1) >> 8 & 0x00ff00ff00ff00ff;
  number = number * (100 * 0x10000 + 1) >> 16 & 0x0000ffff0000ffff;
  return static_cast<std::int32_t>(number * (10'000 * 0x100000000 + 1) >> 32);
}

}  // namespace vorn
