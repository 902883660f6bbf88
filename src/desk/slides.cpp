// Moves by any number of years, played on the scroll buttons.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>

#include "desk/actions.h"
#include "desk/words.h"
#include "workspace/capacity.h"

namespace vorn {
namespace {

using Years = std::int64_t;
using Path = std::vector<Years>;  // the years of each press, one after the other

constexpr std::array<Years, 3> sizes = {50, 10, 1};
using Presses = std::array<Years, 3>;  // of each size; negative ones go back

Years count(const Presses& presses) {
  Years sum = 0;
  for (const Years n : presses) sum += std::abs(n);
  return sum;
}

Presses all_one_way(Years years) {
  return {years / 50, years % 50 / 10, years % 10};
}

// Going one way alone, unless some presses back save others: 49 is 50 - 1.
Presses fewest(Years years) {
  Presses best = all_one_way(years);
  for (Years fifties = years / 50 - 1; fifties <= years / 50 + 1; ++fifties) {
    const Years rest = years - 50 * fifties;
    for (Years tens = rest / 10 - 1; tens <= rest / 10 + 1; ++tens) {
      const Presses tried = {fifties, tens, rest - 10 * tens};
      if (count(tried) < count(best)) best = tried;
    }
  }
  return best;
}

// The largest come first, those that go back behind the first one: so the way leaves what lies between start
// and aim no farther than it must.
Path path_of(const Presses& presses, bool forward) {
  Path on, back;
  for (std::size_t k = 0; k < sizes.size(); ++k) {
    const Years step = presses[k] < 0 ? -sizes[k] : sizes[k];
    Path& path = (step > 0) == forward ? on : back;
    path.insert(path.end(), static_cast<std::size_t>(std::abs(presses[k])), step);
  }
  on.insert(on.empty() ? on.end() : on.begin() + 1, back.begin(), back.end());
  return on;
}

Play play_of(const Path& path, ButtonRange row, std::string what) {
  Play play;
  play.what = std::move(what);
  for (const Years step : path) {
    const auto size = std::ranges::find(sizes, std::abs(step)) - sizes.begin();
    const auto place = static_cast<int>(step < 0 ? size : 5 - size);
    play.steps.push_back({.kind = PlayStep::Kind::press, .button = row.at(place)});
  }
  return play;
}

bool shows(const Standing& standing, ButtonNumber n) {
  return standing.situation && !standing.question && standing.situation->wait == Wait::menu &&
         standing.situation->shown(n);
}

// --- The sample. All series may span so many years and no more.

struct Span {
  Years first, last;
};

Span span_of_others(const Situation& now) {
  Span span = {now.reference.first_year, now.reference.last_year};
  for (const SharedSeries& core : now.cores) {
    span.first = std::min<Years>(span.first, core->first_year);
    span.last = std::max<Years>(span.last, core->last_year());
  }
  return span;
}

// Where the sample comes to begin, as far as the cores and the pair decide it.
Years lands(const Path& path, const Situation& now) {
  const Span others = span_of_others(now);
  const Years length = Years{now.sample.last_year} - now.sample.first_year;
  Years first = now.sample.first_year;
  for (const Years step : path) {
    const Years earliest = std::min(others.first, first), latest = std::max(others.last, first + length);
    first = std::max(first + step, latest - (max_years - 1));
    first = std::min(first, earliest + (max_years - 1));
  }
  return first;
}

std::optional<Deed> slide(Years years, const Standing& standing, std::string what) {
  if (years == 0 || std::abs(years) > max_years || !shows(standing, button::sample_plus_1)) return {};
  const Situation& now = *standing.situation;
  for (const Presses& presses : {fewest(years), all_one_way(years)}) {
    const Path path = path_of(presses, years > 0);
    if (lands(path, now) == now.sample.first_year + years)
      return play_of(path, button::sample_row, std::move(what));
  }
  return {};
}

// --- The years shown.

// The first year shown in the end, by the years of the pair.
Years scrolls_to(const Path& path, const Situation& now) {
  const Years first = std::min(now.sample.first_year, now.reference.first_year);
  const Years last = std::max(now.sample.last_year, now.reference.last_year);
  Years start = now.first_year;
  for (const Years step : path) {
    start += step;
    if (now.years_shown + start + 1 < last) start = std::max(start, first - 1);
    if (start > first) start = std::min(start, last - now.years_shown);
  }
  return start;
}

}  // namespace

std::optional<Deed> move_sample_by(std::int64_t years, const Standing& standing) {
  if (years < -max_years || years > max_years) return {};
  return slide(years, standing,
               "Move the sample by " + std::string(years < 0 ? "-" : "") + counted(std::abs(years), "year"));
}

std::optional<Deed> begin_sample_in(std::int64_t year, const Standing& standing) {
  using Limits = std::numeric_limits<std::int32_t>;
  if (!standing.situation || year < Limits::min() || year > Limits::max()) return {};
  return slide(year - standing.situation->sample.first_year, standing,
               "Begin the sample in " + std::to_string(year));
}

std::optional<Deed> scroll_years_by(std::int64_t years, const Standing& standing) {
  if (years == 0 || !shows(standing, button::scroll_plus_1)) return {};
  constexpr Years farthest = Years{2} * max_years;
  const Years wanted = std::clamp(years, -farthest, farthest);
  const Path one_way = path_of(all_one_way(wanted), wanted > 0),
             shortest = path_of(fewest(wanted), wanted > 0);
  // At the ends of the series a way past the aim would come back too far.
  const Situation& now = *standing.situation;
  const bool same = scrolls_to(one_way, now) == scrolls_to(shortest, now);
  return play_of(same ? shortest : one_way, button::scroll_row,
                 "Scroll by " + std::string(wanted < 0 ? "-" : "") + counted(std::abs(wanted), "year"));
}

}  // namespace vorn
