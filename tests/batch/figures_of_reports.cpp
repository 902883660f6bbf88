#include "batch/figures_of_reports.h"

#include <limits>

#include "batch/figures.h"
#include "batch/verbs.h"
#include "formats/column_table_layout.h"
#include "formats/tucson_index_layout.h"
#include "records/edit_format.h"

namespace vorn {
namespace {

std::vector<Row> rows_of(Collection& collection, const char* verb, const VerbSwitches& switches = {}) {
  std::vector<Row> rows;
  verb_named(verb)->rows(collection, switches, [&](const Row& row) { rows.push_back(row); });
  return rows;
}

std::string cell_words(const std::string& name, int from, int to, const std::string& r) {
  return name + " " + std::to_string(from) + "-" + std::to_string(to) + " " + r;
}

// The cells of a block of Corr.prn in their order, from its line "Year" on.
std::vector<std::string> block_cells(const std::vector<std::string>& lines, std::size_t& k,
                                     std::vector<int>& starts) {
  const std::string years = lines[k], ends = lines[k + 1];
  const std::size_t segments = years.size() >= 20 ? (years.size() - 15) / 5 : 0;
  std::vector<int> last;
  for (std::size_t j = 0; j < segments; ++j) {
    starts.push_back(std::stoi(years.substr(9 + 5 * j, 5)));
    last.push_back(std::stoi(ends.substr(9 + 5 * j, 5)));
  }
  std::vector<std::string> cells;
  for (k += 2; k < lines.size() && !lines[k].empty(); ++k) {
    std::string name = lines[k].substr(0, 8);
    name.erase(name.find_last_not_of(' ') + 1);
    for (std::size_t j = 0; j < segments; ++j) {
      const std::string cell = lines[k].substr(9 + 5 * j, 5);
      if (cell != "     ") cells.push_back(cell_words(name, starts[j], last[j], cell));
    }
  }
  return cells;
}

}  // namespace

void compare_stats(Collection& collection, const std::string& report, SameFigures& all) {
  const EditFormat line("(A8,3I7,4F7.2)");
  const double none = std::numeric_limits<double>::quiet_NaN();
  std::vector<std::string> expected, found;
  for (const Row& row : rows_of(collection, "stats")) {
    expected.push_back(edit(line, Name(text_in(row, 1)).view(), whole_in(row, 2), whole_in(row, 3),
                            whole_in(row, 4), real_in(row, 5, none), real_in(row, 6, none),
                            real_in(row, 7, 0), real_in(row, 8, 0)));
  }
  const auto lines = lines_of(report);
  // Pages of fifty: two headings, an empty line, the cores, an empty line.
  for (std::size_t k = 1; k + 4 < lines.size();) {
    if (!lines[k].starts_with("Name      First")) break;
    for (k += 3; k < lines.size() && !lines[k].empty() && found.size() < expected.size() + 1; ++k)
      found.push_back(lines[k]);
    ++k;
  }
  Figures(all, "Stats.prn").equal_lists(found, expected, all.stats);
}

void compare_chron(Collection& collection, const std::string& table, SameFigures& all) {
  const EditFormat& line = column_table::year_line;
  const double none = std::numeric_limits<double>::quiet_NaN();
  std::vector<std::string> expected;
  for (const Row& row : rows_of(collection, "chron")) {
    const std::int32_t depth = whole_in(row, 3);
    const Integer index = depth == 0 ? Integer(tucson_index::no_data) : thousandths(real_in(row, 2, none));
    expected.push_back(edit(line, whole_in(row, 1), index, depth));
  }
  auto lines = lines_of(table);
  if (!lines.empty()) lines.erase(lines.begin());
  Figures(all, "Column.prn").equal_lists(lines, expected, all.chron);
}

void compare_report(Collection& collection, const std::string& report, SameFigures& all) {
  const EditFormat real("(F5.2)");
  const auto rows = rows_of(collection, "corr");
  const auto lines = lines_of(report);
  Figures comparison(all, "Corr.prn");
  std::size_t used = 0;
  for (std::size_t k = 0; k + 1 < lines.size(); ++k) {
    if (!lines[k].starts_with("Year     ")) continue;
    std::vector<int> starts;
    const auto found = block_cells(lines, k, starts);
    std::vector<std::string> expected;
    for (const Row& row : rows) {
      if (std::ranges::find(starts, whole_in(row, 2)) == starts.end()) continue;
      expected.push_back(cell_words(text_in(row, 1), whole_in(row, 2), whole_in(row, 3),
                                    " " + without_digit(edit(real, real_in(row, 5, 0)), 1)));
    }
    used += expected.size();
    comparison.equal_lists(found, expected, all.report);
  }
  if (used != rows.size()) comparison.tell(std::to_string(rows.size() - used) + " rows are in no block");
}

}  // namespace vorn
