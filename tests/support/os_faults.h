// Calls of the operating system that fail, or end the process, when a test asks them to.
//
// They are put in the place of the real ones by the linker (see os_faults.cmake), so that nothing of the
// program is built differently for it. The calls are those of src/records/os_file.cpp.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vorn {

// One call that fails, counted among those of its kind.
struct Fault {
  // Instead of an error: the call succeeds, but moves a single byte.
  static constexpr int short_count = -1;

  int passes = 0;         // calls that still succeed before it
  int error = 0;          // what it sets errno to; 0: none fails
  bool for_good = false;  // all that follow fail as well
  bool struck = false;    // set when it has happened

  // Whether this call fails; sets errno then.
  bool strikes();
};

// Everything that is asked for; a new one asks for nothing.
struct Faults {
  Fault open, read, write, fsync, close, rename, fchmod, remove;
  Fault stat, lstat, fstat, access, fchown, flock;

  bool passes_fsync_over =
      false;  // nothing is brought to the disk: slow, and of no use where no machine stops
  std::size_t most_at_once = SIZE_MAX;  // bytes that a read or write moves

  bool any_struck() const;

  // The process is killed at its `dies_at`-th call from now on, before the call is made; where that is a
  // write, after half of it. 0: never.
  int dies_at = 0;
  // It is killed as soon as it has written so many bytes, `written` among them. 0: never.
  std::size_t dies_after = 0;
  std::size_t written = 0;
};

extern Faults faults;

}  // namespace vorn
