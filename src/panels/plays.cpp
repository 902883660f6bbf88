#include "panels/plays.h"

#include <algorithm>
#include <string>

#include "desk/actions.h"
#include "situation/graph_axis.h"

namespace vorn {
namespace {

bool acts_at(const Standing& standing) {
  return standing.situation && !standing.question && standing.situation->wait == Wait::menu;
}

PlayStep press(ButtonNumber n) {
  return {.button = n};
}

// The presses that open the chooser from a place; none where it cannot be had from there.
std::optional<std::vector<PlayStep>> way_to_chooser(Place place) {
  switch (place) {
    case Place::start:
      return {{press(button::crossdate), press(button::choose_cores)}};
    case Place::crossdating:
      return {{press(button::choose_cores)}};
    case Place::correlation:
      return {{press(button::correlation_choose)}};
    case Place::chooser:
      return {{press(button::pick_cores)}};
    case Place::editor:
      return {{press(button::editor_exit), press(button::pick_cores)}};
    default:
      return {};
  }
}

// The scrolling that brings a year into the graph, in its middle as far as the ends of the series let.
std::vector<PlayStep> way_to_year(std::int64_t year, const Standing& standing) {
  const GraphAxis axis(*standing.situation);
  constexpr std::int64_t beside = 3;
  if (axis.shows(year - beside) && axis.shows(year + beside)) return {};
  const std::int64_t wanted = year - standing.situation->years_shown / 2;
  const auto deed = scroll_years_by(wanted - standing.situation->first_year, standing);
  const auto* play = deed ? std::get_if<Play>(&*deed) : nullptr;
  return play ? play->steps : std::vector<PlayStep>();
}

}  // namespace

std::optional<Play> put_on_page(int entry, const Standing& standing) {
  if (!acts_at(standing)) return {};
  const Situation& now = *standing.situation;
  const int cores = static_cast<int>(now.cores.size());
  if (entry < 1 || entry > cores || now.own_reference < 0) return {};
  auto way = way_to_chooser(now.place);
  if (!way) return {};
  Play play{std::move(*way), "Put " + now.cores[static_cast<std::size_t>(entry) - 1]->name + " on the page"};
  play.steps.push_back(press(button::top_of_pair));
  play.steps.push_back(press(button::bottom_of_pair));
  play.steps.push_back({.kind = PlayStep::Kind::series, .number = entry});
  play.steps.push_back({.kind = PlayStep::Kind::series, .number = cores + 1 + now.own_reference});
  play.steps.push_back(press(button::chooser_do_it));
  return play;
}

Mending mending_of(const ErrorCandidate& candidate, const StudiedSeries& core, bool hold_bark) {
  const bool outer = candidate.end == KeptEnd::outer;
  Mending mending{candidate.kind, candidate.year, 0};
  if (candidate.kind == Correction::insert) {
    // As it is dated the inner part lies one year later where the outer end is right.
    if (outer) ++mending.year;
    if (outer || hold_bark) mending.shift = -1;
    return mending;
  }
  // The two rings as they are dated.
  const std::int64_t first = outer ? candidate.year - 1 : candidate.year;
  const SeriesView widths = core.widths();
  const auto width = [&](std::int64_t year) {
    return widths.years().first <= year && year <= widths.years().last ? widths.at(year) : 0.0;
  };
  mending.year = width(first) < width(first + 1) ? first : first + 1;
  if (outer || hold_bark) mending.shift = 1;
  return mending;
}

std::optional<Play> mend(const Mending& mending, const PairFindings& pair, const Standing& standing) {
  if (!acts_at(standing) || standing.situation->place != Place::crossdating) return {};
  const Situation& now = *standing.situation;
  const PairMember& member = pair.is_sample ? now.sample : now.reference;
  if (member.entry != pair.entry || !member.series || *member.series != pair.core->series()) return {};
  const bool inserts = mending.kind == Correction::insert;
  const ButtonNumber edit = inserts ? button::insert_ring : button::delete_ring;
  if (!now.shown(edit)) return {};
  const std::string year = std::to_string(mending.year);
  Play play{way_to_year(mending.year, standing),
            (inserts ? "Insert " + year + " in " : "Delete " + year + " of ") + member.name};
  play.steps.push_back(press(edit));
  play.steps.push_back({.kind = pair.is_sample ? PlayStep::Kind::sample_year : PlayStep::Kind::reference_year,
                        .year = static_cast<int>(mending.year)});
  if (mending.shift != 0) {
    play.steps.push_back({.kind = PlayStep::Kind::kept_edit});
    const bool back = mending.shift < 0;
    play.steps.push_back(press(pair.is_sample
                                   ? (back ? button::sample_minus_1 : button::sample_plus_1)
                                   : (back ? button::reference_minus_1 : button::reference_plus_1)));
  }
  return play;
}

}  // namespace vorn
