// The number of a failure as messages show it.
#pragma once

#include "records/status.h"

namespace vorn {

// What a system fails at has the number that it has on Linux, whatever the system at hand calls it.
constexpr std::int32_t shown_number(Status status) {
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
    if (number.here == status.number()) return number.there;
  }
#endif
  return status.number();
}

}  // namespace vorn
