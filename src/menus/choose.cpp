#include "menus/choose.h"

#include <algorithm>
#include <string>
#include <vector>

#include "editing/core_edits.h"
#include "editing/mean_tree.h"
#include "editing/raw_editor.h"
#include "formats/compact.h"
#include "formats/layouts.h"
#include "menus/pair_ready.h"
#include "plot/plot.h"
#include "toolkit/buttons.h"
#include "toolkit/clicks.h"
#include "toolkit/drawing.h"
#include "toolkit/lists.h"
#include "toolkit/messages.h"
#include "toolkit/passes.h"
#include "toolkit/prompts.h"

namespace vorn {
namespace {

constexpr int pass_limit = 1'000;
constexpr int columns = 7, rows = 30;
constexpr int names_on_page = columns * rows;
constexpr int page_step = 180;
constexpr std::size_t proposed_name_at = 16;  // in the line "Mean Tree Name"

class Chooser {
 public:
  explicit Chooser(Workspace& workspace) : w(workspace) {}

  bool run() {
    enter();
    for (Passes passes(w, pass_limit); passes.next();) {
      draw();
      const ButtonNumber hit = mouse_click(w, button::chooser);
      if (hit == button::chooser_exit) break;
      if (hit == button::chooser_do_it && mode() == button::pick_cores) break;
      act(hit);
    }
    return leave();
  }

 private:
  using Selection = std::vector<std::int32_t>;

  ButtonNumber mode() const {
    for (const ButtonNumber n : button::chooser_modes) {
      if (w.b(n).lit) return n;
    }
    return button::pick_cores;
  }
  bool chronologies_offered() const { return mode() == button::pick_cores || mode() == button::move_core; }

  bool is_core(int k) const { return k >= 1 && k <= w.nc; }
  bool is_chronology(int k) const { return k > w.nc && k <= w.nd && k - w.nc <= w.nfil; }
  // Cores can be moved to a ring-width file other than their own.
  bool is_destination(int k) const {
    return is_chronology(k) && k != w.nc + w.cf && holds_ring_widths(w.rftype(k - w.nc));
  }

  void light_mode(ButtonNumber n) {
    for (const ButtonNumber other : button::chooser_modes) w.b(other).lit = other == n;
    w.b(button::top_of_pair).on = w.b(button::bottom_of_pair).on = true;
  }

  void enter() {
    light_mode(button::pick_cores);
    w.b(button::page_back).on = w.b(button::page_forward).on = w.nd > names_on_page;
    w.chc(1) = w.tr1;
    w.chc(2) = w.tr2;
    w.chs = 2;
  }

  // Deliberate: [mean-name-stays] button 69 stays on when the chooser is left in mean mode.
  bool leave() {
    w.tr1 = w.chc(1);
    w.tr2 = w.chc(2);
    w.chs = 2;
    if (!set_pair(w)) return false;
    w.b(button::save_sample).on = w.tr1ok;
    w.b(button::save_reference).on = w.tr2ok;
    return true;
  }

  void draw() {
    w.plot.erase();
    mwrite(w, heading());
    mwrite(w, message::chooser_blank);
    for (const ButtonNumber n : ButtonRange{button::chooser_exit, button::move_core}) but_draw(w, n);
    but_draw(w, button::page_back);
    but_draw(w, button::page_forward);
    but_draw(w, button::mean_name);
    if (w.b(button::mean_name).on) mwrite(w, message::mean_tree_name);
    if (mode() == button::move_core) mwrite(w, message::move_caption);
    // In the colours that the list gives to the first and to the last one chosen.
    but_draw(w, button::top_of_pair, {}, colour::light_cyan);
    but_draw(w, button::bottom_of_pair, {}, colour::red);
    if (chronologies_offered()) {
      w.chok = false;
      ch_disp(w, columns, w.nd, w.nam);
      w.chok = true;
    } else {
      ch_disp(w, columns, w.nc, w.nam);
    }
  }

  MessageNumber heading() const {
    switch (mode()) {
      case button::pick_cores:
        return message::choose_pair;
      case button::edit_core:
      case button::move_core:
        return message::choose_tree;
      default:
        return message::choose_several;
    }
  }

