#include "panels/lag_tiles.h"

#include <cmath>
#include <string>

namespace vorn {
namespace {

constexpr double label_width = 124, row_height = 36, head = 70;

// The best lag stands out: green where it is 0, else amber. Nothing is said by colour alone: it has a frame.
void tile(Pen& pen, const Rectangle& place, double r, bool best, bool dated) {
  if (best) {
    pen.area(place, dated ? colour::pale_green : colour::pale_amber);
    pen.frame(place, dated ? colour::sea_green : colour::amber);
  }
  const std::string text = short_r(r);
  const double room = place.x2 - place.x1;
  if (width_of(text, small) + 4 > room) return;
  pen.centred((place.x1 + place.x2) / 2.0, place.y1 + 7, text,
              best    ? colour::ink
              : dated ? colour::deep_blue
                      : colour::muted,
              small);
}

}  // namespace

double lag_tiles(Pen& pen, double x, double y, double width, std::string_view title,
                 const std::vector<LagRow>& rows) {
  pen.text(x, y, title);
  if (rows.empty()) {
    pen.fitted(x, y + 38, width, "No segment has enough years in common.", colour::muted, small);
    return y + head;
  }
  const double cell = (width - label_width) / (2 * shown_lags + 1);
  for (int lag = -shown_lags; lag <= shown_lags; ++lag) {
    if (cell < 40 && lag % shown_lags != 0) continue;
    pen.centred(x + label_width + (lag + shown_lags + 0.5) * cell, y + 38, signed_number(lag), colour::muted,
                small);
  }
  y += head;
  for (const LagRow& row : rows) {
    pen.text(x, y + 7, std::to_string(row.years.first) + "-" + std::to_string(row.years.last), colour::muted,
             small);
    const std::size_t best = row.best();
    for (std::size_t k = 0; k < row.r.size(); ++k) {
      if (!row.r[k]) continue;
      const double left = x + label_width + static_cast<double>(k) * cell;
      const Rectangle place{static_cast<int>(std::lround(left)), static_cast<int>(y),
                            static_cast<int>(std::lround(left + cell)) - 3,
                            static_cast<int>(y + row_height - 4)};
      tile(pen, place, *row.r[k], k == best, k == static_cast<std::size_t>(shown_lags));
    }
    y += row_height;
  }
  return y;
}

}  // namespace vorn
