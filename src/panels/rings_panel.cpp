// Rings: in which year the core on the page lacks a ring, or has one ring counted as two.
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "desk/words.h"
#include "panels/drawn_panels.h"
#include "panels/lag_tiles.h"
#include "panels/panel_words.h"
#include "panels/pen.h"
#include "panels/plays.h"
#include "panels/year_axis.h"
#include "study/corrected.h"
#include "study/dates.h"
#include "study/lagged_sums.h"

namespace vorn {
namespace {

constexpr int graph_top = 136, graph_height = 250, set_height = 14, row_height = 84;
constexpr double least_scale = 10;

Colour colour_of(Correction kind) {
  return kind == Correction::insert ? colour::deep_blue : colour::vermilion;
}

std::string span_text(std::int64_t from, std::int64_t to) {
  return from == to ? std::to_string(from) : std::to_string(from) + " to " + std::to_string(to);
}

std::string what_text(const ErrorCandidate& candidate) {
  const std::string years = span_text(candidate.from, candidate.to);
  const std::string best =
      candidate.from == candidate.to ? "" : ", most likely " + std::to_string(candidate.year);
  return (candidate.kind == Correction::insert ? "A ring is missing in " : "Two rings are one in ") + years +
         " (90 %)" + best;
}

std::string_view end_text(KeptEnd end) {
  return end == KeptEnd::inner ? "the pith end stays" : "the bark end stays";
}

class RingsPanel {
 public:
  RingsPanel(const PanelInputs& inputs, const PanelView& view, const PairFindings& pair)
      : in_(inputs),
        view_(view),
        pair_(pair),
        pen_(view),
        axis_(view, inputs.standing ? inputs.standing->situation.get() : nullptr,
              pair.core->core().compared.years()),
        errors_(shown_errors(pair, inputs.state)),
        candidates_(shown_candidates(pair, inputs.state)) {}

  Panel draw() {
    heading();
    graph();
    y_ = graph_top + graph_height + 2 * set_height + 70;
    switches();
    if (errors_.pair) pair_row(*errors_.pair);
    for (std::size_t k = 0; k < candidates_.size(); ++k) candidate_row(k);
    if (candidates_.empty() && !errors_.pair) {
      pen_.lines(margin, at(y_), view_.width - 2.0 * margin,
                 "Neither a ring more nor a ring less makes the core agree better.", colour::muted);
      y_ += 50;
    }
    notes();
    if (in_.state.candidate && *in_.state.candidate < candidates_.size())
      lag_tables(candidates_[*in_.state.candidate]);
    return pen_.done(static_cast<int>(y_) + margin);
  }

 private:
  double at(double y) const { return y - view_.scroll; }
  int whole_at(double y) const { return static_cast<int>(at(y)); }

  void heading() {
    const std::string& name = pair_.core->series().name;
    pen_.fitted(margin, at(22), view_.width - 2.0 * margin, name + " against " + pair_.against, colour::ink,
                heading_size);
    const std::string r = errors_.years > 0
                              ? "r " + short_r(errors_.r) + " over " + counted(errors_.years, "year")
                              : "no year to compare";
    pen_.fitted(margin, at(64), view_.width - 2.0 * margin, r + ". " + verdict() + in_older(in_),
                colour::muted, small);
  }

  std::string verdict() const {
    if (errors_.years < least_years_in_common)
      return "Nothing can be told of fewer than " + std::to_string(least_years_in_common) + " years";
    if (errors_.pair) return "Two errors explain far more than one";
    const auto best = std::ranges::find_if(candidates_, [this](const auto& found) { return counts(found); });
    if (best == candidates_.end())
      return "No error is worth a look: it would take a gain of " + fixed(gain_to_look_at, 0) +
             ", and a higher r";
    return what_text(*best) +
           (best->margin >= sure_margin ? "; no other year comes near" : "; look on the wood");
  }

  bool counts(const ErrorCandidate& found) const { return worth_a_look(errors_, found); }

  // --- The evidence, year by year.

  // The better of both ends; not a number where there is none.
  double gain_at(Correction kind, std::int64_t year) const {
    double best = no_score;
    for (const Evidence& evidence : errors_.evidence) {
      const std::int64_t k = year - evidence.first;
      if (evidence.kind != kind || k < 0 || k >= static_cast<std::int64_t>(evidence.scores.size())) continue;
      best = std::max(best, evidence.scores[static_cast<std::size_t>(k)]);
    }
    return best == no_score ? std::nan("") : best - errors_.score;
  }

