// Site: which core first.
#include <algorithm>
#include <cmath>

#include "desk/words.h"
#include "panels/drawn_panels.h"
#include "panels/panel_words.h"
#include "panels/pen.h"
#include "panels/plays.h"

namespace vorn {
namespace {

constexpr int head = 146, low_row = 50, high_row = 86, tile_height = 34, widest_tile = 90;
constexpr int thinnest_tile = 4;
constexpr double tile_size = 16;
constexpr int name_x = 74, left_of_tiles = 316;

std::string years_text(const SeriesCopy& core) {
  return std::to_string(core.first_year) + "-" + std::to_string(core.last_year());
}

class SitePanel {
 public:
  SitePanel(const PanelInputs& inputs, const PanelView& view, const SiteFindings& site)
      : in_(inputs), view_(view), site_(site), pen_(view), order_(listed_cores(site, inputs.state)) {
    // The tiles take what names and figures leave, but no more than is of use.
    const int wanted = static_cast<int>(site.survey.segments.size()) * widest_tile;
    const int room = std::max(view.width - left_of_tiles - margin, 0);
    tiles_width_ = std::min(room, wanted);
    int top = head;
    for (const std::size_t k : order_) {
      tops_.push_back(top);
      top += height_of(k);
    }
    tops_.push_back(top);
  }

  Panel draw() {
    const auto first = std::ranges::upper_bound(tops_, view_.scroll + head) - tops_.begin();
    for (auto k = static_cast<std::size_t>(std::max<std::ptrdiff_t>(first - 1, 0)); k < order_.size(); ++k) {
      const int y = tops_[k] - view_.scroll;
      if (y > view_.height) break;
      row(order_[k], y);
    }
    heading();
    return pen_.done(tops_.back() + margin);
  }

 private:
  int height_of(std::size_t k) const { return site_.todo[k].empty() ? low_row : high_row; }

  void heading() {
    pen_.begin_head(head - 8);
    const auto to_do = std::ranges::count_if(site_.survey.order, [this](std::size_t k) {
      return !site_.todo[k].empty() && in_.state.mark_of(site_.cores[k]->series().name) == CoreMark::to_do;
    });
    const std::string cores = counted(static_cast<std::int64_t>(site_.cores.size()), "core");
    pen_.fitted(margin, 22, view_.width - 300, site_.file, colour::ink, heading_size);
    pen_.fitted(margin, 60, view_.width - 300,
                cores + ", " + std::to_string(to_do) + " to look at" + in_older(in_) +
                    ".  A: weaker than chance gives in 1 case of 100.  B: another lag is better",
                colour::muted, small);
    pen_.key(
        {view_.width - 260, 20, view_.width - margin, 62},
        in_.state.only_to_do ? "Show all" : "Hide what is done",
        {.tip = in_.state.only_to_do ? "Shows all cores" : "Leaves out the cores that are done or skipped",
         .change = {.kind = PanelChange::Kind::only_to_do}});
    if (!site_.survey.segments.empty()) {
      const std::string first = std::to_string(site_.survey.segments.front().first);
      const std::string last = std::to_string(site_.survey.segments.back().last);
      pen_.text(left_of_tiles, head - 40, first, colour::muted, small);
      if (width_of(first + last, small) + 20 < tiles_width_)
        pen_.right(left_of_tiles + tiles_width_, head - 40, last, colour::muted, small);
    }
    pen_.text(name_x, head - 40, "core", colour::muted, small);
    pen_.right(296, head - 40, "r", colour::muted, small);
    pen_.line(0, head - 8, view_.width, head - 8, colour::hairline);
  }

  void row(std::size_t k, int y) {
    const SiteCore& core = site_.survey.cores[k];
    const SeriesCopy& series = site_.cores[k]->series();
    const CoreMark mark = in_.state.mark_of(series.name);
    const int row_height = height_of(k);
    const bool on_page = is_on_page(k);
    if (on_page) pen_.area({0, y, view_.width, y + row_height}, colour::pale_blue);
    const std::string& todo = site_.todo[k];
    const std::string r = core.years > 0 ? short_r(core.r) : std::string();
    const Colour letters = mark == CoreMark::to_do ? colour::ink : colour::muted;
    std::string tip = series.name + ", " + years_text(series) + (r.empty() ? "" : ", r " + r) +
                      (todo.empty() ? "" : ": " + todo);
    auto play = in_.standing ? put_on_page(static_cast<int>(k) + 1, *in_.standing) : std::nullopt;
    if (play) tip += ". A click puts it on the page";
    pen_.spot({{0, y, view_.width, y + row_height}, tip, {}, std::move(play)});
    pen_.fitted(name_x, y + 12, 160, series.name, letters);
    pen_.right(296, y + 12, r, letters);
    tiles(core, y + 6);
    if (!todo.empty()) pen_.fitted(name_x, y + 51, view_.width - name_x - margin, todo, letters, small);
    mark_box(series.name, mark, !todo.empty(), y);
    pen_.line(margin, y + row_height, view_.width - margin, y + row_height, colour::hairline);
  }

