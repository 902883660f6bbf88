// Copies of files, put into a folder under the names of the originals.
#pragma once

#include <map>
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
  // Puts a list of files, under its name, beside the copies: it names each copy that was written, and other
  // files as they are seen from there. Answers whether it was written, and says why not.
  bool take_list(const std::string& list) const;

 private:
  std::string folder_;
  std::string name_from_folder(const std::string& file) const;

  bool quiet_ = false;
  std::set<std::string> written_;              // paths of copies
  std::map<std::string, std::string> copies_;  // names of copies, by the paths of their originals
};

}  // namespace vorn
