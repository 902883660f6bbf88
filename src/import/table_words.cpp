#include "import/table_words.h"

#include <algorithm>
#include <array>

#include "import/fields.h"

namespace vorn {
namespace {

// Without what says the unit: in brackets, or behind the last separator.
std::string_view without_unit(std::string_view name) {
  if (const std::size_t open = name.find_first_of("([{"); open != std::string_view::npos && open > 0)
    return name.substr(0, open);
  constexpr std::array<std::string_view, 4> units = {"mm", "um", "micron", "microns"};
  const std::size_t separator = name.find_last_of(" _.-");
  if (separator == std::string_view::npos || separator == 0) return name;
  const bool is_unit = std::ranges::find(units, letters_of(name.substr(separator + 1))) != units.end();
  return is_unit ? name.substr(0, separator) : name;
}

}  // namespace

ColumnMeaning meaning_of(std::string_view name) {
  constexpr std::size_t longest = 60;
  const std::string letters = letters_of(without_unit(bare(name.substr(0, longest))));
  const auto known = std::ranges::find(known_columns, letters, &KnownColumn::letters);
  if (known == known_columns.end()) return ColumnMeaning::unknown;
  // As in "age (yr BP)", where the brackets hold more than a unit.
  const bool is_bp =
      known->meaning == ColumnMeaning::year && letters_of(name.substr(0, longest)).ends_with("bp");
  return is_bp ? ColumnMeaning::year_bp : known->meaning;
}

bool is_age(std::string_view name) {
  return letters_of(name) == "age";
}

bool counts_backwards(std::string_view name) {
  constexpr std::size_t longest = 60;
  const std::string letters = letters_of(name.substr(0, longest));
  const bool is_of_years = letters.starts_with("year") || letters.starts_with("jahr") ||
                           letters.starts_with("age") || letters.starts_with("ann");
  const auto ends_so = [&letters](std::string_view end) { return letters.ends_with(end); };
  constexpr std::array<std::string_view, 5> ends = {"bc", "bce", "vchr", "b2k", "bk"};
  return is_of_years && std::ranges::any_of(ends, ends_so);
}

}  // namespace vorn
