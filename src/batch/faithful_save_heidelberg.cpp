// Heidelberg: a record is keyed lines, of which those that say name, years and length change, and a block of
// values.
#include <algorithm>
#include <array>
#include <optional>

#include "batch/faithful_save_fields.h"
#include "formats/heidelberg_layout.h"
#include "records/number_text.h"

namespace vorn {
namespace {

using namespace heidelberg;

constexpr ValueColumns columns{static_cast<std::size_t>(values_a_line), 6};
constexpr std::size_t most_rings = 9'999;

std::size_t column_of(const KeyedLine& keyed) {
  return static_cast<std::size_t>(keyed.first) - 1;
}

// The number on a keyed line; 0 where there is none.
std::int32_t number_on(std::string_view line, const KeyedLine& keyed) {
  std::int32_t number = 0;
  const auto width = static_cast<std::size_t>(keyed.last - keyed.first) + 1;
  read_integer(line.substr(std::min(column_of(keyed), line.size()), width), number);
  return number;
}

// The line with another text behind its key, and as long as it was where blanks stood behind.
std::string with_text(std::string_view line, const KeyedLine& keyed, const std::string& text) {
  std::string all = std::string(line.substr(0, column_of(keyed))) + text;
  if (trimmed(line).size() < line.size()) all.resize(std::max(all.size(), line.size()), ' ');
  return all;
}

class FaithfulHeidelberg : public FaithfulLayout {
 public:
  FaithfulHeidelberg(const Collection& file, std::span<const FileLine> lines) : file_(file), lines_(lines) {}

  std::optional<StandingCore> standing(std::size_t k) const override;
  std::optional<std::string> digits(double mm, const StandingCore& manner) const override {
    return value_digits(mm * manner.unit, manner.decimals, columns.width);
  }
  std::string missing_ring(const StandingCore&) const override {
    return std::to_string(heidelberg::missing_ring);
  }
  std::size_t width(const StandingCore&) const override { return columns.width; }
  std::size_t last_column(const StandingCore&) const override { return columns.length(); }
  std::string why_not(const SavedCore& core) const override;
  bool has_unit_of_its_own() const override { return true; }
  std::vector<SavedLine> lines(const SavedCore& core) const override;

 private:
  std::size_t data_line(std::size_t from, std::size_t to) const;
  void add_record_line(const SavedCore& core, std::size_t line, std::vector<SavedLine>& all) const;
  std::vector<SavedLine> new_header(const SavedCore& core) const;
  std::vector<SavedLine> changed_header(const SavedCore& core) const;
  LineRest rest_of_file() const;
  LineRest rest_for(const StandingCore& manner) const;