  void graph() {
    double most = least_scale;
    for (const ErrorCandidate& candidate : candidates_) most = std::max(most, candidate.gain * 1.1);
    const double bottom = at(graph_top + graph_height), scale = graph_height / most;
    const double look = bottom - gain_to_look_at * scale;
    const int top = whole_at(graph_top);
    pen_.area({static_cast<int>(axis_.left()), top, static_cast<int>(axis_.right()), static_cast<int>(look)},
              colour::pale_green);
    pen_.line(axis_.left(), look, axis_.right(), look, colour::sea_green);
    pen_.right(axis_.left() - 10, look - small / 2, fixed(gain_to_look_at, 0), colour::sea_green, small);
    if (bottom - look > small) pen_.right(axis_.left() - 10, bottom - small / 2, "0", colour::muted, small);
    if (most - gain_to_look_at > 3) pen_.right(axis_.left() - 10, top, fixed(most, 0), colour::muted, small);
    for (const Correction kind : {Correction::merge, Correction::insert}) curve(kind, bottom, scale);
    axis_.draw(pen_, bottom);
    sets(bottom + 42);
    legend(at(graph_top - 30));
  }

  void curve(Correction kind, double bottom, double scale) {
    std::vector<PagePoint> points;
    for (std::int64_t year = axis_.years().first; year <= axis_.years().last + 1; ++year) {
      const double gain = axis_.shows(year) ? gain_at(kind, year) : std::nan("");
      if (std::isnan(gain)) {
        pen_.curve(std::exchange(points, {}), colour_of(kind));
        continue;
      }
      points.push_back({axis_.middle_of(year), bottom - std::max(gain, 0.0) * scale});
    }
  }

  void legend(double y) {
    double x = axis_.left();
    for (const auto& [kind, words] : {std::pair(Correction::insert, "a ring is missing"),
                                      std::pair(Correction::merge, "two rings are one")}) {
      pen_.line(x, y + small / 2, x + 40, y + small / 2, colour_of(kind));
      pen_.text(x + 50, y, words, colour_of(kind), small);
      x += 80 + width_of(words, small);
    }
    const std::string unit = "gain, by year";
    if (x + width_of(unit, small) < axis_.right()) pen_.text(x, y, unit, colour::muted, small);
  }

  // The years that hold 90 % of what is worth a look, missing rings above the others; the likeliest has a
  // line.
  void sets(double y) {
    const auto row = [y](Correction kind) { return y + (kind == Correction::merge ? set_height + 4 : 0); };
    if (errors_.pair) {
      for (const std::size_t k : {0u, 1u}) {
        const Correction kind = errors_.pair->kinds[k];
        set(errors_.pair->sets[k], errors_.pair->years[k], colour_of(kind), row(kind));
      }
      return;
    }
    for (const Correction kind : {Correction::insert, Correction::merge}) {
      const auto best = std::ranges::find(candidates_, kind, &ErrorCandidate::kind);
      if (best == candidates_.end() || !counts(*best)) continue;
      set({best->from, best->to}, best->year, colour_of(kind), row(kind));
    }
  }

  // What is out of sight is pointed to at the edge.
  void set(YearSpan years, std::int64_t likeliest, Colour colour, double top) {
    const int y = static_cast<int>(top);
    const std::int64_t from = std::max(years.first, axis_.years().first),
                       to = std::min(years.last, axis_.years().last);
    if (from <= to) {
      const int left = static_cast<int>(axis_.x_of(from));
      const int right = std::max(static_cast<int>(axis_.x_of(to + 1)), left + 3);
      pen_.area({left, y, right, y + set_height}, colour);
    }
    if (axis_.shows(likeliest)) {
      const double x = axis_.middle_of(likeliest);
      return pen_.line(x, at(graph_top), x, at(graph_top + graph_height), colour);
    }
    const bool earlier = likeliest < axis_.years().first;
    const double edge = earlier ? axis_.left() : axis_.right(), in = earlier ? 16 : -16;
    pen_.triangle({edge, top + set_height / 2.0}, {edge + in, top}, {edge + in, top + set_height}, colour);
    const std::string year = std::to_string(likeliest);
    if (earlier) pen_.text(edge + 24, top - 2, year, colour, small);
    if (!earlier) pen_.right(edge - 24, top - 2, year, colour, small);
  }

