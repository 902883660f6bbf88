// Dates: the sample at every position of every chronology of the list.
#include <algorithm>
#include <cmath>

#include "desk/actions.h"
#include "desk/words.h"
#include "panels/drawn_panels.h"
#include "panels/panel_words.h"
#include "panels/pen.h"

namespace vorn {
namespace {

constexpr int block_head = 50, line_height = 38, curve_height = 110, gap = 40;
constexpr double least_p = 0.0001;

std::string p_text(double p) {
  return p < least_p ? "< " + fixed(least_p, 4) : fixed(p, p < 0.01 ? 4 : 2);
}

class DatesPanel {
 public:
  DatesPanel(const PanelInputs& inputs, const PanelView& view, const DateFindings& dates)
      : in_(inputs), view_(view), dates_(dates), pen_(view), head_(heading(Pen(view))) {}

  Panel draw() {
    y_ = head_ + 14;
    for (const DateFindings::Reference& reference : dates_.references) block(reference);
    pen_.begin_head(head_);
    heading(pen_);
    pen_.line(0, head_, view_.width, head_, colour::hairline);
    return pen_.done(static_cast<int>(y_));
  }

 private:
  bool is_seen(double height) const { return at(y_ + height) >= 0 && at(y_) <= view_.height; }
  double at(double y) const { return y - view_.scroll; }

  // Answers where it ends: in a narrow panel it takes more lines.
  int heading(Pen&& pen) const { return heading(pen); }
  int heading(Pen& pen) const {
    const int last = dates_.first_year + dates_.rings - 1;
    pen.fitted(margin, 22, view_.width - 2.0 * margin,
               dates_.sample + ", " + counted(dates_.rings, "ring") + ", now " +
                   std::to_string(dates_.first_year) + " to " + std::to_string(last),
               colour::ink, heading_size);
    const double end =
        pen.lines(margin, 66, view_.width - 2.0 * margin, verdict() + in_older(in_), colour::muted, small);
    return static_cast<int>(end) + 8;
  }

  std::string verdict() const {
    const auto best = std::ranges::find_if(dates_.references, &DateFindings::Reference::stands_out);
    const std::string few = dates_.rings < few_years_in_common
                                ? " So few rings say little: " + std::to_string(few_years_in_common) +
                                      " years in common and more are better."
                                : "";
    if (best == dates_.references.end()) return "No date stands out." + few;
    const DatedPosition& at = best->best.front();
    const bool other = std::ranges::count_if(dates_.references, &DateFindings::Reference::stands_out) > 1;
    return "One date stands out: " + years_text(at) + " on " + best->name +
           (at.shift == 0 ? ", as it is dated" : "") + (other ? "; other chronologies have one, too." : ".") +
           error_instead(at) + few;
  }

  std::string error_instead(const DatedPosition& best) const {
    const auto& pair = in_.findings->pair;
    const bool more = best.shift != 0 && pair && pair->is_sample && errors_explain_more(pair->errors, best);
    return more ? " But a ring missing or counted twice explains more: see Rings." : "";
  }

  std::string years_text(const DatedPosition& position) const {
    return std::to_string(position.first_year) + " to " +
           std::to_string(position.first_year + dates_.rings - 1);
  }

  void block(const DateFindings::Reference& reference) {
    const double height =
        block_head + curve_height + gap + line_height * (static_cast<double>(reference.best.size()) + 1);
    if (is_seen(height)) {
      pen_.fitted(margin, at(y_) + 6, view_.width - 2.0 * margin - 220, reference.name);
      pen_.right(view_.width - margin, at(y_) + 8,
                 reference.best.empty() ? "too few years in common"
                 : reference.stands_out ? "stands out"
                                        : "none stands out",
                 reference.stands_out ? colour::sea_green : colour::muted, small);
    }
    y_ += block_head;
    if (reference.best.empty()) {
      if (is_seen(line_height))
        pen_.fitted(margin, at(y_), view_.width - 2.0 * margin,
                    "It takes " + std::to_string(least_years_in_common) + " years to try a date.",
                    colour::muted, small);
      y_ += line_height + gap;
      return;
    }
    columns();
    for (std::size_t k = 0; k < reference.best.size(); ++k) line(reference, k);
    if (is_seen(curve_height)) curve(reference);
    y_ += curve_height + gap;
  }

  // What does not fit is left out from the right.
  struct Column {
    std::string_view title;
    int right;
  };
  static constexpr std::array<Column, 8> table = {{{"r", 330},
                                                   {"t BP", 410},
                                                   {"t H", 490},
                                                   {"Glk", 570},
                                                   {"years", 650},
                                                   {"p", 790},
                                                   {"margin", 890},
                                                   {"shift", 990}}};
  bool fits(const Column& column) const { return column.right <= view_.width - 230; }

  void columns() {
    if (is_seen(line_height)) {
      for (const Column& column : table) {
        if (fits(column)) pen_.right(column.right, at(y_), column.title, colour::muted, small);
      }
    }
    y_ += line_height;
  }

