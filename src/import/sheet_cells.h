// The cells of a sheet of a workbook, as rows of text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

// More of them a workbook are not looked at: rows, empty ones among them, and cells that hold something.
inline constexpr std::int64_t most_sheet_rows = 1'048'576;
inline constexpr std::int64_t most_sheet_columns = 16'384;
// Bytes of the rows of all sheets as text, the empty cells between others among them.
inline constexpr std::size_t most_sheet_text = 64U << 20U;

// How numbers of a workbook are shown, as far as it matters: whether one is a date.
struct CellStyles {
  std::vector<bool> are_dates = {};  // by the number of the style
  bool from_1904 = false;            // days are counted from 1904-01-01, else from 1899-12-31
  // Formulas are to be computed when the workbook is opened: one whose value is 0 may have none yet.
  bool computed_when_opened = false;
};

struct SheetCells {
  std::vector<std::string> rows = {};  // cells parted by tabs; the first row of the sheet is the first
  std::int64_t merged = 0;             // spans of cells that are one
  std::int64_t not_computed = 0,
               first_not_computed = 0;  // formulas without a value, and the row of the first
  std::int64_t without_text = 0,
               first_without_text = 0;               // cells whose shared text is none of the workbook's
  std::int64_t hidden_rows = 0, hidden_columns = 0;  // that hold something
  std::string cut = {};                              // what was left out, in words; empty where nothing was
};

// Reads the XML of a sheet; answers why it cannot be read, or nothing. `room` is what is left of
// most_sheet_text, and is lowered.
std::string read_sheet(std::string_view xml, const std::vector<std::string>& shared, const CellStyles& styles,
                       std::size_t& room, SheetCells& sheet);

// Whether an attribute is true, "1" or "true".
bool says_yes(std::string_view attribute);

// A text as it is meant where the workbook has characters of ASCII by their numbers, "_x000A_"; those of
// control are blanks.
std::string unescaped(std::string text);

// "2019-05-31" of a day of a workbook, with the time of day left out; nothing where it is none of the years 1
// to 9999.
std::string date_of(double day, bool from_1904);

// Whether a format of numbers, as "yyyy-mm-dd", shows a date.
bool shows_date(std::string_view format);

// The row and column, from 1, of "AB12"; zeros where it is none.
struct CellPlace {
  std::int64_t row = 0, column = 0;
};
CellPlace place_of_cell(std::string_view reference);

}  // namespace vorn
