#include <algorithm>
#include <vector>

#include "formats/compact.h"
#include "formats/compact_layout.h"
#include "formats/width_fields.h"

namespace vorn {

bool write_crec(const SeriesStore& w, const Writing& writing, int i) {
  const Name name = w.nam(i);
  const Status header =
      writing.out.write(compact::header_line, w.yr(i), w.fy(i), name, compact::values_format);
  told_write(writing, header, "writeH", name);

  const std::vector<Integer> values = width_fields(w, i, compact::missing_ring);
  // Deliberate: [four-columns] 10 mm and more do not fit, and become asterisks.
  const Status data = writing.out.write(compact::values_line, std::span(values));
  told_write(writing, data, "writeD", name);
  return header == status::ok && data == status::ok;
}

bool fits_compact(const SeriesStore& w, int i) {
  const std::vector<Integer> values = width_fields(w, i, compact::missing_ring);
  return std::ranges::all_of(values, [](Integer value) {
    return value && *value >= compact::least_value && *value <= compact::largest_value;
  });
}

}  // namespace vorn
