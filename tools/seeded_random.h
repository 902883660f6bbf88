// Random bits that are the same on every machine.
#pragma once

#include <cstdint>

namespace vorn::examples {

// SplitMix64 (Steele, Lea and Flood, 2014): one 64-bit state, the same sequence everywhere.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}
  std::uint64_t bits() {
    state_ += 0x9E3779B97F4A7C15U;
    std::uint64_t z = state_;
    z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31U);
  }
  // Mean 0, standard deviation 1, nearly normal: twelve uniform numbers less their mean. Exact, unlike any
  // way that takes a logarithm.
  double deviate() {
    std::int64_t sum = 0;
    for (int i = 0; i < 12; ++i) sum += static_cast<std::int64_t>(bits() >> 32U);
    return static_cast<double>(sum) / 4294967296.0 - 6.0;
  }
  // From `low` to `high`, both included, alike likely.
  int between(int low, int high) {
    const auto count = static_cast<std::uint64_t>(high - low) + 1;
    return low + static_cast<int>(((bits() >> 32U) * count) >> 32U);
  }

 private:
  std::uint64_t state_;
};

}  // namespace vorn::examples
