// Every call of the operating system that files on the disk make, in one place. Answers are error numbers
// (errno), 0 for success, unless said otherwise.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

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

// No file is read further, and no larger one opened to be read: it is many times what fills every table, and
// still read in seconds.
inline constexpr std::uint64_t most_bytes_read = std::uint64_t{1} << 28;

enum class Links : std::uint8_t { followed, refused };

// An open file, closed when it goes. Calls that a signal interrupts are made again.
class File {
 public:
  File() = default;
  ~File() { close(); }
  File(File&& other) noexcept { *this = std::move(other); }
  File& operator=(File&& other) noexcept;

  bool is_open() const { return handle_ != none; }

  // Opens an existing file to be read, where `path` is a link only if links are to be followed; 40 (ELOOP)
  // where not. A folder gives 21 (EISDIR); a pipe, a socket or a device, which might let wait for ever or
  // never end, 19 (ENODEV); a file of more than most_bytes_read 27 (EFBIG).
  int open_to_read(const std::string& path, Links links = Links::followed);
  // Makes a new file to be written; gives 17 (EEXIST) when there is one, or a link. A private one is for the
  // user alone, others are as open as the user lets new files be.
  int make(const std::string& path, bool is_private);
  // Opens what is there to be written at its end, as a device is. A pipe without a reader gives 6 (ENXIO) at
  // once.
  int open_device(const std::string& path);

  // Reads into the start of `buffer`, at least one byte unless the file is at its end. Sets how many. Gives
  // 27 where the file goes on behind most_bytes_read, 11 (EAGAIN) where it would let wait for its next byte.
  int read(std::span<char> buffer, std::size_t& count);
  // Writes all of `bytes`. A pipe that has not been read from for some seconds gives 110 (ETIMEDOUT).
  int write(std::string_view bytes);
  // Brings what was written to the disk.
  int sync();
  // Takes the lock of the file, which one handle of all programs can have, until it is closed. 16 (EBUSY)
  // when another one has it. Sets whether the lock is held: it is not where the system knows none.
  int lock(bool& held);
  // Takes the lock of the file of that name, which is made where there is none and must be no link. 16 when
  // another program has it.
  int take_lock(const std::string& path);
  // Opens a file that is to be replaced and locks it, so that among those who do so nobody else replaces it
  // meanwhile; waits for others, for some seconds, then gives 16. Stays closed where there is no file, and
  // where the system needs no lock.
  int hold(const std::string& path);
  // Removes the file `path` unless some program has locked it. Of no use where the system knows no locks.
  static void remove_unlocked(const std::string& path);
  // A second handle, which keeps the lock when this one is closed; not open where there is none.
  File twin() const;
  // 0 when this very file has the name `path`, 16 (EBUSY) when another one or a link has it, or none.
  int check_place(const std::string& path) const;
  int stamp(Stamp& stamp) const;
  // Takes over the permission bits of `other`, and its owner and group where that is allowed; where it is
  // not, nobody gets more than he had. Access control lists and other attributes are not copied.
  int take_permissions(const File& other);
  int close();
  // Closes a file that was made, where it is not closed yet, and removes it unless another one stands there.
  void discard(const std::string& path);

 private:
  int open_to_lock(const std::string& path);
  static constexpr int none = -1;
  int handle_ = none;
  std::uint64_t bytes_read_ = 0;
};

// The file that `path` leads to when all links of its last part are followed, whether or not it exists.
// Answers 40 (ELOOP) for links that lead round in a circle.
int follow_links(std::string& path);

// 0 when an existing file may be written, 13 (EACCES) or another number when not.
int may_write(const std::string& path);

// Gives the file `from` the name `to`, in one step, in place of a file that has it.
int rename(const std::string& from, const std::string& to);
int remove(const std::string& path);

// Makes a folder, for the user alone, where none is there; 20 (ENOTDIR) where something else stands, or a
// link.
int make_folder(const std::string& path);

// The files of a folder ("" for the current one) whose names begin and end so. None where it cannot be read.
std::vector<std::string> files_named(const std::string& folder, std::string_view beginning,
                                     std::string_view ending);
// Sixteen digits and letters that nobody can guess.
std::string unguessable();

}  // namespace vorn::os
