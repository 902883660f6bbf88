// Which keys reach the program.
#pragma once

namespace vorn {

// Whether the code of a character is that of a key which is handed on as it stands. Control codes are not: so
// no key can pose as a click (5) or a request for help (6). Nor are characters outside ASCII.
constexpr bool is_printable_key(int code) {
  return code >= 32 && code <= 126;
}

}  // namespace vorn
