// The verbs of the command line that answer from one file: rows of values from what was read.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "batch/collection.h"
#include "batch/correlations.h"
#include "batch/dating.h"
#include "batch/reading_check.h"
#include "batch/table.h"
#include "study/ring_errors.h"

namespace vorn {

class ReferenceFolder;

// Which figures corr gives.
enum class CorrelationGrid {
  report,  // those of Corr.prn: segments begin olap years apart
  lags     // those of the correlation screen: segments overlap by olap years, each at several lags
};

// What some verbs are told beside the settings.
struct VerbSwitches {
  double least_gain = gain_to_look_at;  // locate: of the errors that are given; 0 gives the best of each core
  DatingReferences references =
      {};  // date: what the cores are dated by; the others of their file where empty
  std::shared_ptr<const ReferenceFolder> folder = nullptr;  // date: instead of references, what to search
  bool narrow_years = true;  // locate: missing rings are looked for where the others are narrow
  CorrelationGrid grid = CorrelationGrid::report;  // corr
  int farthest_lag = max_lag;                      // corr, lags: up to so many years to either side
  std::shared_ptr<const OtherChronology> beside =
      nullptr;                          // corr, lags: instead of the core's own chronology
  int this_year = 0;                    // check: rings behind it are told; 0 for whoever does not know
  ImportWishes wishes = {};             // check: as RepairChoices have them
  std::vector<std::string> cores = {};  // stats, recipe: of these alone; of all where it is empty
};

struct Verb {
  TableForm form;
  std::string_view does;  // one line for the help
  // Gives the rows of one file. A verb for cores gives none for a file without.
  void (*rows)(Collection& collection, const VerbSwitches& switches,
               const std::function<void(const Row&)>& add);
  // Whether a row is a finding, and how grave.
  Severity (*severity)(const Row& row, const VerbSwitches& switches);
};

// locate: of each core whose dating gains by a ring put in (insert) or by two made one (merge) the best
// correction: its year, the years that hold 90 % of the likelihood, the gain in score, the margin to the best
// year elsewhere, and which end keeps its dates (see study/ring_errors.h). Where two errors explain far more,
// the earlier one stands in these columns, the later one's year and kind in `pair` and `pair_kind`.
// date: of each core the best position on each reference, and how sure it is (see study/dates.h). Without a
// position that has 20 years in common the columns behind the overlap, 0, are empty.
// site: the cores of a file, the one first that needs work most, and what to do about it (see study/site.h).
// stats: of each core its years, rings, mean and standard deviation of the widths (mm), correlation with the
// chronology without it (r) and mean correlation with the other cores (rbar), as Stats.prn has them. A
// correlation is absent where there are fewer than 40 common years.
// corr: see correlations.h.
// chron: of each year of the file's chronology its value and the number of cores.
// check: what was read and how, and what was not: of the file, of each series, of lines.
std::span<const Verb> verbs();
const Verb* verb_named(std::string_view name);

}  // namespace vorn
