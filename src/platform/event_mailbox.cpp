#include "platform/event_mailbox.h"

namespace vorn {

void EventMailbox::show(const Page& page) {
  auto copy = std::make_shared<const Page>(page);
  {
    const std::lock_guard lock(mutex_);
    page_ = {std::move(copy), page_.number + 1};
  }
  page_came_();
}

bool EventMailbox::counts(const Action& action) const {
  return action.seen >= fresh_from_ && (!action.by_mouse || action.seen == page_.number);
}

Event EventMailbox::next_event() {
  std::unique_lock lock(mutex_);
  for (;;) {
    something_came_.wait(lock, [&] { return closed_ || !actions_.empty(); });
    if (closed_) throw ProgramEnd(EndReason::closed);
    const Action action = actions_.front();
    actions_.pop_front();
    if (counts(action)) return action.event;
  }
}

void EventMailbox::forget_pending() {
  const std::lock_guard lock(mutex_);
  fresh_from_ = page_.number;
  actions_.clear();
}

NumberedPage EventMailbox::page() const {
  const std::lock_guard lock(mutex_);
  return page_;
}

void EventMailbox::put(const Action& action) {
  {
    const std::lock_guard lock(mutex_);
    actions_.push_back(action);
  }
  something_came_.notify_one();
}

void EventMailbox::put_click(const Event& event, unsigned long seen) {
  put({event, seen, true});
}

void EventMailbox::put_key(const Event& event, unsigned long seen) {
  put({event, seen, false});
}

void EventMailbox::close() {
  {
    const std::lock_guard lock(mutex_);
    closed_ = true;
  }
  something_came_.notify_one();
}

}  // namespace vorn