  // --- What can be done.

  // What a click on a switch does is what it does not say now.
  void switch_key(int place, bool lit, std::string_view says, std::string_view tip,
                  PanelChange::Kind change) {
    const int width = std::min(300, (view_.width - 3 * margin) / 2), left = margin + place * (width + margin);
    const int top = whole_at(y_);
    pen_.key({left, top, left + width, top + 40}, says, {.tip = std::string(tip), .change = {.kind = change}},
             lit);
  }

  void switches() {
    const bool held = in_.state.hold_bark, narrow = in_.state.narrow_years;
    switch_key(
        0, held, held ? "Bark held: always" : "Bark held: where it fits",
        held ? "The outer end keeps its years after every change. A click: only where the evidence says so"
             : "The end keeps its years that the evidence says. A click: the outer end does, always",
        PanelChange::Kind::hold_bark);
    switch_key(
        1, !narrow, narrow ? "Missing: in narrow years" : "Missing: in any year",
        narrow ? "Missing rings are likelier in years in which the others are narrow. A click: every year "
                 "is as likely"
               : "A ring may be missing in every year alike. A click: likelier where the others are narrow",
        PanelChange::Kind::narrow);
    y_ += 58;
  }

  // The core as a click on the candidate makes it. Held at its bark against what the evidence says, it lies a
  // year off as a whole.
  SeriesView played(const OwnedSeries& corrected, const ErrorCandidate& found) const {
    SeriesView series = corrected.view();
    if (against_evidence(found)) series.first += found.kind == Correction::insert ? -1 : 1;
    return series;
  }
  bool against_evidence(const ErrorCandidate& found) const {
    return in_.state.hold_bark && found.end == KeptEnd::inner;
  }

  std::string figures_of(const ErrorCandidate& found) const {
    const OwnedSeries corrected = corrected_series(pair_.core->core(), found.kind, found.end, found.year);
    const SeriesView series = played(corrected, found);
    const double r = RunningSums(series, pair_.reference.view(), 0, series.years()).all().r();
    if (against_evidence(found))
      return "with the bark held r " + short_r(errors_.r) + " to " + short_r(r) +
             ": the evidence says that the pith end stays";
    const std::string by =
        std::isfinite(found.margin) ? "margin " + fixed(found.margin, 1) : "no other year to hold it against";
    return "gain " + fixed(found.gain, 1) + ", " + by + ", r " + short_r(errors_.r) + " to " +
           short_r(found.r) + ", " + std::string(end_text(found.end));
  }

  void candidate_row(std::size_t k) {
    const ErrorCandidate& found = candidates_[k];
    const Mending mending = mending_of(found, *pair_.core, in_.state.hold_bark);
    Spot spot = mending_spot(mending);
    spot.change = {.kind = PanelChange::Kind::choose, .candidate = k};
    std::string figures = figures_of(found);
    if (found.kind == Correction::insert && mending.year != found.year)
      figures += ", dated " + std::to_string(mending.year) + " now";
    row(what_text(found), figures, colour_of(found.kind), counts(found), in_.state.candidate == k, mending,
        std::move(spot));
  }

  // Of two errors the one by the end that stays is mended first: the other is then looked for anew.
  void pair_row(const ErrorPair& pair) {
    const std::size_t first = pair.end == KeptEnd::inner ? 0 : 1;
    ErrorCandidate one;
    one.kind = pair.kinds[first];
    one.end = pair.end;
    one.year = pair.years[first];
    const Mending mending = mending_of(one, *pair_.core, in_.state.hold_bark);
    const auto words = [&pair](std::size_t k) {
      return std::string(pair.kinds[k] == Correction::insert ? "a ring missing in "
                                                             : "two rings that are one in ") +
             span_text(pair.sets[k].first, pair.sets[k].last);
    };
    row("Two errors: " + words(0) + " and " + words(1),
        "gain " + fixed(pair.gain, 1) + ", r " + short_r(errors_.r) + " to " + short_r(pair.r) + ", " +
            std::string(end_text(pair.end)),
        colour::ink, true, false, mending, mending_spot(mending));
  }

