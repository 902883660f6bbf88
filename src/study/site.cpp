#include "study/site.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>

#include "statistics/segment_grid.h"
#include "study/lagged_sums.h"
#include "study/reference.h"

namespace vorn {
namespace {

// --- Segments.

// The multiple of `step` at or before a year.
std::int64_t multiple_before(std::int64_t year, std::int64_t step) {
  const std::int64_t rest = year % step;
  return year - (rest < 0 ? rest + step : rest);
}

std::vector<YearSpan> segments_of(std::span<const SeriesView> cores, const Settings& settings) {
  const std::int64_t length = settings.seg, step = length - settings.olap;
  std::vector<YearSpan> segments;
  YearSpan all;
  for (const SeriesView& core : cores) {
    const YearSpan years = core.years();
    if (years.count() < 1) continue;
    all =
        all.count() < 1 ? years : YearSpan{std::min(all.first, years.first), std::max(all.last, years.last)};
  }
  if (step < 1 || all.count() < 1) return segments;
  for (std::int64_t first = multiple_before(all.first, step);; first += step) {
    segments.push_back({first, first + length - 1});
    if (first + length > all.last) return segments;
  }
}

// The years, read in the core by `lag` years later. None where the core does not reach.
std::optional<Sums> sums_at(const SeriesView& core, const SeriesView& others, YearSpan years, int lag) {
  if (years.first + lag < core.years().first || years.last + lag > core.years().last) return {};
  return RunningSums(core, others, lag, years).all();
}

// The segment, moved inwards at the ends of what both have.
std::optional<YearSpan> years_of_cell(const SeriesView& core, const SeriesView& others, YearSpan segment,
                                      std::int64_t step) {
  const SegmentBlock block{segment.first, segment.last, 1, segment.count(), step};
  return cell_years(block, 1, common(core.years(), others.years()));
}

std::optional<SiteCell> cell_of(const SeriesView& core, const SeriesView& others, YearSpan segment,
                                std::int64_t step) {
  const auto years = years_of_cell(core, others, segment, step);
  if (!years) return {};
  const Sums dated = *sums_at(core, others, *years, 0);
  if (dated.n < least_years_in_common) return {};
  SiteCell cell{*years, static_cast<int>(dated.n), dated.r(), 0, dated.r()};
  for (int lag = -farthest_segment_lag; lag <= farthest_segment_lag; ++lag) {
    const auto moved = sums_at(core, others, *years, lag);
    if (!moved || moved->n < least_years_in_common || moved->r() <= cell.best_r) continue;
    cell.best_lag = lag;
    cell.best_r = moved->r();
  }
  cell.low = cell.r < least_correlation(cell.n);
  cell.lagging = cell.best_lag != 0;
  return cell;
}

// --- What is to be gained.

double score_of(double r, double n) {
  return r > 0 ? -n / 2 * std::log(std::max(1 - r * r, 1e-12)) : 0;
}

double median_r(const SiteCore& core) {
  std::vector<double> all;
  for (const auto& cell : core.cells) {
    if (cell) all.push_back(cell->r);
  }
  std::sort(all.begin(), all.end());
  const std::size_t half = all.size() / 2;
  return all.size() % 2 == 1 ? all[half] : (all[half - 1] + all[half]) / 2;
}

// What the flagged cells lose against the core's median. Each year lies in so many segments.
double lost_in_segments(const SiteCore& core, double segments_a_year) {
  if (core.low + core.lagging == 0) return 0;
  const double median = median_r(core);
  double lost = 0;
  for (const auto& cell : core.cells) {
    if (cell && (cell->low || cell->lagging))
      lost += std::max(score_of(median, cell->n) - score_of(cell->r, cell->n), 0.0);
  }
  return lost / segments_a_year;
}

bool believable(const RingErrors& errors, const ErrorCandidate& candidate) {
  return worth_a_look(errors, candidate) && candidate.r >= least_r_of_a_correction;
}
bool believable(const ErrorPair& pair) {
  return pair.r >= least_r_of_a_correction;
}

// What the errors found gain; 0 where they are not worth a look.
double gain_of_errors(const RingErrors& errors) {
  if (errors.pair && believable(*errors.pair)) return errors.pair->gain;
  if (!errors.candidates.empty() && believable(errors, errors.candidates.front()))
    return errors.candidates.front().gain;
  return 0;
}

double gain_of_moving(const DatedPosition& to, const RingErrors& errors) {
  return score_of(to.r, to.overlap) - errors.score;
}

// A date that stands out, is not that of the core, and explains more than errors do.
std::optional<DatedPosition> date_elsewhere(const SeriesView& core, const SeriesView& others,
                                            const RingErrors& errors) {
  const SeriesToDate reference = {others};
  const Dates found = dates({core}, {&reference, 1}).front();
  if (!found.stands_out || found.ranked.front().shift == 0) return {};
  const DatedPosition& best = found.ranked.front();
  if (gain_of_moving(best, errors) < gain_to_look_at || errors_explain_more(errors, best)) return {};
  return best;
}

// In how many segments it could be told how the core agrees.
int told_cells(const SiteCore& core) {
  return static_cast<int>(
      std::ranges::count_if(core.cells, [](const auto& cell) { return cell.has_value(); }));
}

Remedy remedy_of(const SiteCore& core) {
  if (core.elsewhere) return Remedy::move;
  if (core.errors.pair && believable(*core.errors.pair)) return Remedy::two_errors;
  if (gain_of_errors(core.errors) > 0) return Remedy::one_error;
  if (core.years < least_years_in_common) return Remedy::cannot_say;
  if (2 * core.low > told_cells(core)) return Remedy::foreign;
  return core.low > 0 && core.need >= need_to_look_at ? Remedy::look : Remedy::none;
}

// A core that agrees with the others nowhere loses nothing against its own median: it loses what the others
// of the site have.
double lost_as_a_whole(const SiteCore& core, double usual_r) {
  return std::max(score_of(usual_r, core.years) - core.errors.score, 0.0);
}

// The median of the cores' correlations with the rest.
double usual_r(const std::vector<SiteCore>& cores) {
  std::vector<double> all;
  for (const SiteCore& core : cores) {
    if (core.years >= least_years_in_common) all.push_back(core.r);
  }
  if (all.empty()) return 0;
  const auto half = all.begin() + static_cast<std::ptrdiff_t>(all.size() / 2);
  std::nth_element(all.begin(), half, all.end());
  return *half;
}

bool has_any_value(const SeriesView& core) {
  for (std::int64_t year = core.first; year <= core.years().last; ++year) {
    if (core.has(year) && std::isfinite(core.at(year))) return true;
  }
  return false;
}

SiteCore surveyed(const StudiedCore& core, const SeriesView& others, const std::vector<YearSpan>& segments,
                  const Settings& settings) {
  const std::int64_t step = settings.seg - settings.olap;
  SiteCore all;
  all.errors = ring_errors(core, others);
  all.r = all.errors.r;
  all.years = all.errors.years;
  all.is_comparable = has_any_value(core.compared);
  for (const YearSpan segment : segments) {
    all.cells.push_back(cell_of(core.compared, others, segment, step));
    all.low += all.cells.back() && all.cells.back()->low;
    all.lagging += all.cells.back() && all.cells.back()->lagging;
  }
  all.elsewhere = date_elsewhere(core.compared, others, all.errors);
  const double segments_a_year =
      static_cast<double>(settings.seg) / static_cast<double>(std::max<std::int64_t>(step, 1));
  all.need = gain_of_errors(all.errors) + (all.elsewhere ? gain_of_moving(*all.elsewhere, all.errors) : 0) +
             lost_in_segments(all, segments_a_year);
  all.remedy = remedy_of(all);
  return all;
}

// --- Words.

std::string span_text(YearSpan years) {
  const std::string first = std::to_string(years.first);
  return years.first == years.last ? first : first + " to " + std::to_string(years.last);
}

std::string error_text(Correction kind, YearSpan years) {
  return (kind == Correction::insert ? "a ring missing in " : "a ring counted twice in ") + span_text(years);
}

std::string move_text(const DatedPosition& to, std::int64_t years) {
  const std::string by = (to.shift > 0 ? "+" : "") + std::to_string(to.shift);
  return "Move it by " + by + " years, to " + span_text({to.first_year, to.first_year + years - 1});
}

std::string why_not(const SiteCore& core) {
  if (!core.is_comparable) return "its rings are all as wide, or missing";
  if (core.years == 0) return "no year in common with three others";
  return std::to_string(core.years) + " years in common with three others, fewer than 20";
}

// The flagged segment that agrees least.
std::string segment_text(const SiteCore& core) {
  const SiteCell* worst = nullptr;
  for (const auto& cell : core.cells) {
    if (cell && cell->low && (!worst || cell->r < worst->r)) worst = &*cell;
  }
  return worst ? "Look at " + span_text(worst->years) + ", which agrees least" : "";
}

}  // namespace

double least_correlation(int n) {
  if (n < 3) return 1;
  constexpr double z = 2.3263478740408408;  // that a normal deviate exceeds in one case of 100
  const double degrees = n - 2;
  const double z3 = z * z * z, z5 = z3 * z * z, z7 = z5 * z * z;
  const double t = z + (z3 + z) / (4 * degrees) + (5 * z5 + 16 * z3 + 3 * z) / (96 * degrees * degrees) +
                   (3 * z7 + 19 * z5 + 17 * z3 - 15 * z) / (384 * degrees * degrees * degrees);
  return t / std::sqrt(degrees + t * t);
}

bool errors_explain_more(const RingErrors& errors, const DatedPosition& elsewhere) {
  return gain_of_errors(errors) >= gain_of_moving(elsewhere, errors);
}

SiteSurvey survey(const StudiedCores& cores, const Settings& settings) {
  std::vector<StudiedCore> all;
  for (std::size_t i = 0; i < cores.size(); ++i) all.push_back(cores.core(i));
  return *survey(all, settings, [](std::size_t) { return true; });
}

std::optional<SiteSurvey> survey(std::span<const StudiedCore> cores, const Settings& settings,
                                 const std::function<bool(std::size_t done)>& go_on) {
  std::vector<SeriesView> compared;
  for (const StudiedCore& core : cores) compared.push_back(core.compared);
  SiteSurvey all;
  all.segments = segments_of(compared, settings);
  for (std::size_t i = 0; i < cores.size(); ++i) {
    const Reference others(compared, i);
    all.cores.push_back(surveyed(cores[i], others.view(), all.segments, settings));
    if (!go_on(i + 1)) return {};
  }
  const double usual = usual_r(all.cores);
  for (SiteCore& core : all.cores) {
    if (core.remedy == Remedy::foreign) core.need = std::max(core.need, lost_as_a_whole(core, usual));
  }
  all.order.resize(cores.size());
  std::iota(all.order.begin(), all.order.end(), std::size_t{0});
  std::stable_sort(all.order.begin(), all.order.end(),
                   [&](std::size_t i, std::size_t j) { return all.cores[i].need > all.cores[j].need; });
  return all;
}

std::size_t LagRow::best() const {
  std::size_t best = r.size() / 2;
  for (std::size_t k = 0; k < r.size(); ++k) {
    if (r[k] && r[best] && *r[k] > *r[best]) best = k;
  }
  return best;
}

std::vector<LagRow> lag_rows(const SeriesView& core, const SeriesView& others, const Settings& settings,
                             int lags) {
  std::vector<LagRow> rows;
  for (const YearSpan segment : segments_of({&core, 1}, settings)) {
    const auto years = years_of_cell(core, others, segment, settings.seg - settings.olap);
    if (!years) continue;
    LagRow row{*years};
    for (int lag = -lags; lag <= lags; ++lag) {
      const auto sums = sums_at(core, others, *years, lag);
      row.r.push_back(sums && sums->n >= least_years_in_common ? std::optional(sums->r()) : std::nullopt);
    }
    if (row.r[static_cast<std::size_t>(lags)]) rows.push_back(std::move(row));
  }
  return rows;
}

std::string todo(const SiteCore& core, const SeriesView& dated) {
  switch (core.remedy) {
    case Remedy::none:
      return "";
    case Remedy::cannot_say:
      return "Cannot be told: " + why_not(core);
    case Remedy::move:
      return move_text(*core.elsewhere, dated.years().count());
    case Remedy::one_error: {
      const ErrorCandidate& best = core.errors.candidates.front();
      return "Look for " + error_text(best.kind, {best.from, best.to});
    }
    case Remedy::two_errors: {
      const ErrorPair& pair = *core.errors.pair;
      return "Look for " + error_text(pair.kinds[0], pair.sets[0]) + " and " +
             error_text(pair.kinds[1], pair.sets[1]);
    }
    case Remedy::look:
      return segment_text(core);
    case Remedy::foreign:
      return "Agrees with the others nearly nowhere: look whether it is of this site, and of this time";
  }
  return "";
}

}  // namespace vorn
