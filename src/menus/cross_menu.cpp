#include "menus/cross_menu.h"

#include "editing/ring_edits.h"
#include "editing/working_pair.h"
#include "graphs/series_graph.h"
#include "menus/choose.h"
#include "menus/cor_menu.h"
#include "records/edit_format.h"
#include "toolkit/buttons.h"
#include "toolkit/clicks.h"
#include "toolkit/messages.h"
#include "toolkit/passes.h"
#include "toolkit/prompts.h"
#include "toolkit/scrolling.h"

namespace vorn {
namespace {

constexpr int pass_limit = 20'000;

// Deliberate: [early-captions] years before -999 are asterisks.
const EditFormat insert_edit{"(\"Insert \",I4)"};
const EditFormat delete_edit{"(\"Delete \",I4)"};
const EditFormat width_edit{"(I5)"};

class CrossMenu {
 public:
  explicit CrossMenu(Workspace& workspace) : w(workspace) {}

  void run() {
    w.tr1 = 1;
    w.tr2 = 2;
    set_chs(w);
    show_saves();
    w.b(button::upper_plot).on = w.b(button::lower_plot).on = false;
    for (Passes passes(w, pass_limit); passes.next();) {
      plot_graph(w);
      const ButtonNumber n = mouse_click(w, button::crossdating, way_out());
      if (n == button::exit_crossdating) return;
      if (n == button::choose_cores && !choose(w)) return;
      if (n == button::correlate && !cor_menu(w)) return;
      act(n);
    }
  }

 private:
  void act(ButtonNumber n) {
    if (button::scroll_row.contains(n)) return scr(w, w, w, -scroll_years(button::scroll_row, n));
    if (button::sample_row.contains(n)) return topbot(w, 1, scroll_years(button::sample_row, n));
    if (button::reference_row.contains(n)) return topbot(w, 2, scroll_years(button::reference_row, n));
    switch (n) {
      case button::insert_ring:
      case button::delete_ring:
        return ask_for_year(n == button::insert_ring);
      case button::upper_plot:
      case button::lower_plot:
        return edit_year(n == button::upper_plot);
      case button::insertion_ok:
      case button::deletion_ok:
        return browse();
      case button::insertion_not:
      case button::deletion_not:
        return undo(n == button::insertion_not);
      case button::leave_pick:
        return leave_pick();
      case button::display_width:
        return enter_width();
      case button::line_plot:
        // Deliberate: [skeleton] the label changes, no curve does, but carefully.
        return flip(w.lineon, n, "Line Plot", "Skeleton");
      case button::indices:
        return flip(w.indon, n, "Indices", "Raw Data");
      case button::save_sample:
      case button::save_reference:
        return save(n == button::save_sample ? 1 : 2);
      default:
        return;
    }
  }

  void show(ButtonRange buttons, bool on) {
    for (const ButtonNumber n : buttons) w.b(n).on = on;
  }

  // Deliberate: [last-core-unoffered] tr1ok and tr2ok are never set for an edit of the last core, only for
  // a move.
  void show_saves() {
    w.b(button::save_sample).on = w.tr1ok;
    w.b(button::save_reference).on = w.tr2ok;
  }

  void browse() {
    show({button::scroll_minus_50, button::indices}, true);
    show({button::insertion_ok, button::leave_pick}, false);
    show_saves();
  }

  void ask_for_year(bool insert) {
    w.ins = insert;
    show(button::crossdating, false);
    // Deliberate: [every-button-off] where neither is a core, every button.
    w.b(button::upper_plot).on = w.tr1 <= w.nc;
    w.b(button::lower_plot).on = w.tr2 <= w.nc;
  }

  void leave_pick() {
    w.ins = false;
    browse();
  }

  int slot_of(bool upper) const { return w.nd + (upper ? 1 : 2); }

  // A ring can be inserted behind the last one too.
  bool can_edit(int slot, int first, int last) const {
    return last >= w.fy(slot) && first <= w.ly(slot) + (w.ins ? 1 : 0);
  }

  // Whether one of the plots that can be clicked shows a year to pick, up to the right edge.
  bool year_in_sight() const {
    const auto in_sight = [this](ButtonNumber zone, int slot) {
      return w.b(zone).on && can_edit(slot, w.fs, w.fs + w.sl);
    };
    return in_sight(button::upper_plot, slot_of(true)) || in_sight(button::lower_plot, slot_of(false));
  }

  // What the Escape key stands for. Where a year is to be picked and none that can be is shown, no click
  // leads out; nobody shall have to end the program for that. Carefully it leads out of every pick.
  ButtonNumber way_out() const {
    const bool picking = w.b(button::upper_plot).on || w.b(button::lower_plot).on;
    const bool leaves = picking && (w.careful.has(Mend::escape) || !year_in_sight());
    return leaves ? button::leave_pick : button::none;
  }

  // The edit is applied at once and shown; the buttons then ask whether to keep it.
  void edit_year(bool upper) {
    const int slot = slot_of(upper);
    const int year = w.fs + static_cast<int>((w.msx - 200) / w.scx);
    // Deliberate: [pick-goes-on] a year that the series does not have changes nothing.
    if (!can_edit(slot, year, year)) return;
    w.ul = upper;
    w.insdel = year;
    show({button::upper_plot, button::leave_pick}, false);
    const int length = w.yr(slot);
    if (w.ins) {
      show({button::insertion_ok, button::insertion_not}, true);
      w.mtext(message::pending_edit) = edit(insert_edit, w.insdel);
      ins_year(w, slot, false);
    } else {
      show({button::deletion_ok, button::deletion_not}, true);
      w.mtext(message::pending_edit) = edit(delete_edit, w.insdel);
      del_year(w, slot);
    }
    applied_ = w.yr(slot) != length;
  }

  // An edit that was refused with a message has nothing to undo.
  void undo(bool insertion) {
    // Deliberate: [saves-still-offered] the copies stay marked as changed, so that "Save Change" is offered.
    if (applied_ && insertion) del_year(w, slot_of(w.ul));
    if (applied_ && !insertion) ins_year(w, slot_of(w.ul), true);
    browse();
  }

  void enter_width() {
    std::int32_t v = w.sl;
    get_int(w, button::display_width, v);
    if (v > 20 && v < 12'001) w.show_width(v);
    w.b(button::display_width).label = edit(width_edit, w.sl);
  }

  void flip(bool& display, ButtonNumber n, const char* set, const char* clear) {
    display = !display;
    w.b(n).label = display ? set : clear;
  }

  void save(int k) {
    const int entry = k == 1 ? w.tr1 : w.tr2;
    const int growth = w.yr(w.nd + k) - w.yr(entry);
    if (w.ad(w.nd) + w.yr(w.nd) - 1 + growth > max_pool) return out_err(w, "Would be too many rings");
    if (would_be_too_long(w, w, k)) return out_err(w, "Chronology too long");
    save_tree(w, w, k);
    if (w.careful.has(Mend::shift_lasts)) keep_shift(entry);
    w.derived_stale = true;
    w.b(k == 1 ? button::save_sample : button::save_reference).on = false;
  }

  // Of a chronology, in the file table, from which its entry is made anew. That of the cores at work follows
  // them.
  void keep_shift(int entry) {
    if (entry <= w.nc) return;
    w.cfy(entry - w.nc) = w.fy(entry);
    w.cly(entry - w.nc) = w.ly(entry);
  }

  Workspace& w;
  bool applied_ = false;  // the edit that waits for " OK" or "NOT" changed the series
};

}  // namespace

void cross_menu(Workspace& w) {
  CrossMenu(w).run();
}

}  // namespace vorn
