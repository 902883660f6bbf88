#include "sessions/kept_careful.h"

#include <algorithm>
#include <string_view>
#include <system_error>

#include "records/disk_files.h"
#include "records/os_file.h"
#include "records/plain_file.h"

namespace vorn {
namespace {

constexpr std::string_view folder_name = ".vorn", file_name = ".vorn/careful";
constexpr std::size_t most_bytes = 4096;
constexpr std::string_view between_names = ",\r\n\t ";

std::string place(const std::string& folder, std::string_view name) {
  return folder.empty() ? std::string(name) : folder + '/' + std::string(name);
}

std::string words_of(std::string_view name, Status failed) {
  return failed ? std::string(name) + ": " + std::generic_category().message(failed.number()) : "";
}

}  // namespace

Careful kept_careful(const std::string& folder) {
  const std::string text = read_plain(place(folder, file_name), most_bytes).value_or(std::string());
  Careful careful;
  for (std::size_t from = 0; from < text.size();) {
    const std::size_t end = std::min(text.find_first_of(between_names, from), text.size());
    if (const auto on = careful_switch(text.substr(from, end - from) + " on")) on->apply(careful);
    from = end + 1;
  }
  return careful;
}

std::string keep_careful(const std::string& folder, const Careful& careful) {
  if (careful == kept_careful(folder)) return {};
  if (const Status failed{os::make_folder(place(folder, folder_name))}) return words_of(folder_name, failed);
  std::string path = place(folder, file_name);
  if (os::follow_links(path) != 0 || path != place(folder, file_name))
    return std::string(file_name) + " is a link";
  if (!careful.any()) return words_of(file_name, Status(os::remove(path)));
  DiskFiles files;
  return words_of(file_name, write_whole(files, path, names_of(careful) + '\n'));
}

}  // namespace vorn
