#include "batch/tucson_text.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "batch/difference.h"
#include "formats/tucson_raw_layout.h"
#include "workspace/names.h"

namespace vorn {
namespace {

std::string line_of(const std::string& name, std::int64_t year, std::span<const std::int32_t> values) {
  const auto of_year = static_cast<std::int32_t>(year);
  if (year < -999) return edit(tucson_raw::early_line_edit, Text<7>(name), of_year, values);
  return edit(tucson_raw::line_edit, Name(name), of_year, values);
}

}  // namespace

std::vector<std::string> tucson_lines(const Stretch& stretch) {
  std::vector<std::int32_t> values = stretch.values;
  values.push_back(stretch.unit == 1000 ? tucson_raw::end_of_thousandths : tucson_raw::end_of_hundredths);
  std::vector<std::string> lines;
  auto room = static_cast<std::size_t>(first_decade_end(static_cast<std::int32_t>(stretch.first)));
  for (std::size_t at = 0; at < values.size(); room = tucson_raw::values_a_line) {
    const auto line = std::span<const std::int32_t>(values).subspan(at, std::min(room, values.size() - at));
    lines.push_back(line_of(stretch.name, stretch.first + static_cast<std::int64_t>(at), line));
    at += line.size();
  }
  return lines;
}

bool holds_stretch(const Collection& collection, int i, const Stretch& stretch) {
  const SeriesStore& w = collection.state();
  const auto widths = w.widths(i);
  const auto present = w.presence(i);
  if (plain_name(w, i) != without_blanks(stretch.name) || w.fy(i) != stretch.first ||
      widths.size() != stretch.values.size())
    return false;
  for (std::size_t k = 0; k < widths.size(); ++k) {
    const double width = stretch.values[k] / stretch.unit;
    if (present[k] ? !(std::abs(widths[k] - width) < 1e-9) : !(width < 0)) return false;
  }
  return true;
}

}  // namespace vorn
