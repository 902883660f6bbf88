#include "sessions/event_mailbox.h"

#include <algorithm>

namespace vorn {

void EventMailbox::show(const Page& page) {
  auto copy = std::make_shared<const Page>(page);
  {
    const std::lock_guard lock(mutex_);
    page_ = {std::move(copy), page_.number + 1};
  }
  page_came_();
}

// Deliberate: [stale-clicks] a click on a page that was replaced is dropped, a key is kept; deeds that are no
// events are about the session, not about a page.
bool EventMailbox::counts(const Action& action) const {
  if (!std::holds_alternative<Event>(action.deed)) return true;
  return action.seen >= fresh_from_ && (!action.by_mouse || action.seen == page_.number);
}

Deed EventMailbox::next_deed() {
  say(progress_, {});
  Deed deed = wait_for_deed();
  busy_since_ = now_();
  return deed;
}

Event EventMailbox::next_event() {
  for (;;) {
    const Deed deed = next_deed();
    if (const auto* event = std::get_if<Event>(&deed)) return *event;
  }
}

Deed EventMailbox::wait_for_deed() {
  std::unique_lock lock(mutex_);
  for (;;) {
    while (!closed_ && actions_.empty()) wait(lock);
    if (closed_) throw ProgramEnd(EndReason::closed);
    Action action = std::move(actions_.front());
    actions_.pop_front();
    if (counts(action)) return std::move(action.deed);
  }
}

void EventMailbox::stand(const SharedStanding& standing) {
  {
    const std::lock_guard lock(mutex_);
    standing_ = standing;
  }
  news_came_();
}

SharedStanding EventMailbox::standing() const {
  const std::lock_guard lock(mutex_);
  return standing_;
}

void EventMailbox::forget_pending() {
  const std::lock_guard lock(mutex_);
  fresh_from_ = page_.number;
  std::erase_if(actions_, [](const Action& action) { return std::holds_alternative<Event>(action.deed); });
}

void EventMailbox::progress(std::string_view what, double share) {
  const Clock::time_point now = now_();
  if (now - busy_since_ < worth_telling || now - told_ < between_tellings) return;
  told_ = now;
  say(progress_,
      std::string(what) + ' ' + std::to_string(static_cast<int>(100 * std::clamp(share, 0.0, 1.0))) + " %");
}

void EventMailbox::subject(std::string_view file) {
  say(subject_, file);
}

void EventMailbox::notice(std::string_view text) {
  {
    const std::lock_guard lock(mutex_);
    notices_.emplace_back(text);
  }
  news_came_();
}

// Keeps what is to be said in one of the two lines, and tells the window when that is something new.
void EventMailbox::say(std::string& line, std::string_view news) {
  {
    const std::lock_guard lock(mutex_);
    if (line == news) return;
    line = news;
  }
  news_came_();
}

std::string EventMailbox::progress() const {
  const std::lock_guard lock(mutex_);
  return progress_;
}

std::string EventMailbox::subject() const {
  const std::lock_guard lock(mutex_);
  return subject_;
}

std::vector<std::string> EventMailbox::notices() const {
  const std::lock_guard lock(mutex_);
  return notices_;
}

NumberedPage EventMailbox::page() const {
  const std::lock_guard lock(mutex_);
  return page_;
}

void EventMailbox::put(Action action) {
  {
    const std::lock_guard lock(mutex_);
    actions_.push_back(std::move(action));
  }
  something_came_.notify_one();
}

void EventMailbox::put_click(const Event& event, unsigned long seen) {
  put({event, seen, true});
}

void EventMailbox::put_key(const Event& event, unsigned long seen) {
  put({event, seen, false});
}

void EventMailbox::put_deed(Deed deed) {
  put({std::move(deed), 0, false});
}

void EventMailbox::close() {
  {
    const std::lock_guard lock(mutex_);
    closed_ = true;
  }
  something_came_.notify_one();
}

}  // namespace vorn
