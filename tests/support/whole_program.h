// For tests: the whole program on the files of a folder, by a user who writes everything and looks at every
// screen.
#pragma once

#include <string>

#include "menus/main_program.h"
#include "support/menu_bench.h"

namespace vorn {

class WholeProgram : public MenuBench {
 protected:
  // Plays what was planned, from the start of the program to its end. Answers why it ended.
  EndReason play() {
    try {
      run_program(*w);
    } catch (const ProgramEnd& end) {
      return end.reason();
    }
    return EndReason::pass_limit;
  }

  // Plans: everything that can be written from the start menu. Escape passes over what is told.
  void write_everything() {
    for (const ButtonNumber n : {button::stats_report, button::correlation_report}) act(n);
    for (const ButtonNumber layout : {button::raw_heidelberg, button::raw_compact, button::raw_tucson}) {
      press(layout);
      act(button::save_raw);
    }
    for (const ButtonNumber layout : {button::crn_column, button::crn_index}) {
      press(layout);
      act(button::save_crn);
    }
  }
  // Plans: every screen, every page of the chooser. Needs two entries or more.
  void see_everything() {
    press(button::crossdate);
    look([this] { seen_crossdating = reads("Choose Cores"); });
    press(button::correlate);
    press(button::best_fit);
    press(button::correlation_exit);
    press(button::choose_cores);
    for (int k = 0; k < 60; ++k) press(button::page_forward);
    look([this] {
      if (w->nd == 0) return;  // nothing to be named
      last_name_seen = w->nam(w->nd).blank() || reads(std::string(w->nam(w->nd).trimmed()));
    });
    press(button::chooser_exit);
    press(button::exit_crossdating);
  }

  bool seen_crossdating = false, last_name_seen = false;

 private:
  void act(ButtonNumber n) {
    press(n);
    key(Event::escape);
  }
};

}  // namespace vorn
