// Small files that look like real ones, made up, for targets that need a store to work on.
#pragma once

#include <string>
#include <vector>

namespace vorn::fuzz {

struct StoreFile {
  const char* name;
  std::string bytes;
};

// Files with their list, "Vorn.fil", and nothing else that the program may look for.
struct SmallStore {
  std::vector<StoreFile> files;
  bool undated_records = false;  // see WalkState
};

// All four layouts, lists for the two-column conversion and help included.
SmallStore mixed_store();
// One file of one core, one of two.
SmallStore tiny_store();
// Records without dates, lengths or values, constant widths, years far from all others.
SmallStore odd_store();
// More names than a page of a list shows, of short cores.
SmallStore crowded_store();

}  // namespace vorn::fuzz
