#include "toolkit/drawing.h"

#include "plot/plot.h"
#include "toolkit/buttons.h"

namespace vorn {
namespace {

constexpr int empty_pattern = 0, solid_pattern = 16;

void paint(const Workspace& w, const Rectangle& r) {
  w.plot.rectangle(r.x1, r.y1, r.x2, r.y2);
}

// The name of entry i; blank when nothing is chosen.
std::string_view name_of(const Workspace& w, int i) {
  return i >= 1 && i <= w.nam.size() ? w.nam(i).view() : std::string_view();
}

// What stands between the scroll buttons to the left and to the right of it.
void draw_scroll_captions(const Workspace& w) {
  const int x = w.b(button::scroll_minus_1).x2 + 80;
  w.plot.setclr(colour::light_blue);
  w.plot.messag(name_of(w, w.nd + 1), x, w.b(button::sample_minus_1).y1 + 12);
  w.plot.setclr(colour::light_red);
  w.plot.messag(name_of(w, w.nd + 2), x, w.b(button::reference_minus_1).y1 + 12);
  w.plot.setclr(colour::ink);
  w.plot.messag("Scroll", x, w.b(button::scroll_minus_1).y1 + 12);
  mwrite(w, message::line_or_skeleton);
  mwrite(w, message::indices_or_raw);
  mwrite(w, message::display_width);
}

}  // namespace

void but_draw(const Workspace& w, ButtonNumber n, std::string_view text, std::optional<Colour> colour) {
  const Button& button = w.b(n);
  if (!button.on) return;
  const Colour by_state = button.lit ? colour::yellow : colour::light_grey;
  w.plot.setclr(colour.value_or(by_state));
  paint(w, button);
  w.plot.setclr(colour::light_red);
  w.plot.shdpat(empty_pattern);
  paint(w, button);
  w.plot.shdpat(solid_pattern);
  w.plot.setclr(colour::ink);
  w.plot.messag(trimmed(text).empty() ? button.label.view() : text, button.x1 + 5, button.y1 + 12);
}

void mwrite(const Workspace& w, MessageNumber i) {
  w.plot.setclr(colour::ink);
  w.plot.messag(w.mtext(i).view(), w.madd(i).x1, w.madd(i).y1 + 15);
}

void graph_mes(const Workspace& w, std::string_view text) {
  const Button& sample = w.b(button::save_sample);
  const Button& reference = w.b(button::save_reference);
  w.plot.setclr(colour::ink);
  w.plot.messag(text, sample.x2 + 10, sample.y1 - 50);
  w.plot.setclr(colour::light_blue);
  w.plot.messag(name_of(w, w.tr1), sample.x2 + 10, sample.y1 + 12);
  w.plot.setclr(colour::light_red);
  w.plot.messag(name_of(w, w.tr2), reference.x2 + 10, reference.y1 + 12);
}

void setupbuttons(const Workspace& w) {
  w.plot.erase();
  for (const ButtonNumber n : button::crossdating) {
    const bool click_zone = n == button::upper_plot || n == button::lower_plot;
    if (!click_zone) but_draw(w, n);
  }
  if (w.b(button::scroll_row.first).on) draw_scroll_captions(w);
  if (w.b(button::upper_plot).on || w.b(button::lower_plot).on) {
    mwrite(w, w.ins ? message::select_insert : message::select_delete);
  }
  if (w.b(button::insertion_ok).on || w.b(button::deletion_ok).on) mwrite(w, message::pending_edit);
  graph_mes(w, "Cores");
}

}  // namespace vorn
