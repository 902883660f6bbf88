// The series at work in the raw-data editor, as they were when it was opened.
#pragma once

#include <vector>

#include "workspace/vorndata.h"

namespace vorn {

// Copies of the chosen entries, chc(1 … chs), with their years.
class BeforeEdits {
 public:
  explicit BeforeEdits(const Workspace& w);

  // Puts them back, ring by ring; entries behind them move where a length is another. Refused, with "Would be
  // too many rings" and the rest left as it is, where the store has no room.
  void restore(Workspace& w) const;

 private:
  struct Copy {
    int entry, first_year, last_year;
    std::vector<double> widths;
    std::vector<bool> presence;

    bool is_as_in(const SeriesStore& w) const;
  };

  std::vector<Copy> copies_;
};

// Makes `length` rings of entry e: all entries behind it move.
void resize_entry(SeriesStore& w, int e, int length);

}  // namespace vorn
