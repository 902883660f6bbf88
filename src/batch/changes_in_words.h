// "What did I change?": the cores of a file, as they are now, in sentences.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "batch/collection.h"
#include "study/comparison.h"

namespace vorn {

// One thing that became of a core.
struct ChangeInWords {
  std::string series = {};                // by its name in the file; of a new core the one it has
  std::optional<std::int64_t> year = {};  // of the ring, as it is dated now (of a deleted one: as it was)
  std::string words = {};                 // "ring inserted in 1875, 0.43 mm"
  std::string sentence() const { return series + ": " + words; }
};

// What became of the cores of a file, one sentence for each ring and, behind those of a core, one for the
// years that its other rings moved by; of a core of one change both are one sentence:
//   "ring inserted in 1875, 0.43 mm; years 1700 to 1875 moved by -1" (years as they were)
// First the cores of the file in their order, then the new ones in theirs; nothing where nothing is changed.
// What is a change says study/comparison.h, as for `vorn diff`.
//
// Given: cores  as they are now. Of a store (batch/held_cores.h): widths are compared as they stand, digit by
//               digit, and `unit` is not looked at
std::vector<ChangeInWords> changes_in_words(const Collection& original, std::span<const NamedCore> cores);

// The same of two files: widths are the same as far as both can tell.
std::vector<ChangeInWords> changes_in_words(const Collection& original, const Collection& corrected);

}  // namespace vorn
