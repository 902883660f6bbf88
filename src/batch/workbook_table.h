// Rows of a verb as a workbook.
#pragma once

#include <memory>
#include <ostream>
#include <string_view>

#include "batch/table.h"

namespace vorn {

// What writes rows in the format; see TableWriter. Of a workbook all rows are kept until the end, and one
// more than a sheet has throws.
std::unique_ptr<TableWriter> table_writer(std::ostream& out, TableFormat format, TableForm form,
                                          std::string_view version, std::string_view recipe);

}  // namespace vorn
