#include "batch/same_figures.h"

#include <sys/wait.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>
#include <memory>
#include <sstream>
#include <utility>

#include "batch/collection.h"
#include "batch/verbs.h"
#include "formats/column_table_layout.h"
#include "formats/layouts.h"
#include "formats/tucson_index.h"
#include "formats/tucson_index_layout.h"
#include "records/disk_files.h"
#include "records/edit_format.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

constexpr const char* copy_name = "copy.txt";
constexpr const char* reference_name = "reference.txt";
constexpr int names_on_page = 210, names_in_column = 30, page_step = 180;

std::vector<std::string> lines_of(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

// --- Rows.

std::string text_in(const Row& row, std::size_t column) {
  return std::get<std::string>(row[column]);
}
std::int32_t whole_in(const Row& row, std::size_t column) {
  return static_cast<std::int32_t>(std::get<std::int64_t>(row[column]));
}
double real_in(const Row& row, std::size_t column, double absent) {
  const auto* value = std::get_if<double>(&row[column]);
  return value ? *value : absent;
}

// --- The session.

std::string press(const std::string& button) {
  return "press " + button + "\n";
}

std::string enter(const std::string& button, int value) {
  return press(button) + "type " + std::to_string(value) + "\nenter\n";
}

// Picks entry k from the pages of the chooser, of which `offset` names are scrolled by.
std::string pick(int k, int entries, int& offset) {
  std::string script;
  const int farthest = std::max(entries - names_on_page, 0);
  while (k <= offset) {
    script += press("page_back");
    offset = std::max(offset - page_step, 0);
  }
  while (k > offset + names_on_page) {
    script += press("page_forward");
    offset = std::min(offset + page_step, farthest);
  }
  const int place = k - 1 - offset;
  const int x = 200 + static_cast<int>(2500.0 / 7 * (place / names_in_column + 0.3));
  const int y = 240 + static_cast<int>(1400.0 / names_in_column * (place % names_in_column + 0.5));
  return script + "click " + std::to_string(x) + " " + std::to_string(y) + "\n";
}

std::string settings_script(const Settings& settings) {
  const Settings first;
  std::string script;
  if (settings.splineon != first.splineon) script += press("spline_on");
  if (settings.aron != first.aron) script += press("ar_on");
  if (settings.logon != first.logon) script += press("log_on");
  if (settings.ss != first.ss) script += enter("spline_years", settings.ss);
  if (settings.jpr != first.jpr) script += enter("ar_order", settings.jpr);
  if (settings.seg != first.seg) script += enter("segment_length", settings.seg);
  if (settings.olap != first.olap) script += enter("segment_overlap", settings.olap);
  // The chronology is made anew when the pair is set.
  if (!script.empty()) script += press("crossdate") + press("exit_crossdating");
  return script;
}

std::string page_name(int core, std::size_t page) {
  return "lags" + std::to_string(core) + "-" + std::to_string(page) + ".txt";
}

// The lag tables of one core: the rows of `vorn`, and behind the first page of them, which has room for so
// many segments, the start years to be typed for the others.
struct CoreTables {
  std::vector<std::vector<Row>> pages{1};
  std::vector<int> start_years{};
};

// The reference is the last entry.
std::string tables_script(int entries, const std::vector<CoreTables>& tables) {
  if (tables.empty()) return "";
  std::string script = press("crossdate");
  int offset = 0, core = 0;
  for (const CoreTables& table : tables) {
    ++core;
    script += press("choose_cores") + press("top_of_pair") + press("bottom_of_pair");
    script += pick(core, entries, offset) + pick(entries, entries, offset);
    script += press("chooser_exit") + press("correlate") + "page " + page_name(core, 0) + "\n";
    for (std::size_t k = 0; k < table.start_years.size(); ++k)
      script += enter("correlation_start", table.start_years[k]) + "page " + page_name(core, k + 1) + "\n";
    script += press("correlation_exit");
  }
  return script + press("exit_crossdating");
}

std::string session(Collection& collection, const Settings& settings, const std::vector<CoreTables>& tables,
                    int files) {
  std::string script;
  const int cores = collection.has_cores() ? collection.state().nc : 0;
  if (cores > 0) script += settings_script(settings) + press("stats_report") + press("correlation_report");
  return script + press("crn_column") + press("save_crn") + tables_script(cores + files, tables) +
         press("quit");
}

// --- The figures of each output.

class Figures {
 public:
  Figures(SameFigures& all, std::string where) : all_(all), where_(std::move(where)) {}
  void equal(const std::string& program, const std::string& vorn, long& count) {
    ++count;
    if (program != vorn) tell("the program has \"" + program + "\", vorn \"" + vorn + "\"");
  }
  void equal_lists(const std::vector<std::string>& program, const std::vector<std::string>& vorn,
                   long& count) {
    const std::size_t both = std::min(program.size(), vorn.size());
    for (std::size_t k = 0; k < both; ++k) equal(program[k], vorn[k], count);
    for (std::size_t k = both; k < program.size(); ++k) equal(program[k], "", count);
    for (std::size_t k = both; k < vorn.size(); ++k) equal("", vorn[k], count);
  }
  void tell(const std::string& words) { all_.differences.push_back(where_ + ": " + words); }

 private:
  SameFigures& all_;
  std::string where_;
};

std::vector<Row> rows_of(Collection& collection, const char* verb, const VerbSwitches& switches = {}) {
  std::vector<Row> rows;
  verb_named(verb)->rows(collection, switches, [&](const Row& row) { rows.push_back(row); });
  return rows;
}

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

// "-.23", as the report and the lag table leave the digit before the point out.
std::string without_digit(std::string text, std::size_t place) {
  return text.erase(place, 1);
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

// --- The lag table.

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

// The rows of the first cores, page by page.
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

// `first` is that of the reference's years.
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

// A collection is changed by the verbs that work in its tables: one for each.
template <class Compare>
void on_a_fresh_one(const Settings& settings, Compare compare) {
  DiskFiles files;
  Collection collection(files, copy_name, settings);
  compare(collection);
}

// `messages` are told while the files are loaded.
int play(std::string script, const std::string& list, std::size_t messages) {
  for (std::size_t k = 0; k < messages; ++k) script.insert(0, "key 27\n");
  ScratchFolder::write("session.vrs", script);
  ScratchFolder::write("Vorn.fil", list);
  const int status = std::system("\"" VORN_REPLAY "\" session.vrs >played.out 2>played.err");
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// What the program is given to read, and is told of meanwhile.
struct Given {
  std::string list = std::string(copy_name) + "\n";
  std::size_t messages = 0;
  std::int32_t first = 0;                            // year of the chronology that cores are compared with
  std::unique_ptr<OtherChronology> other = nullptr;  // where that is another file's
};

Given given(const Collection& collection, const std::filesystem::path& reference, const Settings& settings) {
  Given all;
  all.messages = collection.troubles().size();
  all.first = collection.state().cfy(1);
  if (reference.empty()) return all;
  std::filesystem::copy_file(reference, reference_name);
  DiskFiles files;
  const Collection second(files, reference_name, settings);
  all.list += std::string(reference_name) + "\n";
  all.messages += second.troubles().size();
  all.first = second.state().cfy(1);
  all.other = std::make_unique<OtherChronology>(second);
  return all;
}

void compare_reports(const Settings& settings, bool has_cores, SameFigures& all) {
  on_a_fresh_one(settings, [&](Collection& c) { compare_chron(c, ScratchFolder::read("Column.prn"), all); });
  if (!has_cores) return;
  on_a_fresh_one(settings, [&](Collection& c) { compare_stats(c, ScratchFolder::read("Stats.prn"), all); });
  on_a_fresh_one(settings, [&](Collection& c) { compare_report(c, ScratchFolder::read("Corr.prn"), all); });
}

}  // namespace

void SameFigures::add(const SameFigures& other) {
  stats += other.stats;
  report += other.report;
  lags += other.lags;
  chron += other.chron;
  differences.insert(differences.end(), other.differences.begin(), other.differences.end());
}

SameFigures compare_figures(const std::filesystem::path& file, const Settings& settings, int most_tables,
                            const std::filesystem::path& reference) {
  SameFigures all;
  const auto whole_path = std::filesystem::absolute(file);
  const ScratchFolder folder;
  std::filesystem::copy_file(whole_path, copy_name);
  DiskFiles files;
  Collection collection(files, copy_name, settings);
  if (!row_of(collection.state().rftype(1))) return all;
  all.was_read = true;
  const Given input = given(collection, reference, settings);
  std::vector<CoreTables> tables;
  on_a_fresh_one(settings, [&](Collection& c) { tables = tables_of(c, most_tables, input.other.get()); });
  const int status =
      play(session(collection, settings, tables, input.other ? 2 : 1), input.list, input.messages);
  if (status != 0) {
    all.differences.push_back("the session ends with " + std::to_string(status) + ": " +
                              ScratchFolder::read("played.err"));
    return all;
  }
  compare_reports(settings, collection.has_cores(), all);
  compare_tables(collection.state(), tables, input.first, all);
  return all;
}

}  // namespace vorn
