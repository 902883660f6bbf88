// Which year is wrong: where a core lacks a ring, or has one ring counted as two.
//
// A hypothesis is a correction (insert a ring, or merge two), a year, and the end of the core whose dates
// stay. Under each the corrected core is correlated with the reference, over its whole length, and by that it
// is ranked.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <vector>

#include "study/studied_cores.h"
#include "workspace/series_view.h"

namespace vorn {

enum class Correction {
  insert,  // the ring of that year is missing in the core: one is put in
  merge,   // the core has two rings for that year: they become one, their widths add up
};

// Which part of the core keeps its years: that on the pith's side of the error, or that on the bark's.
enum class KeptEnd { inner, outer };

struct RingErrorSwitches {
  // Rings are missing where the others are narrow: the year of an insertion is weighed by how narrow the
  // reference is then.
  bool narrow_years = true;
  bool pairs = true;  // look for two errors in one core, too
};

// No score: the correction cannot be made in that year, or leaves too few years on one side to tell.
inline constexpr double no_score = -std::numeric_limits<double>::infinity();

// By how many years later than they stand the parts of a corrected core are read.
struct Lags {
  int before = 0, behind = 0;
};
Lags lags_of(Correction kind, KeptEnd end);

// The scores of one correction with one end kept.
struct Evidence {
  Correction kind = Correction::insert;
  KeptEnd end = KeptEnd::inner;
  std::int64_t first = 0;      // year of the first score
  std::vector<double> scores;  // by year; no_score where there is none
};

// The best year of one correction with one end kept.
struct ErrorCandidate {
  Correction kind = Correction::insert;
  KeptEnd end = KeptEnd::inner;
  std::int64_t year = 0;          // of the corrected dating
  std::int64_t from = 0, to = 0;  // the years that the set of 90 % spans
  double score = no_score;
  double all = no_score;  // of all its years, ln of the sum of exp(score): candidates are ranked by it
  double gain = 0;        // over the core as it is dated
  double margin = 0;      // over the best year more than two years away; infinite without one
  double r = 0;           // of the corrected core with the reference
};

// Two errors, the earlier one first. The years are of the corrected dating: of each error the one with the
// most likelihood near it, whatever the year of the other (see likely_years.h), and those that its set of 90
// % spans.
struct ErrorPair {
  Correction kinds[2] = {Correction::insert, Correction::insert};
  KeptEnd end = KeptEnd::inner;  // so too where one is put in and two become one: both ends stay
  std::int64_t years[2] = {0, 0};
  YearSpan sets[2] = {};
  double gain = 0;  // over the core as it is dated
  double r = 0;     // of the corrected core with the reference
};

// A gain from which on an error is worth a look: among cores that nobody touched one in twenty reaches it.
inline constexpr double gain_to_look_at = 7.0;
// By so much a pair must beat the core as it is dated to be told, and by so much the best single correction.
// Among cores that nobody touched one in twenty-five has such a pair.
inline constexpr double gain_of_a_pair = 11.0, gain_of_a_second = 5.0;
// A margin from which on the year is sure to within two years, in some 95 of 100 cases.
inline constexpr double sure_margin = 3.0;

struct RingErrors {
  double r = 0, score = 0;                 // of the core as it is dated
  int years = 0;                           // that it has in common with the reference
  std::vector<Evidence> evidence;          // of both corrections with either end kept
  std::vector<ErrorCandidate> candidates;  // one of each that has any score, best first
  std::optional<ErrorPair> pair;           // where two errors explain far more than one
};

// Looks for a ring missing or counted twice, in every year, and for two such errors.
//
// Given:    core, reference   compared alike; the reference is best the mean of the other cores
// (reference.h).
//                             Values that are not finite do not count
// Returned: see above; without a year in common there are no candidates.
// Method:   The score is -n/2 ln(1 - r^2) for the n pairs of values of the corrected core, 0 where r is not
//           positive; of an insertion, with narrow_years, plus the logarithm of 0.2 + 0.8 exp(-1.9 z - 1.8),
//           z being the reference in its standard deviations. The set of 90 % is the least set of years that
//           holds so much of the sum of exp(score).
//           A pair of errors is scored without that weight. At least 15 pairs of values lie between the two:
//           a few years that disagree look like a ring too many and one too few.
// Cost:     in proportion to the years, by prefix sums; pairs take their square, on a grid that is refined
//           where the core has more than 400 years.
// Limits:   what it finds below a correlation of 0.4, or against fewer than three other cores, was not
//           measured; three errors and more are not looked for.
// Source:   measured on real ring widths by tools/measure_locator.
RingErrors ring_errors(const StudiedCore& core, const SeriesView& reference,
                       const RingErrorSwitches& switches = {});

// Whether a candidate is worth a look: it gains so much, and corrected the core agrees better than as it is
// dated. That the others are narrow in a year is no evidence by itself.
inline bool worth_a_look(const RingErrors& errors, const ErrorCandidate& candidate,
                         double least_gain = gain_to_look_at) {
  return candidate.gain >= least_gain && candidate.r > errors.r;
}

}  // namespace vorn
