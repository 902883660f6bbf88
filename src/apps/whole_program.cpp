#include "apps/whole_program.h"

#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "menus/main_program.h"
#include "plot/plot.h"
#include "records/os_file.h"
#include "workspace/vorndata.h"

namespace vorn {

int run_whole_program(Screen& screen, Files& files, std::ostream& log,
                      const std::function<void(Workspace&)>& started) {
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
    return run_whole_program(screen, files, log, [&](Workspace& w) {
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

bool careful_option(std::string_view argument, std::string_view program, Careful& careful) {
  constexpr std::string_view option = "--careful";
  const bool is_list = argument.starts_with(option) && argument.substr(option.size()).starts_with('=');
  std::string wrong(argument);
  const auto named = argument == option ? std::optional(Careful::everything())
                     : is_list          ? careful_of(argument.substr(option.size() + 1), wrong)
                                        : std::nullopt;
  if (named) careful = both(careful, *named);
  if (!named)
    std::cerr << program << (is_list ? ": there is no mend \"" : ": there is no option \"") << wrong
              << "\"\n";
  return named.has_value();
}

}  // namespace vorn
