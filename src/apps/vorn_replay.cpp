// vorn_replay: the same program without a window, driven by a script of clicks and keys.

#include <exception>
#include <fstream>
#include <iostream>
#include <string>

#include "apps/picture_module.h"
#include "apps/script_buttons.h"
#include "apps/whole_program.h"
#include "records/disk_files.h"
#include "sessions/scripted_screen.h"
#include "sessions/session.h"

namespace {

constexpr const char* usage =
    "usage: vorn_replay SCRIPT    (- for standard input; statements: click help press key type enter page "
    "expect refuse undo redo)";
constexpr int invalid_script = 2;
constexpr int cannot_go_on = 4;

int play(const vorn::Script& script, const std::string& name) {
  const vorn::Workspace* w = nullptr;
  vorn::DiskFiles files;
  vorn::PictureModule pictures;
  vorn::ScriptedScreen screen(script.statements, name, vorn::button_places(w),
                              [&](const vorn::Page& page, const std::string& file) {
                                return vorn::write_page(page, file, files, pictures);
                              });
  const vorn::WholeProgram program = vorn::whole_program([&w](const vorn::Workspace& begun) { w = &begun; });
  const int status = vorn::Session(program, files, std::cerr, screen).run();
  if (const int line = screen.first_line_not_reached(); line != 0) {
    std::cerr << name << ':' << line << ": the program ended before this line was reached\n";
  }
  return status;
}

int play_or_tell(const vorn::Script& script, const std::string& name) {
  try {
    return play(script, name);
  } catch (const vorn::ScriptStop& stop) {
    std::cerr << stop.what() << '\n';
    return stop.exit_status();
  } catch (const std::exception& failure) {
    std::cerr << "vorn_replay: cannot go on: " << failure.what() << '\n';
    return cannot_go_on;
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && vorn::answered(argv[1], "vorn_replay", usage)) return 0;
  if (argc != 2) {
    std::cerr << usage << '\n';
    return invalid_script;
  }
  const std::string name = argv[1];
  std::ifstream file;
  if (name != "-") file.open(name);
  std::istream& in = name == "-" ? std::cin : file;
  const bool opened = static_cast<bool>(in);
  const vorn::Script script = vorn::read_script(in, vorn::script_button);
  if (!opened || in.bad()) {
    std::cerr << "vorn_replay: " << name << " cannot be read\n";
    return invalid_script;
  }
  for (const vorn::ScriptError& error : script.errors) {
    std::cerr << name << ':' << error.line << ": " << error.what << '\n';
  }
  return script.errors.empty() ? play_or_tell(script, name) : invalid_script;
}
