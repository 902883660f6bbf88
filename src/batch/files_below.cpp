#include "batch/files_below.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace vorn {
namespace {

namespace fs = std::filesystem;

bool is_hidden(const fs::path& path) {
  return path.filename().generic_string().starts_with('.');
}

// Answers why the folder cannot be read to its end. `below`: its own name and "/", nothing for the first one.
std::error_code add_files(const fs::path& folder, const std::string& below, std::vector<std::string>& all) {
  std::error_code failed, unknown;
  fs::directory_iterator entry(folder, failed);
  for (; !failed && entry != fs::directory_iterator(); entry.increment(failed)) {
    if (is_hidden(entry->path())) continue;
    const std::string name = below + entry->path().filename().generic_string();
    const bool is_folder = entry->is_directory(unknown);
    if (is_folder && !entry->is_symlink(unknown)) {
      if (add_files(entry->path(), name + '/', all)) all.push_back(name);
    } else if (!is_folder && (entry->is_regular_file(unknown) || unknown == std::errc::permission_denied)) {
      all.push_back(name);
    }
  }
  return failed;
}

}  // namespace

std::vector<std::string> files_below(const std::string& folder) {
  std::vector<std::string> all;
  if (const std::error_code failed = add_files(folder, "", all))
    throw std::runtime_error(folder + ": " + failed.message());
  std::ranges::sort(all);
  return all;
}

Status DiskOfFolders::open(const std::string& name, std::unique_ptr<ByteSource>& source) {
  const Status failed = DiskFiles::open(name, source);
  if (failed != Status(EISDIR)) return failed;
  std::error_code unlisted;
  const fs::directory_iterator entry(name, unlisted);
  return unlisted ? Status(unlisted.default_error_condition().value()) : failed;
}

}  // namespace vorn
