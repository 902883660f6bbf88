#include <memory>
#include <string>

#include "apps/commands.h"
#include "apps/options.h"
#include "apps/output.h"
#include "apps/vorn_work.h"
#include "batch/changes_in_words.h"
#include "batch/difference.h"
#include "batch/workbook_table.h"

namespace vorn {
namespace {

struct Wanted {
  std::string before, after, fail_on, careful;
  TypedOutput output;
  bool quiet = false;
  bool words = false;
};

// What was not read is said, unless nobody wants to hear it. Answers whether there is anything to compare.
bool has_widths(const Collection& collection, bool quiet) {
  const auto words = collection.words();
  if (!quiet) {
    say(words);
    say(collection.doubts());
  }
  if (collection.has_cores()) return true;
  if (quiet || words.empty()) say(collection.path() + ": no ring widths to compare");
  return false;
}

void write_words(const Collection& before, const Collection& after, std::ostream& out) {
  for (const ChangeInWords& change : changes_in_words(before, after)) out << change.sentence() << '\n';
}

// Something that could not be read might differ.
bool all_were_read(const Collection& collection) {
  return collection.words().empty();
}

std::string recipe_of(const Careful& careful) {
  return "fewest changes" + (careful.any() ? ", careful " + names_of(careful) : "");
}

int diff(const Wanted& wanted) {
  InputFiles files({wanted.before, wanted.after});
  const Settings settings = untreated(careful_named(wanted.careful));
  const Collection before(files, wanted.before, settings), after(files, wanted.after, settings);
  const bool any_before = has_widths(before, wanted.quiet), any_after = has_widths(after, wanted.quiet);
  // Cores that could not be read are not gone.
  if (!any_before || !any_after) return cannot_go_on;
  Output out(wanted.output.file);
  const auto writer = table_writer(out.stream(), wanted.output.as(), difference_form(), VORN_VERSION,
                                   recipe_of(settings.careful));
  bool grave = !all_were_read(before) || !all_were_read(after);
  difference_rows(before, after, [&](const Row& row) {
    if (!wanted.words) writer->add(row);
    grave = grave || severity_of_difference(row) >= severity_named(wanted.fail_on);
  });
  if (wanted.words)
    write_words(before, after, out.stream());
  else
    writer->end();
  return out.end(grave && !wanted.fail_on.empty() ? found : done);
}

}  // namespace

void add_diff(CLI::App& app, Command& command) {
  const auto wanted = std::make_shared<Wanted>();
  CLI::App* sub = app.add_subcommand("diff", "what became of the cores of a file, ring by ring");
  with_value(sub->add_option("BEFORE", wanted->before, "the file as it was; - is standard input"), " ")
      ->required();
  with_value(sub->add_option("AFTER", wanted->after, "and as it is now"), " ")->required();
  add_output(*sub, wanted->output);
  add_careful(*sub, wanted->careful);
  add_fail_on(*sub, wanted->fail_on, "ends with 1: warning, at any row; error, at one not new or renamed");
  sub->add_flag("--words", wanted->words, "a sentence for each change, instead of a table");
  sub->add_flag("-q", wanted->quiet, "says nothing of what was not read");
  sub->group("Verbs");
  sub->footer("Example: vorn diff --format csv before.rwl after.rwl");
  sub->callback([wanted, &command] {
    if (wanted->before == "-" && wanted->after == "-")
      throw CLI::ValidationError("only one of both can be standard input");
    refuse_to_overwrite({wanted->before, wanted->after}, wanted->output.file);
    command = [wanted] { return diff(*wanted); };
  });
}

}  // namespace vorn
