#include "batch/figures_of_lags.h"

#include <algorithm>
#include <limits>
#include <map>
#include <utility>

#include "batch/figures.h"
#include "records/edit_format.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

struct Mark {
  int x = 0, y = 0;
  std::string text;
};

// The texts of one colour and height on a page.
std::vector<Mark> texts_on(const std::string& page, const std::string& kind) {
  std::vector<Mark> marks;
  for (const std::string& line : lines_of(page)) {
    if (!line.starts_with(kind)) continue;
    Mark mark;
    std::istringstream in(line.substr(kind.size()));
    in >> mark.x >> mark.y;
    const auto quote = line.find('"');
    mark.text = line.substr(quote + 1, line.size() - quote - 2);
    marks.push_back(mark);
  }
  return marks;
}

using ShownTable = std::map<std::pair<int, int>, std::string>;  // by line and lag

ShownTable table_shown(const std::string& page) {
  ShownTable table;
  for (const Mark& mark : texts_on(page, "text 15 20 "))
    table[{(mark.y - 369) / 44, (mark.x - 317) / 110 - 10}] = mark.text;
  for (const Mark& mark : texts_on(page, "text 9 20 ")) table[{(mark.y - 369) / 44, 99}] = mark.text;
  return table;
}

ShownTable table_given(const std::vector<Row>& rows) {
  const EditFormat real("(SP,F5.2)"), years("(2I5)");
  ShownTable table;
  int line = -1, last = std::numeric_limits<int>::min();
  for (const Row& row : rows) {
    if (whole_in(row, 2) != last || line < 0) ++line;
    last = whole_in(row, 2);
    std::string text = edit(years, whole_in(row, 2), whole_in(row, 3));
    text.erase(text.find_last_not_of(' ') + 1);
    table[{line, 99}] = text;
    table[{line, whole_in(row, 4)}] = without_digit(edit(real, real_in(row, 5, 0)), 1);
  }
  return table;
}

// Where no pair of years can be compared the table shows zeros, and has no row.
void drop_lines_of_zeros(ShownTable& table) {
  for (int line = 0; line < max_segments; ++line) {
    bool any = false;
    for (int lag = -max_lag; lag <= max_lag; ++lag) {
      const auto cell = table.find({line, lag});
      any = any || (cell != table.end() && cell->second != "+.00");
    }
    if (any) continue;
    for (int lag = -max_lag; lag <= max_lag; ++lag) table.erase({line, lag});
    table.erase({line, 99});
  }
}

void compare_table(const std::string& name, ShownTable shown, ShownTable given, SameFigures& all) {
  Figures comparison(all, "lag table of " + name);
  drop_lines_of_zeros(shown);
  drop_lines_of_zeros(given);
  for (const auto& [place, text] : shown) {
    const auto cell = given.find(place);
    comparison.equal(text, cell == given.end() ? "" : cell->second, all.lags);
  }
  for (const auto& [place, text] : given) {
    if (!shown.contains(place)) comparison.equal("", text, all.lags);
  }
}

// Without the lines that begin before `year`: `vorn` has no rows for them.
ShownTable from_year(ShownTable table, std::int32_t year) {
  for (int line = 0; line < max_segments; ++line) {
    const auto years = table.find({line, 99});
    if (years == table.end() || std::stoi(years->second.substr(0, 5)) >= year) continue;
    for (int lag = -max_lag; lag <= max_lag; ++lag) table.erase({line, lag});
    table.erase(years);
  }
  return table;
}

}  // namespace

std::vector<CoreTables> tables_of(Collection& collection, int most, const OtherChronology* other) {
  std::vector<CoreTables> tables;
  if (!collection.has_cores()) return tables;
  const Workspace& w = collection.state();
  tables.resize(static_cast<std::size_t>(std::min(w.nc, most)));
  int core = 0, segments = 0, start = 0;
  lag_rows(collection, other, max_lag, [&](const Row& row) {
    if (w.tr1 > most) return;
    CoreTables& table = tables[static_cast<std::size_t>(w.tr1) - 1];  // the core is the sample of the pair
    if (w.tr1 != core) segments = 0;
    if (segments == 0 || whole_in(row, 2) != start) ++segments;
    core = w.tr1;
    start = whole_in(row, 2);
    if (segments == max_segments + 1) {
      segments = 1;
      table.pages.emplace_back();
      table.start_years.push_back(start);
    }
    table.pages.back().push_back(row);
  });
  return tables;
}

void compare_tables(const SeriesStore& store, const std::vector<CoreTables>& tables, std::int32_t first,
                    SameFigures& all) {
  int core = 0;
  for (const CoreTables& table : tables) {
    const std::string name(store.nam(++core).trimmed());
    const std::int32_t later = std::max(first, store.fy(core));
    for (std::size_t page = 0; page < table.pages.size(); ++page) {
      const ShownTable shown = table_shown(ScratchFolder::read(page_name(core, page)));
      compare_table(name, from_year(shown, later), table_given(table.pages[page]), all);
    }
  }
}

}  // namespace vorn
