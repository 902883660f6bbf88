#include <memory>
#include <string>
#include <system_error>

#include "apps/commands.h"
#include "apps/options.h"
#include "apps/output.h"
#include "apps/vorn_work.h"
#include "batch/difference.h"
#include "batch/faithful_save.h"

namespace vorn {
namespace {

struct WantedSave {
  std::string original, corrected;
  std::string output;  // empty: standard output
  bool quiet = false;
};

int save(const WantedSave& wanted) {
  InputFiles files({wanted.original, wanted.corrected});
  const Collection original(files, wanted.original, untreated());
  const Collection corrected(files, wanted.corrected, untreated());
  std::string bytes;
  if (const Status failed = read_whole(files, wanted.original, bytes)) {
    say(wanted.original + ": " + std::generic_category().message(failed.number()));
    return cannot_go_on;
  }
  const FaithfulSave made = saved(original, bytes, corrected);
  say(made.refused);
  if (!made.refused.empty()) return cannot_go_on;
  Output out(wanted.output);
  out.stream() << made.bytes;
  const int status = out.end(done);
  if (status != done || wanted.quiet) return status;
  for (const std::string& words : made.done) say(words);
  if (!made.is_changed) say("nothing is changed");
  return status;
}

}  // namespace

void add_save(CLI::App& app, Command& command) {
  const auto wanted = std::make_shared<WantedSave>();
  CLI::App* sub = app.add_subcommand("save", "corrected cores, put back into the file that they come from");
  with_value(sub->add_option("ORIGINAL", wanted->original, "the Tucson file as it was; - is standard input"),
             " ")
      ->required();
  with_value(sub->add_option("CORRECTED", wanted->corrected, "its cores as they are now, in any layout"), " ")
      ->required();
  add_output_file(*sub, wanted->output);
  sub->add_flag("-q", wanted->quiet, "says nothing of what was done");
  sub->group("Verbs");
  sub->footer("Example: vorn save site.rwl site.RWW -o corrected.rwl");
  sub->callback([wanted, &command] {
    if (wanted->original == "-" && wanted->corrected == "-")
      throw CLI::ValidationError("only one of both can be standard input");
    refuse_to_overwrite({wanted->original, wanted->corrected}, wanted->output);
    command = [wanted] { return save(*wanted); };
  });
}

}  // namespace vorn
