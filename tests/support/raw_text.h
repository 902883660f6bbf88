// For tests: a core in the Tucson raw layout, with the values that the test gives.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace vorn {

// `mark` says the unit: 999 hundredths of a millimetre, -9999 thousandths.
inline std::string raw_text(const std::string& name, int first, std::vector<int> values, int mark = -9999) {
  char field[40];
  std::string text;
  values.push_back(mark);
  int year = first;
  for (const int value : values) {
    if (year == first || year % 10 == 0) {
      std::snprintf(field, sizeof field, "%s%-8s%4d", year == first ? "" : "\n", name.c_str(), year);
      text += field;
    }
    std::snprintf(field, sizeof field, "%6d", value);
    text += field;
    ++year;
  }
  return text + "\n";
}

}  // namespace vorn
