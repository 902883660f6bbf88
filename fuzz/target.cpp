#include "target.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace vorn::fuzz {

void must_be_empty(std::string_view complaint) {
  if (complaint.empty()) return;
  std::fprintf(stderr, "does not hold: %.*s\n", static_cast<int>(complaint.size()), complaint.data());
  std::abort();
}

void must_hold(bool condition, std::string_view what) {
  if (!condition) must_be_empty(what);
}

std::vector<std::string_view> parts_of(std::string_view input) {
  constexpr std::string_view mark = "%%\n";
  std::vector<std::string_view> parts;
  for (std::size_t line = 0;;) {
    if (input.substr(line).starts_with(mark)) {
      parts.push_back(input.substr(0, line));
      input.remove_prefix(line + mark.size());
      line = 0;
      continue;
    }
    const auto end = input.find('\n', line);
    if (end == std::string_view::npos) break;
    line = end + 1;
  }
  parts.push_back(input);
  return parts;
}

int Bytes::byte() {
  if (rest_.empty()) return 0;
  const auto first = static_cast<unsigned char>(rest_.front());
  rest_.remove_prefix(1);
  return first;
}

std::string_view Bytes::text(std::size_t length) {
  const auto taken = rest_.substr(0, length);
  rest_.remove_prefix(taken.size());
  return taken;
}

std::string_view Bytes::until(char end) {
  const auto taken = rest_.substr(0, rest_.find(end));
  rest_.remove_prefix(std::min(taken.size() + 1, rest_.size()));
  return taken;
}

}  // namespace vorn::fuzz
