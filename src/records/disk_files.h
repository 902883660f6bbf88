// Files on the disk.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "records/files.h"

namespace vorn {

// The files of one folder of the disk, and all others by absolute paths.
//
// Nothing that was there before is ever lost: a file that is made lies beside the one whose place it will
// take, as a neighbour, and is brought to the disk before it does. It has the permissions of the older file,
// and its owner where that is allowed, and never more. Links are followed. Of several programs that write a
// file at the same time each makes its own, and the last one stands. What is no regular file (a device, a
// pipe) is not read, and written directly; a pipe that has not been read from for some seconds gives 110.
// What a killed program leaves of a neighbour goes when the file is written again.
class DiskFiles : public Files {
 public:
  // Of the folder that the process is in, whenever a file is asked for.
  DiskFiles() = default;
  explicit DiskFiles(std::string folder) : folder_(std::move(folder)) {}

  Status look_at(const std::string& name, FileKind& kind) override;
  Status open(const std::string& name, std::unique_ptr<ByteSource>& source) override;
  Status make(const std::string& name, std::unique_ptr<ByteSink>& sink) override;
  Status extend(const std::string& name, std::unique_ptr<ByteSource>& older,
                std::unique_ptr<ByteSink>& sink) override;

 private:
  std::string path_to(const std::string& name) const;
  std::string folder_;  // empty: the process's
};

}  // namespace vorn
