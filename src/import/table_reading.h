// What the readers of tables share.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "import/found_series.h"
#include "import/table_rows.h"
#include "study/file_lines.h"

namespace vorn {

// A column, by its field in the row of names.
struct NamedColumn {
  std::string name = {};
  std::int64_t line = 0;
  int column = 0;
};

NamedColumn named(const TableField& field);

// A column of a table with years down its side.
struct TableColumn {
  NamedColumn named = {};
  std::optional<std::size_t> series = {};  // of the file found; none where its numbers are passed over
  bool is_year = false;
  bool repeats_years = false;                // by its name, that of the column of years
  std::int64_t passed_over = 0;              // numbers
  std::string_view what = "no ring widths";  // that it holds, where it is passed over
  std::int64_t other_years = 0;              // rows whose year is another one there
};

// Goes through the rows of a table, and tells what is odd about them.
class TableReading {
 public:
  // Of lines `first` (from 0) on.
  TableReading(std::span<const FileLine> lines, char separator, FoundFile& file, std::size_t first = 0)
      : found(file), rows(lines, separator, first) {}

  FoundFile& found;
  TableRows rows;
  bool may_be_short = false;  // rows end where nothing more stands on them, as those of a sheet do

  // The next row, of which each field that is too much is told; false at the end.
  bool next();
  // The year in a field of the row at hand; nothing where there is none, which is told.
  std::optional<std::int64_t> year_in(const TableField& field, bool is_bp);
  // Tells that fields from `from` on have no column.
  void look_behind(std::size_t from);
  // That a row lacks its last fields.
  void count_short() {
    if (!may_be_short && ++short_rows_ == 1) first_short_ = rows.first_line();
  }
  // A column that is passed over since it holds `what`, and in which so many numbers stand.
  void tell_other(const NamedColumn& column, std::int64_t numbers, std::string_view what);
  // Takes the rings of the row at hand, whose year stands in column `year`.
  void take_row(std::vector<TableColumn>& columns, std::size_t year, bool is_bp);
  void tell_others(std::span<const TableColumn> columns);
  // What is told of the whole, at the end.
  void finish(std::span<const FileLine> lines);

 private:
  std::int64_t short_rows_ = 0, first_short_ = 0, bp_line_ = 0, date_line_ = 0;
  std::string date_;
};

// The unit that comments say ("# Units: 0.01 mm"); nothing where they say none.
std::optional<double> unit_of_comments(std::span<const FileLine> lines);

}  // namespace vorn
