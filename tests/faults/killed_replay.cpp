// Linked to vorn_replay's own sources in kills_test's copy of it: the call of the operating system at which
// VORN_DIES_AT says that the process is killed.
#include <cstdlib>

#include "support/os_faults.h"

namespace vorn {
namespace {

bool ask_for_end() {
  const char* const call = std::getenv("VORN_DIES_AT");
  faults.dies_at = call == nullptr ? 0 : std::atoi(call);
  return true;
}

[[maybe_unused]] const bool asked = ask_for_end();  // before main begins

}  // namespace
}  // namespace vorn
