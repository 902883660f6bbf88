// Screens for tests: one that plays a list of events, two that answer every wait with the same key.
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "plot/page.h"
#include "plot/screen.h"

namespace vorn {

// Plays `events` in order and keeps every page that was shown. When the events are used up the screen is
// closed.
class QueueScreen : public Screen {
 public:
  QueueScreen() = default;
  explicit QueueScreen(std::deque<Event> events) : events_(std::move(events)) {}

  void show(const Page& page) override { shown.push_back(page); }
  Event next_event() override {
    if (events_.empty()) throw ProgramEnd(EndReason::closed);
    const Event event = events_.front();
    events_.pop_front();
    return event;
  }
  void forget_pending() override { ++times_forgotten; }

  void click(int x, int y) { events_.push_back({x, y, Event::click}); }
  void help(int x, int y) { events_.push_back({x, y, Event::help}); }
  void key(int code) { events_.push_back({0, 0, code}); }
  void type(const std::string& text) {
    for (const char c : text) key(static_cast<unsigned char>(c));
  }
  std::size_t events_left() const { return events_.size(); }

  std::vector<Page> shown;
  int times_forgotten = 0;

 private:
  std::deque<Event> events_;
};

// Answers every wait with Return: for what may show messages that the test reads from the workspace's log.
class PatientScreen : public Screen {
 public:
  void show(const Page&) override {}
  Event next_event() override {
    ++waits;
    return {0, 0, Event::enter};
  }
  // What was told of long work.
  void progress(std::string_view what, double share) override { told.emplace_back(what, share); }
  int waits = 0;
  std::vector<std::pair<std::string, double>> told;
};

// Presses Return as often as the test expects the program to wait; one wait more closes the screen.
class ReturnScreen : public PatientScreen {
 public:
  Event next_event() override {
    if (presses == 0) throw ProgramEnd(EndReason::closed);
    --presses;
    return PatientScreen::next_event();
  }
  int presses = 0;
};

}  // namespace vorn
