// Around a year: the cores laid over one another, the one on the page in front.
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "panels/drawn_panels.h"
#include "panels/panel_words.h"
#include "panels/pen.h"
#include "panels/year_axis.h"

namespace vorn {
namespace {

constexpr int top_of_graph = 120, below_graph = 56;
constexpr std::size_t most_curves = 200;  // more are a grey area anyway

class AroundPanel {
 public:
  AroundPanel(const PanelInputs& inputs, const PanelView& view, const PairFindings& pair, std::int64_t year)
      : in_(inputs),
        view_(view),
        pair_(pair),
        pen_(view),
        year_(year),
        axis_({.width = view.width}, nullptr, {year - years_around_it, year + years_around_it}),
        bottom_(std::max(view.height - below_graph, top_of_graph + 80)) {}

  Panel draw() {
    find_scale();
    heading();
    const double middle = axis_.middle_of(year_);
    pen_.area({static_cast<int>(axis_.x_of(year_)), top_of_graph, static_cast<int>(axis_.x_of(year_ + 1)),
               static_cast<int>(bottom_)},
              colour::pale_amber);
    for (std::size_t k = 0; k < std::min(pair_.others.size(), most_curves); ++k)
      curve(pair_.others[k]->core().compared, colour::hairline);
    curve(pair_.reference.view(), colour::vermilion);
    curve(pair_.core->core().compared, colour::deep_blue);
    axis_.draw(pen_, bottom_);
    pen_.triangle({middle, bottom_ + 2}, {middle - 8, bottom_ + 14}, {middle + 8, bottom_ + 14}, colour::ink);
    return pen_.done(static_cast<int>(bottom_) + below_graph);
  }

 private:
  void heading() {
    pen_.fitted(margin, 22, view_.width - 2.0 * margin, "Around " + std::to_string(year_), colour::ink,
                heading_size);
    double x = margin;
    const auto entry = [&](std::string_view words, Colour line, Colour letters) {
      pen_.line(x, 75, x + 40, 75, line);
      const double room = view_.width - margin - x - 50;
      if (room < 60) return;
      pen_.fitted(x + 50, 66, room, words, letters, small);
      x += 80 + width_of(words, small);
    };
    entry(pair_.core->series().name, colour::deep_blue, colour::deep_blue);
    entry(pair_.others.empty() ? pair_.against : "mean of " + pair_.against, colour::vermilion,
          colour::vermilion);
    if (!pair_.others.empty()) entry("each of them" + in_older(in_), colour::hairline, colour::muted);
  }

  template <class Use>
  void each(const SeriesView& series, Use use) const {
    for (std::int64_t year = axis_.years().first; year <= axis_.years().last; ++year) {
      const bool has = series.has(year) && std::isfinite(series.at(year));
      use(year, has ? series.at(year) : std::nan(""));
    }
  }

  void find_scale() {
    const auto look = [this](const SeriesView& series) {
      each(series, [this](std::int64_t, double value) {
        if (std::isnan(value)) return;
        least_ = std::min(least_, value);
        most_ = std::max(most_, value);
      });
    };
    look(pair_.core->core().compared);
    look(pair_.reference.view());
    for (const SharedStudied& other : pair_.others) look(other->core().compared);
    if (!(most_ > least_)) least_ = 0, most_ = 1;
  }

  // An absent ring is a gap in the curve.
  void curve(const SeriesView& series, Colour colour) {
    std::vector<PagePoint> points;
    each(series, [&](std::int64_t year, double value) {
      if (std::isnan(value)) return pen_.curve(std::exchange(points, {}), colour);
      const double share = (value - least_) / (most_ - least_);
      points.push_back({axis_.middle_of(year), bottom_ - share * (bottom_ - top_of_graph)});
    });
    pen_.curve(std::move(points), colour);
  }

  const PanelInputs& in_;
  PanelView view_;
  const PairFindings& pair_;
  Pen pen_;
  std::int64_t year_;
  YearAxis axis_;
  double bottom_;
  double least_ = std::numeric_limits<double>::infinity(), most_ = -std::numeric_limits<double>::infinity();
};

}  // namespace

std::optional<std::int64_t> year_looked_at(const PanelInputs& inputs) {
  if (!inputs.findings || !inputs.findings->pair) return {};
  const auto candidates = shown_candidates(*inputs.findings->pair, inputs.state);
  if (inputs.state.candidate && *inputs.state.candidate < candidates.size())
    return candidates[*inputs.state.candidate].year;
  if (!candidates.empty() &&
      worth_a_look(shown_errors(*inputs.findings->pair, inputs.state), candidates.front()))
    return candidates.front().year;
  // Else the middle of what the page shows, where the bar stands.
  if (inputs.standing && inputs.standing->situation)
    return inputs.standing->situation->first_year + inputs.standing->situation->years_shown / 2;
  const YearSpan years = inputs.findings->pair->core->core().compared.years();
  return (years.first + years.last) / 2;
}

Panel draw_around(const PanelInputs& inputs, const PanelView& view) {
  const auto year = year_looked_at(inputs);
  if (!year)
    return words_alone(view, "Around a Year", waiting_words(inputs, "No core is on the cross-dating page."));
  return AroundPanel(inputs, view, *inputs.findings->pair, *year).draw();
}

}  // namespace vorn
