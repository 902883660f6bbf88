// The verb `save`: corrected cores put back into the file that they come from, which otherwise stays as it
// is.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "batch/collection.h"
#include "batch/conversion.h"
#include "study/comparison.h"

namespace vorn {

struct FaithfulSave {
  std::string bytes = {};   // the new file, whole; empty where it is refused
  Sentences refused = {};   // why the cores cannot be put back so
  Sentences done = {};      // what of the original's lines is not as it was
  bool is_changed = false;  // bytes are not those of the original
};

// Puts the cores of `corrected` into the file of `original`, whose bytes are given: the lines of a core that
// changed (see study/comparison.h) are written anew, those of one that is gone are left out, new cores come
// behind the last one; all other bytes stay. Without a change they all do, whatever the file holds.
//
// What is written anew keeps the layout, the columns of the name, the unit and the line ends of the core, and
// each ring that is as it was keeps its digits: in Heidelberg and compact files its field, blanks and all. Of
// a Heidelberg record the lines that say name, years and length change; what else stands in it stays. A ring
// marked as missing is written as the original does: by its commonest way, else as 0 where it has zeros, else
// as the program writes it. A new core is in the unit and the way of the last one that can hold its widths;
// else, but for compact files, in thousandths.
//
// Refused is an original without cores; one with a core that changed and was not read as it stands there, or
// with data that were read as no core at all; a corrected collection that is not read whole, unless its bytes
// are those of the original; a width that the unit or the columns of its core cannot hold, a name or a year
// that does not fit, and whatever would not come back as it is when it is read again.
FaithfulSave saved(const Collection& original, std::string_view bytes, const Collection& corrected);

// The same of the cores of a store (batch/held_cores.h), each ring with its presence: widths are compared
// digit by digit, and those that changed are rounded to thousandths of a millimetre first, as the program
// writes them. `unit` is not looked at. Without a core there is nothing to put back, and that is refused.
FaithfulSave saved(const Collection& original, std::string_view bytes, std::span<const NamedCore> cores);

}  // namespace vorn
