#include "panels/findings.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <utility>

#include "panels/moving_findings.h"
#include "panels/recipe_findings.h"
#include "study/reference.h"

namespace vorn {
namespace {

std::unique_ptr<bool[]> flags_of(const std::vector<std::uint8_t>& presence) {
  auto flags = std::make_unique<bool[]>(presence.size());
  std::ranges::transform(presence, flags.get(), [](std::uint8_t ring) { return ring != 0; });
  return flags;
}

OwnedSeries series_of(const Curve& curve) {
  OwnedSeries series(curve.first_year, static_cast<std::int64_t>(curve.values.size()));
  for (std::size_t k = 0; k < curve.values.size(); ++k)
    series.put(curve.first_year + static_cast<std::int64_t>(k), curve.values[k], curve.presence[k] != 0);
  return series;
}

// Whether both make the same of a core.
bool treat_alike(const Settings& a, const Settings& b) {
  return a.splineon == b.splineon && a.aron == b.aron && a.logon == b.logon && a.ss == b.ss && a.jpr == b.jpr;
}

bool same_segments(const Settings& a, const Settings& b) {
  return a.seg == b.seg && a.olap == b.olap;
}

template <class T>
bool same(const std::shared_ptr<const T>& a, const std::shared_ptr<const T>& b) {
  return a == b || (a && b && *a == *b);
}

bool same_names(const std::vector<SharedSeries>& a, const std::vector<SharedSeries>& b) {
  return std::ranges::equal(
      a, b, [](const SharedSeries& x, const SharedSeries& y) { return x == y || x->name == y->name; });
}

bool same_cores(const Situation& a, const Situation& b) {
  return a.cores_file == b.cores_file && a.cores == b.cores && treat_alike(a.settings, b.settings);
}

bool same_member(const PairMember& a, const PairMember& b) {
  return a.entry == b.entry && same(a.series, b.series) && same(a.compared, b.compared);
}

bool same_pair(const Situation& a, const Situation& b) {
  return same_cores(a, b) && same_segments(a.settings, b.settings) && same_member(a.sample, b.sample) &&
         same_member(a.reference, b.reference);
}

// Whether the same cores would be moved to the same file.
bool same_move(const Situation& a, const Situation& b) {
  return same_pair(a, b) && a.place == b.place && a.mode == b.mode && a.marked == b.marked &&
         a.destination == b.destination && a.settings.careful == b.settings.careful;
}

// Whether entry `other` is the chronology of the file whose cores are at work.
bool is_own_chronology(const Situation& now, int other) {
  return now.own_reference >= 0 && other == static_cast<int>(now.cores.size()) + 1 + now.own_reference;
}

std::size_t place_of(const PairMember& core) {
  return static_cast<std::size_t>(core.entry) - 1;
}

// --- The pair.

std::vector<SharedStudied> all_but(const std::vector<SharedStudied>& cores, std::size_t left_out) {
  std::vector<SharedStudied> others;
  for (std::size_t k = 0; k < cores.size(); ++k) {
    if (k != left_out) others.push_back(cores[k]);
  }
  return others;
}

std::vector<SeriesView> compared_of(const std::vector<SharedStudied>& cores) {
  std::vector<SeriesView> views;
  views.reserve(cores.size());
  for (const SharedStudied& core : cores) views.push_back(core->core().compared);
  return views;
}

std::string text_of(std::size_t number) {
  return std::to_string(number);
}

std::shared_ptr<const PairFindings> pair_of(const Situation& now, const std::vector<SharedStudied>& cores) {
  const bool is_sample = now.sample.is_core;
  const PairMember &core = is_sample ? now.sample : now.reference,
                   &other = is_sample ? now.reference : now.sample;
  if (!core.is_core || !core.series || !other.compared) return nullptr;
  auto pair = std::make_shared<PairFindings>();
  const std::size_t place = place_of(core);
  const bool is_stored = core.series == now.cores[place];
  pair->core = is_stored ? cores[place] : std::make_shared<const StudiedSeries>(core.series, now.settings);
  pair->entry = core.entry;
  pair->is_sample = is_sample;
  pair->is_last = core.entry == static_cast<int>(now.cores.size());
  pair->settings = now.settings;
  pair->against = other.name;
  pair->reference = series_of(*other.compared);
  if (is_own_chronology(now, other.entry) && cores.size() > least_depth &&
      other.first_year == other.stored_first_year) {
    pair->others = all_but(cores, place);
    pair->against = "the " + text_of(pair->others.size()) + " others of " + now.cores_file;
    pair->reference = OwnedSeries(Reference(compared_of(pair->others), pair->others.size()).view());
  }
  pair->errors = ring_errors(pair->core->core(), pair->reference.view());
  pair->errors_alike = ring_errors(pair->core->core(), pair->reference.view(), {.narrow_years = false});
  return pair;
}

// --- Dates.

constexpr std::size_t most_dates = 3;
constexpr std::int64_t same_date = 2;  // years

// The best positions, those beside a better one left out.
std::vector<DatedPosition> distinct(const std::vector<DatedPosition>& ranked) {
  std::vector<DatedPosition> best;
  for (const DatedPosition& position : ranked) {
    const bool is_near = std::ranges::any_of(best, [&](const DatedPosition& better) {
      return std::abs(better.shift - position.shift) <= same_date;
    });
    if (!is_near) best.push_back(position);
    if (best.size() == most_dates) break;
  }
  return best;
}

void keep_curve(DateFindings::Reference& found, const std::vector<DatedPosition>& ranked) {
  if (ranked.empty()) return;
  const auto [first, last] = std::ranges::minmax(ranked, {}, &DatedPosition::first_year);
  found.first = first.first_year;
  found.r.assign(static_cast<std::size_t>(last.first_year - first.first_year + 1), std::nan(""));
  for (const DatedPosition& position : ranked)
    found.r[static_cast<std::size_t>(position.first_year - found.first)] = position.r;
  found.tried = ranked.size();
}

// A chronology to date by: its values serve all measures. Where they are logarithms they are no widths.
struct DatedBy {
  std::string name;
  OwnedSeries values;
};

std::vector<DatedBy> dated_by(const Situation& now, const std::vector<SharedStudied>& cores) {
  std::vector<DatedBy> all;
  for (std::size_t k = 0; k < now.references.size(); ++k) {
    const ListedChronology& listed = *now.references[k];
    const bool own = static_cast<int>(k) == now.own_reference;
    // The same file listed again is no second witness.
    if (!own && now.sample.is_core && listed.name == now.cores_file) continue;
    if (own && now.sample.is_core) {
      const auto others = all_but(cores, place_of(now.sample));
      all.push_back(
          {"others of " + listed.name,
           OwnedSeries(Reference(compared_of(others), others.size(), depth_for(cores.size())).view())});
    } else if (static_cast<int>(now.cores.size() + k) + 1 != now.sample.entry) {
      all.push_back({listed.name, series_of(listed.values)});
    }
  }
  return all;
}

std::shared_ptr<const DateFindings> dates_of(const Situation& now, const std::vector<SharedStudied>& cores,
                                             const SharedStudied& sample, const Studies::GoOn& go_on) {
  if (now.sample.entry == 0 || !now.sample.compared) return nullptr;
  auto found = std::make_shared<DateFindings>();
  found->sample = now.sample.name;
  found->first_year = now.sample.first_year;
  const OwnedSeries as_compared =
      sample ? OwnedSeries(sample->core().compared) : series_of(*now.sample.compared);
  const SeriesToDate to_date{as_compared.view(),
                             sample ? sample->widths().values : as_compared.view().values};
  found->rings = static_cast<int>(as_compared.view().values.size());
  const auto by = dated_by(now, cores);
  std::vector<SeriesToDate> references;
  references.reserve(by.size());
  for (const DatedBy& reference : by)
    references.push_back({reference.values.view(), reference.values.view().values});
  if (!go_on("dates of " + found->sample)) return nullptr;
  const auto dated = dates(to_date, references);
  for (std::size_t k = 0; k < dated.size(); ++k) {
    DateFindings::Reference reference{.name = by[k].name, .best = distinct(dated[k].ranked)};
    reference.margin = dated[k].margin;
    reference.stands_out = dated[k].stands_out;
    keep_curve(reference, dated[k].ranked);
    found->references.push_back(std::move(reference));
  }
  const auto likelihood = [](const DateFindings::Reference& reference) {
    return reference.best.empty() ? -HUGE_VAL : reference.best.front().z;
  };
  std::ranges::stable_sort(found->references, std::ranges::greater(), likelihood);
  return found;
}

// --- The site.

std::shared_ptr<const SiteFindings> site_of(const Situation& now, const std::vector<SharedStudied>& cores,
                                            const Studies::GoOn& go_on) {
  std::vector<StudiedCore> studied;
  studied.reserve(cores.size());
  for (const SharedStudied& core : cores) studied.push_back(core->core());
  const auto surveyed = survey(studied, now.settings, [&](std::size_t done) {
    return go_on("core " + text_of(done) + " of " + text_of(cores.size()));
  });
  if (!surveyed) return nullptr;
  auto site = std::make_shared<SiteFindings>();
  site->file = now.cores_file;
  site->cores = cores;
  site->survey = *surveyed;
  for (std::size_t k = 0; k < cores.size(); ++k)
    site->todo.push_back(todo(site->survey.cores[k], studied[k].compared));
  return site;
}

std::vector<SeriesView> widths_of(const std::vector<SharedStudied>& cores) {
  std::vector<SeriesView> widths;
  widths.reserve(cores.size());
  for (const SharedStudied& core : cores) widths.push_back(core->widths());
  return widths;
}

}  // namespace

Studies::Studies() : moving_(std::make_unique<MovingStudy>()) {}

Studies::~Studies() = default;

void Studies::read_from(Files* files) {
  moving_->read_from(files);
}

StudiedSeries::StudiedSeries(SharedSeries series, const Settings& settings)
    : series_(std::move(series)),
      present_(flags_of(series_->presence)),
      studied_(std::vector<SeriesView>{widths()}, settings) {}

SeriesView StudiedSeries::widths() const {
  return {series_->first_year, series_->widths, {present_.get(), series_->presence.size()}};
}

// Cores that did not change are kept as they were made ready.
bool Studies::make_ready(const Situation& now, const GoOn& go_on) {
  std::unordered_map<const SeriesCopy*, SharedStudied> before;
  if (treat_alike(ready_for_, now.settings)) {
    for (const SharedStudied& core : ready_) before.emplace(&core->series(), core);
  }
  std::vector<SharedStudied> ready;
  for (const SharedSeries& core : now.cores) {
    const auto known = before.find(core.get());
    ready.push_back(known != before.end() ? known->second
                                          : std::make_shared<const StudiedSeries>(core, now.settings));
    if (known == before.end() &&
        !go_on("core " + text_of(ready.size()) + " of " + text_of(now.cores.size()) + " made ready"))
      return false;
  }
  ready_ = std::move(ready);
  ready_for_ = now.settings;
  return true;
}

void Studies::study(const SharedSituation& situation, const GoOn& go_on, const Came& came) {
  const Situation& now = *situation;
  if (now.place == Place::keep_edit || now.place == Place::pick_year) return;
  Findings found{situation};
  const auto tell = [&] { came(found_ = std::make_shared<const Findings>(found)); };
  const bool has_site = of_site_ && same_cores(*of_site_, now) &&
                        same_segments(of_site_->settings, now.settings) && found_ && found_->site;
  const bool has_pair = of_pair_ && same_pair(*of_pair_, now);
  const bool has_dates = has_pair && of_dates_ && found_ && found_->dates && same_pair(*of_dates_, now) &&
                         of_dates_->references == now.references;
  // Older values of the same cores stay until there are newer ones.
  const bool has_older = found_ && found_->site && of_site_->cores_file == now.cores_file &&
                         same_names(of_site_->cores, now.cores);
  if (has_site || has_older) found.site = found_->site, found.pointers = found_->pointers;
  found.site_is_older = !has_site && has_older;
  if (has_pair && found_) found.pair = found_->pair;
  if (has_dates) found.dates = found_->dates;
  const bool has_recipe = has_pair && of_recipe_ && found_ && same_pair(*of_recipe_, now);
  const bool has_move = has_pair && of_moving_ && found_ && same_move(*of_moving_, now);
  if (has_recipe) found.recipe = found_->recipe;
  if (has_move) found.moving = found_->moving;
  tell();
  if (has_site && has_pair && has_dates && has_recipe && has_move) return;
  if (!make_ready(now, go_on)) return;
  if (!has_pair) {
    found.pair = pair_of(now, ready_);
    of_pair_ = situation;
    tell();
  }
  if (!has_dates) {
    const bool is_studied = found.pair && found.pair->is_sample;
    found.dates = dates_of(now, ready_, is_studied ? found.pair->core : nullptr, go_on);
    of_dates_ = situation;
    tell();
  }
  if (!has_move) {
    found.moving = moving_->study(now, ready_, found.pair.get());
    of_moving_ = situation;
    tell();
  }
  if (!has_recipe) {
    bool goes_on = true;
    found.recipe = recipe_findings(now, ready_, found.pair.get(),
                                   [&](const std::string& working) { return goes_on = go_on(working); });
    if (!goes_on) return;
    of_recipe_ = situation;
    tell();
  }
  if (!has_site && !ready_.empty()) {
    auto site = site_of(now, ready_, go_on);
    if (!site) return;
    found.site = std::move(site);
    found.site_is_older = false;
    found.pointers = std::make_shared<const std::vector<PointerYear>>(pointer_years(widths_of(ready_)));
    of_site_ = situation;
    tell();
  }
}

}  // namespace vorn
