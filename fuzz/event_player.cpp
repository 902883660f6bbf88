#include "event_player.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "plot/page.h"
#include "plot/plot.h"
#include "toolkit/buttons.h"
#include "walk/shown_buttons.h"

namespace vorn::fuzz {
namespace {

constexpr int most_messages_confirmed = 20;

bool telling() {
  static const bool asked = std::getenv("VORN_FUZZ_TELL") != nullptr;
  return asked;
}

Event told(Event event) {
  if (!telling()) return event;
  if (event.code == Event::click || event.code == Event::help) {
    std::printf("%s %d %d\n", event.code == Event::click ? "click" : "help", event.x, event.y);
  } else {
    std::printf("key %d\n", event.code);
  }
  std::fflush(stdout);
  return event;
}

int part(int from, int to, int share) {
  return from + (to - from) * share / 255;
}

bool lies_in(const Event& event, const Rectangle& place) {
  return place.x1 <= event.x && event.x <= place.x2 && place.y1 <= event.y && event.y <= place.y2;
}

}  // namespace

void EventPlayer::show(const Page& page) {
  must_hold(page.marks().size() < 200'000, "a page does not fill up");
}

void EventPlayer::progress(std::string_view, double share) {
  must_hold(share >= 0 && share <= 1, "the share of long work that is done is one");
}

Event EventPlayer::next_event() {
  const bool answering = message_shown_;
  message_shown_ = false;
  if (answering) return told(answer_to_message());
  shown_ = shown_buttons(*w_);
  note_screen(state_, shown_);
  if (!w_->derived_stale) state_.store_replaced = false;
  must_be_empty(broken_invariant(*w_, state_));
  if (!typed_.empty()) return told(next_key());
  if (bytes_.empty()) throw ProgramEnd(EndReason::closed);
  const Event event = decode(bytes_.byte());
  const bool hit = event.code == Event::click && lies_in(event, w_->b(button::read_two_column));
  if (hit && std::find(shown_.begin(), shown_.end(), button::read_two_column) != shown_.end()) {
    state_.store_replaced = true;
  }
  return told(event);
}

Event EventPlayer::answer_to_message() {
  if (bytes_.empty()) throw ProgramEnd(EndReason::closed);
  if (bytes_.rest().front() != escape) return key(Event::enter);
  bytes_.byte();
  return key(Event::escape);
}

Event EventPlayer::decode(int byte) {
  if (byte <= max_buttons) return press(ButtonNumber{byte});
  if (byte >= 150) return press_shown(byte - 150);
  switch (byte) {
    case 141:
      return click_inside(ButtonNumber{bytes_.byte()});
    case 142: {
      const int x = part(0, Page::width, bytes_.byte()), y = part(0, Page::height, bytes_.byte());
      return {x, y, Event::help};
    }
    case 143:
      return key(bytes_.byte());
    case 145:
      return key(Event::enter);
    case 146:
      return key(Event::escape);
    case 147: {
      const int low = bytes_.byte(), high = bytes_.byte();
      type(std::to_string(static_cast<std::int16_t>(low + 256 * high)));
      typed_.push_back(Event::enter);
      return next_key();
    }
    case 148:
      return key(Event::backspace);
    default:
      type(bytes_.text(static_cast<std::size_t>(bytes_.byte() % 16)));
      if (byte == 144 || typed_.empty()) typed_.push_back(Event::enter);
      return next_key();
  }
}

Event EventPlayer::press(ButtonNumber n) {
  if (n == ButtonNumber::none) return {0, 0, Event::click};
  const Button& place = w_->b(n);
  return {(place.x1 + place.x2) / 2, (place.y1 + place.y2) / 2, Event::click};
}

Event EventPlayer::press_shown(int k) {
  return shown_.empty() ? press(ButtonNumber::none)
                        : press(shown_[static_cast<std::size_t>(k) % shown_.size()]);
}

Event EventPlayer::click_inside(ButtonNumber n) {
  const int x = bytes_.byte(), y = bytes_.byte();
  const Rectangle page{0, 0, Page::width, Page::height};
  const Rectangle& place = button::all.contains(n) ? w_->b(n) : page;
  return {part(place.x1, place.x2, x), part(place.y1, place.y2, y), Event::click};
}

Event EventPlayer::key(int code) {
  const bool none = code == Event::click || code == Event::help;
  return {0, 0, none ? 'x' : code};
}

void EventPlayer::type(std::string_view text) {
  for (const char c : text) typed_.push_back(static_cast<unsigned char>(c));
}

Event EventPlayer::next_key() {
  const int code = typed_.front();
  typed_.pop_front();
  return key(code);
}

Event ConfirmingScreen::next_event() {
  if (!message_shown_) throw ProgramEnd(EndReason::closed);
  message_shown_ = false;
  ++messages_;
  return {0, 0, messages_ < most_messages_confirmed ? Event::enter : Event::escape};
}

}  // namespace vorn::fuzz
