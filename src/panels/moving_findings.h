// What moving cores does to the file that they leave and to the one that they join.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "batch/move_rows.h"
#include "panels/findings.h"
#include "records/files.h"

namespace vorn {

struct MovingFindings {
  std::vector<std::string> cores;  // that are marked to be moved, else the one on the page
  MovedFile left;
  std::optional<MovedFile> joined = {};  // once a file is marked
  std::string why_not_joined = {};       // what is in the way where it is marked and cannot be told of
};

// Works it out, and keeps what did not change: all pairs of a file are correlated once.
class MovingStudy {
 public:
  // Where files to be joined are read from; it must live as long. Without it none is read.
  void read_from(Files* files) { files_ = files; }
  // `cores` are those of the file. Null where no core is marked nor on the page.
  std::shared_ptr<const MovingFindings> study(const Situation& now, const std::vector<SharedStudied>& cores,
                                              const PairFindings* pair);

 private:
  struct Own;
  struct Joined;
  const AgreeingFile& own(const Situation& now, const std::vector<SharedStudied>& cores);
  void join(const Situation& now, std::span<const SeriesView> moving, MovingFindings& found);

  Files* files_ = nullptr;
  std::shared_ptr<Own> own_;
  std::shared_ptr<Joined> joined_;
};

}  // namespace vorn
