// The verb `diff`: what became of the cores of a file.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "batch/collection.h"
#include "batch/table.h"
#include "batch/verbs.h"
#include "study/comparison.h"

namespace vorn {

// Settings by which nothing is detrended: for whoever asks for widths alone.
Settings untreated(const Careful& careful = {});

// The cores of a file as they are compared; they live as long as the collection does.
class ComparableCores {
 public:
  explicit ComparableCores(const Collection& collection);
  std::span<const NamedCore> cores() const { return cores_; }

 private:
  std::vector<std::string> names_;
  std::vector<NamedCore> cores_;
};

// The plain name of entry i (batch/held_cores.h).
std::string plain_name(const SeriesStore& w, int i);

// "new", "gone", "renamed", "redated", "inserted", "deleted", "changed"; names and units of the columns are
// in docs/command-line.md.
const TableForm& difference_form();

// A row for each change between the two files (see study/comparison.h), none where there is none.
void difference_rows(const Collection& before, const Collection& after,
                     const std::function<void(const Row&)>& add);

// How grave a row of `diff` is: a core that is new or has another name is a warning, whatever else an error,
// for data that were there are not there as they were.
Severity severity_of_difference(const Row& row);

}  // namespace vorn
