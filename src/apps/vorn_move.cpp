#include "apps/output.h"
#include "apps/vorn_request.h"
#include "apps/vorn_work.h"
#include "batch/move_rows.h"

namespace vorn {
namespace {

// Answers whether there are cores.
bool has_cores(const Request& request, const Collection& collection) {
  const auto words = collection.words();
  if (!request.quiet) {
    say(words);
    say(collection.doubts());
  }
  if (collection.has_cores()) return true;
  if (request.quiet || words.empty()) say(collection.path() + ": no ring widths");
  return false;
}

bool is_grave(const Request& request, const Collection& from, const Collection& to) {
  return request.fail_on && !(from.words().empty() && to.words().empty());
}

}  // namespace

int tell_move(const Request& request) {
  InputFiles files(request.files);
  const Collection from(files, request.files[0], request.settings);
  const Collection to(files, request.files[1], request.settings);
  const bool any_from = has_cores(request, from), any_to = has_cores(request, to);
  if (!any_from || !any_to) return cannot_go_on;
  std::vector<std::string> missing;
  const auto cores = cores_named(from, request.moved, missing);
  for (const std::string& name : missing) say(from.path() + ": no series " + name);
  if (!missing.empty()) return cannot_go_on;
  Output out(request.output);
  TableWriter writer(out.stream(), request.format, move_form(), VORN_VERSION, recipe_of(request));
  for (const MovedFile& file : moved(from, to, cores)) writer.add(move_row(file));
  writer.end();
  return out.end(is_grave(request, from, to) ? found : done);
}

}  // namespace vorn
