#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "apps/commands.h"
#include "apps/options.h"
#include "apps/output.h"
#include "apps/vorn_work.h"
#include "batch/conversion.h"
#include "batch/difference.h"

namespace vorn {
namespace {

struct Wanted {
  std::string file, layout, fail_on, careful;
  std::string output;  // empty: standard output
  bool quiet = false;
};

std::vector<std::string> layout_names() {
  std::vector<std::string> all;
  for (const TargetLayout& target : target_layouts()) all.emplace_back(target.name);
  return all;
}

bool is_grave(const Conversion& made, const std::string& fail_on) {
  if (fail_on.empty()) return false;
  return !made.not_read.empty() || (severity_named(fail_on) == Severity::warning && !made.lost.empty());
}

int convert(const Wanted& wanted) {
  InputFiles files({wanted.file});
  const Collection collection(files, wanted.file, untreated(careful_named(wanted.careful)));
  const Conversion made = converted(collection, *target_named(wanted.layout));
  if (!wanted.quiet) {
    say(made.not_read);
    say(collection.doubts());
  }
  say(made.refused);
  if (!made.refused.empty()) return cannot_go_on;
  if (!wanted.quiet) say(made.lost);
  Output out(wanted.output);
  out.stream() << made.bytes;
  return out.end(is_grave(made, wanted.fail_on) ? found : done);
}

}  // namespace

void add_convert(CLI::App& app, Command& command) {
  const auto wanted = std::make_shared<Wanted>();
  CLI::App* sub = app.add_subcommand("convert", "the ring widths of a file in another layout");
  with_value(sub->add_option("FILE", wanted->file, "the file to read; - is standard input"), " ")->required();
  add_choice(*sub, "--to", wanted->layout, layout_names(), "the layout to write")->required();
  add_output_file(*sub, wanted->output);
  add_careful(*sub, wanted->careful);
  add_fail_on(*sub, wanted->fail_on, "ends with 1: error, where something was not read; warning, or lost");
  sub->add_flag("-q", wanted->quiet, "says nothing of what was not read or is lost");
  sub->group("Verbs");
  sub->footer("Example: vorn convert site.rwl --to heidelberg -o site.fh");
  sub->callback([wanted, &command] {
    refuse_to_overwrite({wanted->file}, wanted->output);
    command = [wanted] { return convert(*wanted); };
  });
}

}  // namespace vorn
