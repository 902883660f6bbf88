// How fast this machine is at the three things that bound the stages from below, and at opening files.
//
// A stage told as a multiple of its floor can be compared between machines; a time alone cannot.
#pragma once

#include <string>

namespace vorn::bench {

// All by one thread, the best of several short trials.
struct MachineRates {
  double multiply_adds =
      0;               // of 64-bit numbers, a second, with the widest vectors the program itself would use
  double bytes = 0;    // read from memory a second, from an array that no cache holds
  double scanned = 0;  // bytes of text looked through for line ends, a second
  double files = 0;    // opened, their first bytes read, and closed, a second
};

// `text_file` is a text of lines as long as those of a ring-width file.
MachineRates measure_machine(const std::string& text_file);

}  // namespace vorn::bench
