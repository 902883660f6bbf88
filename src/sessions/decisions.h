// What a user decided, told from how things stood before and after.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "sessions/standing.h"
#include "situation/situation.h"

namespace vorn {

// All that a decision can change.
struct Decided {
  Settings settings = {};
  std::string file = {};  // the current one
  int loads = 0;          // how often cores were loaded
  std::vector<SharedSeries> cores = {};
  // The working copies, where they differ from what is stored, and of what entry they are.
  SharedSeries sample = {}, reference = {};
  int sample_entry = 0, reference_entry = 0;
  int sample_stored_from = 0, reference_stored_from = 0;  // their first years as they are stored
};

// The decision that leads from one to the other, in words; nothing where nothing was decided. `pressed` are
// the buttons in between, `destination` the file that cores were moved to.
std::optional<Decision> decision_between(const Decided& before, const Decided& after,
                                         const std::vector<ButtonNumber>& pressed,
                                         const std::string& destination);

// Whether the decision only slid a series that `earlier` slid too, so that both are one.
// what both together say then is what both() makes of them.
bool goes_on(const Decision& earlier, const Decision& decision);
Decision both(const Decision& earlier, const Decision& decision);

}  // namespace vorn
