// A workbook of one sheet (.xlsx, ECMA-376), whose first row holds names (docs/formats/workbooks.md).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

inline constexpr std::size_t most_workbook_rows = 1'048'576;  // that a sheet may have, names included
inline constexpr std::size_t most_workbook_columns = 16'384;

// A cell: a number as text with a point, or words, which stay words whatever they look like. Empty: no cell.
struct WorkbookCell {
  std::string text = {};
  bool is_number = false;
};

class WorkbookText {
 public:
  // `name` of the sheet: at most 31 letters and digits. At most most_workbook_columns columns.
  WorkbookText(std::string name, const std::vector<std::string>& columns);
  // Rows have at most as many cells as there are columns. False: the sheet is full, and has it not.
  bool add(const std::vector<WorkbookCell>& row);
  // The whole file, the same for the same cells on every machine. Once, and last.
  std::string finished();

 private:
  void add_row(const std::vector<WorkbookCell>& row, bool is_head);
  std::string name_, rows_;
  std::size_t row_ = 0, columns_ = 0;
};

// "A", "Z", "AA" of column 1, 26 and 27.
std::string column_letters(std::size_t column);

// As it may stand in XML; characters that may not, U+FFFE and U+FFFF, become U+FFFD. Given in UTF-8 without
// control characters.
std::string xml_escaped(std::string_view text);

}  // namespace vorn
