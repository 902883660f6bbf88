#include "apps/whole_program.h"

#include <iostream>
#include <memory>
#include <utility>

#include "menus/main_program.h"
#include "plot/plot.h"
#include "records/os_file.h"
#include "workspace/vorndata.h"

namespace vorn {

int run_whole_program(Screen& screen, Files& files, std::ostream& log,
                      const std::function<void(const Workspace&)>& started) {
  os::let_writes_fail();  // messages go to standard error, whoever reads that
  Plot plot(screen);
  const auto workspace = std::make_unique<Workspace>(plot, files);
  workspace->log = &log;
  if (started) started(*workspace);
  try {
    run_program(*workspace);
  } catch (const ProgramEnd& end) {
    return end.exit_status();
  }
  return 0;
}

WholeProgram whole_program(std::function<void(const Workspace&)> begun) {
  return [begun = std::move(begun)](Screen& screen, Files& files, std::ostream& log, const auto& started) {
    return run_whole_program(screen, files, log, [&](const Workspace& w) {
      begun(w);
      started(w);
    });
  };
}

bool answered(std::string_view argument, std::string_view program, std::string_view usage) {
  if (argument == "--help") {
    std::cout << usage << '\n';
  } else if (argument == "--version") {
    std::cout << program << ' ' << VORN_VERSION << '\n';
  } else {
    return false;
  }
  return true;
}

}  // namespace vorn
