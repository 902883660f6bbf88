// compare_with_program [-t N] [-s N] [-o N] [-r FILE] FILE…: whether `vorn` gives the figures of the program
// for any files, to the last printed digit.
//   -t N     the lag tables of the first N cores of each; at first of all
//   -s N     the program's segment length, -o N its overlap; at first 50 and 25
//   -r FILE  the lag tables with the chronology of this file
// Ends with 1 where something differs, and says what.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <limits>
#include <string>

#include "batch/same_figures.h"

namespace {

struct Wanted {
  vorn::Settings settings;
  int most_tables = std::numeric_limits<int>::max();
  std::filesystem::path reference;
};

// Answers whether the options are some.
bool take_options(int argc, char** argv, Wanted& wanted) {
  for (int option = 0; (option = getopt(argc, argv, "t:s:o:r:")) != -1;) {
    if (option == 't') wanted.most_tables = std::atoi(optarg);
    if (option == 's') wanted.settings.seg = std::atoi(optarg);
    if (option == 'o') wanted.settings.olap = std::atoi(optarg);
    if (option == 'r') wanted.reference = std::filesystem::absolute(optarg);
    if (option == '?') return false;
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  Wanted wanted;
  if (!take_options(argc, argv, wanted)) return 2;
  vorn::SameFigures all;
  int read = 0, differing = 0;
  for (int k = optind; k < argc; ++k) {
    const vorn::SameFigures one =
        vorn::compare_figures(argv[k], wanted.settings, wanted.most_tables, wanted.reference);
    if (!one.was_read) std::cout << argv[k] << ": is not read\n";
    read += one.was_read;
    differing += !one.differences.empty();
    for (const std::string& words : one.differences) std::cout << argv[k] << ": " << words << '\n';
    all.add(one);
  }
  std::cout << argc - optind << " files, " << read << " of them read: " << all.stats
            << " lines of Stats.prn, " << all.report << " cells of Corr.prn, " << all.lags
            << " cells of lag tables, " << all.chron << " lines of Column.prn compared; " << differing
            << " files differ\n";
  return differing > 0 ? 1 : 0;
}
