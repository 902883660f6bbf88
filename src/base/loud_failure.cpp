#include "base/loud_failure.h"

#include <cstdio>
#include <cstdlib>

namespace vorn {

void stop_loudly(const char* violated, const char* file, int line) {
  std::fprintf(stderr, "%s:%d: violated: %s\n", file, line, violated);
  std::abort();
}

}  // namespace vorn
