// The way on which a window hands in what the user does.
#pragma once

#include <cstdint>

#include "sessions/event_mailbox.h"

namespace vorn {

// Puts deeds into the mailbox and knows whether the last one is still being done: it is until the session
// stands anew. What comes faster than that, a key held down or a wheel turned on, must not pile up.
class DeedGate {
 public:
  explicit DeedGate(EventMailbox& mailbox) : mailbox_(&mailbox) {}
  // The next run of the program has a mailbox of its own.
  void serve(EventMailbox& mailbox);

  SharedStanding standing() const { return mailbox_->standing(); }
  bool is_under_way() const;
  // `seen` is the number of the page that the user saw. A repetition of what is under way is dropped.
  void put(Deed deed, unsigned long seen, bool repeated = false);
  // Moves the years shown by so many, together with what is waiting for its turn.
  void scroll(std::int64_t years);
  // To be called when the session stands anew.
  void go_on();

 private:
  EventMailbox* mailbox_;
  SharedStanding put_at_;   // how the session stood when the last deed was put
  std::int64_t years_ = 0;  // to be scrolled when the last one is done
};

}  // namespace vorn