  void act(ButtonNumber n) {
    switch (n) {
      case button::chooser_list:
        return pick_under_cursor();
      case button::chooser_do_it:
        return do_it();
      case button::pick_cores:
      case button::delete_core:
      case button::mean_core:
      case button::edit_core:
      case button::move_core:
        return change_mode(n);
      case button::mean_name:
        return get_str(w, button::mean_name);
      case button::page_back:
        return scroll(-page_step);
      case button::page_forward:
        return scroll(page_step);
      case button::top_of_pair:
        w.chc(1) = 0;
        return;
      case button::bottom_of_pair:
        w.chc(2) = 0;
        return;
      default:
        return;
    }
  }

  void scroll(int step) { w.sccc = std::clamp(w.sccc + step, 0, std::max(w.nd - names_on_page, 0)); }

  // Deliberate: [bounds-before-offset] the bounds are tested before the scroll offset is added; what lies
  // beyond the list is passed over where the selection is used. Deliberate: [lower-edge] on it the row is 30,
  // the first name of the next column.
  void pick_under_cursor() {
    const int column = static_cast<int>(7 * (w.msx - 200) / 2500.0);
    const int row = static_cast<int>(((240 - w.msy) * 30) / static_cast<double>(240 - 1640));
    int k = row + rows * column + 1;
    if (k < 1 || k > w.nd || (k > w.nc && !chronologies_offered())) return;
    k += w.sccc;
    switch (mode()) {
      case button::pick_cores:
        return pick_for_pair(k);
      case button::edit_core:
        w.chc(1) = k;
        w.chs = 1;
        return;
      case button::move_core:
        return pick_to_move(k);
      default:
        return pick_in_list(k);
    }
  }

  void pick_for_pair(int k) {
    for (int place : {1, 2}) {
      if (w.chc(place) == k) {
        w.chc(place) = 0;
        return;
      }
    }
    for (int place : {1, 2}) {
      if (w.chc(place) == 0) {
        w.chc(place) = k;
        return;
      }
    }
  }

  // Takes k out of chc(1 … count), closing the gap, and answers whether it was there.
  // Deliberate: [behind-the-gap] the old last value stays behind it.
  bool take_out(int k, int count) {
    for (int j = 1; j <= count; ++j) {
      if (w.chc(j) != k) continue;
      for (; j < w.chs; ++j) w.chc(j) = w.chc(j + 1);
      --w.chs;
      return true;
    }
    return false;
  }

  void pick_in_list(int k) {
    if (take_out(k, w.chs)) return;
    ++w.chs;
    w.chc(w.chs) = k;
  }

  void pick_to_move(int k) {
    if (is_core(k)) {
      if (!take_out(k, w.chs - 1)) {
        w.chc(w.chs + 1) = w.chc(w.chs);
        w.chc(w.chs) = k;
        ++w.chs;
      }
    } else if (is_destination(k)) {
      w.chc(w.chs) = k;
    }
    write_move_caption();
    tell_what_moves();
  }

  std::string_view name_of(int k) const {
    return k >= 1 && k <= w.nd ? w.nam(k).trimmed() : std::string_view{};
  }

  void write_move_caption() {
    const int to = w.chc(w.chs);
    const std::string target(is_chronology(to) ? w.cnam(to - w.nc).view() : std::string_view{});
    w.mtext(message::move_caption) = "Move " + std::string(name_of(w.chc(1))) + " to " + target;
  }

  Selection cores_to_move() const {
    const Selection all = chosen();
    return all.empty() ? all : each_once(cores_among({all.begin(), all.end() - 1}));
  }

  // The page's caption names the first core alone; how many go with it is told beside the page, before they
  // do.
  void tell_what_moves() {
    const int to = w.chc(w.chs);
    const auto cores = cores_to_move().size();
    const std::string what = cores > 1 && is_chronology(to) ? move_notice(cores, "", to) : "";
    if (!what.empty() && what != told_move_) notice(w, what);
    told_move_ = what;
  }

  std::string move_notice(std::size_t cores, const std::string& done, int to) const {
    return "Move Core: " + std::to_string(cores) + " cores " + done + "to " +
           std::string(w.cnam(to - w.nc).trimmed());
  }

  void change_mode(ButtonNumber n) {
    light_mode(n);
    w.b(button::mean_name).on = false;
    switch (n) {
      case button::edit_core:
        w.chs = 1;
        if (!is_core(w.chc(1))) w.chc(1) = 1;
        return;
      case button::move_core:
        return enter_move_mode();
      case button::pick_cores:
        w.chs = 2;
        if (is_core(w.chc(1)) && is_core(w.chc(2))) return;
        w.chc(1) = 1;
        w.chc(2) = 2;
        return;
      case button::mean_core:
        w.b(button::mean_name).on = true;
        return propose_mean_name();
      default:
        // Deliberate: [marked-for-deletion] the pair that was marked stays so, but carefully. It stays the
        // pair.
        if (w.careful.has(Mend::delete_unmarked)) w.chs = 0;
        return;
    }
  }

