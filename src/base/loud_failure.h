// The check for what only a mistake in this program can cause. It lives in release builds too.
#pragma once

namespace vorn {

// Ends the program, naming the place.
[[noreturn]] void stop_loudly(const char* violated, const char* file, int line);

}  // namespace vorn

#define VORN_ASSERT(condition) \
  ((condition) ? static_cast<void>(0) : ::vorn::stop_loudly(#condition, __FILE__, __LINE__))
