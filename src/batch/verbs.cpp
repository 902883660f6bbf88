#include "batch/verbs.h"

#include <algorithm>
#include <cmath>

#include "batch/reading_check.h"
#include "formats/layouts.h"
#include "statistics/tree_correlations.h"
#include "study/reference.h"
#include "study/site.h"
#include "study/studied_cores.h"

namespace vorn {
namespace {

using Add = std::function<void(const Row&)>;

std::string name_of_core(const SeriesStore& w, int i) {
  return std::string(w.nam(i).trimmed());
}

Cell whole(std::int64_t value) {
  return value;
}

// --- locate

std::string_view kind_words(Correction kind) {
  return kind == Correction::insert ? "insert" : "merge";
}

Row located(const std::string& file, const std::string& core, const RingErrors& errors) {
  const auto end = [](KeptEnd kept) { return std::string(kept == KeptEnd::inner ? "inner" : "outer"); };
  if (const auto& pair = errors.pair) {
    return {file,
            core,
            std::string(kind_words(pair->kinds[0])),
            whole(pair->years[0]),
            whole(pair->sets[0].first),
            whole(pair->sets[0].last),
            number(pair->gain),
            Cell(),
            whole(pair->years[1]),
            end(pair->end),
            std::string(kind_words(pair->kinds[1]))};
  }
  const ErrorCandidate& best = errors.candidates.front();
  return {file,
          core,
          std::string(kind_words(best.kind)),
          whole(best.year),
          whole(best.from),
          whole(best.to),
          number(best.gain),
          number(best.margin),
          Cell(),
          end(best.end),
          Cell()};
}

// Whether they hold one that gains enough to be given.
bool has_one(const RingErrors& errors, double least_gain) {
  if (errors.pair) return least_gain <= 0 || errors.pair->gain >= least_gain;
  if (errors.candidates.empty()) return false;
  return least_gain <= 0 || worth_a_look(errors, errors.candidates.front(), least_gain);
}

void locate_rows(Collection& collection, const VerbSwitches& switches, const Add& add) {
  if (!collection.has_cores()) return;
  const Workspace& w = collection.state();
  const std::vector<SeriesView> cores = collection.cores();
  const StudiedCores studied(cores, w);
  for (int i = 1; i <= w.nc; ++i) {
    const std::size_t k = static_cast<std::size_t>(i) - 1;
    const Reference others(studied.compared(), k);
    const RingErrors errors =
        ring_errors(studied.core(k), others.view(), {.narrow_years = switches.narrow_years});
    if (has_one(errors, switches.least_gain)) add(located(collection.path(), name_of_core(w, i), errors));
  }
}

// --- date and site

void dated_rows(Collection& collection, const VerbSwitches& switches, const Add& add) {
  date_rows(collection, switches.references, add);
}

void site_rows(Collection& collection, const VerbSwitches&, const Add& add) {
  if (!collection.has_cores()) return;
  const Workspace& w = collection.state();
  const std::vector<SeriesView> cores = collection.cores();
  const SiteSurvey site = survey(StudiedCores(cores, w), w);
  for (const std::size_t k : site.order) {
    const SiteCore& core = site.cores[k];
    const int i = static_cast<int>(k) + 1;
    add({collection.path(), name_of_core(w, i), whole(w.fy(i)), whole(w.ly(i)), number(core.r),
         number(core.need), whole(core.low), whole(core.lagging), todo(core, cores[k])});
  }
}

void corr_rows(Collection& collection, const VerbSwitches& switches, const Add& add) {
  if (switches.grid == CorrelationGrid::lags)
    lag_rows(collection, switches.beside.get(), switches.farthest_lag, add);
  else
    report_rows(collection, add);
}

// --- stats

// As the program counts common years for both correlations: where there are too few it has 0 and the report
// 0.00; here nothing is known.
Cell correlation(double r) {
  return r == 0 ? Cell() : number(r);
}

void stats_rows(Collection& collection, const VerbSwitches&, const Add& add) {
  if (!collection.has_cores()) return;
  Workspace& w = collection.state();
  cbar(w, w, w, w.tree_to_chronology.range(1, w.nc), w.careful);
  rbar(w, w.tree_to_trees.range(1, w.nc));
  for (int i = 1; i <= w.nc; ++i) {
    const auto widths = w.widths(i);
    const auto rings = static_cast<double>(widths.size());
    double sum = 0, squares = 0;
    for (const double width : widths) sum += width;
    for (const double width : widths) squares += (width - sum / rings) * (width - sum / rings);
    add({collection.path(), name_of_core(w, i), whole(w.fy(i)), whole(w.ly(i)), whole(w.yr(i)),
         number(sum / rings), number(std::sqrt(squares / (rings - 1))), correlation(w.tree_to_chronology(i)),
         correlation(w.tree_to_trees(i))});
  }
}

// --- chron

void chron_rows(Collection& collection, const VerbSwitches&, const Add& add) {
  const Workspace& w = collection.state();
  if (!collection.was_read()) return;
  for (int k = 1; k <= std::clamp(w.cyr(1), 0, max_years); ++k) {
    const int depth = w.num(k, 1);
    add({collection.path(), whole(std::int64_t{w.cfy(1)} + k - 1), depth > 0 ? number(w.crn(k, 1)) : Cell(),
         whole(depth)});
  }
}

void checked_rows(Collection& collection, const VerbSwitches& switches, const Add& add) {
  check_rows(collection, switches.this_year, add, switches.wishes);
}

// --- How grave a row is.

Severity warning_if(bool is_finding) {
  return is_finding ? Severity::warning : Severity::note;
}

double number_in(const Row& row, std::size_t column, double otherwise) {
  const auto* value = std::get_if<double>(&row.at(column));
  return value ? *value : otherwise;
}

bool has_words(const Row& row, std::size_t column) {
  const auto* words = std::get_if<std::string>(&row.at(column));
  return words && !words->empty();
}

Severity of_error(const Row& row, const VerbSwitches& switches) {
  const double least = switches.least_gain > 0 ? switches.least_gain : gain_to_look_at;
  return warning_if(number_in(row, 6, 0) >= least);
}

// A date that stands out and is not the core's own. The margin is absent where no other date was possible.
Severity of_date(const Row& row, const VerbSwitches&) {
  const auto* shift = std::get_if<std::int64_t>(&row.at(4));
  const double r = number_in(row, 6, 0), p = number_in(row, 10, 1);
  const bool stands_out =
      r > 0 && p < probability_of_a_date && number_in(row, 11, 2 * margin_of_a_date) > margin_of_a_date;
  return warning_if(shift && *shift != 0 && stands_out);
}

Severity of_core(const Row& row, const VerbSwitches&) {
  return warning_if(has_words(row, 8));
}

Severity of_segment(const Row& row, const VerbSwitches&) {
  return warning_if(has_words(row, 6));
}

Severity of_figures(const Row&, const VerbSwitches&) {
  return Severity::note;
}

Severity of_check(const Row& row, const VerbSwitches&) {
  return severity_of(row);
}

constexpr std::string_view file = "file", series = "series";

const std::vector<Verb>& table() {
  static const std::vector<Verb> all = {
      {{"locate", {file, series, "kind", "year", "from", "to", "gain", "margin", "pair", "end", "pair_kind"}},
       "the year in which a ring is missing or false",
       locate_rows,
       of_error},
      {{"date",
        {file, series, "reference", "first_year", "shift", "overlap", "r", "t_bp", "t_h", "glk", "p",
         "margin"}},
       "where each core is best dated, and how sure",
       dated_rows,
       of_date},
      {{"site", {file, series, "first_year", "last_year", "r", "need", "flags_a", "flags_b", "todo"}},
       "which core needs work first, and what to do",
       site_rows,
       of_core},
      {{"stats", {file, series, "first_year", "last_year", "rings", "mean_mm", "sd_mm", "r", "rbar"}},
       "years, widths and agreement of each core",
       stats_rows,
       of_figures},
      {{"corr", {file, series, "from", "to", "lag", "r", "flag"}},
       "the correlations of each core, segment by segment",
       corr_rows,
       of_segment},
      {{"chron", {file, "year", "value", "depth"}}, "the chronology of each file", chron_rows, of_figures},
      {{"check", check_columns()}, "what was read and how, and what was not", checked_rows, of_check}};
  return all;
}

}  // namespace

std::span<const Verb> verbs() {
  return table();
}

const Verb* verb_named(std::string_view name) {
  const auto found = std::ranges::find(table(), name, [](const Verb& verb) { return verb.form.verb; });
  return found == table().end() ? nullptr : &*found;
}

}  // namespace vorn
