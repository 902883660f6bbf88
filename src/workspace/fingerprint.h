// Whether a result that was kept is still that of the same numbers.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <span>

namespace vorn {

// 128 bits that two different rows of numbers do not have in common but by a chance that nobody meets. Takes
// some nanoseconds a number, much less than what is worth keeping.
class Fingerprint {
 public:
  void add(std::uint64_t bits) {
    one_ = (one_ ^ bits) * 0x9E3779B97F4A7C15u;
    one_ ^= one_ >> 32;
    other_ = (other_ + bits) * 0xC2B2AE3D27D4EB4Fu;
    other_ = std::rotl(other_, 29);
  }
  // To the last bit: 0 and -0 differ.
  void add(std::span<const double> values) {
    add(values.size());
    for (const double value : values) add(std::bit_cast<std::uint64_t>(value));
  }
  // What can be written down of it.
  std::array<std::uint64_t, 2> words() const { return {one_, other_}; }
  bool operator==(const Fingerprint&) const = default;

 private:
  std::uint64_t one_ = 1, other_ = 2;
};

}  // namespace vorn
