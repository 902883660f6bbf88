// Tucson ring widths: each line says its year, so that lines are the same wherever they stand.
#include <algorithm>
#include <charconv>
#include <cmath>

#include "batch/faithful_save_layout.h"
#include "batch/tucson_text.h"
#include "formats/tucson_raw_layout.h"
#include "study/tucson_lines.h"

namespace vorn {
namespace {

constexpr auto start_of_widths = static_cast<std::size_t>(tucson_raw::fields.back().first) - 1;
constexpr std::size_t columns_of_a_width = 6;
constexpr std::int32_t before_early_lines = -999;  // years below have a column of the name

std::int32_t number_of(const std::string& digits) {
  std::int32_t number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

// How long each line of a core is; 0 where they differ.
std::size_t common_length(std::span<const FileLine> lines) {
  const auto is_other = [&](const FileLine& line) { return line.text.size() != lines.front().text.size(); };
  return std::ranges::any_of(lines, is_other) ? 0 : lines.front().text.size();
}

class FaithfulTucson : public FaithfulLayout {
 public:
  FaithfulTucson(const Collection& file, std::span<const FileLine> lines) : file_(file), lines_(lines) {}

  std::optional<StandingCore> standing(std::size_t k) const override;
  std::optional<std::string> digits(double mm, const StandingCore& manner) const override;
  std::string missing_ring(const StandingCore&) const override {
    return std::to_string(tucson_raw::missing_ring);
  }
  std::size_t width(const StandingCore&) const override { return columns_of_a_width; }
  std::size_t last_column(const StandingCore&) const override {
    return static_cast<std::size_t>(tucson_raw::fields.back().last);
  }
  std::string why_not(const SavedCore& core) const override;
  bool has_unit_of_its_own() const override { return true; }
  std::vector<SavedLine> lines(const SavedCore& core) const override;

 private:
  std::span<const FileLine> own(const StandingCore& core) const {
    return lines_.subspan(core.from, core.to - core.from);
  }
  static std::string name_in_columns(const SavedCore& core);
  std::optional<std::size_t> same_line(const std::string& line, const StandingCore& core) const;

  const Collection& file_;
  std::span<const FileLine> lines_;
};

std::optional<StandingCore> FaithfulTucson::standing(std::size_t k) const {
  const SeriesRead& series = file_.decided().series[k];
  StandingCore core{static_cast<std::size_t>(series.first_line) - 1,
                    static_cast<std::size_t>(series.last_line)};
  if (core.from >= core.to || core.to > lines_.size()) return std::nullopt;
  core.values_from = core.from;
  const auto stands = cores_on(lines_.first(core.to), core.from);
  if (stands.size() != 1) return std::nullopt;
  const CoreLines& read = stands.front();
  Stretch stretch{std::string(lines_[core.from].text.substr(0, Name::length)),
                  read.decades.front().year,
                  {},
                  series.unit};
  if (stretch.first < 0 && stretch.name.back() == '-') stretch.name.back() = ' ';
  for (std::size_t place = 0; place < read.decades.size(); ++place) {
    for (std::size_t ring = 0; ring < read.rings_on(place); ++ring)
      stretch.values.push_back(read.decades[place].fields[ring].number);
  }
  if (!holds_stretch(file_, static_cast<int>(k) + 1, stretch)) return std::nullopt;
  for (const std::int32_t value : stretch.values) core.fields.push_back(std::to_string(value));
  core.name = stretch.name;
  core.first = stretch.first;
  core.unit = stretch.unit;
  return core;
}

std::optional<std::string> FaithfulTucson::digits(double mm, const StandingCore& manner) const {
  constexpr double most = 1e6;  // that six columns hold
  const double value = mm * manner.unit, whole = std::round(value);
  if (!(std::abs(value - whole) < 1e-6) || !(std::abs(whole) < most)) return std::nullopt;
  return std::to_string(static_cast<std::int32_t>(whole));
}

// Where the core keeps its name, that stands where it stood.
std::string FaithfulTucson::name_in_columns(const SavedCore& core) {
  return without_blanks(core.manner.name) == core.name ? core.manner.name : core.name;
}

std::string FaithfulTucson::why_not(const SavedCore& core) const {
  const std::string name = name_in_columns(core);
  const std::size_t columns = core.first < before_early_lines ? Name::length - 1 : Name::length;
  return trimmed(name).size() > columns ? "the name " + name + " is too long" : "";
}

// The line of a core that says the same, in whatever way its digits are written.
std::optional<std::size_t> FaithfulTucson::same_line(const std::string& line,
                                                     const StandingCore& core) const {
  const auto numbers = [](const DecadeField& field) { return field.number; };
  const auto wanted = decade_of(line, 0);
  for (std::size_t k = core.from; wanted && k < core.to; ++k) {
    if (lines_[k].text.substr(0, start_of_widths) != std::string_view(line).substr(0, start_of_widths))
      continue;
    const auto stands = decade_of(lines_[k].text, 0);
    if (stands && std::ranges::equal(stands->fields, wanted->fields, {}, numbers, numbers)) return k;
  }
  return std::nullopt;
}

// Lines that are as they were stay so, and others are filled up with blanks where all of the core's were.
std::vector<SavedLine> FaithfulTucson::lines(const SavedCore& core) const {
  const StandingCore& manner = core.manner;
  Stretch stretch{name_in_columns(core), core.first, {}, manner.unit};
  for (const SavedRing& ring : core.rings)
    stretch.values.push_back(number_of(ring.kept ? manner.fields[*ring.kept] : ring.digits));
  const std::size_t length = core.is_new ? 0 : common_length(own(manner));
  std::vector<SavedLine> all;
  for (std::string& line : tucson_lines(stretch)) {
    const auto same = core.is_new ? std::nullopt : same_line(line, manner);
    line.resize(std::max(line.size(), length), ' ');
    all.push_back({same, std::move(line)});
  }
  return all;
}

}  // namespace

std::unique_ptr<FaithfulLayout> faithful_tucson(const Collection& file, std::span<const FileLine> lines) {
  return std::make_unique<FaithfulTucson>(file, lines);
}

}  // namespace vorn
