#include "apps/copies.h"

#include <filesystem>
#include <system_error>

#include "apps/output.h"
#include "batch/collection.h"
#include "records/disk_files.h"

namespace vorn {

std::string path_of_copy(const std::string& folder, const std::string& file) {
  return (std::filesystem::path(folder) / std::filesystem::path(file).filename()).string();
}

namespace {

std::string with_ending(const std::string& path, const std::string& ending) {
  return ending.empty() ? path : std::filesystem::path(path).replace_extension(ending).string();
}

// Another file of that name than this copy.
bool is_another(const std::string& path, const std::string& bytes) {
  DiskFiles files;
  FileKind kind{};
  if (files.look_at(path, kind)) return true;
  if (kind == FileKind::missing) return false;
  std::string there;
  return read_whole(files, path, there) || there != bytes;
}

}  // namespace

bool Copies::take(const std::string& file, const Repair& repair) {
  for (const std::string& words : repair.refused) say(file + ": no copy: " + words);
  if (repair.bytes.empty()) return repair.refused.empty();
  const std::string path = with_ending(path_of_copy(folder_, file), repair.ending);
  if (!written_.insert(path).second) {
    say(file + ": no copy: " + path + " is that of another file");
    return false;
  }
  if (!repair.ending.empty() && is_another(path, repair.bytes)) {
    say(file + ": no copy: there is another " + path);
    return false;
  }
  DiskFiles files;
  if (const Status failed = write_whole(files, path, repair.bytes)) {
    say(path + ": " + std::generic_category().message(failed.number()));
    return false;
  }
  if (quiet_) return true;
  say(path + " is a copy of " + file + " that is read whole:");
  for (const std::string& words : repair.done) say("  " + words);
  return true;
}

}  // namespace vorn
