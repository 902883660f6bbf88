// Between the two threads of the desktop program: pages go one way, the user's actions the other.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

#include "plot/page.h"
#include "plot/screen.h"

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
class EventMailbox : public Screen {
 public:
  // `page_came` is called by the program's thread after each new page.
  explicit EventMailbox(std::function<void()> page_came) : page_came_(std::move(page_came)) {}

  // --- The program's side.
  void show(const Page& page) override;
  Event next_event() override;
  // After this nothing counts that was done before the page shown last was seen, not even keys.
  void forget_pending() override;

  // --- The window's side.
  NumberedPage page() const;
  // Something done with the mouse, or a key, on the page with the number `seen`.
  void put_click(const Event& event, unsigned long seen);
  void put_key(const Event& event, unsigned long seen);
  // The window is to be closed: the program ends as soon as it waits.
  void close();

 private:
  struct Action {
    Event event;
    unsigned long seen = 0;
    bool by_mouse = false;
  };
  void put(const Action& action);
  bool counts(const Action& action) const;

  std::function<void()> page_came_;
  mutable std::mutex mutex_;
  std::condition_variable something_came_;
  NumberedPage page_;
  std::deque<Action> actions_;
  unsigned long fresh_from_ = 0;  // what was done on pages before this one is forgotten
  bool closed_ = false;
};

}  // namespace vorn
