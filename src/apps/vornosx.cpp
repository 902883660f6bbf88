// VORNosx: the desktop program. It works on the files of one folder.

#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "apps/whole_program.h"
#include "platform/qt/desktop.h"
#include "platform/qt/installed_files.h"
#include "records/disk_files.h"
#include "sessions/help_files.h"

namespace {

constexpr std::string_view usage =
    "usage: VORNosx [FOLDER]    works in FOLDER, or the current one, where Vorn.fil lists the files to read\n"
    "       VORNosx --choose    asks in a window in which folder to work, as a desktop starts it";
constexpr int wrong_usage = 2;

int run_or_tell(vorn::Screen& screen, const std::string& folder) {
  try {
    vorn::DiskFiles disk(folder);
    vorn::HelpFiles files(disk, vorn::installed_with_program("examples/Help.prn"));
    return vorn::run_whole_program(screen, files, std::cerr);
  } catch (const std::exception& failure) {
    std::cerr << "VORNosx: cannot go on: " << failure.what() << '\n';
    return 4;
  }
}

int run_in_folder(const std::string& folder) {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::path inside =
      folder.empty() ? fs::path() : fs::path(folder) / ".";  // tells why it cannot be entered
  if (fs::is_directory(inside, error)) return vorn::run_in_window(run_or_tell, fs::absolute(folder).string());
  std::cerr << "VORNosx: " << folder << ": " << error.message() << '\n';
  return wrong_usage;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 1) return vorn::run_in_window(run_or_tell);
  const std::string_view argument = argv[1];
  if (argc == 2 && vorn::answered(argument, "VORNosx", usage)) return 0;
  if (argc == 2 && argument == "--choose") return vorn::run_in_window(run_or_tell, std::nullopt);
  if (argc == 2 && !argument.starts_with('-')) return run_in_folder(argv[1]);
  std::cerr << usage << '\n';
  return wrong_usage;
}
