// The verb `save`: corrected cores put back into the file that they come from, which otherwise stays as it
// is.
#pragma once

#include <string>
#include <string_view>

#include "batch/collection.h"
#include "batch/conversion.h"

namespace vorn {

struct FaithfulSave {
  std::string bytes = {};   // the new file, whole; empty where it is refused
  Sentences refused = {};   // why the cores cannot be put back so
  Sentences done = {};      // what of the original's lines is not as it was
  bool is_changed = false;  // bytes are not those of the original
};

// Puts the cores of `corrected` into the file of `original`, whose bytes are given: the lines of a core that
// changed (see study/comparison.h) are written anew, those of one that is gone are left out, new cores come
// behind the last one; all other bytes stay. What is written anew keeps the layout, the name's columns, the
// unit and the line ends of the core, and each ring that is as it was keeps its digits. A ring marked as
// missing is written as the original does: as its commonest negative value, else as 0 where it has zeros,
// else as the program writes it.
//
// Refused is an original that is no Tucson file of ring widths, one or the other that is not read whole
// (study/file_findings.h), a width that the unit of its core cannot hold, a name or a year that does not fit,
// and whatever would not come back as it is when it is read again.
FaithfulSave saved(const Collection& original, std::string_view bytes, const Collection& corrected);

}  // namespace vorn
