#include <algorithm>
#include <vector>

#include "formats/tucson_raw.h"
#include "formats/tucson_raw_layout.h"
#include "formats/width_fields.h"

namespace vorn {
namespace {

using namespace tucson_raw;

// The widths of entry i, thousandths, with the end mark behind them.
std::vector<Integer> marked_values(const SeriesStore& w, int i) {
  std::vector<Integer> values = width_fields(w, i, missing_ring);
  values.emplace_back(end_of_thousandths);
  return values;
}

Status write_line(TextOutput& out, const Name& name, std::int32_t year, std::span<const Integer> values) {
  // Deliberate: [two-minus-signs] the others show the name whole, a "-" at its end and the minus sign of
  // the year.
  if (year < -999) return out.write(early_line_edit, name.view().substr(0, 7), year, values);
  return out.write(line_edit, name, year, values);
}

}  // namespace

bool write_rrec(const SeriesStore& w, const Writing& writing, int i) {
  const Name name = w.nam(i);
  const std::vector<Integer> values = marked_values(w, i);
  bool whole = true;
  auto room = static_cast<std::size_t>(first_decade_end(w.fy(i)));
  for (std::size_t first = 0; first < values.size(); room = values_a_line) {
    const auto line = std::span(values).subspan(first, std::min(room, values.size() - first));
    const Status answer = write_line(writing.out, name, w.fy(i) + static_cast<std::int32_t>(first), line);
    whole = told_write(writing, answer, "Write", name) == status::ok && whole;
    first += line.size();
  }
  return whole;
}

}  // namespace vorn
