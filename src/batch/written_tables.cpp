#include "batch/written_tables.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <vector>

#include "base/loud_failure.h"
#include "batch/table.h"
#include "batch/workbook_text.h"
#include "workspace/capacity.h"

namespace vorn {
namespace {

constexpr std::string_view not_a_number = "NaN";

// With at least three decimals, so that nobody takes millimetres for hundredths; more where it has more.
std::string width_text(double width) {
  constexpr int usual_decimals = 3, most_decimals = 6;
  const double thousandths = width * 1000;
  const bool is_usual = std::abs(thousandths - std::round(thousandths)) < 1e-6;
  std::array<char, 400> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), width,
                                 std::chars_format::fixed, is_usual ? usual_decimals : most_decimals);
  return {digits.data(), end.ptr};
}

// As RFC 4180 has it.
std::string comma_field(std::string_view text) {
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(text);
  std::string quoted = "\"";
  for (const char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
  return quoted + '"';
}

// Without what parts columns and lines.
std::string on_one_line(std::string_view text) {
  std::string plain(text);
  std::ranges::replace_if(
      plain, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return plain;
}

YearSpan years_of(std::span<const NamedCore> cores) {
  YearSpan all = cores.front().widths.years();
  for (const NamedCore& core : cores) {
    const YearSpan years = core.widths.years();
    all = {std::min(all.first, years.first), std::max(all.last, years.last)};
  }
  return all;
}

// One line for each year; `missing` stands where a ring is marked so, `none` where there is none.
void add_rows(std::string& text, std::span<const NamedCore> cores, char between, std::string_view missing,
              std::string_view none) {
  const YearSpan years = years_of(cores);
  for (std::int64_t year = years.first; year <= years.last; ++year) {
    text += std::to_string(year);
    for (const NamedCore& core : cores) {
      const YearSpan of_core = core.widths.years();
      text += between;
      if (year < of_core.first || year > of_core.last)
        text += none;
      else
        text += core.widths.has(year) ? width_text(core.widths.at(year)) : std::string(missing);
    }
    text += '\n';
  }
}

// What stands before the columns are described.
std::string template_head(std::string_view site, std::string_view what, YearSpan years) {
  const std::string name = on_one_line(site), rule = "#" + std::string(71, '-') + "\n";
  return "# " + name + "\n" + rule +
         "# NOAA template text for tree-ring data; lines that begin with # say what the table holds\n" +
         rule + "# Archive: Tree Rings\n" + rule + "# Title\n#   Study_Name: " + name + ", " +
         std::string(what) + "\n" + rule + "# Site Information\n#   Site_Name: " + name + "\n" + rule +
         "# Data_Collection\n#   Collection_Name: " + name +
         "\n#   First_Year: " + std::to_string(years.first) +
         "\n#   Last_Year: " + std::to_string(years.last) + "\n#   Time_Unit: CE\n" + rule +
         "# Variables\n# One a line: name, then what, material, error, units, seasonality, archive, detail, "
         "method, C or N\n#\n## age_CE\tage,,,years Common Era,,,,,N\n";
}

std::string template_data() {
  return "#\n# Data:\n# What follows is parted by tabs\n# Missing_Values: " + std::string(not_a_number) +
         "\n";
}

}  // namespace

std::string comma_table(std::span<const NamedCore> cores) {
  if (cores.empty()) return "";
  std::string text = "year";
  for (const NamedCore& core : cores) text += "," + comma_field(core.name);
  text += '\n';
  add_rows(text, cores, ',', "NA", "");
  return text;
}

std::string workbook_of(std::span<const NamedCore> cores) {
  if (cores.empty()) return "";
  std::vector<std::string> names = {"year"};
  for (const NamedCore& core : cores) names.push_back(plain_text(std::string(core.name)));
  WorkbookText text("widths", names);
  const YearSpan years = years_of(cores);
  for (std::int64_t year = years.first; year <= years.last; ++year) {
    std::vector<WorkbookCell> row = {{std::to_string(year), true}};
    for (const NamedCore& core : cores) {
      const YearSpan of_core = core.widths.years();
      const bool has = core.widths.has(year);
      const bool is_missing = year >= of_core.first && year <= of_core.last && !has;
      row.push_back(has ? WorkbookCell{width_text(core.widths.at(year)), true}
                        : WorkbookCell{is_missing ? "NA" : "", false});
    }
    VORN_ASSERT(text.add(row));
  }
  return text.finished();
}

std::string template_text(std::string_view site, std::span<const NamedCore> cores) {
  if (cores.empty()) return "";
  std::string text = template_head(site, "ring widths", years_of(cores)), names = "age_CE";
  for (const NamedCore& core : cores) {
    text += "## " + on_one_line(core.name) + "\tring width,,,millimeter,,tree rings,,,N\n";
    names += "\t" + on_one_line(core.name);
  }
  text += template_data() + names + "\n";
  add_rows(text, cores, '\t', not_a_number, not_a_number);
  return text;
}

std::string site_name(std::string_view path) {
  const std::string_view file = path.substr(path.find_last_of("/\\") + 1);
  return std::string(file.substr(0, std::min(file.rfind('.'), file.size())));
}

std::string chronology_as_template(const Collection& collection) {
  if (!collection.was_read()) return "";
  const Workspace& w = collection.state();
  const double unit = collection.recognition().layout == Layout::tucson_index ? 1000 : 1;
  std::vector<double> values;
  std::vector<std::int32_t> depths;
  for (int k = 1; k <= std::clamp(w.cyr(1), 0, max_years); ++k) {
    depths.push_back(w.num(k, 1));
    values.push_back(w.crn(k, 1) / unit);
  }
  return template_text(site_name(collection.path()), w.cfy(1), values, depths);
}

std::string template_text(std::string_view site, std::int64_t first, std::span<const double> values,
                          std::span<const std::int32_t> depths) {
  if (values.empty()) return "";
  const YearSpan years{first, first + static_cast<std::int64_t>(values.size()) - 1};
  std::string text = template_head(site, "standard chronology", years);
  text +=
      "## std\tring width index,,,dimensionless,,tree rings,standard chronology,,N\n"
      "## num\tsample depth,,,count,,tree rings,number of cores,,N\n";
  text += template_data() + "age_CE\tstd\tnum\n";
  for (std::size_t k = 0; k < values.size(); ++k) {
    const bool is_there = std::isfinite(values[k]) && depths[k] > 0;
    text += std::to_string(first + static_cast<std::int64_t>(k)) + "\t" +
            (is_there ? width_text(values[k]) : std::string(not_a_number)) + "\t" +
            std::to_string(depths[k]) + "\n";
  }
  return text;
}

}  // namespace vorn
