#include "panels/year_axis.h"

#include <algorithm>
#include <string>

#include "situation/graph_axis.h"

namespace vorn {
namespace {

constexpr double beside_axis = 64;  // for what is written left of it

bool has_graph(const Situation* page) {
  return page && page->years_shown > 0 && page->sample.entry > 0;
}

}  // namespace

YearAxis::YearAxis(const PanelView& view, const Situation* page, YearSpan whole)
    : years_(whole), left_(beside_axis), right_(std::max(view.width - margin, 80 + margin)) {
  if (view.axis && has_graph(page)) {
    const GraphAxis graph(*page);
    years_ = {graph.first(), graph.last()};
    left_ = view.axis->left;
    right_ = view.axis->right;
  }
  if (years_.count() < 1) years_ = {0, 0};
  unit_ = (right_ - left_) / static_cast<double>(years_.count());
}

void YearAxis::draw(Pen& pen, double y) const {
  std::int64_t step = 1;
  const double room = width_of(std::to_string(years_.first), small) + 40;
  for (const int factor : {10, 20, 50, 100, 200, 500, 1000, 2000, 5000}) {
    step = factor;
    if (static_cast<double>(factor) * unit_ >= room) break;
  }
  pen.line(left_, y, right_, y, colour::muted);
  for (std::int64_t year = years_.first; year <= years_.last; ++year) {
    if (year % step != 0) continue;
    const double x = middle_of(year);
    pen.line(x, y, x, y + 8, colour::muted);
    const double half = width_of(std::to_string(year), small) / 2;
    if (x - half >= 0 && x + half <= pen.width())
      pen.centred(x, y + 14, std::to_string(year), colour::muted, small);
  }
}

}  // namespace vorn
