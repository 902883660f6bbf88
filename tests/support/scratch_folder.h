// A folder of its own for a test that reads and writes files by plain names: made, entered and removed again.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace vorn {

class ScratchFolder {
 public:
  ScratchFolder() : before_(std::filesystem::current_path()) {
    std::string pattern = (std::filesystem::temp_directory_path() / "vorn-test-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
    std::filesystem::current_path(folder_);
  }
  ~ScratchFolder() {
    std::filesystem::current_path(before_);
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::filesystem::path& path() const { return folder_; }
  static void write(const std::string& name, std::string_view contents) {
    std::ofstream(name, std::ios::binary) << contents;
  }
  static std::string read(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }
  static bool exists(const std::string& name) { return std::filesystem::exists(name); }

 private:
  std::filesystem::path before_, folder_;
};

}  // namespace vorn
