// How fast this machine is at what bounds the stages from below.
//
// A stage told as a multiple of its floor can be compared between machines; a time alone cannot.
#pragma once

#include <string>

namespace vorn::bench {

// All by one thread, the best of several short trials.
struct MachineRates {
  double multiply_adds =
      0;                  // of 64-bit numbers, a second, with the widest vectors the program itself would use
  double bytes = 0;       // read from memory a second, from an array that no cache holds
  double scanned = 0;     // bytes of text looked through for line ends, a second
  double files = 0;       // opened, their first bytes read, and closed, a second
  double logarithms = 0;  // of the library's `log`, a second
  double pair_ends = 0;   // roots and divisions behind the sums, see Floors::pairs; with the widest vectors
  double start = 0;       // seconds that a program takes that does nothing, from its start to its end
};

// `text_file` is a text of lines as long as those of a ring-width file.
MachineRates measure_machine(const std::string& text_file);

}  // namespace vorn::bench
