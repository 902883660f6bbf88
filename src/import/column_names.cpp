#include "import/column_names.h"

#include <algorithm>
#include <array>
#include <map>

#include "import/fields.h"

namespace vorn {
namespace {

constexpr std::size_t longest_looked_at = 100;

struct PartEnding {
  std::string_view word;
  bool early;
};
constexpr std::array part_endings = {PartEnding{"ew", true},        PartEnding{"eww", true},
                                     PartEnding{"earlywood", true}, PartEnding{"lw", false},
                                     PartEnding{"lww", false},      PartEnding{"latewood", false}};

// Without the word at the end and what parts it; nothing where it does not end so.
std::optional<std::string> before_ending(std::string_view name, std::string_view word) {
  const std::string small = lower_case(name.substr(0, longest_looked_at));
  if (!small.ends_with(word)) return std::nullopt;
  const std::string_view rest = std::string_view(small).substr(0, small.size() - word.size());
  const std::size_t last = rest.find_last_not_of(" _.-");
  if (last == std::string_view::npos || last + 1 == rest.size()) return std::nullopt;
  return std::string(rest.substr(0, last + 1));
}

// Whether the column has the whole rings of the core.
bool is_whole_of(std::string_view name, std::string_view core) {
  constexpr std::array<std::string_view, 4> endings = {"rw", "trw", "width", "ringwidth"};
  return lower_case(name.substr(0, longest_looked_at)) == core ||
         std::ranges::any_of(endings,
                             [&](std::string_view word) { return before_ending(name, word) == core; });
}

}  // namespace

std::optional<RingPart> part_of_ring(std::string_view name) {
  for (const PartEnding& one : part_endings) {
    if (const auto core = before_ending(name, one.word)) return RingPart{*core, one.early};
  }
  return std::nullopt;
}

std::optional<RingParts> ring_parts_among(std::span<const std::string> names) {
  std::map<std::string, std::size_t> early, late;
  for (std::size_t k = 0; k < names.size(); ++k) {
    if (const auto part = part_of_ring(names[k])) (part->early ? early : late).try_emplace(part->core, k);
  }
  std::optional<RingParts> first;
  for (const auto& [core, place] : early) {
    const auto other = late.find(core);
    if (other == late.end() || (first && first->early < place)) continue;
    const auto whole = std::ranges::find_if(
        names, [&core = core](const std::string& name) { return is_whole_of(name, core); });
    first = {place, other->second};
    if (whole != names.end()) first->whole = static_cast<std::size_t>(whole - names.begin());
  }
  return first;
}

std::vector<bool> indices_among(std::span<const std::string> names) {
  constexpr std::array<std::string_view, 6> endings = {"std", "res", "ars", "crn", "index", "trsgi"};
  constexpr std::array<std::string_view, 5> depths = {"sampdepth", "sampledepth", "ncores", "num", "depth"};
  const bool has_depth = std::ranges::any_of(names, [&](const std::string& name) {
    return std::ranges::find(depths, letters_of(name.substr(0, longest_looked_at))) != depths.end();
  });
  std::vector<bool> all;
  for (const std::string& name : names) {
    const std::string letters = letters_of(name.substr(0, longest_looked_at));
    const bool ends_so =
        std::ranges::any_of(endings, [&](std::string_view end) { return letters.ends_with(end); });
    all.push_back(ends_so && (has_depth || letters.starts_with("xxx")));
  }
  return all;
}

}  // namespace vorn
