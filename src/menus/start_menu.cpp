#include "menus/start_menu.h"

#include <array>

#include "chronology/index_pipeline.h"
#include "loading/chronology_summary.h"
#include "loading/saving.h"
#include "loading/startup.h"
#include "loading/two_column_conversion.h"
#include "menus/cross_menu.h"
#include "menus/pair_ready.h"
#include "plot/plot.h"
#include "records/edit_format.h"
#include "statistics/correlation_report.h"
#include "statistics/statistics_report.h"
#include "toolkit/buttons.h"
#include "toolkit/clicks.h"
#include "toolkit/drawing.h"
#include "toolkit/lists.h"
#include "toolkit/messages.h"
#include "toolkit/page_troubles.h"
#include "toolkit/passes.h"
#include "toolkit/prompts.h"

namespace vorn {
namespace {

constexpr int pass_limit = 10'000;
constexpr int list_columns = 3;

// Deliberate: [offers-116] what an abandoned entry offers to the test of its range, one more than the last
// button's number.
constexpr std::int32_t offered_by_abandoned_entry = plain(button::start.last) + 1;

// The flags of the menu's buttons, put aside while the list of chronologies is shown.
struct Flags {
  bool lit = false, on = false;
};
using SavedFlags = std::array<Flags, button::start.size()>;

class StartMenu {
 public:
  explicit StartMenu(Workspace& workspace) : w(workspace) {}

  void run() {
    for (Passes passes(w, pass_limit); passes.next();) {
      draw();
      act(mouse_click(w, button::start, way_out()));
    }
  }

 private:
  void draw() {
    if (w.careful.has(Mend::settings_shown)) show_settings();
    w.plot.subject(w.nfil > 0 ? w.cnam(w.cf).trimmed() : std::string_view());
    w.plot.erase();
    for (const ButtonNumber n : button::start) {
      if (w.b(n).on) draw(n);
    }
  }

  // Button n with what stands beside it.
  void draw(ButtonNumber n) {
    if (n == button::chronology_list) return draw_list();
    but_draw(w, n);
    if (button::settings.contains(n)) {
      mwrite(w, message::setting_captions.at(button::settings.place(n)));
      // Deliberate: [seven-headings] with each of the seven.
      mwrite(w, message::parameter_options);
      mwrite(w, message::ar_range);
    } else if (n == button::current_chronology) {
      for (const MessageNumber i : message::summary) mwrite(w, i);
    } else if (n == button::quit) {
      mwrite(w, message::leave_program);
    } else if (button::actions.contains(n)) {
      mwrite(w, message::action_captions.at(button::actions.place(n)));
    } else if (n == button::raw_tucson) {
      for (const MessageNumber i :
           {message::raw_type, message::raw_name, message::crn_type, message::crn_name}) {
        mwrite(w, i);
      }
    }
  }

  void draw_list() {
    mwrite(w, message::choose_chronology);
    // Deliberate: [fewer-names] nraw names, though nfil can be picked.
    ch_disp(w, list_columns, w.nraw, w.cnam);
  }

  void act(ButtonNumber n) {
    switch (n) {
      case button::spline_on:
        return toggle(n, w.splineon);
      case button::ar_on:
        return toggle(n, w.aron);
      case button::log_on:
        return toggle(n, w.logon);
      case button::spline_years:
        return enter_derivation(n, 3, 999, w.ss);
      case button::ar_order:
        return enter_derivation(n, 1, max_ar_order, w.jpr);
      case button::segment_length:
        return enter(n, 4, max_years, w.seg);
      case button::segment_overlap:
        return enter(n, 1, w.seg - 1, w.olap);
      case button::current_chronology:
        return list_is_open() ? close_list() : open_list();
      case button::quit:
        throw ProgramEnd(EndReason::quit);
      case button::chronology_list:
        return pick_chronology();
      case button::crossdate:
        return crossdate();
      case button::save_raw:  // Deliberate: [indices-left-alone] it computes none.
        return write_raw(w);
      case button::save_crn:
        return with_fresh_indices(write_ind);
      case button::stats_report:
        return write_report(stats_rep);
      case button::correlation_report:
        return write_report(cor_report);
      case button::read_two_column:
        return read_trw(w);
      case button::raw_tucson:
      case button::raw_heidelberg:
      case button::raw_compact:
      case button::crn_index:
      case button::crn_column:
        return choose_output(w, w, n);
      default:
        return;  // nothing hit
    }
  }

  // --- The analysis settings.

  void toggle(ButtonNumber n, bool& setting) {
    setting = !setting;
    w.b(n).label = setting ? " Yes" : " No";
    w.derived_stale = true;
  }

  void enter(ButtonNumber n, std::int32_t lowest, std::int32_t highest, std::int32_t& setting) {
    std::int32_t value = offered_by_abandoned_entry;
    const bool offered = get_int(w, n, value) != Entry::left;
    if (offered && lowest <= value && value <= highest) setting = value;
    show(n, setting);
  }

  void show(ButtonNumber n, std::int32_t setting) { w.b(n).label = edit(EditFormat("(I5)"), setting); }

  // Segment and overlap can be changed on the correlation screen too.
  void show_settings() {
    show(button::segment_length, w.seg);
    show(button::segment_overlap, w.olap);
  }

  // The same for a setting on which the indices depend.
  void enter_derivation(ButtonNumber n, std::int32_t lowest, std::int32_t highest, std::int32_t& setting) {
    const std::int32_t before = setting;
    enter(n, lowest, highest, setting);
    if (setting != before) w.derived_stale = true;
  }

  // --- The list of chronologies. Deliberate: [no-cancel] there is no way back but a pick, or "Quit", and
  // carefully Escape.

  bool list_is_open() const { return w.b(button::chronology_list).on; }

  // What the Escape key stands for: the button by which the list was opened, which is not shown then.
  ButtonNumber way_out() const {
    const bool leaves = list_is_open() && w.careful.has(Mend::escape);
    return leaves ? button::current_chronology : ButtonNumber::none;
  }

  void open_list() {
    for (const ButtonNumber n : button::start) {
      Button& button = w.b(n);
      saved(n) = {button.lit, button.on};
      button.lit = button.on = n == button::quit || n == button::chronology_list;
    }
  }

  void close_list() {
    for (const ButtonNumber n : button::start) {
      w.b(n).lit = saved(n).lit;
      w.b(n).on = saved(n).on;
    }
  }

  Flags& saved(ButtonNumber n) { return saved_[static_cast<std::size_t>(button::start.place(n))]; }

  void pick_chronology() {
    const int k = entry_at(w.b(button::chronology_list), w.msx, w.msy);
    if (k < 1 || k > w.nfil || !w.rawok(k)) return;
    w.cf = k;
    init_raw(w, w.rftype(k));
    show_crns(w);
    close_list();
  }

  // --- What is started from here.

  void crossdate() {
    refresh_derived(w);
    if (w.nd < 2) return out_err(w, "Need more than one core");
    cross_menu(w);
    // Cross-dating leaves its selection in the chooser: back to the current chronology alone.
    w.sccc = 0;
    w.chc(1) = w.cf;
    w.chs = 1;
  }

  void with_fresh_indices(void (*action)(Workspace&)) {
    data_man2(w);
    action(w);
  }

  void write_report(void (*report)(Workspace&, Troubles&)) {
    data_man2(w);
    PageTroubles troubles(w);
    report(w, troubles);
  }

  Workspace& w;
  SavedFlags saved_;
};

}  // namespace

void start_menu(Workspace& w) {
  init_start(w);
  StartMenu(w).run();
}

}  // namespace vorn
