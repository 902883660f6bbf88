// `stats --move`: what moving cores from one file to another does to the agreement of both.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "batch/collection.h"
#include "batch/table.h"
#include "study/core_move.h"
#include "study/studied_cores.h"

namespace vorn {

// One file before and after.
struct MovedFile {
  std::string file;
  FileAgreement now, after;
};

// The cores of a file as they are compared, with how they agree: all pairs are correlated once.
class AgreeingCollection {
 public:
  AgreeingCollection(std::span<const SeriesView> widths, const Settings& settings);
  const AgreeingFile& file() const { return *file_; }
  // As they are compared; none where it is carefully no part of the means.
  std::span<const SeriesView> compared() const { return compared_; }

 private:
  StudiedCores studied_;
  std::vector<SeriesView> compared_;
  std::optional<AgreeingFile> file_;
};

const TableForm& move_form();
Row move_row(const MovedFile& file);

// The numbers of the cores of these names, from 0, in their order; `missing` gets the names that no core has.
// A name that several cores have means them all.
std::vector<std::size_t> cores_named(const Collection& collection, const std::vector<std::string>& names,
                                     std::vector<std::string>& missing);

// What becomes of both files.
std::vector<MovedFile> moved(const Collection& from, const Collection& to,
                             std::span<const std::size_t> cores);

}  // namespace vorn
