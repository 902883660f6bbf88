// What holds of the program's state whenever it waits for the user in a menu.
#pragma once

#include <string>

#include "workspace/vorndata.h"

namespace vorn {

// What is known of a session beyond its state.
struct WalkState {
  bool undated_records = false;  // the files hold records without dates or lengths: years need not agree
  bool any_widths = false;       // the files may hold widths that are infinite
  bool store_replaced = false;   // "Read TRW" ran and the chronologies are not yet behind its cores
  bool pair_set = false;         // the cross-dating or the correlation screen is shown: both slots are filled
  bool chooser_shown = false;
};

// The first thing found that does not hold, in words; empty when all holds.
std::string broken_invariant(const Workspace& w, const WalkState& state);

}  // namespace vorn
