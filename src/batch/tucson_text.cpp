#include "batch/tucson_text.h"

#include <cmath>

#include "batch/difference.h"

namespace vorn {

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
