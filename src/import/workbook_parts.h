// A workbook (.xlsx, ECMA-376): which parts of its archive hold what.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "import/archive_parts.h"
#include "import/sheet_cells.h"

namespace vorn {

inline constexpr std::size_t most_sheets = 1'000;

struct SheetPart {
  std::string name = {};
  std::string part = {};  // of the archive; empty where there is none
  bool is_hidden = false;
  bool is_table = true;  // a sheet of cells, no chart
};

struct WorkbookParts {
  std::vector<SheetPart> sheets = {};
  std::int64_t sheets_behind = 0;        // more than most_sheets
  std::vector<std::string> shared = {};  // texts that cells share
  CellStyles styles = {};
};

// Whether the archive says that it holds one.
bool holds_workbook(const ArchiveParts& archive);

// Reads what sheets are read by; answers why that cannot be done, or nothing.
std::string read_workbook_parts(ArchiveParts& archive, WorkbookParts& parts);

// "xl/worksheets/sheet1.xml" of "worksheets/sheet1.xml", "../xl/worksheets/sheet1.xml" or
// "/xl/worksheets/sheet1.xml" said in a part of the folder "xl/".
std::string part_name(std::string_view folder, std::string_view target);

}  // namespace vorn
