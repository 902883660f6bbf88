#include "formats/tucson_stretch.h"

#include <algorithm>
#include <span>

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

}  // namespace vorn
