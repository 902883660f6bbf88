// The verb `date`: samples at every position of references.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "batch/collection.h"
#include "batch/table.h"
#include "study/dates.h"
#include "study/studied_cores.h"
#include "workspace/owned_series.h"

namespace vorn {

// What samples are dated by: a chronology, which owns its values.
class DatingReference {
 public:
  // The mean of the cores of a file of ring widths, or the chronology of an index file as it stands. Without
  // any value where there is none.
  explicit DatingReference(Collection& collection);
  // The mean of all cores of a file but number `left_out`, counted from 0; `studied` are the same cores.
  DatingReference(std::string name, std::span<const SeriesView> cores, const StudiedCores& studied,
                  std::size_t left_out);

  const std::string& name() const { return name_; }
  SeriesToDate series() const;

 private:
  void take_mean(std::span<const SeriesView> cores, const StudiedCores& studied, std::size_t left_out);

  std::string name_;
  OwnedSeries compared_;
  std::vector<double> growth_;  // of the same years
};

using DatingReferences = std::vector<std::shared_ptr<const DatingReference>>;

// The row of `date` of a core on a reference.
Row date_row(const std::string& file, const std::string& core, const std::string& reference,
             const Dates& found);

// For each core and reference the best position; without references each core is dated by the others of its
// file.
void date_rows(Collection& collection, const DatingReferences& references,
               const std::function<void(const Row&)>& add);

}  // namespace vorn
