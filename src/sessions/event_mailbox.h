// Between the two threads of the desktop program: pages go one way, the user's actions the other.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "plot/page.h"
#include "sessions/inbox.h"

namespace vorn {

// The page as the window shows it, with its number: each page shown has one, counted from 1 (0: none yet).
struct NumberedPage {
  std::shared_ptr<const Page> page;
  unsigned long number = 0;
};

// The Screen of the program's thread; the window's thread takes the page and puts what the user does. All
// members may be called from either thread.
//
// The user acts on the page he sees, which may be older than the one the program shows by now. A click made
// on an older page is dropped, because what it was aimed at is gone; keys are kept, so that one can type
// ahead.
class EventMailbox : public Inbox {
 public:
  using Clock = std::chrono::steady_clock;
  // Work is told of when the program has not waited for so long, and then no oftener than this.
  static constexpr std::chrono::milliseconds worth_telling{300}, between_tellings{50};

  // Both are called by the program's thread: `page_came` after each new page, `news_came` when there is
  // something new to be said of long work, of the file worked on, of how the session stands, or besides.
  // `now` tells the time.
  explicit EventMailbox(
      std::function<void()> page_came, std::function<void()> news_came = [] {},
      std::function<Clock::time_point()> now = Clock::now)
      : page_came_(std::move(page_came)),
        news_came_(std::move(news_came)),
        now_(std::move(now)),
        busy_since_(now_()) {}

  // --- The program's side.
  void show(const Page& page) override;
  Event next_event() override;  // passes over deeds that are no events
  Deed next_deed() override;
  void stand(const SharedStanding& standing) override;
  // After this nothing counts that was done before the page shown last was seen, not even keys.
  void forget_pending() override;
  void progress(std::string_view what, double share) override;
  void subject(std::string_view file) override;
  void notice(std::string_view text) override;

  // --- The window's side.
  NumberedPage page() const;
  // What runs and how far it is, "Stats.prn 45 %"; nothing when no long work runs.
  std::string progress() const;
  // The file that the user now works on; nothing for none.
  std::string subject() const;
  // All that the program had to tell besides its pages, in its order.
  std::vector<std::string> notices() const;
  // How the session stood last; null before it was told.
  SharedStanding standing() const;
  // Something done with the mouse, or a key, on the page with the number `seen`.
  void put_click(const Event& event, unsigned long seen);
  void put_key(const Event& event, unsigned long seen);
  // Something else to be done, whatever page is shown by then.
  void put_deed(Deed deed);
  // The window is to be closed, and nothing is to be asked: the program ends as soon as it waits.
  void close();

 protected:
  // Waits, with the lock held, until something may have been put. Where one thread is both the program's and
  // the window's, what the user does is to be taken in here, with the lock given up meanwhile.
  virtual void wait(std::unique_lock<std::mutex>& lock) { something_came_.wait(lock); }

 private:
  struct Action {
    Deed deed;
    unsigned long seen = 0;
    bool by_mouse = false;
  };
  void put(Action action);
  bool counts(const Action& action) const;
  Deed wait_for_deed();
  void say(std::string& line, std::string_view news);

  std::function<void()> page_came_, news_came_;
  std::function<Clock::time_point()> now_;
  Clock::time_point busy_since_;  // used by the program's thread alone, as is the next
  Clock::time_point told_;
  mutable std::mutex mutex_;
  std::condition_variable something_came_;
  NumberedPage page_;
  SharedStanding standing_;
  std::string progress_, subject_;
  std::vector<std::string> notices_;
  std::deque<Action> actions_;
  unsigned long fresh_from_ = 0;  // what was done on pages before this one is forgotten
  bool closed_ = false;
};

}  // namespace vorn
