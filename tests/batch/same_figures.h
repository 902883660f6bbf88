// Whether the command line gives the figures of the program: those that a session writes into its files and
// shows in its lag table, to the last printed digit.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "workspace/settings.h"

namespace vorn {

struct SameFigures {
  // How many lines of Stats.prn, cells of Corr.prn, cells of lag tables and lines of Column.prn were
  // compared.
  long stats = 0, report = 0, lags = 0, chron = 0;
  bool was_read = false;  // as cores or as a chronology
  std::vector<std::string> differences;

  long compared() const { return stats + report + lags + chron; }
  void add(const SameFigures& other);
};

// Plays a session of vorn_replay on a copy of the file in a folder of its own, and works the same out as
// `vorn` does. Of the cores the first `most_tables` are looked at in the lag table, with the chronology of
// their file or, where there is one, of the `reference`.
SameFigures compare_figures(const std::filesystem::path& file, const Settings& settings, int most_tables,
                            const std::filesystem::path& reference = {});

}  // namespace vorn
