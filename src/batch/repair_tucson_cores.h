// The lines of a Tucson file and its cores, put right as far as that takes no guess.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "study/tucson_lines.h"

namespace vorn {

// The lines without what stands before their first character by mistake (a byte order mark, Ctrl-Z, zero
// bytes), and those that stand to the left of their columns moved into them.
struct TucsonText {
  explicit TucsonText(std::span<const FileLine> original);
  TucsonText(const TucsonText&) = delete;
  TucsonText& operator=(const TucsonText&) = delete;

  std::vector<FileLine> lines;
  std::vector<std::string> done;  // what was put right

 private:
  std::vector<std::string> texts_;  // that the lines view
};

// Cores whose lines stand in the order of their years.
struct OrderedCores {
  std::vector<CoreLines> cores = {};
  std::vector<std::int64_t> twice = {};  // lines that are left out, since another one says the same
  std::vector<std::string> done = {};
};

// Puts the lines of a core in order where they then follow each other from the first one to the one with the
// end mark, none missing and none twice, unless both say the same; lines of other cores may stand between
// them. A name with several end marks is that of several cores, and stays as it is.
OrderedCores ordered_cores(std::vector<CoreLines> cores);

}  // namespace vorn
