// The check of the plotting calls for what only a mistake in this program can cause.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace vorn {

// Ends the program, naming the place.
[[noreturn]] inline void stop_plotting(const char* what, const char* file, int line) {
  std::fprintf(stderr, "%s:%d: violated: %s\n", file, line, what);
  std::abort();
}
#define VORN_PLOT_ASSERT(condition) \
  ((condition) ? static_cast<void>(0) : ::vorn::stop_plotting(#condition, __FILE__, __LINE__))

}  // namespace vorn