  void line(const DateFindings::Reference& reference, std::size_t k) {
    const DatedPosition& found = reference.best[k];
    if (is_seen(line_height)) {
      const bool best = k == 0;
      const double y = at(y_);
      const Colour letters = best && reference.stands_out ? colour::ink : colour::muted;
      pen_.text(margin, y, years_text(found), letters, small);
      const std::array<std::string, 8> cells = {
          fixed(found.r, 2),
          fixed(found.t_bp, 1),
          fixed(found.t_h, 1),
          std::isfinite(found.glk) ? fixed(100 * found.glk, 0) + " %" : "",
          std::to_string(found.overlap),
          p_text(found.p),
          best && std::isfinite(reference.margin) ? fixed(reference.margin, 1) : "",
          signed_number(found.shift)};
      for (std::size_t c = 0; c < table.size(); ++c) {
        if (fits(table[c])) pen_.right(table[c].right, y, cells[c], letters, small);
      }
      use(found, static_cast<int>(y));
    }
    y_ += line_height;
  }

  void use(const DatedPosition& found, int y) {
    const Rectangle place{view_.width - margin - 190, y - 8, view_.width - margin, y + 25};
    if (found.shift == 0) {
      pen_.right(view_.width - margin, y, "dated so", colour::muted, small);
      return;
    }
    Spot spot;
    const auto deed = in_.standing ? move_sample_by(found.shift, *in_.standing) : std::nullopt;
    if (const auto* play = deed && is_of_page() ? std::get_if<Play>(&*deed) : nullptr) spot.play = *play;
    spot.tip = "Use this date: the sample moves by " + signed_number(found.shift) + " years, to " +
               years_text(found) + (spot.play ? "" : "; on the cross-dating screen, when nothing is asked");
    pen_.key(place, "Use this date", std::move(spot));
  }

  bool is_of_page() const {
    const PairMember& sample = in_.standing->situation->sample;
    return sample.name == dates_.sample && sample.first_year == dates_.first_year;
  }

  // r by position: where one date stands out it is seen at once.
  void curve(const DateFindings::Reference& reference) {
    const double left = margin + 46, right = view_.width - margin, top = at(y_) + 10,
                 bottom = at(y_) + curve_height - 34;
    const auto count = static_cast<double>(reference.r.size());
    const auto x_of = [&](std::int64_t year) {
      return left + (static_cast<double>(year - reference.first) + 0.5) * (right - left) / count;
    };
    const auto y_of = [&](double r) { return bottom - std::clamp(r, 0.0, 1.0) * (bottom - top); };
    pen_.area(
        {static_cast<int>(left), static_cast<int>(top), static_cast<int>(right), static_cast<int>(bottom)},
        colour::shade);
    pen_.right(left - 8, top - 4, "r 1", colour::muted, small);
    pen_.right(left - 8, bottom - 14, "0", colour::muted, small);
    std::vector<PagePoint> points;
    // Of many positions in one unit the highest is what counts.
    double highest = -1;
    int unit = -1;
    for (std::size_t k = 0; k < reference.r.size(); ++k) {
      const double x = x_of(reference.first + static_cast<std::int64_t>(k));
      if (static_cast<int>(x) != unit && unit >= 0) {
        points.push_back({static_cast<double>(unit), y_of(highest)});
        highest = -1;
      }
      unit = static_cast<int>(x);
      if (std::isfinite(reference.r[k])) highest = std::max(highest, reference.r[k]);
    }
    if (unit >= 0) points.push_back({static_cast<double>(unit), y_of(highest)});
    pen_.curve(std::move(points), colour::deep_blue);
    const DatedPosition& best = reference.best.front();
    const double x = x_of(best.first_year), y = y_of(best.r);
    pen_.triangle({x, y - 4}, {x - 8, y - 18}, {x + 8, y - 18},
                  reference.stands_out ? colour::sea_green : colour::muted);
    pen_.text(left, bottom + 8, std::to_string(reference.first), colour::muted, small);
    pen_.right(right, bottom + 8,
               std::to_string(reference.first + static_cast<std::int64_t>(reference.r.size()) - 1),
               colour::muted, small);
    const std::string tried =
        "first year, " + counted(static_cast<std::int64_t>(reference.tried), "position") + " tried";
    pen_.centred((left + right) / 2, bottom + 8, tried, colour::muted, small);
  }

  const PanelInputs& in_;
  PanelView view_;
  const DateFindings& dates_;
  Pen pen_;
  int head_;
  double y_ = 0;
};

}  // namespace

Panel draw_dates(const PanelInputs& inputs, const PanelView& view) {
  if (!inputs.findings || !inputs.findings->dates)
    return words_alone(view, "Dates", waiting_words(inputs, "No sample is on the cross-dating page."));
  return DatesPanel(inputs, view, *inputs.findings->dates).draw();
}

}  // namespace vorn
