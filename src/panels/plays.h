// What clicks on panels play.
#pragma once

#include <cstdint>
#include <optional>

#include "panels/findings.h"
#include "sessions/standing.h"

namespace vorn {

// Puts core `entry` of the current file on the page, as the sample, with the chronology of its file as the
// reference. On the correlation screen the user stays there. Nothing where that cannot be done now.
std::optional<Play> put_on_page(int entry, const Standing& standing);

// A correction, as the cross-dating screen makes it: Insert or Delete at the year, for the user to say
// whether it stays, and behind it the shift that holds the other end. Of two rings that are one the narrower
// goes.
struct Mending {
  Correction kind = Correction::insert;
  std::int64_t year = 0;  // that is clicked on
  int shift = 0;          // of the core, by so many years, when the change stays
};
Mending mending_of(const ErrorCandidate& candidate, const StudiedSeries& core, bool hold_bark);
// Nothing where it cannot be done now, or the year cannot be shown.
std::optional<Play> mend(const Mending& mending, const PairFindings& pair, const Standing& standing);

}  // namespace vorn
