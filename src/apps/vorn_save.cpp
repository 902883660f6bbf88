#include <memory>
#include <string>
#include <system_error>

#include "apps/commands.h"
#include "apps/options.h"
#include "apps/output.h"
#include "apps/vorn_work.h"
#include "batch/difference.h"
#include "batch/faithful_save.h"
#include "batch/save_over.h"
#include "records/disk_files.h"

namespace vorn {
namespace {

struct WantedSave {
  std::string original, corrected, careful;
  std::string output;  // empty: standard output
  bool quiet = false;
  bool in_place = false;
};

int put_in_place(const WantedSave& wanted, std::string_view bytes, const FaithfulSave& made) {
  DiskFiles files;
  const auto failed = save_over(files, wanted.original, bytes, made);
  if (failed) say(*failed);
  return failed ? cannot_go_on : done;
}

int put_out(const WantedSave& wanted, const FaithfulSave& made) {
  Output out(wanted.output);
  out.stream() << made.bytes;
  return out.end(done);
}

int save(const WantedSave& wanted) {
  InputFiles files({wanted.original, wanted.corrected});
  const Settings settings = untreated(careful_named(wanted.careful));
  const Collection original(files, wanted.original, settings), corrected(files, wanted.corrected, settings);
  std::string bytes;
  if (const Status failed = read_whole(files, wanted.original, bytes)) {
    say(wanted.original + ": " + std::generic_category().message(failed.number()));
    return cannot_go_on;
  }
  const FaithfulSave made = saved(original, bytes, corrected);
  say(made.refused);
  if (!made.refused.empty()) return cannot_go_on;
  const int status = wanted.in_place ? put_in_place(wanted, bytes, made) : put_out(wanted, made);
  if (status != done || wanted.quiet) return status;
  for (const std::string& words : made.done) say(words);
  if (!made.is_changed) say("nothing is changed");
  if (made.is_changed && wanted.in_place)
    say(wanted.original + " is replaced; its oldest self is " + path_of_oldest(wanted.original));
  return status;
}

}  // namespace

void add_save(CLI::App& app, Command& command) {
  const auto wanted = std::make_shared<WantedSave>();
  CLI::App* sub = app.add_subcommand("save", "corrected cores, put back into the file that they come from");
  with_value(sub->add_option("ORIGINAL", wanted->original, "the file as it was; - is standard input"), " ")
      ->required();
  with_value(sub->add_option("CORRECTED", wanted->corrected, "its cores as they are now, in any layout"), " ")
      ->required();
  add_output_file(*sub, wanted->output);
  add_careful(*sub, wanted->careful);
  sub->add_flag("--in-place", wanted->in_place, "over ORIGINAL itself, which stays once as ORIGINAL.orig");
  sub->add_flag("-q", wanted->quiet, "says nothing of what was done");
  sub->group("Verbs");
  sub->footer("Example: vorn save site.rwl site.RWW -o corrected.rwl");
  sub->callback([wanted, &command] {
    if (wanted->original == "-" && wanted->corrected == "-")
      throw CLI::ValidationError("only one of both can be standard input");
    if (wanted->in_place && (!wanted->output.empty() || wanted->original == "-"))
      throw CLI::ValidationError("--in-place writes over a file that has a name, and goes without -o");
    refuse_to_overwrite({wanted->original, wanted->corrected}, wanted->output);
    command = [wanted] { return save(*wanted); };
  });
}

}  // namespace vorn
