// The outcome of an operation on files and records.
#pragma once

#include <cerrno>
#include <cstdint>
#include <ostream>

namespace vorn {

// A number of its own kind, so that nobody takes it for a count, a line or a year: 0 for success, the
// operating system's own (errno) where it has failed, and those of namespace status.
class Status {
 public:
  constexpr Status() = default;
  constexpr explicit Status(std::int32_t number) : number_(number) {}

  // The number as messages show it.
  constexpr std::int32_t number() const { return number_; }
  // Whether something failed or ended, as with std::error_code.
  constexpr explicit operator bool() const { return number_ != 0; }

  friend constexpr bool operator==(Status, Status) = default;
  friend std::ostream& operator<<(std::ostream& stream, Status status) { return stream << status.number_; }

 private:
  std::int32_t number_ = 0;
};

}  // namespace vorn

namespace vorn::status {

inline constexpr Status ok{};
inline constexpr Status end_of_file{-1};
inline constexpr Status format_unusable{5006};   // an edit format that is none, or does not suit its items
inline constexpr Status not_a_number{5010};      // a field that is no number
inline constexpr Status number_too_large{5011};  // an integer beyond 32 bits

// The system's, so far as we give them ourselves.
inline constexpr Status no_such_file{ENOENT};  // 2
inline constexpr Status busy{EBUSY};           // 16, somebody else has the file or has changed it
inline constexpr Status no_folder{ENOTDIR};    // 20
inline constexpr Status a_folder{EISDIR};      // 21

// Whether the operating system has failed, and not what was read or written. Its numbers lie below 5000.
constexpr bool of_system(Status status) {
  return status.number() > 0 && status.number() < 5000;
}

}  // namespace vorn::status
