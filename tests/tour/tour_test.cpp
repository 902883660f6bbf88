// A tour: one visit that presses every button which the menus ever show, and sees every message line they
// write. What it misses is listed in docs/coverage.md, with the reason.
#include <algorithm>
#include <iterator>
#include <set>
#include <string>

#include "menus/main_program.h"
#include "support/menu_bench.h"
#include "toolkit/messages.h"

namespace vorn {
namespace {

using Numbers = std::set<int>;

class Tour : public MenuBench {
 protected:
  Tour() {
    std::string oaks, pines;
    for (int k = 1; k <= 210; ++k) oaks += raw_core_text("OAK" + std::to_string(k), 1900, 60, 7u * k);
    for (const int k : {1, 2}) pines += raw_core_text("PINE" + std::to_string(k), 1890, 80, 101u * k);
    folder.write("oak.rwl", oaks);
    folder.write("pine.rwl", pines);
    folder.write("Vorn.fil", "oak.rwl\npine.rwl\n");
    folder.write("beam.trw", "              1990  1.000\n");
    folder.write("TRW.fil", "beams.rwl\nbeam.trw\n");
  }

  // What the program made of the last event, and what is on the page now.
  void note() {
    if (w->mous != 0) pressed.insert(w->mous);
    for (const Mark& mark : plot.page().marks()) {
      if (mark.kind != Mark::Kind::text) continue;
      for (const MessageNumber i : message::all) {
        const bool there = mark.points[0].x == w->madd(i).x1 && mark.points[0].y == w->madd(i).y1 + 15;
        if (there && mark.writing == w->mtext(i).trimmed()) seen.insert(plain(i));
      }
    }
  }
  void press(ButtonNumber n) {
    MenuBench::press(n);
    look([this] { note(); });
  }
  void press_all(ButtonRange buttons) {
    for (const ButtonNumber n : buttons) press(n);
  }
  void enter(ButtonNumber n, const std::string& keys) {
    press(n);
    type(keys);
  }
  // The k-th name of the chooser's first column.
  void pick(int k) {
    click(300, 240 + 46 * (k - 1) + 20);
    look([this] { note(); });
  }
  void edit(ButtonNumber mode, ButtonNumber plot_zone, ButtonNumber answer) {
    press(mode);
    press(plot_zone);
    press(answer);
  }

  void see_the_parameters() {
    press_all({button::spline_on, button::log_on});
    press_all({button::spline_on, button::log_on});
    enter(button::spline_years, "40\r");
    enter(button::ar_order, "9\r");
    enter(button::segment_length, "40\r");
    enter(button::segment_overlap, "20\r");
    for (const int row : {310, 270}) {  // the second file, then the first again
      press(button::current_chronology);
      click(300, row);
      look([this] { note(); });
    }
  }
  void write_everything() {
    press_all({button::raw_tucson, button::crn_column});
    press_all({button::save_raw, button::correlation_report});
  }
  void shift_and_scroll() {
    press_all({button::scroll_minus_50, button::reference_plus_50});
    // Both series out of sight, a year to pick has none, and the Escape key leads out.
    for (int times = 0; times < 4; ++times) {
      press(button::sample_plus_50);
      press(button::reference_plus_50);
    }
    press(button::insert_ring);
    key(Event::escape);
    look([this] { note(); });
    enter(button::display_width, "60\r");
    press(button::line_plot);
    press(button::indices);
    press(button::save_sample);
    press(button::save_reference);
    press(button::choose_cores);
    press(button::chooser_exit);
  }
  void insert_and_delete() {
    edit(button::insert_ring, button::upper_plot, button::insertion_ok);
    edit(button::insert_ring, button::lower_plot, button::insertion_not);
    edit(button::delete_ring, button::lower_plot, button::deletion_ok);
    edit(button::delete_ring, button::upper_plot, button::deletion_not);
  }
  void correlate() {
    press(button::correlate);
    enter(button::correlation_segment, "30\r");
    enter(button::correlation_overlap, "15\r");
    enter(button::correlation_start, "1900\r");
    press(button::best_fit);
    press(button::correlation_table);
    press(button::correlation_choose);
    press(button::chooser_exit);
    press(button::correlation_exit);
  }
  void use_the_editor() {
    press(button::edit_core);
    press(button::chooser_do_it);
    press_all({button::editor_minus_50, button::editor_column_1});
    enter(button::editor_table, "123\r");
    press(button::editor_insert);
    press(button::editor_table);
    press(button::editor_delete);
    press(button::editor_table);
    press(button::editor_reset);
    key(' ');  // "Edit.raw" is empty, which is told
    press(button::editor_exit);
    press(button::chooser_do_it);
    press(button::editor_quit);
    key(' ');
  }
  void choose() {
    press(button::choose_cores);
    press(button::page_forward);
    press(button::page_back);
    press(button::top_of_pair);
    press(button::bottom_of_pair);
    pick(3);
    pick(4);
    press(button::mean_core);
    enter(button::mean_name, "OAKMEAN\r");
    press(button::chooser_do_it);
    press(button::delete_core);
    press(button::chooser_do_it);
    use_the_editor();
    press(button::move_core);
    press(button::chooser_do_it);
    press(button::pick_cores);
    press(button::chooser_do_it);
  }

  Numbers pressed, seen;
};

TEST_F(Tour, PressesEveryButtonAndSeesEveryMessageLineThatTheMenusShow) {
  Numbers buttons, lines;
  for (const ButtonNumber n : button::all) {
    if (w->b(n).x2 > 0) buttons.insert(plain(n));
  }
  for (const MessageNumber i : message::all) {
    if (w->madd(i).x2 > 0) lines.insert(plain(i));
  }

  see_the_parameters();
  write_everything();
  press(button::crossdate);
  insert_and_delete();
  shift_and_scroll();
  correlate();
  choose();
  press(button::exit_crossdating);
  press(button::read_two_column);
  MenuBench::press(button::quit);
  EXPECT_THROW(run_program(*w), ProgramEnd);
  note();
  EXPECT_EQ(screen.steps_left(), 0u);
  EXPECT_EQ(
      told(),
      "oak.RWW: widths of 10 mm or more do not fit and are lost, in OAK1 OAK2 OAK3 OAK4 OAK5 OAK6 OAK7 OAK8 "
      "OAK9 OAK10 and 200 more\nReadEdit.raw fail err =    -1\nReadEdit.raw fail err =    -1\n");

  const auto missed = [](const Numbers& all, const Numbers& reached) {
    Numbers rest;
    std::set_difference(all.begin(), all.end(), reached.begin(), reached.end(),
                        std::inserter(rest, rest.end()));
    return rest;
  };
  // The editor shows one core, so one column.
  EXPECT_EQ(missed(buttons, pressed), (Numbers{127, 128, 129, 130, 131}));
  // " - does not exist ?" and " - no data in file ?" are written by no menu.
  EXPECT_EQ(missed(lines, seen), (Numbers{7, 10}));
  EXPECT_EQ(buttons.size(), 94u);
  EXPECT_EQ(lines.size(), 47u);
}

}  // namespace
}  // namespace vorn
