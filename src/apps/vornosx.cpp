// VORNosx: the desktop program. It works on the files of one folder.

#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "apps/whole_program.h"
#include "desk/questions.h"
#include "platform/qt/desktop.h"
#include "platform/qt/installed_files.h"
#include "records/disk_files.h"
#include "sessions/help_files.h"
#include "sessions/journal.h"
#include "sessions/session.h"

namespace {

constexpr std::string_view usage =
    "usage: VORNosx [FOLDER]    works in FOLDER, or the current one, where Vorn.fil lists the files to read\n"
    "       VORNosx --choose    asks in a window in which folder to work, as a desktop starts it";
constexpr int wrong_usage = 2;

// Asks before work is lost.
class Asking : public vorn::Gate {
 public:
  std::optional<vorn::Question> before(const vorn::Deed& deed, const vorn::Situation& situation) override {
    return questions_.before(deed, situation);
  }
  void given_up(const vorn::Situation& situation) override { questions_.given_up(situation); }

 private:
  vorn::Questions questions_;
};

int run_or_tell(vorn::Inbox& inbox, const std::string& folder) {
  try {
    vorn::DiskFiles disk(folder);
    vorn::HelpFiles files(disk, vorn::installed_with_program("examples/Help.prn"));
    Asking asking;
    vorn::Journal journal(folder, VORN_VERSION);
    vorn::Session session(vorn::run_whole_program, files, std::cerr, inbox, &asking, &journal);
    return session.run();
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
