#include "import/table_shape.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <set>
#include <string>

#include "import/fields.h"
#include "import/table_rows.h"

namespace vorn {
namespace {

using SampleRow = std::vector<std::string>;
using Sample = std::vector<SampleRow>;

constexpr std::int64_t least_likely = 300;  // of years that may be numbers of series
constexpr std::size_t most_titles = 20, most_columns_before_years = 20, most_fields_sampled = 400;

Sample sample_of(std::span<const FileLine> lines, char separator) {
  constexpr std::size_t most_lines = 2'000;
  Sample all;
  TableRows rows(lines.first(std::min(lines.size(), most_lines)), separator);
  while (all.size() < rows_looked_at && rows.next()) {
    SampleRow row;
    const auto& fields = rows.fields();
    for (std::size_t k = 0; k < std::min(fields.size(), most_fields_sampled); ++k)
      row.emplace_back(fields[k].text.substr(0, 100));
    all.push_back(std::move(row));
  }
  return all;
}

std::size_t filled(const SampleRow& row) {
  return static_cast<std::size_t>(
      std::ranges::count_if(row, [](const std::string& text) { return !text.empty(); }));
}

bool is_number(const std::string& text) {
  return number_in(text, true).has_value();
}

bool is_year(const std::string& text) {
  constexpr std::int64_t farthest = 15'000;
  const auto year = year_written(text);
  return year && std::abs(year->year) <= farthest;
}

const std::string& at(const SampleRow& row, std::size_t column) {
  static const std::string nothing;
  return column < row.size() ? row[column] : nothing;
}

// How many of some fields are what is asked for, of those that are not empty.
struct Share {
  std::size_t good = 0, all = 0;
  void add(bool is_good) {
    good += is_good;
    ++all;
  }
  bool is_least(double share) const {
    return all > 0 && static_cast<double>(good) >= share * static_cast<double>(all);
  }
};

// Whether the numbers are mostly one apart, as years that follow each other are.
bool follow_each_other(const std::vector<std::int64_t>& years) {
  if (years.size() < 2) return false;
  Share steps;
  for (std::size_t k = 1; k < years.size(); ++k) steps.add(std::abs(years[k] - years[k - 1]) == 1);
  return steps.is_least(0.75);
}

// The beginning of a text, its rows given by one separator, put to the tests of each kind of table.
class SampleTests {
 public:
  SampleTests(std::span<const FileLine> lines, char separator) : rows_(sample_of(lines, separator)) {
    shape_.separator = separator;
    skip_titles();
  }
  std::optional<TableShape> shape();

 private:
  void skip_titles();
  bool is_name_alone(std::size_t row) const;
  void shift_header();
  bool is_long();
  bool is_wide();
  bool has_a_row_a_year() const;
  bool is_wide_without_names();
  bool is_across();
  bool has_years(std::size_t column, bool named) const;
  bool has_widths(std::size_t column) const;
  bool has_words(std::size_t column) const;
  bool widths_beside(std::size_t column) const;
  bool years_of_rows_win(std::size_t column) const;
  bool choose_year_column();
  void choose_name_column();
  bool tells_rows_apart(std::size_t column) const;
  std::optional<std::size_t> header_row() const;
  bool is_regular() const;
  std::optional<std::size_t> first_of(ColumnMeaning meaning) const;
  std::size_t below() const { return shape_.has_header ? 1 : 0; }

