// A core as a correction would make it, for looking at it before anything is changed.
#pragma once

#include <cstdint>

#include "study/ring_errors.h"
#include "study/studied_cores.h"
#include "workspace/owned_series.h"

namespace vorn {

// Given:    core  as ring_errors was given it
//           kind, end, year  of the candidate: the year counts in the corrected dating
// Returned: the values of the core, moved, with one ring more or less. Nothing is detrended anew, so that its
//           correlation is the one that ring_errors gives for the candidate. A ring put in has no value; one
//           made of two has that of the merged one, none where it is not known.
OwnedSeries corrected_series(const StudiedCore& core, Correction kind, KeptEnd end, std::int64_t year);

}  // namespace vorn
