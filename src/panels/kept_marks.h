// What became of each core in the eyes of the user, kept for a folder.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "panels/panel_desk.h"

namespace vorn {

// In the file .vorn/marks of the folder, a line for each core that is done or skipped: "done FILE<tab>CORE".
// Lines that are none are passed over, and go when the file is written next; a link in its place, or in that
// of its folder, is not followed.
class KeptMarks : public PanelDesk::MarkKeeper {
 public:
  // `folder` is the one that is worked in; empty for the process's.
  explicit KeptMarks(std::string folder) : folder_(std::move(folder)) {}

  std::map<std::string, CoreMark> marks_of(const std::string& file) override;
  std::string keep(const std::string& file, const std::string& core, CoreMark mark) override;

 private:
  using Marks = std::map<std::pair<std::string, std::string>, CoreMark>;  // by file and core
  Marks read() const;
  std::string place(std::string_view name) const;

  std::string folder_;
};

}  // namespace vorn