  bool is_on_page(std::size_t k) const {
    if (!in_.standing || !in_.standing->situation) return false;
    const Situation& now = *in_.standing->situation;
    const int entry = static_cast<int>(k) + 1;
    return now.sample.entry == entry || now.reference.entry == entry;
  }

  // A hook for what is done, a dash for what is skipped; nothing to be done needs no box.
  void mark_box(const std::string& core, CoreMark mark, bool needs, int y) {
    if (!needs && mark == CoreMark::to_do) return;
    const Rectangle box{24, y + 8, 54, y + 38};
    pen_.area(box, mark == CoreMark::done ? colour::pale_green : colour::paper);
    pen_.frame(box, colour::muted);
    if (mark == CoreMark::done)
      pen_.curve({{30.0, y + 23.0}, {37.0, y + 31.0}, {49.0, y + 14.0}}, colour::sea_green);
    if (mark == CoreMark::skipped) pen_.line(31, y + 23, 47, y + 23, colour::muted);
    pen_.spot({{12, y, 64, y + (needs ? high_row : low_row)},
               core + " is " + std::string(word_of(mark)) + ". A click: to do, done, skipped",
               {.kind = PanelChange::Kind::mark, .core = core},
               {}});
  }

  void tiles(const SiteCore& core, int y) {
    const auto& cells = core.cells;
    if (cells.empty() || tiles_width_ < static_cast<int>(cells.size()) * thinnest_tile) return;
    const double width = static_cast<double>(tiles_width_) / static_cast<double>(cells.size());
    for (std::size_t k = 0; k < cells.size(); ++k) {
      if (!cells[k]) continue;
      const Rectangle place{
          left_of_tiles + static_cast<int>(std::lround(static_cast<double>(k) * width)), y,
          left_of_tiles + static_cast<int>(std::lround(static_cast<double>(k + 1) * width)) - 3,
          y + tile_height};
      tile(*cells[k], {place.x1, place.y1, std::max(place.x2, place.x1 + 2), place.y2});
    }
  }

  // A: weak. B: another lag is better. Both are said by letters and by the colour, weak segments weigh more.
  void tile(const SiteCell& cell, const Rectangle& place) {
    const Colour colour = cell.low       ? colour::pale_red
                          : cell.lagging ? colour::pale_amber
                                         : colour::pale_green;
    pen_.area(place, colour);
    const std::string sign = std::string(cell.low ? "A" : "") + (cell.lagging ? "B" : "");
    const std::string value = short_r(cell.r);
    const double room = place.x2 - place.x1 - 4;
    const double middle = (place.x1 + place.x2) / 2.0, top = place.y1 + 9;
    const Colour letters = sign.empty() ? colour::muted : colour::ink;
    // As much of it as fits: a sign says more than its value.
    const std::string whole = sign.empty() ? value : value + " " + sign;
    for (const std::string& text : {whole, sign.empty() ? value : sign, sign.substr(0, 1)}) {
      if (width_of(text, tile_size) > room) continue;
      if (!text.empty()) pen_.centred(middle, top, text, letters, tile_size);
      break;
    }
    if (cell.low || cell.lagging)
      pen_.line(place.x1, place.y2, place.x2, place.y2, cell.low ? colour::vermilion : colour::amber);
  }

  const PanelInputs& in_;
  PanelView view_;
  const SiteFindings& site_;
  Pen pen_;
  std::vector<std::size_t> order_;
  std::vector<int> tops_;  // of the rows, and the end of the last one
  int tiles_width_ = 0;
};

}  // namespace

std::vector<std::size_t> listed_cores(const SiteFindings& site, const PanelState& state) {
  std::vector<std::size_t> listed;
  for (const std::size_t k : site.survey.order) {
    if (!state.only_to_do || state.mark_of(site.cores[k]->series().name) == CoreMark::to_do)
      listed.push_back(k);
  }
  return listed;
}

Panel draw_site(const PanelInputs& inputs, const PanelView& view) {
  if (!inputs.findings || !inputs.findings->site)
    return words_alone(view, "Site", waiting_words(inputs, "No cores are loaded."));
  return SitePanel(inputs, view, *inputs.findings->site).draw();
}

}  // namespace vorn