  // The leading cores of the selection stay; a destination is put behind them.
  void enter_move_mode() {
    int cores = 0;
    while (cores < w.chs && is_core(w.chc(cores + 1))) ++cores;
    if (cores == 0) {
      w.chc(1) = 1;
      cores = 1;
    }
    w.chs = cores + 1;
    for (int k = w.nc + 1; k <= w.nd && !is_destination(w.chc(w.chs)); ++k) {
      if (is_destination(k)) w.chc(w.chs) = k;
    }
    write_move_caption();
    told_move_.clear();
    tell_what_moves();
  }

  void propose_mean_name() {
    Name first(name_of(w.chc(1)));
    const std::size_t length = std::clamp<std::size_t>(first.trimmed().size(), 2, 7);
    const Name proposed(std::string(first.view().substr(0, length)) + "M");
    for (std::size_t k = 1; k <= Name::length; ++k) {
      w.mtext(message::mean_tree_name)(proposed_name_at - 1 + k) = proposed(k);
    }
  }

  void do_it() {
    switch (mode()) {
      case button::delete_core:
        return delete_chosen();
      case button::mean_core:
        return make_mean();
      case button::edit_core:
        if (is_core(w.chc(1))) edit_menu(w);
        return;
      case button::move_core:
        return move_chosen();
      default:
        return;
    }
  }

  // Deliberate: [computes-anew] where no core is marked the marks go all the same, and all indices are
  // computed anew.
  void delete_chosen() {
    const Selection cores = each_once(cores_among(chosen()));
    forget_chosen();
    choose_these(cores);
    del_core(w);
    w.derived_stale = true;
  }

  // A core marked twice counts twice here: it does no harm.
  void make_mean() {
    const Selection before = chosen();
    const int cores = w.nc;
    choose_these(cores_among(before));
    if (!mean_create(w)) choose_these(before);
    if (w.nc != cores) w.derived_stale = true;
    // Deliberate: [mean-core] after a refusal too.
    w.b(button::mean_name).label = "Mean Core";
  }

  // Where no core is marked the file is opened and closed, and the mode is entered anew.
  void move_chosen() {
    if (w.chs < 1 || !is_chronology(w.chc(w.chs))) return;
    const Selection before = chosen();
    Selection moved = cores_to_move();
    if (is_too_wide_for(w.rftype(before.back() - w.nc), moved)) return out_err(w, "Width too large");
    const std::string done = moved.size() > 1 ? move_notice(moved.size(), "moved ", before.back()) : "";
    moved.push_back(before.back());
    forget_chosen();
    choose_these(moved);
    if (!move_core(w)) return choose_these(before);
    if (!done.empty()) notice(w, done);
    w.derived_stale = true;
    enter_move_mode();
  }

  // --- The selection as a list. It may hold emptied places, chronologies, what lies beyond the list, and
  // (where a gap was closed and the pair is chosen again) one core twice. Nothing of that may be acted on.
  // Deliberate: [once-only] deleting number 5 twice would delete the core that has become number 5.

  Selection chosen() const { return {&w.chc(1), &w.chc(1) + w.chs}; }

  void choose_these(const Selection& entries) {
    w.chs = 0;
    for (const std::int32_t k : entries) w.chc(++w.chs) = k;
  }

  void forget_chosen() {
    for (int j = 1; j <= w.chs; ++j) w.chc(j) = 0;
    w.chs = 0;
  }

  Selection cores_among(Selection entries) const {
    std::erase_if(entries, [this](int k) { return !is_core(k); });
    return entries;
  }

  static Selection each_once(const Selection& entries) {
    Selection once;
    for (const std::int32_t k : entries) {
      if (std::find(once.begin(), once.end(), k) == once.end()) once.push_back(k);
    }
    return once;
  }

  // Whether a core would be asterisks where it is moved to, and so be lost.
  bool is_too_wide_for(Layout layout, const Selection& cores) const {
    return layout == Layout::compact &&
           !std::ranges::all_of(cores, [this](int i) { return fits_compact(w, w.careful, i); });
  }

  Workspace& w;
  std::string told_move_;  // what was told last in this mode
};

}  // namespace

bool choose(Workspace& w) {
  return Chooser(w).run();
}

}  // namespace vorn
