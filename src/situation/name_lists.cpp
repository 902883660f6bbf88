#include "situation/name_lists.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vorn {

std::optional<ShownList> list_of(ButtonNumber n, const Situation& now) {
  const auto shown_of = [](int columns, std::size_t names) {
    return ShownList{columns, static_cast<int>(std::min<std::size_t>(
                                  names, static_cast<std::size_t>(columns * list_rows)))};
  };
  if (n == button::chooser_list) return shown_of(7, now.listed.size());
  if (n == button::chronology_list) return shown_of(3, now.chronologies.size());
  if (n == button::editor_table) return ShownList{1, list_rows};
  return {};
}

Rectangle cell_of(const Rectangle& area, const ShownList& list, int k) {
  const auto part = [](int from, int to, int parts, int place) {
    const int drawn = (to - from) / parts;
    const int picked_from =
        from + static_cast<int>(std::ceil(static_cast<double>(to - from) * place / parts));
    return std::pair(picked_from, from + drawn * (place + 1));
  };
  const auto [x1, x2] = part(area.x1, area.x2, list.columns, k / list_rows);
  const auto [y1, y2] = part(area.y1, area.y2, list_rows, k % list_rows);
  return {x1, y1, x2, y2};
}

}  // namespace vorn
