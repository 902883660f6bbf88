#include "batch/changes_in_words.h"

#include "batch/difference.h"
#include "batch/held_cores.h"
#include "batch/table.h"

namespace vorn {
namespace {

std::string mm(std::optional<double> width) {
  return width ? plain_text(number(*width)) + " mm" : "marked as missing";
}

std::string signed_text(std::int64_t by) {
  return (by > 0 ? "+" : "") + std::to_string(by);
}

std::string rings_text(const NamedCore& core) {
  const std::size_t count = core.widths.values.size();
  std::string text = std::to_string(count) + (count == 1 ? " ring" : " rings");
  if (count > 0)
    text += ", " + std::to_string(core.widths.first) + " to " + std::to_string(core.widths.years().last);
  return text;
}

std::string words_of(const RingChange& ring) {
  const std::string year = std::to_string(ring.year);
  switch (ring.kind) {
    case RingChange::Kind::inserted:
      return "ring inserted in " + year + ", " + mm(ring.after);
    case RingChange::Kind::deleted:
      return "ring of " + year + " deleted, " + mm(ring.before);
    case RingChange::Kind::changed:
      break;
  }
  return "ring of " + year + " changed from " + mm(ring.before) + " to " + mm(ring.after);
}

// --- Rings that stayed and have other years now

// Rings that follow each other, by the years they had.
struct MovedYears {
  std::int64_t first = 0, last = 0, by = 0;
};

class MovedRings {
 public:
  MovedRings(const SeriesView& before, const SeriesView& after) : before_(before), after_(after) {}

  std::vector<MovedYears> all(std::span<const RingChange> rings);

 private:
  // The rings from `ring_` on, up to the one counted `end`.
  void add_up_to(std::int64_t end);

  const SeriesView& before_;
  const SeriesView& after_;
  std::int64_t ring_ = 0, more_ = 0;  // of those before, counted from 0; so many more stand before it now
  std::vector<MovedYears> moved_;
};

void MovedRings::add_up_to(std::int64_t end) {
  const std::int64_t by = after_.first - before_.first + more_;
  const std::int64_t first = before_.first + ring_, last = before_.first + end - 1;
  if (first > last || by == 0) return;
  if (!moved_.empty() && moved_.back().by == by)
    moved_.back().last = last;
  else
    moved_.push_back({first, last, by});
}

std::vector<MovedYears> MovedRings::all(std::span<const RingChange> rings) {
  for (const RingChange& ring : rings) {
    if (ring.kind == RingChange::Kind::changed) continue;
    const bool is_new = ring.kind == RingChange::Kind::inserted;
    const std::int64_t at = is_new ? ring.year - after_.first - more_ : ring.year - before_.first;
    add_up_to(at);
    ring_ = at + (is_new ? 0 : 1);
    more_ += is_new ? 1 : -1;
  }
  add_up_to(static_cast<std::int64_t>(before_.values.size()));
  return std::move(moved_);
}

std::string words_of(std::span<const MovedYears> moved) {
  std::string words;
  for (const MovedYears& years : moved) {
    words += words.empty() ? "years " : ", ";
    words += std::to_string(years.first);
    if (years.last > years.first) words += " to " + std::to_string(years.last);
    words += (words.find("moved") == std::string::npos ? " moved by " : " by ") + signed_text(years.by);
  }
  return words;
}

// --- Sentences

class Telling {
 public:
  Telling(std::span<const NamedCore> was, std::span<const NamedCore> is) : was_(was), is_(is) {}

  std::vector<ChangeInWords> run();

 private:
  void tell(const SeriesChange& change);
  void tell_core(const SeriesChange& change, const NamedCore& before, const NamedCore& after);

  std::span<const NamedCore> was_, is_;
  std::vector<ChangeInWords> all_;
};

void Telling::tell_core(const SeriesChange& change, const NamedCore& before, const NamedCore& after) {
  const std::string name(before.name);
  if (change.renamed) all_.push_back({name, std::nullopt, "its name is now " + std::string(after.name)});
  if (const auto& moved = change.redated) {
    const std::int64_t by = moved->after - moved->before;
    const YearSpan now = after.widths.years();
    all_.push_back({name, moved->after,
                    "moved by " + signed_text(by) + (by == 1 || by == -1 ? " year" : " years") + ", to " +
                        std::to_string(now.first) + " to " + std::to_string(now.last)});
  }
  for (const RingChange& ring : change.rings) all_.push_back({name, ring.year, words_of(ring)});
  const std::string years = words_of(MovedRings(before.widths, after.widths).all(change.rings));
  const bool is_said = change.redated && change.rings.empty();
  if (is_said || years.empty()) return;
  if (change.rings.size() == 1 && !change.redated)
    all_.back().words += "; " + years;
  else
    all_.push_back({name, std::nullopt, years});
}

void Telling::tell(const SeriesChange& change) {
  if (!change.before) {
    const NamedCore& core = is_[*change.after];
    all_.push_back({std::string(core.name), std::nullopt, "new, " + rings_text(core)});
  } else if (!change.after) {
    const NamedCore& core = was_[*change.before];
    all_.push_back({std::string(core.name), std::nullopt, "gone, with its " + rings_text(core)});
  } else {
    tell_core(change, was_[*change.before], is_[*change.after]);
  }
}

std::vector<ChangeInWords> Telling::run() {
  for (const SeriesChange& change : changes_between(was_, is_)) tell(change);
  return std::move(all_);
}

}  // namespace

std::vector<ChangeInWords> changes_in_words(const Collection& original, std::span<const NamedCore> cores) {
  const ComparableCores was(original);
  return Telling(compared_exactly(was.cores()), compared_exactly(cores)).run();
}

std::vector<ChangeInWords> changes_in_words(const Collection& original, const Collection& corrected) {
  const ComparableCores was(original), is(corrected);
  return Telling(was.cores(), is.cores()).run();
}

}  // namespace vorn
