// How well the cores of a file agree, and how well they would were some of them moved elsewhere.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "statistics/pair_correlations.h"
#include "study/chronology_parts.h"
#include "workspace/series_view.h"
#include "workspace/settings.h"

namespace vorn {

struct FileAgreement {
  std::size_t cores = 0;
  // Nothing where no core, or no pair, has 40 years in common.
  std::optional<double> r;     // the mean of the cores' correlations with the chronology without them
  std::optional<double> rbar;  // the mean correlation of all pairs
  // The expressed population signal, n rbar / (1 + (n - 1) rbar), n the number of cores that are part of a
  // pair.
  std::optional<double> eps;

  bool operator==(const FileAgreement&) const = default;
};

// Source: R. L. Holmes (1983), Tree-Ring Bulletin 43, 69-78, for the core taken out; T. M. L. Wigley, K. R.
// Briffa and P. D. Jones (1984), J. Clim. Appl. Meteorol. 23, 201-213, for rbar and the expressed population
// signal. What the program shows of the file as a whole is r and rbar of now().
class AgreeingFile {
 public:
  // The cores as they are compared, viewed, not copied. All pairs are correlated here, once; what follows is
  // had from sums, in proportion to the rings and to the cores moved.
  explicit AgreeingFile(std::vector<SeriesView> compared, const PairWork& work = {});

  std::size_t size() const { return cores_.size(); }
  const SeriesView& core(std::size_t k) const { return cores_[k]; }
  FileAgreement now() const;
  // Were the cores of these numbers, each once, no longer there.
  FileAgreement without(std::span<const std::size_t> leaving) const;
  // Were these there, too.
  FileAgreement with(std::span<const SeriesView> joining) const;

 private:
  std::vector<SeriesView> cores_;
  PairSums pairs_;
  ChronologyParts chronology_;
};

// Cores without values where they are constant and carefully no part of the means (workspace/careful.h).
std::vector<SeriesView> those_that_count(std::span<const SeriesView> widths,
                                         std::span<const SeriesView> compared, const Careful& careful);

}  // namespace vorn
