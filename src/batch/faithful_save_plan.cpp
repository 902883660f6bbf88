#include "batch/faithful_save_plan.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "batch/reading_check.h"
#include "batch/table.h"
#include "study/ring_alignment.h"

namespace vorn {
namespace {

constexpr double thousandths_of_a_mm = 1000, hundredths_of_a_mm = 100;

std::string words_of_unit(double unit) {
  if (unit == thousandths_of_a_mm) return "thousandths";
  return unit == hundredths_of_a_mm ? "hundredths" : "the unit of its core, parts";
}

// By place in the corrected core, the rings that are as they were.
std::map<std::size_t, std::size_t> kept_rings(const NamedCore& was, const NamedCore& is) {
  std::map<std::size_t, std::size_t> kept;
  const auto steps =
      aligned_rings({was.widths.values, was.widths.present, was.unit},
                    {is.widths.values, is.widths.present, is.unit}, was.widths.first - is.widths.first);
  for (const RingStep& step : steps.value_or(std::vector<RingStep>())) {
    if (step.kind == RingStep::Kind::kept) kept[step.after] = step.before;
  }
  return kept;
}

}  // namespace

ExpectedCore expected(const NamedCore& core) {
  ExpectedCore all{std::string(core.name), core.widths.first};
  for (std::size_t k = 0; k < core.widths.values.size(); ++k)
    all.mm.push_back(core.widths.present[k] ? core.widths.values[k] : -1);
  return all;
}

bool is_read_as(const NamedCore& core, const ExpectedCore& expected) {
  const SeriesView& read = core.widths;
  if (core.name != expected.name || read.values.size() != expected.mm.size()) return false;
  if (read.first != expected.first && !expected.mm.empty()) return false;
  for (std::size_t k = 0; k < expected.mm.size(); ++k) {
    if (read.present[k] ? !(std::abs(read.values[k] - expected.mm[k]) < 1e-9) : !(expected.mm[k] < 0))
      return false;
  }
  return true;
}

SavePlan::SavePlan(const Collection& original, const FaithfulLayout& layout, std::span<const NamedCore> was,
                   std::span<const NamedCore> is, bool is_rounded)
    : original_(original),
      layout_(layout),
      was_(was),
      is_(is),
      is_rounded_(is_rounded),
      is_gone_(was.size()) {
  for (std::size_t k = 0; k < was_.size(); ++k) cores_.push_back(layout_.standing(k));
  find_missing();
  find_manners();
}

// Changes come first of cores that were, then of new ones.
void SavePlan::take(std::span<const SeriesChange> changes) {
  for (const SeriesChange& change : changes) plan_change(change);
  for (std::size_t k = 0; k < cores_.size(); ++k) {
    if (is_gone_[k] && !cores_[k]) refuse_lines_of(was_[k].name);
  }
  refuse_what_was_not_read();
}

const CoreAnew* SavePlan::anew(std::size_t k) const {
  const auto core = anew_.find(k);
  return core == anew_.end() ? nullptr : &core->second;
}

// --- What stands there

// An error about nothing but a core that stays as it is stays with it.
void SavePlan::refuse_what_was_not_read() {
  const auto& series = original_.decided().series;
  const auto is_about_what_stays = [&](const Row& row) {
    const auto* line = std::get_if<std::int64_t>(&row.at(1));
    const auto behind = std::ranges::upper_bound(series, line ? *line : 0, {}, &SeriesRead::first_line);
    if (behind == series.begin() || *line > (behind - 1)->last_line) return false;
    const auto k = static_cast<std::size_t>(behind - series.begin()) - 1;
    return !is_gone_[k] && !anew_.contains(k);
  };
  bool is_whole = true;
  check_rows(original_, 0, [&](const Row& row) {
    is_whole = is_whole && (severity_of(row) != Severity::error || is_about_what_stays(row));
  });
  if (!is_whole) refuse("is not read whole, see vorn check");
}

// A ring marked as missing is negative, or 0 where the original has no other way to say that one is absent.
void SavePlan::find_missing() {
  std::map<std::string_view, std::size_t> count;
  bool any_zero = false;
  for (std::size_t k = 0; k < cores_.size(); ++k) {
    for (std::size_t ring = 0; cores_[k] && ring < cores_[k]->fields.size(); ++ring) {
      const bool is_present = was_[k].widths.present[ring];
      if (!is_present) ++count[without_blanks(cores_[k]->fields[ring])];
      any_zero = any_zero || (is_present && was_[k].widths.values[ring] == 0);
    }
  }
  const auto commonest = std::ranges::max_element(count, {}, [](const auto& one) { return one.second; });
  if (commonest != count.end())
    missing_ = std::string(commonest->first);
  else if (any_zero)
    missing_ = "0";
}

// --- What is to stand there

double SavePlan::width_of(const NamedCore& core, std::size_t ring) const {
  const double mm = core.widths.values[ring];
  return is_rounded_ ? std::round(mm * thousandths_of_a_mm) / thousandths_of_a_mm : mm;
}

// 0 where the file has no other way to say that a ring is absent.
void SavePlan::add_missing(CoreAnew& anew) const {
  const StandingCore& manner = anew.saved.manner;
  const bool has_room = missing_ && missing_->size() <= layout_.width(manner);
  const std::string digits = has_room ? *missing_ : layout_.missing_ring(manner);
  anew.saved.rings.push_back({std::nullopt, digits});
  anew.expected.mm.push_back(digits == "0" ? 0 : -1);
}

// A ring that is not as it was, in digits. Answers whether it fits, and says why not.
bool SavePlan::add_ring(const NamedCore& core, std::size_t ring, CoreAnew& anew) {
  const StandingCore& manner = anew.saved.manner;
  const double mm = width_of(core, ring);
  if (const auto digits = layout_.digits(mm, manner)) {
    anew.saved.rings.push_back({std::nullopt, *digits});
    anew.expected.mm.push_back(mm);
    return true;
  }
  refuse(std::string(core.name) + ": its ring " +
         std::to_string(core.widths.first + static_cast<std::int64_t>(ring)) + ", " + plain_text(number(mm)) +
         " mm, does not fit into " + words_of_unit(manner.unit) + " of a millimetre in " +
         std::to_string(layout_.width(manner)) + " columns");
  return false;
}

// Answers whether all fit.
bool SavePlan::add_rings(const NamedCore& core, const NamedCore* before, CoreAnew& anew) {
  const std::map<std::size_t, std::size_t> kept =
      before ? kept_rings(*before, core) : std::map<std::size_t, std::size_t>();
  for (std::size_t ring = 0; ring < core.widths.values.size(); ++ring) {
    if (const auto stays = kept.find(ring); before && stays != kept.end()) {
      anew.saved.rings.push_back({stays->second, {}});
      const SeriesView& was = before->widths;
      anew.expected.mm.push_back(was.present[stays->second] ? was.values[stays->second] : -1);
    } else if (!core.widths.present[ring]) {
      add_missing(anew);
    } else if (!add_ring(core, ring, anew)) {
      return false;
    }
  }
  return true;
}

std::optional<CoreAnew> SavePlan::anew(const NamedCore& core, const StandingCore& manner,
                                       const NamedCore* before) {
  CoreAnew all{{manner, before == nullptr, std::string(core.name), core.widths.first},
               {std::string(core.name), core.widths.first}};
  if (!add_rings(core, before, all)) return std::nullopt;
  if (const std::string words = layout_.why_not(all.saved); !words.empty()) {
    refuse(words);
    return std::nullopt;
  }
  bool any_zero_for_missing = false;
  for (std::size_t ring = 0; ring < all.expected.mm.size(); ++ring)
    any_zero_for_missing =
        any_zero_for_missing || (!core.widths.present[ring] && all.saved.rings[ring].digits == "0");
  if (any_zero_for_missing)
    done_.push_back(std::string(core.name) +
                    ": rings marked as missing are written as 0, as absent ones are there");
  return all;
}

// One of the same name that too little is left of is gone and new at once: it stays in its place.
std::optional<std::size_t> SavePlan::place_of(const SeriesChange& change) const {
  if (change.before) return change.before;
  for (std::size_t k = 0; k < cores_.size(); ++k) {
    if (is_gone_[k] && was_[k].name == is_[*change.after].name && !anew_.contains(k)) return k;
  }
  return std::nullopt;
}

void SavePlan::plan_changed(std::size_t place, const NamedCore& core) {
  is_gone_[place] = false;
  if (!cores_[place]) return refuse_lines_of(was_[place].name);
  if (auto core_anew = anew(core, *cores_[place], &was_[place])) anew_.emplace(place, std::move(*core_anew));
}

bool SavePlan::fits(const NamedCore& core, const StandingCore& manner) const {
  for (std::size_t ring = 0; ring < core.widths.values.size(); ++ring) {
    if (core.widths.present[ring] && !layout_.digits(width_of(core, ring), manner)) return false;
  }
  return true;
}

// The last core of each unit, the last of all first; behind them one in thousandths, where that may be.
void SavePlan::find_manners() {
  for (std::size_t k = cores_.size(); k-- > 0;) {
    const auto has_unit = [&](const StandingCore& core) { return cores_[k] && core.unit == cores_[k]->unit; };
    if (cores_[k] && std::ranges::none_of(manners_, has_unit)) manners_.push_back(*cores_[k]);
  }
  const auto is_thousandths = [](const StandingCore& core) { return core.unit == thousandths_of_a_mm; };
  if (manners_.empty() || !layout_.has_unit_of_its_own() || std::ranges::any_of(manners_, is_thousandths))
    return;
  manners_.push_back(manners_.front());
  manners_.back().unit = thousandths_of_a_mm;
  manners_.back().decimals = 0;
}

void SavePlan::plan_new(const NamedCore& core) {
  if (manners_.empty()) return refuse("its lines are not those of the layout throughout, see vorn check");
  const auto manner = std::ranges::find_if(manners_, [&](const auto& one) { return fits(core, one); });
  auto core_anew = anew(core, manner == manners_.end() ? manners_.front() : *manner, nullptr);
  if (core_anew) behind_.push_back(std::move(*core_anew));
}

void SavePlan::plan_change(const SeriesChange& change) {
  if (!change.after) {
    is_gone_[*change.before] = true;
  } else if (const auto place = place_of(change)) {
    plan_changed(*place, is_[*change.after]);
  } else {
    plan_new(is_[*change.after]);
  }
}

void SavePlan::refuse_lines_of(std::string_view name) {
  refuse(std::string(name) + ": its lines are not those of the layout throughout, see vorn check");
}

void SavePlan::refuse(const std::string& words) {
  refused_.push_back(original_.path() + ": " + words);
}

}  // namespace vorn
