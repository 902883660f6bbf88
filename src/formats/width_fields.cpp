#include "formats/width_fields.h"

namespace vorn {

std::vector<Integer> width_fields(const SeriesStore& w, int i, std::int32_t missing_ring) {
  std::vector<Integer> fields;
  for (int p = w.ad(i); p < w.ad(i) + w.yr(i); ++p) {
    fields.push_back(w.xok(p) ? thousandths(w.x(p)) : Integer(missing_ring));
  }
  return fields;
}

}  // namespace vorn
