// For tests of the menus: a user who presses buttons as they then stand and looks around between two actions.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <deque>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "plot/plot.h"
#include "plot/visible_text.h"
#include "records/disk_files.h"
#include "support/scratch_folder.h"
#include "toolkit/button_table.h"
#include "toolkit/buttons.h"
#include "workspace/vorndata.h"

namespace vorn {

// Plays steps in order. A look happens when the program waits and costs no event; an action is the event that
// the program then gets. When the steps are used up the screen is closed.
class StepScreen : public Screen {
 public:
  using Look = std::function<void()>;
  using Action = std::function<Event()>;

  void look(Look step) { steps_.push_back({std::move(step), {}}); }
  void act(Action step) { steps_.push_back({{}, std::move(step)}); }
  std::size_t steps_left() const { return steps_.size(); }

  void show(const Page&) override { ++shown; }
  Event next_event() override {
    ++waits;
    while (!steps_.empty()) {
      const Step step = steps_.front();
      steps_.pop_front();
      if (step.action) return step.action();
      step.look();
    }
    throw ProgramEnd(EndReason::closed);
  }

  int waits = 0, shown = 0;

 private:
  struct Step {
    Look look;
    Action action;
  };
  std::deque<Step> steps_;
};

// One core in the Tucson raw layout: `years` widths of 0.6 to 1.4 mm that look random, from `first` on, which
// is a multiple of 10 as `years` is.
inline std::string raw_core_text(const std::string& name, int first, int years, unsigned seed) {
  char field[40];
  std::string text;
  for (int year = first; year < first + years; ++year) {
    if (year % 10 == 0) {
      std::snprintf(field, sizeof field, "%-8s%4d", name.c_str(), year);
      text += field;
    }
    seed = seed * 1103515245u + 12345u;
    std::snprintf(field, sizeof field, "%6u", 600 + (seed >> 16) % 800);
    text += field;
    if (year % 10 == 9) text += "\n";
  }
  std::snprintf(field, sizeof field, "%-8s%4d%6d\n", name.c_str(), first + years, 999);
  return text + field;
}

class MenuBench : public ::testing::Test {
 protected:
  MenuBench() {
    w->log = &log;
    set_up_graph(*w);
  }

  // --- What the user does, in order.
  void click(int x, int y) {
    screen.act([x, y] { return Event{x, y, Event::click}; });
  }
  // The middle of button n as the table then stands, whether it is on or not.
  void press(ButtonNumber n) {
    screen.act([this, n] {
      const Button& button = w->b(n);
      return Event{(button.x1 + button.x2) / 2, (button.y1 + button.y2) / 2, Event::click};
    });
  }
  void key(int code) {
    screen.act([code] { return Event{0, 0, code}; });
  }
  void type(const std::string& text) {
    for (const char c : text) key(static_cast<unsigned char>(c));
  }
  void enter(ButtonNumber n, const std::string& keys) {
    press(n);
    type(keys);
  }
  void look(std::function<void()> step) { screen.look(std::move(step)); }

  // Runs `menu` until it returns or the steps are used up. Answers why the program ended, if it did.
  template <class Menu>
  bool returns(Menu menu) {
    try {
      menu(*w);
    } catch (const ProgramEnd& end) {
      EXPECT_EQ(static_cast<int>(end.reason()), static_cast<int>(EndReason::closed));
      return false;
    }
    return true;
  }

  // --- What there is to see.

  // The buttons of `range` that are on: "1-20 28-33".
  std::string on(ButtonRange range) const {
    const auto is_on = [this](int n) { return w->b(ButtonNumber{n}).on; };
    const int last = plain(range.last);
    std::string all;
    for (int n = plain(range.first); n <= last; ++n) {
      if (!is_on(n)) continue;
      const int start = n;
      while (n < last && is_on(n + 1)) ++n;
      all += (all.empty() ? "" : " ") + std::to_string(start) + (n > start ? "-" + std::to_string(n) : "");
    }
    return all;
  }
  bool reads(const std::string& part) const {
    const std::vector<std::string> texts = visible_texts(plot.page());
    return std::any_of(texts.begin(), texts.end(),
                       [&part](const std::string& text) { return text.find(part) != std::string::npos; });
  }
  std::string label(ButtonNumber n) const { return std::string(w->b(n).label.trimmed()); }
  // What was told since the last call, one message a line.
  std::string told() {
    const std::string messages = log.str();
    log.str("");
    return messages;
  }
  template <class T>
  std::vector<T> values(const Pool<T>& pool, int i) const {
    std::vector<T> all;
    for (int k = 0; k < w->yr(i); ++k) all.push_back(pool.at(w->ad(i) + k));
    return all;
  }

  ScratchFolder folder;
  StepScreen screen;
  Plot plot{screen};
  DiskFiles disk;
  std::unique_ptr<Workspace> w = std::make_unique<Workspace>(plot, disk);
  std::ostringstream log;
};

}  // namespace vorn
