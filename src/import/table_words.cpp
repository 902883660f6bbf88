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
  return known == known_columns.end() ? ColumnMeaning::unknown : known->meaning;
}

}  // namespace vorn
