// Every call of the operating system that files on the disk make, in one place. Answers are error numbers
// (errno), 0 for success, unless said otherwise.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "records/files.h"

namespace vorn::os {

// Finds out what stands under a name, links followed. That nothing is there is no failure.
int kind_of(const std::string& path, FileKind& kind);

// From now on a write to a pipe that nobody reads, or beyond the size that a file may have, is a failed write
// (32, 27) and not the end of the program.
void let_writes_fail();

// Tells one state of a file from another: which file it is, its size and when it was last written.
struct Stamp {
  std::uint64_t device = 0, number = 0, size = 0;
  std::int64_t seconds = 0, nanoseconds = 0;
  bool operator==(const Stamp&) const = default;
};
// Answers 2 (ENOENT) for a file that is not there.
int stamp_of(const std::string& path, Stamp& stamp);

// An open file, closed when it goes. Calls that a signal interrupts are made again.
class File {
 public:
  File() = default;
  ~File() { close(); }
  File(File&& other) noexcept : handle_(other.handle_) { other.handle_ = none; }
  File& operator=(File&& other) noexcept;

  bool is_open() const { return handle_ != none; }

  // Opens an existing file to be read. A folder gives 21 (EISDIR); a pipe, a socket or a device, which might
  // let wait for ever or never end, 19 (ENODEV).
  int open_to_read(const std::string& path);
  // Makes a new file to be written; gives 17 (EEXIST) when there is one.
  int make(const std::string& path);
  // Opens what is no regular file to be written at its end. A pipe without a reader gives 6 (ENXIO) at once.
  int open_device(const std::string& path);

  // Reads into the start of `buffer`, at least one byte unless the file is at its end. Sets how many.
  int read(std::span<char> buffer, std::size_t& count);
  // Writes all of `bytes`. A pipe that has not been read from for some seconds gives 110 (ETIMEDOUT).
  int write(std::string_view bytes);
  // Brings what was written to the disk.
  int sync();
  // Whether `path` still leads to this file and not to another one that somebody put there.
  bool stands_at(const std::string& path) const;
  int stamp(Stamp& stamp) const;
  int close();

 private:
  static constexpr int none = -1;
  int handle_ = none;
};

// The file that `path` leads to when all links of its last part are followed, whether or not it exists.
// Answers 40 (ELOOP) for links that lead round in a circle.
int follow_links(std::string& path);

// 0 when an existing file may be written, 13 (EACCES) or another number when not.
int may_write(const std::string& path);

// Gives the file `to` the permission bits of `from`, and its owner and group where that is allowed. Access
// control lists and other attributes are not copied.
int copy_permissions(const std::string& from, const std::string& to);
// Gives the file `from` the name `to`, in one step, in place of a file that has it.
int rename(const std::string& from, const std::string& to);
int remove(const std::string& path);

}  // namespace vorn::os
