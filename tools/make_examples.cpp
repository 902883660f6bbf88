// make_examples FOLDER: writes the example files there.
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string_view>

#include "example_files.h"

int main(int argc, char** argv) {
  if (argc != 2 || std::string_view(argv[1]).starts_with('-')) {
    std::cerr << "use: make_examples FOLDER\n";
    return 2;
  }
  try {
    const std::filesystem::path folder = argv[1];
    std::filesystem::create_directories(folder);
    for (const auto& [name, contents] : vorn::examples::example_files()) {
      std::ofstream file(folder / name, std::ios::binary);
      file << contents;
      file.close();
      if (!file) {
        std::cerr << "cannot write " << (folder / name).string() << "\n";
        return 1;
      }
    }
  } catch (const std::exception& problem) {
    std::cerr << problem.what() << "\n";
    return 1;
  }
  return 0;
}
