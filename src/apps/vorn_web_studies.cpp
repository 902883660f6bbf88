// The studies of the browser edition, which a worker of their own runs: the panels, and what became of the
// files.

#include <exception>

#include "panels/kept_marks.h"
#include "platform/web/files_desk.h"
#include "platform/web/shown_text.h"
#include "platform/web/studies_desk.h"
#include "platform/web/worker_port.h"
#include "records/disk_files.h"

namespace {

constexpr const char* folder = "/work";

[[noreturn]] void run_studies(vorn::WorkerPort& port) {
  vorn::DiskFiles disk(folder);
  vorn::KeptMarks marks(folder);
  vorn::FilesDesk files(port, disk, vorn::year_of_today());
  vorn::StudiesDesk desk(port, &marks, &files);
  for (;;) desk.go_on();
}

}  // namespace

int main() {
  vorn::WorkerPort port;
  try {
    run_studies(port);
  } catch (const std::exception& failure) {
    port.tell({{"is", "failed"}, {"text", vorn::shown_text(failure.what())}});
    return 1;
  }
}
