// Copies of files, put into a folder under the names of the originals.
#pragma once

#include <set>
#include <string>

#include "batch/repair.h"

namespace vorn {

// Where the copy of a file goes: its name without the folders before it, in `folder`.
std::string path_of_copy(const std::string& folder, const std::string& file);

// Writes the copies of one call, each whole or not at all, and says of each what was done.
class Copies {
 public:
  explicit Copies(std::string folder, bool quiet) : folder_(std::move(folder)), quiet_(quiet) {}

  // Answers whether the copy was written or none was wanted. Of two files of one name the second is not.
  bool take(const std::string& file, const Repair& repair);

 private:
  std::string folder_;
  bool quiet_ = false;
  std::set<std::string> written_;
};

}  // namespace vorn
