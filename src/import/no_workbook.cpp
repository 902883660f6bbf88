#include "import/refused_files.h"
#include "import/workbook.h"

namespace vorn {

std::optional<Imported> import_workbook(std::string_view bytes, const ImportWishes& /*wishes*/) {
  if (!bytes.starts_with("PK\x03\x04")) return std::nullopt;
  return refused_file("workbook", "begins as an archive",
                      "this edition of the program cannot read workbooks: save the sheet as CSV");
}

}  // namespace vorn
