#include "sessions/decisions.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace vorn {
namespace {

constexpr std::string_view slides = "Slide ";
constexpr std::size_t most_named = 10;

std::string number(int value) {
  return std::to_string(value);
}

std::string years_of(const SeriesCopy& series) {
  return number(series.first_year) + " to " + number(series.last_year());
}

// "T001, T002 and T003", of many the first ten and how many more.
std::string listed(const std::vector<std::string>& names) {
  std::string text;
  const std::size_t shown = std::min(names.size(), most_named);
  for (std::size_t k = 0; k < shown; ++k) {
    const bool last = k + 1 == names.size();
    text += (k == 0 ? "" : last ? " and " : ", ") + names[k];
  }
  if (names.size() > shown) text += " and " + std::to_string(names.size() - shown) + " more";
  return text;
}

std::string year_list(const std::vector<int>& years) {
  std::vector<std::string> texts;
  texts.reserve(years.size());
  for (const int year : years) texts.push_back(number(year));
  return listed(texts);
}

// "Insert 1750 in T001", or whatever became of the rings.
std::string ring_words(const SeriesCopy& before, const SeriesCopy& after) {
  if (after.widths.size() > before.widths.size()) {
    if (const auto years = inserted_years(before, after); !years.empty())
      return "Insert " + year_list(years) + " in " + after.name;
  }
  if (after.widths.size() < before.widths.size()) {
    if (const auto years = inserted_years(after, before); !years.empty())
      return "Delete " + year_list(years) + " of " + after.name;
  }
  return "Change rings of " + after.name;
}

std::string width_words(const SeriesCopy& before, const SeriesCopy& after) {
  std::vector<int> years;
  for (std::size_t k = 0; k < after.widths.size(); ++k) {
    if (before.widths[k] != after.widths[k] || before.presence[k] != after.presence[k])
      years.push_back(after.first_year + static_cast<int>(k));
  }
  return "Change the width of " + year_list(years) + " in " + after.name;
}

std::string slide_words(const std::string& name, int by) {
  return std::string(slides) + name + " by " + (by > 0 ? "+" : "") + number(by) +
         (by == 1 || by == -1 ? " year" : " years");
}

std::string slide_words(const SeriesCopy& before, const SeriesCopy& after) {
  return slide_words(after.name, after.first_year - before.first_year);
}

std::string change_words(const CoreChange& change) {
  switch (change.kind) {
    case CoreChange::Kind::made:
      return "Make " + change.after->name;
    case CoreChange::Kind::gone:
      return "Delete " + change.before->name;
    case CoreChange::Kind::dated:
      return slide_words(*change.before, *change.after);
    case CoreChange::Kind::rings:
      return ring_words(*change.before, *change.after);
    case CoreChange::Kind::widths:
      return width_words(*change.before, *change.after);
  }
  return {};
}

void say_years(Decision& decision, const SharedSeries& before, const SharedSeries& after) {
  if (before && after) {
    decision.before = years_of(*before);
    decision.after = years_of(*after);
  }
}

// --- What became of the cores of the store.

bool was_pressed(const std::vector<ButtonNumber>& pressed, ButtonNumber n) {
  return std::ranges::find(pressed, n) != pressed.end();
}

Decision store_decision(const std::vector<CoreChange>& changes, const std::vector<ButtonNumber>& pressed,
                        const std::string& destination) {
  Decision decision;
  for (const CoreChange& change : changes)
    decision.cores.push_back((change.after ? change.after : change.before)->name);
  const auto all = [&changes](CoreChange::Kind kind) {
    return std::ranges::all_of(changes, [kind](const CoreChange& change) { return change.kind == kind; });
  };
  const bool saved =
      was_pressed(pressed, button::save_sample) || was_pressed(pressed, button::save_reference);
  if (all(CoreChange::Kind::gone)) {
    decision.what = (destination.empty() ? "Delete " : "Move ") + listed(decision.cores) +
                    (destination.empty() ? "" : " to " + destination);
  } else if (changes.size() == 1) {
    const CoreChange& change = changes.front();
    const std::string words = change_words(change);
    decision.what = change.kind == CoreChange::Kind::made ? "Make the mean " + change.after->name : words;
    if (saved) decision.what = "Save Change: " + words;
    say_years(decision, change.before, change.after);
  } else {
    decision.what = "Change " + listed(decision.cores);
  }
  return decision;
}

// --- What became of a working copy. `stored` is the core as it is in the store; null for a chronology.

std::optional<Decision> copy_decision(const SharedSeries& before, const SharedSeries& after,
                                      const SharedSeries& stored) {
  if (before == after || (before && after && *before == *after)) return {};
  const SharedSeries from = before ? before : stored, to = after ? after : stored;
  Decision decision{.cores = {to->name}, .in_copy = true};
  const bool same_rings = from->widths == to->widths && from->presence == to->presence;
  decision.what = same_rings ? slide_words(*from, *to) : ring_words(*from, *to);
  say_years(decision, from, to);
  return decision;
}

// A chronology has nothing but its years to change: what it holds follows the cores.
std::optional<Decision> slid_chronology(const SharedSeries& before, const SharedSeries& after,
                                        int stored_from) {
  if (!before && !after) return {};
  const std::string& name = (after ? after : before)->name;
  const int by = (after ? after->first_year : stored_from) - (before ? before->first_year : stored_from);
  if (by == 0) return {};
  return Decision{.what = slide_words(name, by), .cores = {name}, .in_copy = true};
}

SharedSeries core_at(const std::vector<SharedSeries>& cores, int entry) {
  const bool is_core = entry >= 1 && entry <= static_cast<int>(cores.size());
  return is_core ? cores[static_cast<std::size_t>(entry) - 1] : nullptr;
}

std::optional<Decision> pair_decision(const Decided& before, const Decided& after,
                                      const std::vector<ButtonNumber>& pressed) {
  const auto dropped = [](const SharedSeries& copy) {
    return std::optional(
        Decision{.what = "Drop the change of " + copy->name, .cores = {copy->name}, .in_copy = true});
  };
  const bool left = after.sample_entry != before.sample_entry ||
                    after.reference_entry != before.reference_entry ||
                    was_pressed(pressed, button::chooser_exit);
  if (before.sample && !after.sample && left) return dropped(before.sample);
  if (before.reference && !after.reference && left) return dropped(before.reference);
  const auto became = [&after](const SharedSeries& was, const SharedSeries& is, int entry, int stored_from) {
    const SharedSeries core = core_at(after.cores, entry);
    return core ? copy_decision(was, is, core) : slid_chronology(was, is, stored_from);
  };
  if (auto sample = became(before.sample, after.sample, after.sample_entry, after.sample_stored_from))
    return sample;
  return became(before.reference, after.reference, after.reference_entry, after.reference_stored_from);
}

// --- What became of the settings.

std::string setting_words(const Settings& a, const Settings& b) {
  const auto yes = [](bool on) { return std::string(on ? "on" : "off"); };
  std::string text;
  const auto say = [&text](const std::string& what) { text += (text.empty() ? "" : ", ") + what; };
  if (a.splineon != b.splineon) say("Spline " + yes(b.splineon));
  if (a.aron != b.aron) say("AR model " + yes(b.aron));
  if (a.logon != b.logon) say("Logarithms " + yes(b.logon));
  if (a.ss != b.ss) say("Spline of " + number(b.ss) + " years, not " + number(a.ss));
  if (a.jpr != b.jpr) say("AR order " + number(b.jpr) + ", not " + number(a.jpr));
  if (a.seg != b.seg) say("Segments of " + number(b.seg) + " years, not " + number(a.seg));
  if (a.olap != b.olap) say("Overlap " + number(b.olap) + " years, not " + number(a.olap));
  for (const MendRow& row : mends()) {
    if (a.careful.has(row.mend) != b.careful.has(row.mend))
      say("Careful: " + std::string(row.name) + ' ' + yes(b.careful.has(row.mend)));
  }
  if (a.raw_output != b.raw_output || a.crn_output != b.crn_output) say("Another output layout");
  return text;
}

}  // namespace

