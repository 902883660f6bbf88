// What panels show, as rows: where the command line gives the same, under the same names.
#include "batch/reading_check.h"
#include "panels/drawn_panels.h"

namespace vorn {
namespace {

Cell whole(std::int64_t value) {
  return Cell(value);
}

std::string kind_word(Correction kind) {
  return kind == Correction::insert ? "insert" : "merge";
}

PanelTable site_table(const PanelInputs& inputs) {
  PanelTable table{
      {"file", "series", "first_year", "last_year", "r", "need", "flags_a", "flags_b", "todo", "mark"}, {}};
  if (!inputs.findings || !inputs.findings->site) return table;
  const SiteFindings& site = *inputs.findings->site;
  for (const std::size_t k : listed_cores(site, inputs.state)) {
    const SiteCore& core = site.survey.cores[k];
    const SeriesCopy& series = site.cores[k]->series();
    table.rows.push_back({site.file, series.name, whole(series.first_year), whole(series.last_year()),
                          number(core.r), number(core.need), whole(core.low), whole(core.lagging),
                          site.todo[k], std::string(word_of(inputs.state.mark_of(series.name)))});
  }
  return table;
}

PanelTable rings_table(const PanelInputs& inputs) {
  PanelTable table{{"series", "against", "kind", "end", "year", "gain"}, {}};
  if (!inputs.findings || !inputs.findings->pair) return table;
  const PairFindings& pair = *inputs.findings->pair;
  const RingErrors& errors = shown_errors(pair, inputs.state);
  for (const Evidence& evidence : errors.evidence) {
    for (std::size_t k = 0; k < evidence.scores.size(); ++k) {
      if (evidence.scores[k] == no_score) continue;
      table.rows.push_back({pair.core->series().name, pair.against, kind_word(evidence.kind),
                            std::string(evidence.end == KeptEnd::inner ? "inner" : "outer"),
                            whole(evidence.first + static_cast<std::int64_t>(k)),
                            number(evidence.scores[k] - errors.score)});
    }
  }
  return table;
}

PanelTable dates_table(const PanelInputs& inputs) {
  PanelTable table{
      {"series", "reference", "first_year", "shift", "overlap", "r", "t_bp", "t_h", "glk", "p", "margin"},
      {}};
  if (!inputs.findings || !inputs.findings->dates) return table;
  const DateFindings& dates = *inputs.findings->dates;
  for (const DateFindings::Reference& reference : dates.references) {
    for (const DatedPosition& at : reference.best) {
      const bool best = &at == &reference.best.front();
      table.rows.push_back({dates.sample, reference.name, whole(at.first_year), whole(at.shift),
                            whole(at.overlap), number(at.r), number(at.t_bp), number(at.t_h), number(at.glk),
                            number(at.p), best ? number(reference.margin) : Cell()});
    }
  }
  return table;
}

PanelTable around_table(const PanelInputs& inputs) {
  PanelTable table{{"year", "series", "value"}, {}};
  const auto middle = year_looked_at(inputs);
  if (!middle) return table;
  const PairFindings& pair = *inputs.findings->pair;
  const auto add = [&](const std::string& name, const SeriesView& series) {
    for (std::int64_t year = *middle - years_around_it; year <= *middle + years_around_it; ++year) {
      if (series.has(year)) table.rows.push_back({whole(year), name, number(series.at(year))});
    }
  };
  add(pair.core->series().name, pair.core->core().compared);
  add(pair.others.empty() ? pair.against : "mean of " + pair.against, pair.reference.view());
  for (const SharedStudied& other : pair.others) add(other->series().name, other->core().compared);
  return table;
}

PanelTable pointers_table(const PanelInputs& inputs) {
  PanelTable table{{"year", "cores", "narrow", "wide"}, {}};
  if (!inputs.findings || !inputs.findings->pointers) return table;
  for (const PointerYear& year : *inputs.findings->pointers)
    table.rows.push_back({whole(year.year), whole(year.cores), whole(year.narrow), whole(year.wide)});
  return table;
}

PanelTable files_table(const PanelInputs& inputs) {
  PanelTable table{check_columns(), {}};
  if (!inputs.files) return table;
  for (const SharedReport& report : *inputs.files) {
    for (const FileFinding& finding : report->findings)
      table.rows.push_back(check_row(report->file, finding));
  }
  return table;
}

}  // namespace

PanelTable rows_of(PanelName panel, const PanelInputs& inputs) {
  switch (panel) {
    case PanelName::site:
      return site_table(inputs);
    case PanelName::rings:
      return rings_table(inputs);
    case PanelName::dates:
      return dates_table(inputs);
    case PanelName::around:
      return around_table(inputs);
    case PanelName::pointers:
      return pointers_table(inputs);
    case PanelName::files:
      return files_table(inputs);
    case PanelName::recipe:
      return recipe_table(inputs);
    case PanelName::moving:
      return moving_table(inputs);
  }
  return {};
}

}  // namespace vorn
