// What the verbs of the command line give: rows of named columns, and how they are written down.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vorn {

// A value of a row. What is not known, and what is no number, is absent.
using Cell = std::variant<std::monostate, std::string, std::int64_t, double>;
using Row = std::vector<Cell>;

// A number, absent where it is none.
Cell number(double value);

// What a verb gives. The columns and their order are what other tools read; more may come behind them.
struct TableForm {
  std::string_view verb;  // "stats"
  std::vector<std::string_view> columns;
};

enum class TableFormat {
  table,    // for people: columns in line, numbers to the right
  csv,      // RFC 4180, fields in quotes where they have to be, a point in numbers, lines that end in LF
  json,     // one object with schema, version, recipe and rows
  workbook  // a sheet (workbook_table.h)
};

// Writes rows as they come, so that they need not all be kept. Numbers have 6 significant digits. Control
// characters in texts are written \xNN in a table, as JSON writes them in JSON, and as they are in CSV, but
// for those that could steer a terminal. Bytes that are no UTF-8 count as Latin-1.
class TableWriter {
 public:
  // `recipe` says by what the values were computed.
  TableWriter(std::ostream& out, TableFormat format, TableForm form, std::string_view version,
              std::string_view recipe);
  virtual ~TableWriter() = default;
  TableWriter(const TableWriter&) = delete;
  TableWriter& operator=(const TableWriter&) = delete;
  virtual void add(const Row& row);
  // Once, and last. Answers whether all could be written.
  virtual bool end();

 private:
  void write_table();

  std::ostream& out_;
  TableFormat format_;
  TableForm form_;
  std::vector<std::vector<std::string>> kept_;  // of a table, whose widths come from all rows
  std::vector<std::string> keys_;               // of JSON: what each value of a row stands behind
  std::vector<bool> is_text_;
  bool first_ = true;
};

// The cell as CSV and tables have it, without quotes: an absent one is empty.
std::string plain_text(const Cell& cell);

}  // namespace vorn
