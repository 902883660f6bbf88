#include "desk/page_cursor.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "situation/graph_axis.h"
#include "situation/name_lists.h"

namespace vorn {
namespace {

using Step = PageCursor::Step;

bool takes_clicks(const Situation& now) {
  return now.wait == Wait::menu || now.wait == Wait::year;
}

// --- Curves.

// The next year to that side, `years` farther or at least as near as there is one.
std::optional<int> year_beside(const GraphAxis& axis, int year, int years) {
  const int side = years < 0 ? -1 : 1;
  std::optional<int> found;
  std::int64_t next = year;
  while (axis.shows(next += side)) {
    if (axis.x_of(next)) found = static_cast<int>(next);
    if (found && std::abs(next - year) >= std::abs(years)) return found;
  }
  return found;
}

bool is_curve(ButtonNumber n) {
  return n == button::upper_plot || n == button::lower_plot;
}

const ShownButton* first_shown(std::initializer_list<ButtonNumber> numbers, const Situation& now) {
  for (const ButtonNumber n : numbers) {
    if (const ShownButton* button = now.shown(n)) return button;
  }
  return nullptr;
}

Event click_at(int x, int y) {
  return {x, y, Event::click};
}

Event click_in(const Rectangle& area) {
  return click_at((area.x1 + area.x2) / 2, (area.y1 + area.y2) / 2);
}

}  // namespace

bool PageCursor::go(Step step, const Situation& now) {
  if (!takes_clicks(now)) return false;
  if (step == Step::next || step == Step::previous) return go_on(step, now);
  return now.wait == Wait::year ? go_along_curve(step, now) : go_in_list(step, now);
}

// From where the cursor is not shown the first button comes, or the last one.
bool PageCursor::go_on(Step step, const Situation& now) {
  std::vector<const ShownButton*> order;
  for (const ShownButton& button : now.buttons) order.push_back(&button);
  if (order.empty()) return false;
  std::ranges::stable_sort(order, {}, [](const ShownButton* b) { return std::pair(b->y1, b->x1); });
  if (step == Step::previous) std::ranges::reverse(order);
  const auto at = std::ranges::find(order, button_, [](const ShownButton* b) { return b->number; });
  enter(at == order.end() || at + 1 == order.end() ? *order.front() : **(at + 1), now);
  return true;
}

bool PageCursor::go_in_list(Step step, const Situation& now) {
  const ShownButton* button =
      first_shown({button::chooser_list, button::chronology_list, button::editor_table}, now);
  const std::optional<ShownList> list = button ? list_of(button->number, now) : std::nullopt;
  if (!list || list->cells == 0) return false;
  if (button_ != button->number) {
    enter(*button, now);
    return true;
  }
  const int last = list->cells - 1;
  const auto gone = [&] {
    switch (step) {
      case Step::up:
        return cell_ - 1;
      case Step::down:
        return cell_ + 1;
      case Step::left:
        return cell_ < list_rows ? cell_ : cell_ - list_rows;
      case Step::right:
        return cell_ / list_rows < last / list_rows ? cell_ + list_rows : cell_;
      case Step::page_left:
        return 0;
      default:
        return last;
    }
  };
  cell_ = std::clamp(gone(), 0, last);
  return true;
}

bool PageCursor::go_along_curve(Step step, const Situation& now) {
  const ShownButton* button = first_shown({button_, button::upper_plot, button::lower_plot}, now);
  if (!button || !is_curve(button->number)) return false;
  if (button_ != button->number || !GraphAxis(now).shows(year_)) {
    enter(*button, now);
    return true;
  }
  const auto go_by = [&](int years) { year_ = year_beside(GraphAxis(now), year_, years).value_or(year_); };
  const auto go_to = [&](ButtonNumber n) {
    if (now.shown(n)) button_ = n;
  };
  switch (step) {
    case Step::left:
      go_by(-1);
      break;
    case Step::right:
      go_by(1);
      break;
    case Step::page_left:
      go_by(-10);
      break;
    case Step::page_right:
      go_by(10);
      break;
    case Step::up:
      go_to(button::upper_plot);
      break;
    default:
      go_to(button::lower_plot);
  }
  return true;
}

// The cursor comes to the name or year where it was before; at first to the first name, or to the middle of
// the years shown, where the bar stands.
void PageCursor::enter(const ShownButton& button, const Situation& now) {
  button_ = button.number;
  if (list_of(button_, now) && list_ != button_) {
    list_ = button_;
    cell_ = 0;
  }
  const GraphAxis axis(now);
  if (!is_curve(button_) || axis.shows(year_)) return;
  year_ = held_year((axis.first() + axis.last()) / 2);
  if (!axis.x_of(year_)) year_ = year_beside(axis, year_, 1).value_or(year_);
}

std::optional<Rectangle> PageCursor::mark(const Situation& now) const {
  const ShownButton* button = takes_clicks(now) ? now.shown(button_) : nullptr;
  if (!button) return {};
  if (is_curve(button_)) {
    const GraphAxis axis(now);
    const auto x = axis.x_of(year_);
    if (!x) return {};
    const int half = std::max(1, static_cast<int>(axis.unit() / 2));
    return Rectangle{*x - half, button->y1, *x + half, button->y2};
  }
  const auto list = list_of(button_, now);
  if (!list) return *button;
  if (list->cells == 0) return {};
  return cell_of(*button, *list, std::min(cell_, list->cells - 1));
}

std::optional<Event> PageCursor::click(const Situation& now) const {
  const auto area = mark(now);
  if (!area) return {};
  if (!is_curve(button_)) return click_in(*area);
  return click_at(*GraphAxis(now).x_of(year_), (area->y1 + area->y2) / 2);
}

void PageCursor::hide() {
  button_ = ButtonNumber::none;
}

}  // namespace vorn