std::optional<Decision> decision_between(const Decided& before, const Decided& after,
                                         const std::vector<ButtonNumber>& pressed,
                                         const std::string& destination) {
  if (was_pressed(pressed, button::read_two_column) && before.loads != after.loads)
    return Decision{.what = "Read TRW", .is_final = true};
  if (before.loads != after.loads || before.file != after.file) return Decision{.what = "Open " + after.file};
  if (const auto changes = changes_between(before.cores, after.cores); !changes.empty()) {
    const bool moved = was_pressed(pressed, button::chooser_do_it) && !destination.empty();
    Decision decision = store_decision(changes, pressed, moved ? destination : std::string());
    decision.is_final = moved;
    return decision;
  }
  if (auto decision = pair_decision(before, after, pressed)) return decision;
  if (const std::string words = setting_words(before.settings, after.settings); !words.empty())
    return Decision{.what = words};
  return {};
}

bool goes_on(const Decision& earlier, const Decision& decision) {
  return earlier.what.starts_with(slides) && decision.what.starts_with(slides) &&
         earlier.cores == decision.cores && earlier.in_copy == decision.in_copy && !earlier.is_final;
}

// "Slide T001 by +3 years" and again by +2: by +5.
Decision both(const Decision& earlier, const Decision& decision) {
  const auto years = [](const std::string& what) {
    const auto at = what.rfind(" by ");
    int by = 0;
    if (at == std::string::npos) return by;
    const char* const number = what.c_str() + at + 4;
    std::from_chars(number + (*number == '+' ? 1 : 0), what.c_str() + what.size(), by);
    return by;
  };
  Decision whole = decision;
  whole.before = earlier.before;
  whole.what = slide_words(decision.what.substr(slides.size(), decision.what.rfind(" by ") - slides.size()),
                           years(earlier.what) + years(decision.what));
  return whole;
}

}  // namespace vorn
