#include "import_checks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <set>
#include <vector>

#include "import/fields.h"
#include "import/table_shape.h"
#include "study/file_lines.h"
#include "support/imported_copy.h"

namespace vorn::fuzz {
namespace {

std::string complaint_about(const ImportedSeries& series) {
  if (series.widths.empty() || series.widths.size() != series.presence.size()) return "a series has no rings";
  if (!series.presence.front() || !series.presence.back()) return "a series begins or ends in a gap";
  if (series.taken_as.empty() || series.taken_as.size() > 8) return "a name does not fit";
  if (series.unit != 100 && series.unit != 1000) return "a unit is none of the layout";
  if (series.line < 1) return "a series stands nowhere";
  for (std::size_t k = 0; k < series.widths.size(); ++k) {
    const double width = series.widths[k];
    if (!std::isfinite(width) || width < 0 || (!series.presence[k] && width != 0)) return "a width is none";
  }
  return "";
}

// Files of which not all is looked at.
bool is_bounded(const Imported& one) {
  constexpr std::array<std::string_view, 4> bounds = {"more", "no-room", "series-limit", "too-large"};
  return std::ranges::any_of(one.findings, [&](const FileFinding& finding) {
    return std::ranges::find(bounds, finding.kind->id) != bounds.end();
  });
}

std::int64_t rings_of(const Imported& one) {
  std::int64_t rings = 0;
  for (const ImportedSeries& series : one.series) rings += std::ranges::count(series.presence, 1);
  return rings;
}

// The numbers that findings say are no rings.
std::int64_t counted_by_findings(const Imported& one) {
  constexpr std::array<std::string_view, 13> with_value = {
      "other-column",   "year-outside",  "no-year",   "no-column", "no-series",    "negative",  "counts",
      "trailing-zeros", "behind-length", "no-widths", "header",    "second-table", "behind-end"};
  constexpr std::array<std::string_view, 2> of_one = {"year-twice", "too-wide"};
  std::int64_t all = 0;
  for (const FileFinding& finding : one.findings) {
    const auto* value = std::get_if<std::int64_t>(&finding.value);
    if (std::ranges::find(with_value, finding.kind->id) != with_value.end() && value) all += *value;
    if (std::ranges::find(of_one, finding.kind->id) != of_one.end()) ++all;
  }
  return all;
}

std::string difference(std::int64_t numbers, const Imported& one) {
  const std::int64_t known = rings_of(one) + counted_by_findings(one);
  if (numbers <= known) return "";
  return std::to_string(numbers) + " numbers are " + std::to_string(known) +
         " rings and numbers that are told";
}

std::vector<std::string_view> fields_of(std::string_view line, char separator) {
  std::vector<std::string_view> all;
  for (;;) {
    const std::size_t end = std::min(line.find(separator), line.size());
    all.push_back(line.substr(0, end));
    if (end == line.size()) return all;
    line.remove_prefix(end + 1);
  }
}

// Lines that are neither blank nor comments.
std::vector<std::string_view> data_lines(std::string_view bytes) {
  std::vector<std::string_view> all;
  for (const FileLine& line : lines_of(bytes)) {
    if (!is_blank(line) && !line.text.starts_with('#')) all.push_back(line.text);
  }
  return all;
}

// Files that are not read byte by byte.
bool is_plain(std::string_view bytes) {
  return bytes.find_first_of(std::string_view("\"\x1a\0", 3)) == std::string_view::npos &&
         !bytes.starts_with("\xff\xfe") && !bytes.starts_with("\xfe\xff") &&
         !bytes.starts_with("\xef\xbb\xbf");
}

}  // namespace

std::string complaint_about(const Imported& one) {
  std::set<std::string> names;
  for (const ImportedSeries& series : one.series) {
    if (std::string wrong = complaint_about(series); !wrong.empty()) return wrong;
    if (!names.insert(series.taken_as).second) return "two series have one name";
  }
  const bool has_error = std::ranges::any_of(one.findings, [](const FileFinding& finding) {
    return severity_of(finding.kind->effect) == Severity::error;
  });
  if (one.tucson.empty()) return has_error ? "" : "no finding says why there is no copy";
  return lost_in_copy(one);
}

std::string dropped_of_table(std::string_view bytes, const Imported& one) {
  if (!is_plain(bytes) || is_bounded(one)) return "";
  const std::vector<FileLine> lines = lines_of(bytes);
  const auto shape = table_shape(lines);
  if (!shape) return "a table has no shape";
  const std::vector<std::string_view> rows = data_lines(bytes);
  const auto shifted = static_cast<std::size_t>(shape->shifted);
  std::int64_t numbers = 0;
  for (std::size_t row = shape->titles + shape->has_header; row < rows.size(); ++row) {
    const auto fields = fields_of(rows[row], shape->separator);
    const bool across = shape->years_across, is_long = shape->layout == OtherLayout::long_table;
    for (std::size_t k = 0; k < fields.size(); ++k) {
      const bool is_year = !across && k == shape->year;
      const bool is_name = (across || is_long) && (k == shape->series || (shape->tree && k == *shape->tree));
      if (!is_year && !is_name) numbers += number_in(fields[k], shape->separator != ',').has_value();
    }
  }
  return shifted == 0 ? difference(numbers, one) : "";
}

std::string dropped_of_template(std::string_view bytes, const Imported& one) {
  if (!is_plain(bytes) || is_bounded(one) || lower_case(bytes).find("missing") != std::string::npos)
    return "";
  if (one.layout_name != "NOAA template text") return "";
  const std::vector<std::string_view> rows = data_lines(bytes);
  if (rows.empty()) return "a table has no rows";
  char separator = ' ';
  for (const char one_of : {',', ';', '\t'}) {
    if (rows[0].find(one_of) != std::string_view::npos) separator = one_of;
  }
  if (separator == ' ') return "";
  std::int64_t numbers = 0;
  for (std::size_t row = 1; row < rows.size(); ++row) {
    const auto fields = fields_of(rows[row], separator);
    const auto in_row = std::ranges::count_if(
        fields, [&](std::string_view field) { return number_in(field, separator != ',').has_value(); });
    numbers += std::max<std::int64_t>(in_row - 1, 0);  // one of them is the year
  }
  return difference(numbers, one);
}

std::string dropped_of_heidelberg(std::string_view bytes, const Imported& one) {
  if (!is_plain(bytes) || is_bounded(one)) return "";
  std::int64_t numbers = 0;
  bool in_data = false;
  for (const FileLine& line : lines_of(bytes)) {
    const std::string text = lower_case(bare(line.text));
    // Only what no eye could take otherwise.
    if (text.find('=') != std::string::npos || text.starts_with("header")) in_data = false;
    if (text.starts_with("data:")) {
      in_data = true;
      continue;
    }
    if (!in_data) continue;
    for (const std::string_view field : fields_of(text, ' ')) {
      if (field.size() > 6 || field.find('\t') != std::string_view::npos) return "";
      numbers += number_in(field, true).has_value();
    }
  }
  return difference(numbers, one);
}

}  // namespace vorn::fuzz
