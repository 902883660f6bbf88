#include "batch/files_below.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace vorn {
namespace {

namespace fs = std::filesystem;

bool is_hidden(const fs::path& path) {
  return path.filename().generic_string().starts_with('.');
}

}  // namespace

std::vector<std::string> files_below(const std::string& folder) {
  std::vector<std::string> all;
  std::error_code failed;
  fs::recursive_directory_iterator entry(folder, failed);
  for (; !failed && entry != fs::recursive_directory_iterator(); entry.increment(failed)) {
    std::error_code unknown;
    if (is_hidden(entry->path())) {
      entry.disable_recursion_pending();
    } else if (entry->is_regular_file(unknown)) {
      all.push_back(entry->path().lexically_relative(folder).generic_string());
    }
  }
  if (failed) throw std::runtime_error(folder + ": " + failed.message());
  std::ranges::sort(all);
  return all;
}

}  // namespace vorn
