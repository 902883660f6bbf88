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

  constexpr std::int32_t number() const { return number_; }
  // The number as messages show it: what a system fails at has the number that it has on Linux.
  constexpr std::int32_t shown_number() const;
  // Whether something failed or ended, as with std::error_code.
  constexpr explicit operator bool() const { return number_ != 0; }

  friend constexpr bool operator==(Status, Status) = default;
  friend std::ostream& operator<<(std::ostream& stream, Status status) { return stream << status.number_; }

 private:
  std::int32_t number_ = 0;
};

constexpr std::int32_t Status::shown_number() const {
#ifdef __EMSCRIPTEN__
  struct OnLinux {
    std::int32_t here, there;
  };
  constexpr OnLinux numbers[] = {
      {EPERM, 1},    {ENOENT, 2},  {EIO, 5},     {ENXIO, 6},         {EBADF, 9},   {EAGAIN, 11},
      {ENOMEM, 12},  {EACCES, 13}, {EBUSY, 16},  {EEXIST, 17},       {EXDEV, 18},  {ENODEV, 19},
      {ENOTDIR, 20}, {EISDIR, 21}, {EINVAL, 22}, {ENFILE, 23},       {EMFILE, 24}, {EFBIG, 27},
      {ENOSPC, 28},  {EROFS, 30},  {EPIPE, 32},  {ENAMETOOLONG, 36}, {ELOOP, 40},  {ETIMEDOUT, 110}};
  for (const OnLinux& number : numbers) {
    if (number.here == number_) return number.there;
  }
#endif
  return number_;
}

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
