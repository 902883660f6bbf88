// Compact: a header line that names the edit format of the values, and the values.
#include <algorithm>
#include <cmath>

#include "batch/faithful_save_fields.h"
#include "formats/compact_layout.h"

namespace vorn {
namespace {

constexpr const LayoutField& count_columns = compact::header_fields[0];
constexpr const LayoutField& year_columns = compact::header_fields[2];
constexpr const LayoutField& name_columns = compact::header_fields[4];
constexpr const LayoutField& exponent_columns = compact::header_fields[6];
constexpr const LayoutField& format_columns = compact::header_fields[7];

std::size_t place_of(const LayoutField& field) {
  return static_cast<std::size_t>(field.first) - 1;
}

std::string_view columns_of(std::string_view text, const LayoutField& field) {
  return text.substr(std::min(place_of(field), text.size()), static_cast<std::size_t>(field.width()));
}

class FaithfulCompact : public FaithfulLayout {
 public:
  FaithfulCompact(const Collection& file, std::span<const FileLine> lines) : file_(file), lines_(lines) {}

  std::optional<StandingCore> standing(std::size_t k) const override;
  std::optional<std::string> digits(double mm, const StandingCore& manner) const override;
  std::string missing_ring(const StandingCore& manner) const override;
  std::size_t width(const StandingCore& manner) const override { return format(manner).columns.width; }
  std::size_t last_column(const StandingCore& manner) const override {
    return format(manner).columns.length();
  }
  std::string why_not(const SavedCore& core) const override {
    return core.name.size() > Name::length ? "the name " + core.name + " is too long" : "";
  }
  bool has_unit_of_its_own() const override { return false; }
  std::vector<SavedLine> lines(const SavedCore& core) const override;

 private:
  ValueFormat format(const StandingCore& core) const {
    return value_format(columns_of(lines_[core.from].text, format_columns)).value_or(ValueFormat{{1, 1}});
  }
  std::string header(const SavedCore& core) const;

  const Collection& file_;
  std::span<const FileLine> lines_;
};

std::optional<StandingCore> FaithfulCompact::standing(std::size_t k) const {
  const SeriesRead& series = file_.decided().series[k];
  StandingCore core{static_cast<std::size_t>(series.first_line) - 1,
                    static_cast<std::size_t>(series.last_line)};
  if (core.from >= core.to || core.to > lines_.size()) return std::nullopt;
  const auto format = value_format(columns_of(lines_[core.from].text, format_columns));
  const auto rings = static_cast<std::size_t>(series.rings);
  if (!format || core.to - core.from - 1 != format->columns.lines_for(rings)) return std::nullopt;
  core.values_from = core.from + 1;
  core.name = series.name.view();
  core.first = file_.cores()[k].first;
  core.unit = series.unit;
  core.fields = fields_on(lines_.subspan(core.values_from), rings, format->columns);
  core.decimals = most_decimals(core.fields);
  return core;
}

// Where values have no point the format says how many digits stand behind it.
std::optional<std::string> FaithfulCompact::digits(double mm, const StandingCore& manner) const {
  const ValueFormat format = this->format(manner);
  const double value = mm * manner.unit;
  if (manner.decimals > 0 || format.decimals == 0)
    return value_digits(value, manner.decimals, format.columns.width);
  return value_digits(value * std::pow(10.0, static_cast<double>(format.decimals)), 0, format.columns.width);
}

// The program's own, or as many nines as there is room for.
std::string FaithfulCompact::missing_ring(const StandingCore& manner) const {
  const std::string own = std::to_string(compact::missing_ring);
  return own.substr(0, std::min(own.size(), width(manner)));
}

std::string FaithfulCompact::header(const SavedCore& core) const {
  const StandingCore& was = core.manner;
  std::string text(lines_[was.from].text);
  if (core.is_new)
    text.replace(place_of(name_columns), place_of(exponent_columns) - place_of(name_columns),
                 place_of(exponent_columns) - place_of(name_columns), ' ');
  if (core.rings.size() != was.fields.size())
    text = with_number(text, place_of(count_columns), static_cast<std::int64_t>(core.rings.size()));
  if (core.first != was.first) text = with_number(text, place_of(year_columns), core.first);
  if (core.is_new || core.name != without_blanks(was.name)) {
    std::string name = core.name;
    name.resize(Name::length, ' ');
    text.replace(place_of(name_columns), Name::length, name);
  }
  return text;
}

std::vector<SavedLine> FaithfulCompact::lines(const SavedCore& core) const {
  const StandingCore& was = core.manner;
  const ValueColumns columns = format(was).columns;
  std::string text = header(core);
  std::vector<SavedLine> all;
  if (!core.is_new && text == lines_[was.from].text)
    all.push_back({was.from, {}});
  else
    all.push_back({std::nullopt, std::move(text)});
  const auto rest = rest_of(lines_.subspan(was.values_from), was.fields.size(), columns);
  for (SavedLine& line : value_lines(core, columns, rest.value_or(LineRest::nothing)))
    all.push_back(std::move(line));
  return all;
}

}  // namespace

std::unique_ptr<FaithfulLayout> faithful_compact(const Collection& file, std::span<const FileLine> lines) {
  return std::make_unique<FaithfulCompact>(file, lines);
}

}  // namespace vorn
