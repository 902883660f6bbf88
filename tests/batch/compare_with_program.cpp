// compare_with_program [-t N] FILE…: whether `vorn` gives the figures of the program for any files, to the
// last printed digit; of each file the lag tables of the first N cores, at first of all.
#include <cstdlib>
#include <iostream>
#include <limits>
#include <string>
#include <vector>

#include "batch/same_figures.h"

int main(int argc, char** argv) {
  std::vector<std::string> files(argv + 1, argv + argc);
  int most_tables = std::numeric_limits<int>::max();
  if (files.size() >= 2 && files[0] == "-t") {
    most_tables = std::atoi(files[1].c_str());
    files.erase(files.begin(), files.begin() + 2);
  }
  vorn::SameFigures all;
  int read = 0, differing = 0;
  for (const std::string& file : files) {
    const vorn::SameFigures one = vorn::compare_figures(file, {}, most_tables);
    read += one.was_read;
    differing += !one.differences.empty();
    for (const std::string& words : one.differences) std::cout << file << ": " << words << '\n';
    all.add(one);
  }
  std::cout << files.size() << " files, " << read << " of them read: " << all.stats << " lines of Stats.prn, "
            << all.report << " cells of Corr.prn, " << all.lags << " cells of lag tables, " << all.chron
            << " lines of Column.prn compared; " << differing << " files differ\n";
  return differing > 0 ? 1 : 0;
}
