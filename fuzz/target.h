// What every fuzz target is: a function of some bytes that ends the process when something does not hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Runs one input. Defined by each target, called by libFuzzer or by replay_main.cpp.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace vorn::fuzz {

inline std::string_view as_text(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// Ends the process, saying what did not hold; nothing when `complaint` is empty.
void must_be_empty(std::string_view complaint);

// The same for a condition; `what` says what should have been.
void must_hold(bool condition, std::string_view what);

// An input that stands for several files is cut at lines of "%%" alone. There is always a first part.
std::vector<std::string_view> parts_of(std::string_view input);

// Takes bytes from the front of an input; behind its end they are 0.
class Bytes {
 public:
  explicit Bytes(std::string_view input) : rest_(input) {}
  bool empty() const { return rest_.empty(); }
  int byte();
  std::string_view text(std::size_t length);
  // What stands before the next `end`, which is taken too, or all.
  std::string_view until(char end);
  std::string_view rest() const { return rest_; }

 private:
  std::string_view rest_;
};

}  // namespace vorn::fuzz
