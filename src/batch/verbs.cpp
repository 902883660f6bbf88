#include "batch/verbs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

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
    const bool any =
        errors.pair || (!errors.candidates.empty() &&
                        (switches.least_gain <= 0 || errors.candidates.front().gain >= switches.least_gain));
    if (any) add(located(collection.path(), name_of_core(w, i), errors));
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

// --- stats

// As the program counts common years for both correlations: where there are too few it has 0 and the report
// 0.00; here nothing is known.
Cell correlation(double r) {
  return r == 0 ? Cell() : number(r);
}

void stats_rows(Collection& collection, const VerbSwitches&, const Add& add) {
  if (!collection.has_cores()) return;
  Workspace& w = collection.state();
  cbar(w, w, w, w.tree_to_chronology.range(1, max_series));
  rbar(w, w.tree_to_trees.range(1, max_series));
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
  const bool any = holds_ring_widths(w.rftype(1)) ? collection.has_cores() : row_of(w.rftype(1)) != nullptr;
  if (!any) return;
  for (int k = 1; k <= std::clamp(w.cyr(1), 0, max_years); ++k) {
    const int depth = w.num(k, 1);
    add({collection.path(), whole(std::int64_t{w.cfy(1)} + k - 1), depth > 0 ? number(w.crn(k, 1)) : Cell(),
         whole(depth)});
  }
}

// --- check

constexpr std::size_t severity_column = 4;
constexpr std::array<std::string_view, 3> severity_words = {"note", "warning", "error"};

class Findings {
 public:
  Findings(const std::string& file, const Add& add) : file_(file), add_(add) {}

  struct Place {
    std::int64_t line = 0;
    std::string series = {};
    std::int64_t from = 0, to = 0;
  };
  void tell(std::string_view check, Severity severity, const Place& place, const Cell& value,
            std::string message) {
    const auto known = [](std::int64_t line) { return line > 0 ? Cell(line) : Cell(); };
    add_({file_, known(place.line), place.series.empty() ? Cell() : Cell(place.series), std::string(check),
          std::string(severity_words[static_cast<std::size_t>(severity)]), known(place.from), known(place.to),
          value, std::move(message)});
  }

 private:
  const std::string& file_;
  const Add& add_;
};

std::string_view unit_words(UnitBy by) {
  switch (by) {
    case UnitBy::hundredths_mark:
      return "by the end mark 999";
    case UnitBy::thousandths_mark:
      return "by the end mark -9999";
    case UnitBy::no_mark:
      return "since there is no end mark";
    case UnitBy::unit_line:
      return "by its unit line";
    case UnitBy::mean:
      return "by the size of its values, since there is no unit line";
    case UnitBy::exponent:
      return "by the exponent of its header";
    case UnitBy::edit_format:
      return "by its format, since there is no exponent";
  }
  return "";
}

struct WhyNotTaken {
  std::string_view check;
  Severity severity;
  std::string_view words;
};

WhyNotTaken why(NotTaken reason) {
  switch (reason) {
    case NotTaken::header:
      return {"header", Severity::note, "header lines before the data"};
    case NotTaken::unknown_key:
      return {"unknown-key", Severity::note, "a keyword that is not read"};
    case NotTaken::no_end_mark:
      return {"no-end-mark", Severity::warning, "the last line of a series without an end mark is left out"};
    case NotTaken::long_header:
      return {"long-header", Severity::error, "no data within as many lines as a header may have"};
    case NotTaken::cut_header:
      return {"cut-header", Severity::error, "the file ends in a header"};
    case NotTaken::behind_end:
      return {"behind-end", Severity::error, "a line without a name ends the file: what follows is not read"};
    case NotTaken::no_room:
      return {"no-room", Severity::error, "there is no room for more rings"};
    case NotTaken::series_limit:
      return {"series-limit", Severity::error, "more series than a file may hold"};
    case NotTaken::year_limit:
      return {"year-limit", Severity::error, "more years than a chronology may have"};
  }
  return {};
}

