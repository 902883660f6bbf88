// The files of a folder and of those below it: an archive.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "records/disk_files.h"

namespace vorn {

// All regular files, below `folder`, parts separated by "/", in the order of their names as bytes. Names that
// begin with a point are left out, with what is below them, and so is what is below links to folders. A
// folder below it that cannot be read, and what cannot be looked at, are there by their names, to be told of
// when they are opened. Throws std::runtime_error, with words for the user, where `folder` cannot be read.
std::vector<std::string> files_below(const std::string& folder);

// The disk, which refuses to open a folder for the reason why the files in it are not had, where there is
// one.
class DiskOfFolders : public DiskFiles {
 public:
  Status open(const std::string& name, std::unique_ptr<ByteSource>& source) override;
};

}  // namespace vorn
