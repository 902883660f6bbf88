// The verb `convert`: the cores of a file in another layout.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/collection.h"
#include "study/comparison.h"
#include "workspace/layout.h"

namespace vorn {

// A layout that cores are written in, as the command line names it.
struct TargetLayout {
  std::string_view name;                   // "tucson", "heidelberg", "compact", "csv", "noaa", "xlsx"
  Layout layout = Layout::not_recognised;  // the program's, if it is one of them
  // Otherwise what it is written by: the name of the site, its cores.
  std::string (*write)(std::string_view, std::span<const NamedCore>) = nullptr;
};
std::span<const TargetLayout> target_layouts();
// Of one of those names; null for another one.
const TargetLayout* target_named(std::string_view name);

// One sentence each, that begins with the path of the file that was read.
using Sentences = std::vector<std::string>;

struct Conversion {
  std::string bytes = {};   // the new file, whole; empty where it is refused
  Sentences refused = {};   // why the cores cannot be written so
  Sentences not_read = {};  // what of the file could not be read
  Sentences lost = {};      // what was read of it that the new one has not
};

// Writes the cores of a collection in a layout; nothing reaches a file. Layouts of the program are written as
// it does, but for Heidelberg names, which stand to the left; the others as written_tables.h says. What is
// written is read back and compared (see study/comparison.h): it is refused unless each core comes back under
// its name, with its years and its widths, in thousandths of a millimetre, and where there is no core.
Conversion converted(const Collection& collection, const TargetLayout& target);

}  // namespace vorn