  Spot mending_spot(const Mending& mending) const {
    const bool inserts = mending.kind == Correction::insert;
    Spot spot;
    spot.play = in_.standing ? mend(mending, pair_, *in_.standing) : std::nullopt;
    spot.tip = (inserts ? "Inserts a ring at " : "Deletes the ring of ") + std::to_string(mending.year) +
               "; the page shows it and asks" +
               (mending.shift == 0 ? std::string()
                                   : ". When it stays the core moves by " + signed_number(mending.shift) +
                                         " year, so that the outer end keeps its years");
    if (!spot.play)
      spot.tip = "Shown only here. " + spot.tip + ": on the cross-dating screen, when nothing is asked";
    return spot;
  }

  void row(const std::string& what, const std::string& figures, Colour colour, bool counts, bool chosen,
           const Mending& mending, Spot spot) {
    const int top = whole_at(y_);
    if (chosen) pen_.area({0, top - 8, view_.width, top + row_height - 14}, colour::pale_blue);
    pen_.area({margin, top, margin + 8, top + row_height - 26}, colour);
    const int key_width = 190, key_left = view_.width - margin - key_width;
    const double room = key_left - margin - 40.0;
    pen_.fitted(margin + 24, top + 2, room, what, counts ? colour::ink : colour::muted);
    pen_.fitted(margin + 24, top + 38, room, counts ? figures : figures + ": not worth a look", colour::muted,
                small);
    const std::string word = mending.kind == Correction::insert ? "Insert " : "Delete ";
    Spot whole = spot;
    whole.place = {0, top - 8, view_.width, top + row_height - 14};
    pen_.spot(std::move(whole));
    pen_.key({key_left, top + 6, key_left + key_width, top + 50}, word + std::to_string(mending.year),
             std::move(spot));
    y_ += row_height;
  }

  void notes() {
    const auto note = [this](const std::string& words) {
      y_ = pen_.lines(margin, at(y_), view_.width - 2.0 * margin, words, colour::muted, small) +
           view_.scroll + 6;
    };
    const bool merges = std::ranges::any_of(
        candidates_, [](const ErrorCandidate& found) { return found.kind == Correction::merge; });
    if (merges)
      note("Of two rings that are one the narrower is deleted. The ring that stays keeps its own width.");
    if (pair_.others.empty())
      note("Held against one series alone: where they disagree either of the two may be wrong.");
    if (pair_.is_last)
      note("The last core of a file: what is changed on it is not computed anew, and cannot be saved.");
  }

  // --- The lags before and after.

  void lag_tables(const ErrorCandidate& found) {
    const OwnedSeries corrected = corrected_series(pair_.core->core(), found.kind, found.end, found.year);
    const SeriesView reference = pair_.reference.view();
    const auto before = lag_rows(pair_.core->core().compared, reference, pair_.settings, shown_lags);
    const auto after = lag_rows(played(corrected, found), reference, pair_.settings, shown_lags);
    y_ += 10;
    const bool beside = view_.width >= 1100;
    const double width = beside ? (view_.width - 3.0 * margin) / 2 : view_.width - 2.0 * margin;
    const double left_end = lag_tiles(pen_, margin, at(y_), width, "Before", before) + view_.scroll;
    const double x = beside ? 2 * margin + width : margin;
    const double y = beside ? y_ : left_end + 10;
    const double right_end = lag_tiles(pen_, x, at(y), width, "After", after) + view_.scroll;
    y_ = std::max(left_end, right_end);
  }

  const PanelInputs& in_;
  PanelView view_;
  const PairFindings& pair_;
  Pen pen_;
  YearAxis axis_;
  const RingErrors& errors_;
  std::vector<ErrorCandidate> candidates_;
  double y_ = 0;  // of the content, from its top
};

}  // namespace

const RingErrors& shown_errors(const PairFindings& pair, const PanelState& state) {
  return state.narrow_years ? pair.errors : pair.errors_alike;
}

std::vector<ErrorCandidate> shown_candidates(const PairFindings& pair, const PanelState& state) {
  std::vector<ErrorCandidate> shown;
  for (const ErrorCandidate& candidate : shown_errors(pair, state).candidates) {
    if (candidate.gain > 0) shown.push_back(candidate);
  }
  return shown;
}

Panel draw_rings(const PanelInputs& inputs, const PanelView& view) {
  if (!inputs.findings || !inputs.findings->pair)
    return words_alone(view, "Rings", waiting_words(inputs, "No core is on the cross-dating page."));
  return RingsPanel(inputs, view, *inputs.findings->pair).draw();
}

}  // namespace vorn
