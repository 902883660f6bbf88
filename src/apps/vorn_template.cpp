#include <algorithm>
#include <cmath>

#include "apps/commands.h"
#include "apps/output.h"
#include "apps/vorn_work.h"
#include "batch/written_tables.h"

namespace vorn {

int write_chronology_template(const Request& request) {
  InputFiles files(request.files);
  const Collection collection(files, request.files.front(), request.settings);
  if (!request.quiet) {
    say(collection.words());
    say(collection.doubts());
  }
  const std::string text = chronology_as_template(collection);
  if (text.empty()) {
    say(collection.path() + ": no chronology");
    return cannot_go_on;
  }
  Output out(request.output);
  out.stream() << text;
  const bool is_grave = request.fail_on && !collection.words().empty();
  return out.end(is_grave ? found : done);
}

}  // namespace vorn
