// What the names of the columns of a table say together.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

// The early or the late part of the rings of a core, by the end of its name: "A_EW", "A.latewood".
struct RingPart {
  std::string core;    // in small letters, what stands before that
  bool early = false;  // or else late
};
std::optional<RingPart> part_of_ring(std::string_view name);

// Two columns that are the parts of the rings of one core, and the one that has the whole: "A", "A_RW",
// "A_TRW".
struct RingParts {
  std::size_t early = 0, late = 0;
  std::optional<std::size_t> whole = {};
};
// The first of them; nothing where there are none.
std::optional<RingParts> ring_parts_among(std::span<const std::string> names);

// For each column whether it is one of indices, as chronologies have them: "xxxstd", and any that ends so
// beside a sample depth.
std::vector<bool> indices_among(std::span<const std::string> names);

}  // namespace vorn
