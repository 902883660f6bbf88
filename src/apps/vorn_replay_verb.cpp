#include <memory>
#include <string>

#include "apps/commands.h"
#include "apps/options.h"
#include "apps/replay.h"

namespace vorn {

void add_replay(CLI::App& app, Command& command) {
  const auto script = std::make_shared<std::string>(), careful = std::make_shared<std::string>();
  CLI::App* sub = app.add_subcommand("replay", "runs the whole program by a script, without a window");
  with_value(sub->add_option("SCRIPT", *script, "statements as vorn_replay takes them; - is standard input"),
             " ")
      ->required();
  add_careful(*sub, *careful);
  sub->group("Verbs");
  sub->footer("Example: vorn replay session.vrs");
  sub->callback(
      [=, &command] { command = [=] { return replay(*script, "vorn replay", careful_named(*careful)); }; });
}

}  // namespace vorn
