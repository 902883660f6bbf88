// The port to where files lie. Everything that the program reads and writes passes through it: on the disk,
// in memory for tests and replays.
//
// Answers are numbers of the system (errno). Names are not empty and hold no zero byte
// (path_of() sees to both); what is no absolute path is looked for in the port's own folder.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "records/status.h"

namespace vorn {

// What stands under a name, links followed. Only a regular file is sure to have an end and never to let wait.
enum class FileKind { missing, regular, folder, other };

// A file being read, from its start to its end.
class ByteSource {
 public:
  virtual ~ByteSource() = default;
  // Reads into the start of `buffer`, at least one byte unless the file is at its end. Sets how many.
  virtual Status read(std::span<char> buffer, std::size_t& count) = 0;
  // How many bytes it will have given at its end, where that can be told beforehand; 0 where not. It may come
  // otherwise.
  virtual std::uint64_t expected_size() const { return 0; }
  virtual Status close() = 0;
};

// A file being made. It takes the place of the older one when it is committed; one that goes without, or
// after a failure, is dropped, and the older one stays as it was.
class ByteSink {
 public:
  virtual ~ByteSink() = default;
  virtual Status write(std::string_view bytes) = 0;
  // Once, and last.
  virtual Status commit() = 0;
};

class Files {
 public:
  virtual ~Files() = default;

  // Finds out what stands under a name. That nothing does is no failure.
  virtual Status look_at(const std::string& name, FileKind& kind) = 0;

  // Opens an existing file to be read. 2 (ENOENT) when there is none, 21 (EISDIR) for a folder, 19 (ENODEV)
  // for what might let wait for ever or never end, 27 (EFBIG) for what is larger than any table can use.
  virtual Status open(const std::string& name, std::unique_ptr<ByteSource>& source) = 0;

  // Begins a file, whether or not one of that name exists. 2 when the folder is missing, 13 (EACCES) when the
  // older one may not be written, 21 for a folder.
  virtual Status make(const std::string& name, std::unique_ptr<ByteSink>& sink) = 0;

  // Begins a file that is to hold what the older one does and more, which the caller copies. 2 when it does
  // not exist, otherwise as make(). The commit gives 16 (EBUSY) where somebody changed the older one
  // meanwhile. What can only be added to, a device, has no `older`.
  virtual Status extend(const std::string& name, std::unique_ptr<ByteSource>& older,
                        std::unique_ptr<ByteSink>& sink) = 0;
};

// Writes a whole file: all of `bytes` stand under `name` when it answers ok, otherwise what stood there
// before.
Status write_whole(Files& files, std::string_view name, std::string_view bytes);

}  // namespace vorn
