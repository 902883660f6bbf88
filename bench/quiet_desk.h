// The program with nobody at the screen, for measuring.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <stdexcept>

#include "plot/page.h"
#include "plot/plot.h"
#include "plot/screen.h"
#include "records/disk_files.h"
#include "workspace/vorndata.h"

namespace vorn::bench {

// Answers waits with `answer`; without one, a wait (of a message) is a failed measurement.
class QuietScreen : public Screen {
 public:
  void show(const Page&) override {}
  Event next_event() override {
    if (!answer) throw std::runtime_error("the program shows a message and waits");
    return answer();
  }
  std::function<Event()> answer;
};

struct Desk {
  Desk() : w(std::make_unique<Workspace>(plot, disk)) {}
  QuietScreen screen;
  Plot plot{screen};
  DiskFiles disk;
  std::unique_ptr<Workspace> w;
};

}  // namespace vorn::bench
