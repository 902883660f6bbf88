// Pointer years: in which most cores are narrow, or wide.
#include <algorithm>
#include <cmath>

#include "panels/drawn_panels.h"
#include "panels/panel_words.h"
#include "panels/pen.h"
#include "panels/year_axis.h"

namespace vorn {
namespace {

constexpr int top = 66, below = 50, least_height = 60;

class PointersPanel {
 public:
  PointersPanel(const PanelInputs& inputs, const PanelView& view, const std::vector<PointerYear>& years)
      : in_(inputs),
        view_(view),
        years_(years),
        pen_(view),
        axis_(view, inputs.standing ? inputs.standing->situation.get() : nullptr,
              {years.front().year, years.back().year}),
        bottom_(std::max(view.height - below, top + least_height)),
        zero_((top + bottom_) / 2.0) {}

  Panel draw() {
    heading();
    for (const PointerYear& year : years_) {
      if (axis_.shows(year.year) && year.cores > 0) bars(year);
    }
    pen_.line(axis_.left(), zero_, axis_.right(), zero_, colour::muted);
    const double share = share_of_pointer * (zero_ - top);
    for (const double y : {zero_ - share, zero_ + share})
      pen_.line(axis_.left(), y, axis_.right(), y, colour::hairline);
    axis_.draw(pen_, bottom_);
    return pen_.done(bottom_ + below);
  }

 private:
  void heading() {
    pen_.text(margin, 18, "Pointer years", colour::ink, heading_size);
    const double x = margin + width_of("Pointer years", heading_size) + 30;
    pen_.fitted(x, 24, view_.width - margin - x,
                "share of the cores that are narrow (down) or wide (up); full from " +
                    fixed(100 * share_of_pointer, 0) + " % on" + in_older(in_),
                colour::muted, small);
  }

  // Narrow years hang down, as people look for them; those that most cores agree on are full.
  void bars(const PointerYear& year) {
    const double left = axis_.x_of(year.year), right = axis_.x_of(year.year + 1);
    const int from = static_cast<int>(std::floor(left)),
              to = std::max(static_cast<int>(std::floor(right)) - (axis_.unit() > 6 ? 2 : 0), from + 1);
    const int down = static_cast<int>(std::lround(year.share_narrow() * (bottom_ - zero_)));
    const int up = static_cast<int>(std::lround(year.share_wide() * (zero_ - top)));
    const int zero = static_cast<int>(zero_);
    if (down > 0)
      pen_.area({from, zero, to, zero + down}, year.is_narrow() ? colour::vermilion : colour::pale_red);
    if (up > 0)
      pen_.area({from, zero - up, to, zero}, year.is_wide() ? colour::deep_blue : colour::pale_blue);
    pen_.spot({{from, top, std::max(to, from + 2), bottom_},
               std::to_string(year.year) + ": narrow in " + std::to_string(year.narrow) + ", wide in " +
                   std::to_string(year.wide) + " of " + std::to_string(year.cores) + " cores",
               {},
               {}});
  }

  const PanelInputs& in_;
  PanelView view_;
  const std::vector<PointerYear>& years_;
  Pen pen_;
  YearAxis axis_;
  int bottom_;
  double zero_;
};

}  // namespace

Panel draw_pointers(const PanelInputs& inputs, const PanelView& view) {
  if (!inputs.findings || !inputs.findings->pointers || inputs.findings->pointers->empty())
    return words_alone(view, "Pointer years", waiting_words(inputs, "No cores are loaded."));
  return PointersPanel(inputs, view, *inputs.findings->pointers).draw();
}

}  // namespace vorn
