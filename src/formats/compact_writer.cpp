#include <algorithm>
#include <vector>

#include "formats/compact.h"
#include "formats/compact_layout.h"
#include "formats/width_fields.h"

namespace vorn {
namespace {

using Values = std::vector<Integer>;

Values values_of(const SeriesStore& w, int i) {
  return width_fields(w, i, compact::missing_ring);
}

bool fit_four_columns(const Values& values) {
  return std::ranges::all_of(values, [](Integer value) {
    return value && *value >= compact::least_value && *value <= compact::largest_value;
  });
}

Status write_header(const SeriesStore& w, TextOutput& out, int i, bool is_wide) {
  if (!is_wide) return out.write(compact::header_line, w.yr(i), w.fy(i), w.nam(i), compact::values_format);
  return out.write(compact::wide_header_line, w.yr(i), w.fy(i), w.nam(i), compact::wide_exponent,
                   compact::wide_values_format);
}

}  // namespace

bool write_crec(const SeriesStore& w, const Writing& writing, int i) {
  const Name name = w.nam(i);
  const Values values = values_of(w, i);
  // Deliberate: [four-columns] 10 mm and more do not fit, and become asterisks.
  const bool is_wide = writing.careful.has(Mend::compact_widths) && !fit_four_columns(values);
  const Status header = write_header(w, writing.out, i, is_wide);
  told_write(writing, header, "writeH", name);
  const Status data =
      writing.out.write(is_wide ? compact::wide_values_line : compact::values_line, std::span(values));
  told_write(writing, data, "writeD", name);
  return header == status::ok && data == status::ok;
}

bool fits_compact(const SeriesStore& w, const Careful& careful, int i) {
  const Values values = values_of(w, i);
  if (!careful.has(Mend::compact_widths)) return fit_four_columns(values);
  return std::ranges::all_of(values, [](Integer value) { return value.has_value(); });
}

}  // namespace vorn
