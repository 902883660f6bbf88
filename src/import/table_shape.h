// What a text of rows and fields is: a table of ring widths, and of which kind, or none.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "import/imported.h"
#include "import/table_words.h"
#include "study/file_lines.h"

namespace vorn {

struct TableShape {
  OtherLayout layout = OtherLayout::wide_table;
  char separator = ',';
  bool years_across = false;          // wide: a row is a series
  bool has_header = true;             // its first row holds names
  std::size_t titles = 0;             // rows of one field before that
  std::size_t year = 0;               // its column, from 0; of years_across the first of them
  bool is_bp = false;                 // years before 1950
  std::size_t series = 0;             // long, and years_across: the column of names
  std::optional<std::size_t> tree{};  // the same: that of the tree, where the other names a part of it
  std::size_t width = 0;              // long
  std::vector<bool> words =
      {};                // wide: which columns hold words and no numbers, as far as they are looked at
  bool shifted = false;  // rows have a field more than the header, before its first
};

// So many rows of the beginning are looked at.
inline constexpr std::size_t rows_looked_at = 200;

// Strict: nothing where years and widths are not plain. `separators` are tried in their order.
std::optional<TableShape> table_shape(std::span<const FileLine> lines, std::string_view separators = "\t;, ");

}  // namespace vorn
