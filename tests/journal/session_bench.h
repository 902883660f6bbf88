// For tests: the whole program in a session, and a user who sees how it stands and does what the test says.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "apps/whole_program.h"
#include "plot/visible_text.h"
#include "records/disk_files.h"
#include "sessions/journal.h"
#include "sessions/session.h"
#include "support/menu_bench.h"
#include "support/scratch_folder.h"
#include "workspace/vorndata.h"

namespace vorn {

// Steps in order, each done at a wait: it looks at how the session stands, and does a deed or none. When they
// are used up the window is closed, whatever is asked.
class StandingScreen : public Inbox {
 public:
  using Step = std::function<std::optional<Deed>(const Standing&)>;

  void then(Step step) { steps_.push_back(std::move(step)); }
  void show(const Page& page) override {
    page_ = page;
    ++pages;
  }
  void forget_pending() override { forgotten_behind = pages; }
  void stand(const SharedStanding& standing) override { standing_ = standing; }
  void notice(std::string_view text) override { notices.emplace_back(text); }
  Event next_event() override { throw ProgramEnd(EndReason::closed); }
  Deed next_deed() override {
    while (!steps_.empty()) {
      const Step step = std::move(steps_.front());
      steps_.pop_front();
      if (auto deed = step(*standing_)) return std::move(*deed);
    }
    throw ProgramEnd(EndReason::closed);
  }
  std::size_t steps_left() const { return steps_.size(); }
  const Page& page() const { return page_; }
  const Standing& standing() const { return *standing_; }

  std::vector<std::string> notices;
  int pages = 0, forgotten_behind = 0;  // shown; how many when what had been typed was forgotten

 private:
  std::deque<Step> steps_;
  Page page_;
  SharedStanding standing_;
};

// Oaks, four cores of 1900 to 1959, and larches, two of 1880 to 1939.
class SessionBench : public ::testing::Test {
 protected:
  SessionBench() {
    std::string oaks;
    for (const int k : {1, 2, 3, 4}) oaks += raw_core_text("OAK" + std::to_string(k), 1900, 60, 7u * k);
    folder.write("oak.rwl", oaks);
    folder.write("larch.rwl",
                 raw_core_text("LARCH1", 1880, 60, 101) + raw_core_text("LARCH2", 1880, 60, 103));
    folder.write("Vorn.fil", "oak.rwl\nlarch.rwl\n");
  }

  // --- What the user does.
  void deed(Deed what) {
    screen.then([what](const Standing&) { return what; });
  }
  void click(int x, int y) { deed(Event{x, y, Event::click}); }
  void press(ButtonNumber n) {
    screen.then([n](const Standing& standing) -> std::optional<Deed> {
      const ShownButton* button = standing.situation->shown(n);
      EXPECT_TRUE(button) << plain(n);
      if (!button) return {};
      return Event{(button->x1 + button->x2) / 2, (button->y1 + button->y2) / 2, Event::click};
    });
  }
  void key(int code) { deed(Event{0, 0, code}); }
  void type(const std::string& text) {
    for (const char c : text) key(static_cast<unsigned char>(c));
  }
  void play(std::vector<PlayStep> steps, const std::string& what = "It") {
    deed(Play{std::move(steps), what});
  }
  void look(std::function<void(const Standing&)> at) {
    screen.then([at](const Standing& standing) -> std::optional<Deed> {
      at(standing);
      return {};
    });
  }
  // A ring inserted into the sample and kept, from the cross-dating screen on.
  void insert_ring_at(int year) {
    play({{.button = button::insert_ring},
          {.kind = PlayStep::Kind::sample_year, .year = year},
          {.button = button::insertion_ok}});
  }

  // Runs the session until the steps are used up. `w` is the state at work.
  int run(Gate* gate = nullptr, Keeper* keeper = nullptr) {
    const WholeProgram whole = whole_program([this](const Workspace& begun) { w = &begun; });
    const WholeProgram program = [&](Screen& shown, Files& answered, std::ostream& out, const auto& started) {
      return begins(answered) ? whole(shown, answered, out, started) : 4;
    };
    Session session(program, files ? *files : disk, log, screen, gate, keeper);
    const int status = session.run();
    if (!may_end_early) {
      EXPECT_EQ(screen.steps_left(), 0u);
    }
    return status;
  }

  ScratchFolder folder;
  DiskFiles disk;
  std::ostringstream log;
  StandingScreen screen;
  bool may_end_early = false;  // before the steps are used up
  Files* files = nullptr;      // in place of the disk
  const Workspace* w = nullptr;
  // Whether the program begins at all.
  std::function<bool(Files&)> begins = [](Files&) { return true; };
};

}  // namespace vorn
