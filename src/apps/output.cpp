#include "apps/output.h"

#include <cerrno>
#include <iostream>
#include <system_error>

#include "apps/vorn_request.h"
#include "batch/table.h"
#include "records/disk_files.h"

namespace vorn {

void say(const std::string& words) {
  std::cerr << "vorn: " << plain_text(words) << '\n';
}

void say(const std::vector<std::string>& all) {
  for (const std::string& words : all) say(words);
}

std::ostream& Output::stream() {
  if (file_.empty()) return std::cout;
  return text_;
}

int Output::end(int status, int failed) {
  if (!stream().flush()) {
    if ((failed != 0 ? failed : errno) == EPIPE) return status;
    say("standard output cannot be written");
    return cannot_go_on;
  }
  if (file_.empty()) return status;
  DiskFiles files;
  const Status not_written = write_whole(files, file_, text_.str());
  if (!not_written) return status;
  say(file_ + ": " + std::generic_category().message(not_written.number()));
  return cannot_go_on;
}

}  // namespace vorn
