// VORNosx: the desktop program. It works on the files of one folder.

#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "apps/whole_program.h"
#include "desk/questions.h"
#include "platform/qt/desktop.h"
#include "platform/qt/installed_files.h"
#include "records/disk_files.h"
#include "sessions/help_files.h"
#include "sessions/journal.h"
#include "sessions/kept_careful.h"
#include "sessions/session.h"

namespace {

constexpr std::string_view usage =
    "usage: VORNosx [FOLDER]    works in FOLDER, or the current one, where Vorn.fil lists the files to read\n"
    "       VORNosx --choose    asks in a window in which folder to work, as a desktop starts it\n"
    "       VORNosx --careful[=NAME,...] [FOLDER]    mends what is unsafe in the usual way, or some of it";
constexpr std::string_view choose = "--choose";
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

int run_or_tell(vorn::Inbox& inbox, const std::string& folder, const vorn::Careful& careful) {
  try {
    vorn::DiskFiles disk(folder);
    vorn::HelpFiles files(disk, vorn::installed_with_program("examples/Help.prn"));
    Asking asking;
    vorn::Journal journal(folder, VORN_VERSION);
    vorn::Session session(vorn::run_whole_program, files, std::cerr, inbox, &asking, &journal);
    session.begin_carefully(vorn::both(careful, vorn::kept_careful(folder)));
    return session.run();
  } catch (const std::exception& failure) {
    std::cerr << "VORNosx: cannot go on: " << failure.what() << '\n';
    return 4;
  }
}

int run_in_folder(const vorn::WindowProgram& program, const std::string& folder) {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::path inside =
      folder.empty() ? fs::path() : fs::path(folder) / ".";  // tells why it cannot be entered
  if (fs::is_directory(inside, error)) return vorn::run_in_window(program, fs::absolute(folder).string());
  std::cerr << "VORNosx: " << folder << ": " << error.message() << '\n';
  return wrong_usage;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (arguments.size() == 1 && vorn::answered(arguments[0], "VORNosx", usage)) return 0;
  vorn::Careful careful;
  std::optional<std::string> place;
  for (const std::string& argument : arguments) {
    if (argument.starts_with("--careful")) {
      if (!vorn::careful_option(argument, "VORNosx", careful)) return wrong_usage;
    } else if (place || (argument.starts_with('-') && argument != choose)) {
      std::cerr << usage << '\n';
      return wrong_usage;
    } else {
      place = argument;
    }
  }
  const vorn::WindowProgram program = [&careful](vorn::Inbox& inbox, const std::string& folder) {
    return run_or_tell(inbox, folder, careful);
  };
  if (!place) return vorn::run_in_window(program);
  if (place == choose) return vorn::run_in_window(program, std::nullopt);
  return run_in_folder(program, *place);
}
