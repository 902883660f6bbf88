#include "menus/cor_menu.h"

#include <algorithm>

#include "graphs/best_match.h"
#include "graphs/lag_table.h"
#include "menus/choose.h"
#include "plot/plot.h"
#include "statistics/lag_table.h"
#include "toolkit/buttons.h"
#include "toolkit/clicks.h"
#include "toolkit/passes.h"
#include "toolkit/prompts.h"

namespace vorn {
namespace {

constexpr int pass_limit = 1'000;

int later_first_year(const Workspace& w) {
  return std::max(w.fy(w.nd + 1), w.fy(w.nd + 2));
}

void draw(Workspace& w, int start_year) {
  w.plot.erase();
  cor_but(w, start_year);
  if (w.b(button::correlation_table).lit) {
    cor_tab(w, w, w, start_year);
    cor_plot(w);
  } else {
    cor_best(w);
  }
}

// Reads a number into button n; an abandoned entry offers the value that was there.
std::int32_t entered(Workspace& w, ButtonNumber n, std::int32_t now) {
  get_int(w, n, now);
  return now;
}

void choose_view(Workspace& w, bool table) {
  w.b(button::correlation_table).lit = table;
  w.b(button::best_fit).lit = !table;
}

// The labels are written by cor_but when the screen is drawn again.
void act(Workspace& w, ButtonNumber n, std::int32_t& start_year) {
  const int sample = w.nd + 1;
  switch (n) {
    case button::correlation_segment:
      if (const auto v = entered(w, n, w.seg); v > 0 && v <= w.yr(sample)) w.seg = v;
      return;
    // Deliberate: [overlap-unchecked] not against the segment.
    case button::correlation_overlap:
      if (const auto v = entered(w, n, w.olap); v > 0 && v <= w.yr(sample)) w.olap = v;
      return;
    case button::correlation_start:
      if (const auto v = entered(w, n, start_year); v >= w.fy(sample) && v <= w.ly(sample)) start_year = v;
      return;
    case button::correlation_table:
      return choose_view(w, true);
    case button::best_fit:
      return choose_view(w, false);
    default:
      return;
  }
}

}  // namespace

bool cor_menu(Workspace& w) {
  std::int32_t start_year = later_first_year(w);
  for (Passes passes(w, pass_limit); passes.next();) {
    draw(w, start_year);
    const ButtonNumber n = mouse_click(w, button::correlation);
    if (n == button::correlation_exit) return true;
    if (n == button::correlation_choose) {
      if (!choose(w)) return false;
      start_year = later_first_year(w);
    }
    act(w, n, start_year);
  }
  return true;
}

}  // namespace vorn
