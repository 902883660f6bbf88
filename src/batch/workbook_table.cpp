#include "batch/workbook_table.h"

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "batch/workbook_text.h"

namespace vorn {
namespace {

std::vector<std::string> names_of(const TableForm& form) {
  return {form.columns.begin(), form.columns.end()};
}

class WorkbookTable : public TableWriter {
 public:
  WorkbookTable(std::ostream& out, const TableForm& form, std::string_view version, std::string_view recipe)
      : TableWriter(out, TableFormat::workbook, form, version, recipe),
        out_(out),
        text_(std::string(form.verb), names_of(form)) {}

  void add(const Row& row) override {
    std::vector<WorkbookCell> cells;
    for (const Cell& cell : row)
      cells.push_back({plain_text(cell), !std::holds_alternative<std::string>(cell)});
    if (!text_.add(cells))
      throw std::runtime_error("a sheet of a workbook has " + std::to_string(most_workbook_rows) +
                               " rows and no more: take --format csv");
  }

  bool end() override {
    out_ << text_.finished();
    out_.flush();
    return static_cast<bool>(out_);
  }

 private:
  std::ostream& out_;
  WorkbookText text_;
};

}  // namespace

std::unique_ptr<TableWriter> table_writer(std::ostream& out, TableFormat format, TableForm form,
                                          std::string_view version, std::string_view recipe) {
  if (format == TableFormat::workbook) return std::make_unique<WorkbookTable>(out, form, version, recipe);
  return std::make_unique<TableWriter>(out, format, std::move(form), version, recipe);
}

}  // namespace vorn
