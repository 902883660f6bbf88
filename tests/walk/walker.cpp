#include "walk/walker.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>

#include "toolkit/buttons.h"
#include "walk/shown_buttons.h"

namespace vorn {
namespace {

constexpr std::size_t trail_length = 30;
// An action may take so long, sanitizers included, in processor time: what else the machine does is no fault.
constexpr std::clock_t longest_step = 60 * CLOCKS_PER_SEC;

constexpr int steps_without_effect = 400;

// Numbers about the limits of all fields.
constexpr int numbers[] = {0,      1,      2,      3,    4,    5,    10,    11,   12,   20,   21,
                           25,     30,     49,     50,   51,   99,   100,   116,  200,  300,  999,
                           1000,   1500,   1800,   1900, 1950, 2000, 2100,  5000, 9998, 9999, 11'999,
                           12'000, 12'001, 99'999, -1,   -9,   -300, -1000, -9999};

bool traced() {
  return std::getenv("VORN_WALK_TRACE") != nullptr;
}

// How much a button is to be preferred; those that leave a screen less, so that there is time for its others.
int weight(ButtonNumber n) {
  switch (n) {
    case button::quit:
      return 1;
    case button::read_two_column:
      return 3;
    case button::exit_crossdating:
    case button::correlation_exit:
    case button::chooser_exit:
    case button::editor_exit:
    case button::editor_quit:
      return 6;
    case button::crossdate:
    case button::chooser_do_it:
    case button::insert_ring:
    case button::delete_ring:
    case button::save_sample:
    case button::save_reference:
      return 60;
    case button::upper_plot:
    case button::lower_plot:
    case button::chooser_list:
    case button::editor_table:
      return 100;
    default:
      return 20;
  }
}

}  // namespace

Walker::Walker(std::uint32_t seed, int steps, bool undated_records) : random_(seed), steps_(steps) {
  state_.undated_records = undated_records;
}

void Walker::begin(const Workspace& w) {
  w_ = &w;
  page_ = nullptr;
  planned_.clear();
  state_.store_replaced = false;
}

std::string Walker::complaint() const {
  if (complaint_.empty()) return "";
  std::string text = "step " + std::to_string(step_) + ": " + complaint_ + "; after";
  for (const std::string& event : trail_) text += "\n  " + event;
  return text;
}

int Walker::up_to(int most) {
  return static_cast<int>(random_() % static_cast<std::uint32_t>(most + 1));
}

Event Walker::next_event() {
  if (asked_ != not_asked && std::clock() - asked_ > longest_step) complaint_ = "took too long";
  look_around();
  if (!message_shown_ && complaint_.empty()) check();
  look_for_dead_end();
  if (done()) throw ProgramEnd(EndReason::closed);
  ++step_;
  const Event event = choose();
  // Also by a click anywhere.
  if (hits(event, button::read_two_column)) state_.store_replaced = true;
  message_shown_ = false;
  trail_.push_back(std::to_string(event.x) + " " + std::to_string(event.y) + " code " +
                   std::to_string(event.code));
  if (trail_.size() > trail_length) trail_.pop_front();
  if (traced()) std::cerr << step_ << ": " << trail_.back() << '\n';
  asked_ = std::clock();
  return event;
}

bool Walker::shown(ButtonNumber n) const {
  return std::find(shown_.begin(), shown_.end(), n) != shown_.end();
}

bool Walker::hits(const Event& event, ButtonNumber n) const {
  const Button& b = w_->b(n);
  return event.code == Event::click && shown(n) && b.x1 <= event.x && event.x <= b.x2 && b.y1 <= event.y &&
         event.y <= b.y2;
}

void Walker::look_around() {
  shown_ = shown_buttons(*w_);
  note_screen(state_, shown_);
}

void Walker::check() {
  if (!checks_) return;
  if (!w_->derived_stale) state_.store_replaced = false;
  complaint_ = broken_invariant(*w_, state_);
}

void Walker::look_for_dead_end() {
  steps_on_page_ = page_->marks() == page_before_ ? steps_on_page_ + 1 : 0;
  if (steps_on_page_ == 0) page_before_ = page_->marks();
  if (steps_on_page_ == steps_without_effect && complaint_.empty()) complaint_ = "nothing has any effect";
}

Event Walker::choose() {
  if (!planned_.empty()) {
    const int code = planned_.front();
    planned_.pop_front();
    return {up_to(Page::width), up_to(Page::height), code};
  }
  const int way = up_to(99);
  if (way < 4) return {up_to(4000) - 500, up_to(3000) - 500, Event::click};
  if (way < 6) return {up_to(Page::width), up_to(Page::height), Event::help};
  // Escape passes over messages, and is the way out where a year is to be picked and none is in sight.
  const bool picking = shown(button::upper_plot) || shown(button::lower_plot);
  const bool escapes = message_shown_ || picking || (w_->careful.any() && in(50));
  if (way < 9) return {0, 0, escapes ? Event::escape : 32 + up_to(94)};
  if (way < 10) return {0, 0, 7 + up_to(248)};
  if (shown_.empty()) return {up_to(Page::width), up_to(Page::height), Event::click};
  return click_on(pick_button());
}

ButtonNumber Walker::pick_button() {
  int sum = 0;
  for (const ButtonNumber n : shown_) sum += weight(n);
  int place = up_to(sum - 1);
  for (const ButtonNumber n : shown_) {
    place -= weight(n);
    if (place < 0) return n;
  }
  return shown_.back();
}

bool Walker::is_field(ButtonNumber n) const {
  return n == button::display_width || n == button::correlation_segment || n == button::correlation_overlap ||
         n == button::correlation_start || (n >= button::spline_years && n <= button::segment_overlap) ||
         n == button::mean_name || n == button::editor_table;
}

// What is typed into field n, mostly with Return behind it.
void Walker::plan_entry(ButtonNumber n) {
  std::string text;
  if (n == button::mean_name) {
    for (int left = up_to(12); left > 0; --left) text += static_cast<char>(32 + up_to(94));
  } else if (in(60)) {
    text = std::to_string(numbers[static_cast<std::size_t>(up_to(std::size(numbers) - 1))]);
  } else {
    text = std::to_string(up_to(2500));
  }
  text += in(85) ? '\r' : ' ';
  for (const char c : text) planned_.push_back(static_cast<unsigned char>(c));
}

Event Walker::click_on(ButtonNumber n) {
  if (!message_shown_) ++hits_[n];
  if (is_field(n) && in(80)) plan_entry(n);
  const Button& place = w_->b(n);
  if (n == button::chooser_list && in(80)) return click_in_list(place, 7, w_->nd);
  if (n == button::chronology_list && in(80)) return click_in_list(place, 3, w_->nfil);
  return {place.x1 + up_to(place.x2 - place.x1), place.y1 + up_to(place.y2 - place.y1), Event::click};
}

// The cell of a name that is there.
Event Walker::click_in_list(const Rectangle& area, int columns, int names) {
  constexpr int rows = 30;
  const int name = up_to(std::clamp(names, 1, rows * columns) - 1);
  const int width = (area.x2 - area.x1) / columns, height = (area.y2 - area.y1) / rows;
  return {area.x1 + name / rows * width + width / 2, area.y1 + name % rows * height + height / 2,
          Event::click};
}

}  // namespace vorn
