// For tests of the chooser: a store put in by hand, the chooser's page, and clicks on it.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "editing/working_pair.h"
#include "menus/choose.h"
#include "support/desk.h"
#include "support/put_entry.h"
#include "support/scratch_folder.h"
#include "support/test_store.h"
#include "toolkit/button_table.h"
#include "toolkit/buttons.h"

namespace vorn {

class ChooserDesk : public ::testing::Test {
 protected:
  ChooserDesk() {
    set_up_graph(w);
    w.splineon = w.aron = w.logon = false;  // indices are widths, and quickly made
    w.b(button::save_sample).on = w.b(button::save_reference).on = true;
  }

  void add_entry(const std::string& name, int first, const std::vector<double>& widths) {
    put_entry(w, ++w.nd, name, first, widths);
  }
  // `cores` cores C1, C2, … of `years` years from 1900 on, then the chronologies of the files: names and
  // layouts as given, the first file the current one. The pair 1 and 2 is set.
  void make_store(int cores, std::initializer_list<std::pair<const char*, Layout>> files, int years = 20) {
    for (int i = 1; i <= cores; ++i) {
      add_entry("C" + std::to_string(i), 1900, noise(years, static_cast<unsigned>(i)));
    }
    w.nc = cores;
    w.cf = 1;
    for (const auto& [name, layout] : files) {
      const int f = ++w.nfil;
      w.cnam(f) = name;
      w.rftype(f) = layout;
      w.nraw += layout < Layout::tucson_index;
      w.cfy(f) = 1900;
      w.cyr(f) = years;
      w.cly(f) = 1900 + years - 1;
      for (int k = 1; k <= years; ++k) {
        w.crn(k, f) = f + k / 100.0;
        w.num(k, f) = 2;
      }
      add_entry(std::string(name).substr(0, std::string(name).find('.')), 1900,
                noise(years, 77u + static_cast<unsigned>(f)));
    }
    w.tr1 = 1;
    w.tr2 = 2;
    set_chs(w);
  }

  // --- Clicks.
  void press(ButtonNumber n) {
    const Button& button = w.b(n);
    screen.click((button.x1 + button.x2) / 2, (button.y1 + button.y2) / 2);
  }
  // A click on the k-th name of the page, 1 to 210.
  void pick(int k) {
    const int column = (k - 1) / 30, row = (k - 1) % 30;
    screen.click(200 + (column * 2500 + 1250) / 7, 240 + (row * 1400 + 700) / 30);
  }
  void picks(std::initializer_list<int> names) {
    for (const int k : names) pick(k);
  }
  // Plays what was clicked until the events are used up, the chooser still open: the screen is closed.
  void play() {
    try {
      choose(w);
    } catch (const ProgramEnd& end) {
      EXPECT_EQ(end.reason(), EndReason::closed);
      return;
    }
    ADD_FAILURE() << "the chooser was left";
  }
  // Plays what was clicked, then leaves by "Exit".
  bool play_and_exit() {
    press(button::chooser_exit);
    const bool answer = choose(w);
    EXPECT_EQ(screen.events_left(), 0u);
    return answer;
  }

  // --- What can be seen.
  std::string last_page() const { return marks_of(screen.shown.back()); }
  bool shows(const std::string& mark) const { return last_page().find(mark + "\n") != std::string::npos; }
  bool reads(const std::string& text) const { return Desk::reads(screen.shown.back(), text); }
  // The colour of the k-th cell of the page last shown; -1 for none.
  int cell_colour(int k) const {
    const int x = 200 + (k - 1) / 30 * 357, y = 240 + (k - 1) % 30 * 46;
    const auto n = [](int value) { return " " + std::to_string(value); };
    const std::string corners = n(x) + n(y) + n(x + 357) + n(y) + n(x + 357) + n(y + 46) + n(x) + n(y + 46);
    for (int colour = 0; colour <= 15; ++colour) {
      if (shows("fill " + std::to_string(colour) + corners)) return colour;
    }
    return -1;
  }

  // --- What is so.
  std::vector<int> chosen() const { return {&w.chc(1), &w.chc(1) + w.chs}; }
  std::string line(MessageNumber i) const { return std::string(w.mtext(i).trimmed()); }
  std::string names() const {
    std::string all;
    for (int i = 1; i <= w.nd; ++i) all += std::string(w.nam(i).trimmed()) + " ";
    return all;
  }
  std::vector<double> widths(int i) {
    const auto stretch = w.widths(i);
    return {stretch.begin(), stretch.end()};
  }
  void expect_packed() const {
    for (int i = 1; i < w.nd; ++i) EXPECT_EQ(w.ad(i + 1), w.ad(i) + w.yr(i)) << i;
  }
  std::string told() const { return desk.log.str(); }

  ScratchFolder folder;
  Desk desk;
  QueueScreen& screen = desk.screen;
  Workspace& w = desk.w;
};

using Picked = std::vector<int>;

}  // namespace vorn