  const Collection& file_;
  std::span<const FileLine> lines_;
  mutable std::optional<LineRest> rest_of_file_;  // once it is asked for
};

std::size_t FaithfulHeidelberg::data_line(std::size_t from, std::size_t to) const {
  while (from < to && !data_key.begins(lines_[from].text)) ++from;
  return from;
}

std::optional<StandingCore> FaithfulHeidelberg::standing(std::size_t k) const {
  const SeriesRead& series = file_.decided().series[k];
  StandingCore core{static_cast<std::size_t>(series.first_line) - 1,
                    static_cast<std::size_t>(series.last_line)};
  if (core.to > lines_.size()) return std::nullopt;
  const auto rings = static_cast<std::size_t>(series.rings);
  const std::size_t data = data_line(core.from, core.to);
  if (data == core.to || core.to - data - 1 != columns.lines_for(rings)) return std::nullopt;
  // What stands between the record before and this one belongs to neither.
  for (std::size_t line = core.from; line < data; ++line) {
    if (header_key.begins(lines_[line].text)) core.from = line;
  }
  core.values_from = data + 1;
  core.name = series.name.view();
  core.first = file_.cores()[k].first;
  core.unit = series.unit;
  core.fields = fields_on(lines_.subspan(core.values_from), rings, columns);
  core.decimals = most_decimals(core.fields);
  return core;
}

std::string FaithfulHeidelberg::why_not(const SavedCore& core) const {
  if (core.name.size() > Name::length) return "the name " + core.name + " is too long";
  if (core.rings.size() > most_rings) return "more than 9,999 rings, which its length cannot say";
  return "";
}

// One of the lines before the values, as the core now asks for.
void FaithfulHeidelberg::add_record_line(const SavedCore& core, std::size_t line,
                                         std::vector<SavedLine>& all) const {
  const std::string_view text = lines_[line].text;
  const StandingCore& was = core.manner;
  const auto rings = static_cast<std::int64_t>(core.rings.size());
  const auto rings_before = static_cast<std::int64_t>(was.fields.size());
  const std::int64_t inner = core.first - was.first, outer = core.last() - (was.first + rings_before - 1);
  std::string now(text);
  // Dates that do not agree with the length keep by how much they do not.
  if (first_year_key.begins(text) && inner != 0)
    now = with_number(text, column_of(first_year_key), number_on(text, first_year_key) + inner);
  if (last_year_key.begins(text) && outer != 0)
    now = with_number(text, column_of(last_year_key), number_on(text, last_year_key) + outer);
  if (length_key.begins(text) && rings != rings_before) now = with_number(text, column_of(length_key), rings);
  if (name_key.begins(text) && core.name != without_blanks(was.name))
    now = with_text(text, name_key, core.name);
  if (now == text)
    all.push_back({line, {}});
  else
    all.push_back({std::nullopt, std::move(now)});
}

std::vector<SavedLine> FaithfulHeidelberg::changed_header(const SavedCore& core) const {
  std::vector<SavedLine> all;
  const std::size_t data = core.manner.values_from - 1;
  bool has_date = false;
  for (std::size_t line = core.manner.from; line < data; ++line) {
    add_record_line(core, line, all);
    has_date =
        has_date || first_year_key.begins(lines_[line].text) || last_year_key.begins(lines_[line].text);
  }
  if (!has_date && core.first != core.manner.first)
    all.push_back({std::nullopt, std::string(last_year_key.line) + std::to_string(core.last())});
  all.push_back({data, {}});
  return all;
}

// What a record cannot do without; all else is known of the cores that are there alone.
std::vector<SavedLine> FaithfulHeidelberg::new_header(const SavedCore& core) const {
  const std::size_t data = core.manner.values_from - 1;
  std::vector<SavedLine> all;
  for (std::string& text : std::array<std::string, 5>{
           std::string(header_key.line), std::string(name_key.line) + core.name,
           std::string(unit_key.line) + (core.manner.unit == 1000 ? "1/1000 mm" : "1/100 mm"),
           std::string(last_year_key.line) + std::to_string(core.last()),
           std::string(length_key.line) + std::to_string(core.rings.size())})
    all.push_back({std::nullopt, std::move(text)});
  all.push_back({std::nullopt, std::string(lines_[data].text)});
  return all;
}

// As the first last line of the file that is not full has it.
LineRest FaithfulHeidelberg::rest_of_file() const {
  for (std::size_t k = 0; k < file_.decided().series.size(); ++k) {
    const auto core = standing(k);
    if (!core) continue;
    if (const auto rest = rest_of(lines_.subspan(core->values_from), core->fields.size(), columns))
      return *rest;
  }
  return LineRest::zeros;
}

// As the core's own last line has it, unless that is full.
LineRest FaithfulHeidelberg::rest_for(const StandingCore& manner) const {
  if (const auto rest = rest_of(lines_.subspan(manner.values_from), manner.fields.size(), columns))
    return *rest;
  if (!rest_of_file_) rest_of_file_ = rest_of_file();
  return *rest_of_file_;
}

std::vector<SavedLine> FaithfulHeidelberg::lines(const SavedCore& core) const {
  std::vector<SavedLine> all = core.is_new ? new_header(core) : changed_header(core);
  for (SavedLine& line : value_lines(core, columns, rest_for(core.manner))) all.push_back(std::move(line));
  return all;
}

}  // namespace

std::unique_ptr<FaithfulLayout> faithful_heidelberg(const Collection& file, std::span<const FileLine> all) {
  return std::make_unique<FaithfulHeidelberg>(file, all);
}

}  // namespace vorn
