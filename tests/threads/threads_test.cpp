// The whole program on its thread, and on another one what the window does: it looks at the page, asks how
// far long work is and which file is shown, and hands over what the user does, faster than any user.
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <thread>

#include "menus/main_program.h"
#include "plot/plot.h"
#include "records/disk_files.h"
#include "sessions/event_mailbox.h"
#include "support/places.h"
#include "support/queue_screen.h"
#include "support/scratch_folder.h"
#include "toolkit/button_table.h"
#include "toolkit/buttons.h"
#include "workspace/vorndata.h"

namespace vorn {
namespace {

class Threads : public ::testing::Test {
 protected:
  Threads() { std::filesystem::copy(source_folder() / "examples", "."); }

  // The program, until it ends. Answers why.
  EndReason run() {
    Plot plot(mailbox);
    DiskFiles disk;
    const auto w = std::make_unique<Workspace>(plot, disk);
    std::ostringstream log;
    w->log = &log;
    try {
      run_program(*w);
    } catch (const ProgramEnd& end) {
      return end.reason();
    }
    return EndReason::pass_limit;
  }

  // As the window paints: every mark is looked at.
  NumberedPage painted() {
    const NumberedPage page = mailbox.page();
    std::size_t points = 0;
    if (page.page) {
      for (const Mark& mark : page.page->marks()) points += mark.points.size();
    }
    seen_points += points;
    return page;
  }

  ScratchFolder folder;
  std::atomic<int> pages{0}, news{0};
  EventMailbox mailbox{[this] { ++pages; }, [this] { ++news; }};
  std::size_t seen_points = 0;
};

// Goes on until so many pages were shown that the program has come around.
TEST_F(Threads, AUserFasterThanTheProgram) {
  constexpr int enough_pages = 400;
  EndReason end = EndReason::pass_limit;
  std::atomic<bool> ended{false};
  std::thread program([&] {
    end = run();
    ended = true;
  });
  QueueScreen nowhere;
  Plot plot(nowhere);
  DiskFiles disk;
  const auto tables = std::make_unique<Workspace>(plot, disk);
  set_up_graph(*tables);
  std::mt19937 random(1);
  const auto up_to = [&random](int most) {
    return static_cast<int>(random() % (static_cast<unsigned>(most) + 1));
  };
  std::size_t titles = 0;
  // However the two threads take turns, the loop sees a title and a page: the file worked on stays in the
  // title.
  while ((pages < enough_pages || titles == 0 || seen_points == 0) && !ended) {
    const NumberedPage page = painted();
    titles += mailbox.progress().size() + mailbox.subject().size();
    const ButtonNumber n = button::all.at(up_to(max_buttons - 1));
    const Button& button = tables->b(n);
    if (n == button::quit || n == button::read_two_column) continue;
    if (up_to(4) == 0) mailbox.put_key({0, 0, 32 + up_to(94)}, page.number);
    mailbox.put_click(
        {button.x1 + up_to(button.x2 - button.x1), button.y1 + up_to(button.y2 - button.y1), Event::click},
        page.number);
    std::this_thread::yield();
  }
  mailbox.close();
  program.join();
  EXPECT_EQ(end, EndReason::closed);
  EXPECT_GE(pages, enough_pages);
  EXPECT_GT(seen_points, 0u);
  EXPECT_GT(titles, 0u);
}

TEST_F(Threads, AWindowClosedInTheMidstOfLongWork) {
  for (int k = 0; k < 20; ++k) {
    EndReason end = EndReason::pass_limit;
    EventMailbox box([this] { ++pages; }, [this] { ++news; });
    std::thread program([&] {
      Plot plot(box);
      DiskFiles disk;
      const auto w = std::make_unique<Workspace>(plot, disk);
      std::ostringstream log;
      w->log = &log;
      try {
        run_program(*w);
      } catch (const ProgramEnd& why) {
        end = why.reason();
      }
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(k));
    box.close();
    program.join();
    EXPECT_EQ(end, EndReason::closed);
  }
}

}  // namespace
}  // namespace vorn
