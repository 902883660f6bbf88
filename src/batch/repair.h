// `check --repair`: a copy of a file that the program takes whole, where that can be had without a guess.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "batch/collection.h"

namespace vorn {

// What is a guess, and so up to the user.
struct RepairChoices {
  // Values a millimetre: 100 or 1000 of series without an end mark, 1 of widths with a decimal point.
  std::optional<double> unit = {};
  // Which widths of those that have several of each ring; see ImportWishes.
  RingVariable variable = RingVariable::whole;
};

struct Repair {
  std::string bytes = {};                 // of the copy; empty where there is none
  std::vector<std::string> done = {};     // what was done to have it, without the file's name
  std::vector<std::string> refused = {};  // why there is none, where one is wanted
  std::string ending = {};                // of the copy's name, where its layout is another one: ".rwl"
};

// Of a file whose findings have an error. Tucson ring widths, whether or not the layout is recognised: lines
// that are no data are left out, series that are not taken whole are written anew in the columns of the
// layout, each stretch of years that follow with its own end mark, in the unit of the file; all other lines
// stay as they are. Of a chronology lines that are no decades are left out; of any file what is empty before
// its first line. The copy is read back, and refused unless each ring comes back under its name, in its year.
//
// Given:    bytes  what the collection was read from
// Returned: neither a copy nor a word where nothing is lost or changed.
Repair repaired(const Collection& collection, std::string_view bytes, const RepairChoices& choices);

}  // namespace vorn
