// The files that random walks go over.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace vorn {

struct WalkFiles {
  std::string name;                    // of the walk
  std::vector<std::string> real = {};  // real files, which need not be there
  void (*made)() = nullptr;            // writes files into the current folder
  bool undated_records = false;        // some records lack dates or a length

  // The first real file that is not there; empty when all are.
  std::string first_missing() const;
  // Puts all files into the current folder, with the list that names the real ones.
  void lay_out() const;
};

std::ostream& operator<<(std::ostream& out, const WalkFiles& files);

std::vector<WalkFiles> all_walk_files();

}  // namespace vorn
