#include "desk/deed_gate.h"

#include <utility>

#include "desk/actions.h"

namespace vorn {

void DeedGate::serve(EventMailbox& mailbox) {
  mailbox_ = &mailbox;
  put_at_ = {};
  years_ = 0;
}

bool DeedGate::is_under_way() const {
  return put_at_ && put_at_ == standing();
}

void DeedGate::put(Deed deed, unsigned long seen, bool repeated) {
  if (repeated && is_under_way()) return;
  put_at_ = standing();
  const auto* event = std::get_if<Event>(&deed);
  if (event == nullptr) return mailbox_->put_deed(std::move(deed));
  const bool by_mouse = event->code == Event::click || event->code == Event::help;
  by_mouse ? mailbox_->put_click(*event, seen) : mailbox_->put_key(*event, seen);
}

void DeedGate::scroll(std::int64_t years) {
  years_ += years;
  if (!is_under_way()) go_on();
}

void DeedGate::go_on() {
  const std::int64_t years = std::exchange(years_, 0);
  const SharedStanding now = standing();
  if (years == 0 || !now) return;
  if (auto deed = scroll_years_by(years, *now)) put(std::move(*deed), 0);
}

}  // namespace vorn
