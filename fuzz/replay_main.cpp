// Runs a target on the inputs named on the command line, files and folders of files: in builds without
// libFuzzer, and for the tests, which replay what is kept.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

#include "target.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> inputs(int argc, char** argv) {
  std::vector<fs::path> all;
  for (int k = 1; k < argc; ++k) {
    const fs::path path = fs::absolute(argv[k]);  // a target enters a folder of its own
    if (!fs::is_directory(path)) {
      all.push_back(path);
      continue;
    }
    for (const auto& entry : fs::recursive_directory_iterator(path)) {
      if (entry.is_regular_file()) all.push_back(entry.path());
    }
  }
  return all;
}

void run(const fs::path& input) {
  std::ifstream file(input, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  if (!file) {
    std::fprintf(stderr, "%s cannot be read\n", input.c_str());
    std::exit(1);
  }
  std::printf("%s\n", input.c_str());  // the last one named is the one that failed
  std::fflush(stdout);
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<fs::path> all = inputs(argc, argv);
  for (const fs::path& input : all) run(input);
  std::printf("%zu inputs\n", all.size());
  return all.empty() ? 1 : 0;
}
