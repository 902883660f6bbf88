#include "apps/copies.h"

#include <filesystem>
#include <system_error>

#include "apps/output.h"
#include "batch/collection.h"
#include "batch/listed_files.h"
#include "records/disk_files.h"

namespace vorn {

std::string path_of_copy(const std::string& folder, const std::string& file) {
  return (std::filesystem::path(folder) / std::filesystem::path(file).filename()).string();
}

namespace {

std::string with_ending(const std::string& path, const std::string& ending) {
  return ending.empty() ? path : std::filesystem::path(path).replace_extension(ending).string();
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
  DiskFiles files;
  if (!repair.ending.empty() && !is_free_for(files, path, repair.bytes)) {
    say(file + ": no copy: there is another " + path);
    return false;
  }
  if (const Status failed = write_whole(files, path, repair.bytes)) {
    say(path + ": " + std::generic_category().message(failed.number()));
    return false;
  }
  copies_[file] = std::filesystem::path(path).filename().string();
  if (quiet_) return true;
  say(path + " is a copy of " + file + " that is read whole:");
  for (const std::string& words : repair.done) say("  " + words);
  return true;
}

// A copy lies in the folder itself.
std::string Copies::name_from_folder(const std::string& file) const {
  if (const auto copy = copies_.find(file); copy != copies_.end()) return copy->second;
  const std::filesystem::path path(file);
  std::error_code failed;
  const auto from_there = std::filesystem::proximate(std::filesystem::absolute(path), folder_, failed);
  return failed ? file : from_there.string();
}

bool Copies::take_list(const std::string& list) const {
  DiskFiles files;
  std::string lines;
  if (const Status failed = read_whole(files, list, lines)) {
    say(list + ": " + std::generic_category().message(failed.number()));
    return false;
  }
  const RenamedList renamed =
      renamed_list(lines, [this](const std::string& file) { return name_from_folder(file); });
  if (!renamed.too_long.empty()) {
    say(list + ": no list beside the copies: " + renamed.too_long + " is too long a name");
    return false;
  }
  const std::string path = path_of_copy(folder_, list);
  if (const Status failed = write_whole(files, path, renamed.bytes)) {
    say(path + ": " + std::generic_category().message(failed.number()));
    return false;
  }
  if (!quiet_) say(path + " names the copies, for a program that is started in " + folder_);
  return true;
}

}  // namespace vorn
