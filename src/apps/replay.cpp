#include "apps/replay.h"

#include <exception>
#include <fstream>
#include <iostream>

#include "apps/picture_module.h"
#include "apps/script_buttons.h"
#include "apps/whole_program.h"
#include "panels/script_panels.h"
#include "records/disk_files.h"
#include "sessions/scripted_screen.h"
#include "sessions/session.h"

namespace vorn {
namespace {

constexpr int invalid_script = 2;
constexpr int cannot_go_on = 4;

int play(const Script& script, const std::string& name, const Careful& careful) {
  const Workspace* w = nullptr;
  DiskFiles files;
  PictureModule pictures;
  PanelsOfScript panels(files);
  ScriptedScreen screen(
      script.statements, name, button_places(w),
      [&](const Page& page, const std::string& file) { return write_page(page, file, files, pictures); },
      &panels);
  const WholeProgram program = whole_program([&w](const Workspace& begun) { w = &begun; });
  Session session(program, files, std::cerr, screen);
  session.begin_carefully(screen.careful_at_start(careful));
  const int status = session.run();
  if (const int line = screen.first_line_not_reached(); line != 0) {
    std::cerr << name << ':' << line << ": the program ended before this line was reached\n";
  }
  return status;
}

int play_or_tell(const Script& script, const std::string& name, const std::string& program,
                 const Careful& careful) {
  try {
    return play(script, name, careful);
  } catch (const ScriptStop& stop) {
    std::cerr << stop.what() << '\n';
    return stop.exit_status();
  } catch (const std::exception& failure) {
    std::cerr << program << ": cannot go on: " << failure.what() << '\n';
    return cannot_go_on;
  }
}

}  // namespace

int replay(const std::string& name, const std::string& program, const Careful& careful) {
  std::ifstream file;
  if (name != "-") file.open(name);
  std::istream& in = name == "-" ? std::cin : file;
  const bool opened = static_cast<bool>(in);
  const Script script = read_script(in, script_button, is_panel);
  if (!opened || in.bad()) {
    std::cerr << program << ": " << name << " cannot be read\n";
    return invalid_script;
  }
  for (const ScriptError& error : script.errors) {
    std::cerr << name << ':' << error.line << ": " << error.what << '\n';
  }
  return script.errors.empty() ? play_or_tell(script, name, program, careful) : invalid_script;
}

}  // namespace vorn