  Sample rows_;
  TableShape shape_;
};

// Whether years that follow each other stand behind a word.
bool is_top_of_years(const SampleRow& row) {
  constexpr std::size_t fewest = 3;
  std::vector<std::int64_t> years;
  for (const std::string& text : row) {
    if (is_year(text)) years.push_back(year_written(text)->year);
  }
  return years.size() >= fewest && !is_number(row[0]) && follow_each_other(years);
}

// The last row before the first of data in which a column is named as one of years; else the first of years
// across the top. Nothing where there is none.
std::optional<std::size_t> SampleTests::header_row() const {
  const auto names_years = [](const std::string& text) {
    const ColumnMeaning meaning = meaning_of(text);
    return meaning == ColumnMeaning::year || meaning == ColumnMeaning::year_bp;
  };
  std::optional<std::size_t> last;
  for (std::size_t k = 0; k < std::min(most_titles, rows_.size()); ++k) {
    if (!last && is_top_of_years(rows_[k])) return k;
    const bool is_named = filled(rows_[k]) >= 2 && std::ranges::any_of(rows_[k], names_years);
    if (is_named)
      last = k;
    else if (std::ranges::count_if(rows_[k], is_number) >= 2)
      break;
  }
  return last;
}

// Whether a row is the name above the values of one series, as R writes it: years stand before them as names
// of the rows.
bool SampleTests::is_name_alone(std::size_t row) const {
  constexpr std::size_t fewest = 3;
  const auto below = std::span(rows_).subspan(row + 1);
  return below.size() >= fewest && rows_[row].size() == 1 && !is_number(rows_[row][0]) &&
         std::ranges::all_of(below, [](const SampleRow& one) { return one.size() == 2 && is_year(one[0]); });
}

void SampleTests::skip_titles() {
  std::size_t titles = 0;
  const auto is_title = [](const SampleRow& row) {
    return filled(row) == 0 || (filled(row) == 1 && !row[0].empty());
  };
  while (titles < std::min(most_titles, rows_.size()) && is_title(rows_[titles])) ++titles;
  if (const auto header = header_row())
    titles = *header;
  else if (titles > 0 && is_name_alone(titles - 1))
    --titles;
  if (titles == rows_.size()) {
    rows_.clear();
    return;
  }
  rows_.erase(rows_.begin(), rows_.begin() + static_cast<std::ptrdiff_t>(titles));
  shape_.titles = titles;
}

// Tables of row names may have no name above them.
void SampleTests::shift_header() {
  Share longer;
  for (std::size_t k = 1; k < rows_.size(); ++k) longer.add(rows_[k].size() == rows_[0].size() + 1);
  // Names may be numbers, but not those of the first row of data, which is short.
  const auto is_name = [](const std::string& text) { return !is_number(text) || whole_number_in(text); };
  const auto first = year_written(at(rows_[0], 0)),
             next = rows_.size() > 1 ? year_written(rows_[1][0]) : std::nullopt;
  const bool follows = first && next && std::abs(next->year - first->year) <= 1;
  shape_.shifted = longer.is_least(0.9) && !follows && std::ranges::all_of(rows_[0], is_name);
  if (shape_.shifted) rows_[0].insert(rows_[0].begin(), "");
}

bool SampleTests::has_years(std::size_t column, bool named) const {
  Share whole;
  std::vector<std::int64_t> years;
  for (std::size_t k = below(); k < rows_.size(); ++k) {
    const std::string& text = at(rows_[k], column);
    if (text.empty()) continue;
    whole.add(is_year(text));
    if (is_year(text)) years.push_back(year_written(text)->year);
  }
  if (!whole.is_least(0.7)) return false;
  return named || (years.size() >= 3 && follow_each_other(years));
}

// Whether most of a column is numbers and marks for what is missing, and not all of it marks.
bool SampleTests::has_widths(std::size_t column) const {
  Share good;
  bool any = false;
  for (std::size_t k = below(); k < rows_.size(); ++k) {
    const std::string& text = at(rows_[k], column);
    if (text.empty()) continue;
    const bool number = is_number(text);
    any = any || number;
    good.add(number || says_missing(text));
  }
  return any && good.is_least(0.5);
}

bool SampleTests::has_words(std::size_t column) const {
  bool any = false;
  for (std::size_t k = below(); k < rows_.size(); ++k) {
    const std::string& text = at(rows_[k], column);
    if (is_number(text)) return false;
    any = any || !says_missing(text);
  }
  return any;
}

bool SampleTests::widths_beside(std::size_t column) const {
  for (std::size_t k = 0; k < rows_[0].size(); ++k) {
    if (k != column && has_widths(k)) return true;
  }
  return false;
}

std::optional<std::size_t> SampleTests::first_of(ColumnMeaning meaning) const {
  for (std::size_t k = 0; k < rows_[0].size(); ++k) {
    if (meaning_of(rows_[0][k]) == meaning) return k;
  }
  return std::nullopt;
}

bool SampleTests::choose_year_column() {
  // A calendar year before an age, which may be that of the tree.
  const auto is_calendar = [](const std::string& name) {
    return meaning_of(name) == ColumnMeaning::year && !is_age(name);
  };
  const auto calendar = std::ranges::find_if(rows_[0], is_calendar);
  const auto year = calendar != rows_[0].end()
                        ? std::optional(static_cast<std::size_t>(calendar - rows_[0].begin()))
                        : first_of(ColumnMeaning::year);
  const auto year_bp = first_of(ColumnMeaning::year_bp);
  shape_.is_bp = !year && year_bp;
  shape_.year = year ? *year : year_bp.value_or(0);
  return year || year_bp;
}

bool SampleTests::is_long() {
  if (rows_.size() < 2 || !choose_year_column()) return false;
  const auto width = first_of(ColumnMeaning::width), core = first_of(ColumnMeaning::core);
  auto series = first_of(ColumnMeaning::series);
  shape_.tree = series || !core ? std::nullopt : first_of(ColumnMeaning::tree);
  if (!series) series = core;
  if (!series) series = first_of(ColumnMeaning::tree);
  if (!width || !series) return false;
  shape_.layout = OtherLayout::long_table;
  shape_.width = *width;
  shape_.series = *series;
  return has_years(shape_.year, true) && has_widths(*width);
}

// Whether the first column holds years, although the names are numbers that follow each other, too.
bool SampleTests::years_of_rows_win(std::size_t column) const {
  if (meaning_of(at(rows_[0], column)) == ColumnMeaning::year) return true;
  const auto first = rows_.size() > 1 ? year_written(at(rows_[1], column)) : std::nullopt;
  return first && first->year >= least_likely;
}

bool SampleTests::is_wide() {
  if (rows_.size() < 2) return false;
  const bool named = choose_year_column();
  if (!named && is_number(rows_[0][0])) return false;
  return has_years(shape_.year, named && rows_.size() > 1) && has_a_row_a_year() &&
         widths_beside(shape_.year);
}

// Years that come again and again are those of many cores, one below the other.
bool SampleTests::has_a_row_a_year() const {
  std::set<std::string> years;
  std::size_t rows = 0;
  for (std::size_t k = below(); k < rows_.size(); ++k) {
    const std::string& text = at(rows_[k], shape_.year);
    rows += !text.empty();
    years.insert(text);
  }
  constexpr std::size_t few = 6;  // of which one may well be a slip
  return rows < few || 4 * years.size() >= 3 * rows;
}

bool SampleTests::is_wide_without_names() {
  if (rows_.size() < 3) return false;
  const bool numbers = std::ranges::all_of(
      rows_[0], [](const std::string& text) { return is_number(text) || says_missing(text); });
  if (!numbers || !is_year(rows_[0][0])) return false;
  shape_.has_header = false;
  shape_.year = 0;
  return has_years(0, false) && widths_beside(0);
}

// Whether each row has something of its own there.
bool SampleTests::tells_rows_apart(std::size_t column) const {
  std::set<std::string> all;
  for (std::size_t k = 1; k < rows_.size(); ++k) {
    const std::string& text = at(rows_[k], column);
    if (filled(rows_[k]) > 0 && (text.empty() || !all.insert(text).second)) return false;
  }
  return true;
}

// Of the columns before the years: one that is named so and tells the rows apart, then tree and core
// together, then any that tells them apart, of words before one of numbers.
void SampleTests::choose_name_column() {
  const auto before = [this](ColumnMeaning meaning) {
    const auto column = first_of(meaning);
    return column && *column < shape_.year ? column : std::nullopt;
  };
  const auto series = before(ColumnMeaning::series), core = before(ColumnMeaning::core),
             tree = before(ColumnMeaning::tree);
  shape_.series = series ? *series : core ? *core : tree.value_or(0);
  if (core && tree && !series) {
    shape_.tree = tree;
    return;
  }
  if (tells_rows_apart(shape_.series) && (series || core || tree)) return;
  for (const bool words : {true, false}) {
    for (std::size_t k = 0; k < shape_.year; ++k) {
      if (!tells_rows_apart(k) || has_words(k) != words) continue;
      shape_.series = k;
      return;
    }
  }
}

// Whether all rows have as many fields as the names. Where blanks part fields nothing else tells a table from
// words.
bool SampleTests::is_regular() const {
  constexpr std::size_t fewest = 4;
  const auto is_as_long = [this](const SampleRow& row) {
    return row.size() == std::min(rows_[0].size(), most_fields_sampled);
  };
  return rows_.size() >= fewest && std::ranges::all_of(rows_, is_as_long) &&
         !std::ranges::all_of(rows_[0], is_number);
}

bool SampleTests::is_across() {
  if (rows_.size() < 2) return false;
  const SampleRow& top = rows_[0];
  std::size_t from = 0;
  while (from < std::min(top.size(), most_columns_before_years) && !is_year(top[from])) ++from;
  if (from == 0 || from >= std::min(top.size(), most_columns_before_years)) return false;
  Share whole;
  std::vector<std::int64_t> years;
  for (std::size_t k = from; k < top.size(); ++k) {
    if (top[k].empty()) continue;
    whole.add(is_year(top[k]));
    if (is_year(top[k])) years.push_back(year_written(top[k])->year);
  }
  if (years.size() < 3 || !whole.is_least(0.7) || !follow_each_other(years)) return false;
  // "X1", "X2" may as well be series that R has numbered.
  if (top[from] == "X1" && std::ranges::max(years) < least_likely) return false;
  shape_.year = from;
  choose_name_column();
  shape_.years_across = true;
  Share good;
  bool any = false;
  for (std::size_t row = 1; row < rows_.size(); ++row) {
    for (std::size_t k = from; k < rows_[row].size(); ++k) {
      any = any || is_number(rows_[row][k]);
      good.add(is_number(rows_[row][k]) || says_missing(rows_[row][k]));
    }
  }
  return any && good.is_least(0.5);
}

std::optional<TableShape> SampleTests::shape() {
  if (rows_.empty() || std::ranges::any_of(rows_[0], counts_backwards)) return std::nullopt;
  shift_header();
  if (rows_[0].size() < 2) return std::nullopt;
  if (shape_.separator == ' ' && !is_regular()) return std::nullopt;
  const TableShape plain = shape_;
  const auto passes = [&](bool (SampleTests::*test)()) {
    shape_ = plain;
    return (this->*test)();
  };
  if (passes(&SampleTests::is_long)) return shape_;
  if (passes(&SampleTests::is_wide)) {
    for (std::size_t k = 0; k < rows_[0].size(); ++k) shape_.words.push_back(has_words(k));
    const TableShape wide = shape_;
    if (years_of_rows_win(wide.year) || !passes(&SampleTests::is_across)) return wide;
    return shape_;
  }
  if (shape_.separator != ' ' && passes(&SampleTests::is_wide_without_names)) return shape_;
  if (passes(&SampleTests::is_across)) return shape_;
  return std::nullopt;
}

}  // namespace

std::optional<TableShape> table_shape(std::span<const FileLine> lines, std::string_view separators) {
  for (const char separator : separators) {
    if (auto shape = SampleTests(lines, separator).shape()) return shape;
  }
  return std::nullopt;
}

}  // namespace vorn