void tell_series(const SeriesRead& series, Findings& findings) {
  const Findings::Place place{series.first_line, std::string(series.name.trimmed()), series.first_line,
                              series.last_line};
  const std::string unit = series.unit > 0 ? "1/" + plain_text(series.unit) + " mm " : "unknown unit ";
  findings.tell("series", Severity::note, place, Cell(std::int64_t{series.rings}),
                std::to_string(series.rings) + " rings in " + unit + std::string(unit_words(series.unit_by)));
  if (series.unit_by == UnitBy::no_mark)
    findings.tell("no-end-mark", Severity::warning, place, Cell(),
                  "the unit is a guess: there is no end mark");
  if (series.split)
    findings.tell("split", Severity::warning, place, Cell(),
                  "too long for one series: what follows is one of its own");
}

void check_rows(Collection& collection, const VerbSwitches&, const Add& add) {
  Findings findings(collection.path(), add);
  const Recognition& recognition = collection.recognition();
  for (const Trouble& trouble : collection.troubles()) {
    std::string message = trouble.words;
    if (message.empty())
      message = trouble.label + "fails with status " + std::to_string(trouble.status.number());
    findings.tell("read", Severity::error, {trouble.line, trouble.series},
                  Cell(std::int64_t{trouble.status.number()}), std::move(message));
  }
  if (!row_of(recognition.layout)) {
    findings.tell("layout", Severity::error, {}, Cell(), "no layout that is known");
    return;
  }
  const ReadDecisions& decided = collection.decided();
  findings.tell("layout", Severity::note, {recognition.line}, std::string(name_of(recognition.layout)),
                "by " + std::string(recognition.test));
  for (const SeriesRead& one : decided.series) tell_series(one, findings);
  for (const LinesNotTaken& lines : decided.not_taken) {
    const auto [check, severity, words] = why(lines.why);
    findings.tell(check, severity, {lines.first, "", lines.first, lines.last}, Cell(), std::string(words));
  }
  if (decided.more_not_taken > 0)
    findings.tell("more", Severity::warning, {}, Cell(static_cast<std::int64_t>(decided.more_not_taken)),
                  "further lines were not taken");
  if (decided.missing_rings > 0)
    findings.tell("missing-rings", Severity::note, {}, Cell(std::int64_t{decided.missing_rings}),
                  "rings that the file marks as missing");
}

constexpr std::string_view file = "file", series = "series";

const std::vector<Verb>& table() {
  static const std::vector<Verb> all = {
      {{"locate", {file, series, "kind", "year", "from", "to", "gain", "margin", "pair", "end", "pair_kind"}},
       "the year in which a ring is missing or false",
       locate_rows},
      {{"date",
        {file, series, "reference", "first_year", "shift", "overlap", "r", "t_bp", "t_h", "glk", "p",
         "margin"}},
       "where each core is best dated, and how sure",
       dated_rows},
      {{"site", {file, series, "first_year", "last_year", "r", "need", "flags_a", "flags_b", "todo"}},
       "which core needs work first, and what to do",
       site_rows},
      {{"stats", {file, series, "first_year", "last_year", "rings", "mean_mm", "sd_mm", "r", "rbar"}},
       "years, widths and agreement of each core",
       stats_rows},
      {{"chron", {file, "year", "value", "depth"}}, "the chronology of each file", chron_rows},
      {{"check", {file, "line", series, "check", "severity", "from", "to", "value", "message"}},
       "what was read and how, and what was not",
       check_rows}};
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

Severity severity_of(const Row& row) {
  const auto* word = std::get_if<std::string>(&row.at(severity_column));
  const auto found = std::ranges::find(severity_words, word ? std::string_view(*word) : "note");
  return static_cast<Severity>(found - severity_words.begin());
}

}  // namespace vorn
