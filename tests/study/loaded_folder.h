// The files of a folder, loaded as the program loads them at its start.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "loading/startup.h"
#include "plot/plot.h"
#include "records/disk_files.h"
#include "support/queue_screen.h"
#include "support/scratch_folder.h"
#include "workspace/series_view.h"
#include "workspace/vorndata.h"

namespace vorn {

class LoadedFolder {
 public:
  // Of all files of `folder`, with a list of files among them.
  explicit LoadedFolder(const std::filesystem::path& folder) {
    std::filesystem::copy(folder, scratch_.path());
    w.log = &log;
    init_start(w);
  }
  // Of one file.
  LoadedFolder(const std::filesystem::path& folder, const std::string& file) {
    std::filesystem::copy(folder / file, scratch_.path());
    ScratchFolder::write("Vorn.fil", file + "\n");
    w.log = &log;
    init_start(w);
  }

  // File f of the list becomes the current one.
  void choose_file(int f) {
    w.cf = f;
    init_raw(w, w.rftype(f));
  }

  // The widths of the cores of the current file; they view the store.
  std::vector<SeriesView> cores() const {
    std::vector<SeriesView> all;
    for (int i = 1; i <= w.nc; ++i) all.push_back({w.fy(i), w.widths(i), w.presence(i)});
    return all;
  }
  std::string name(std::size_t i) const { return std::string(w.nam(static_cast<int>(i) + 1).trimmed()); }
  // The number, from 0, of the core of that name.
  std::size_t number_of(std::string_view core) const {
    std::size_t i = 0;
    while (i < static_cast<std::size_t>(w.nc) && name(i) != core) ++i;
    return i;
  }

 private:
  ScratchFolder scratch_;

 public:
  PatientScreen screen;
  Plot plot{screen};
  DiskFiles disk;
  Workspace w{plot, disk};
  std::ostringstream log;
};

}  // namespace vorn
