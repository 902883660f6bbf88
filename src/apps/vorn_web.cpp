// The program of the browser edition, which one of its workers runs.

#include <exception>
#include <sstream>

#include "apps/whole_program.h"
#include "desk/questions.h"
#include "platform/web/shown_text.h"
#include "platform/web/web_desk.h"
#include "platform/web/worker_port.h"
#include "records/disk_files.h"
#include "sessions/help_files.h"
#include "sessions/journal.h"
#include "sessions/kept_careful.h"
#include "sessions/session.h"

namespace {

constexpr const char* folder = "/work";
constexpr const char* installed_help = "/installed/Help.prn";

void run_program(vorn::WorkerPort& port) {
  std::ostringstream log;
  vorn::DiskFiles disk(folder);
  vorn::HelpFiles files(disk, installed_help);
  vorn::WebDesk desk(port, disk, VORN_VERSION);
  vorn::Questions questions;
  vorn::Journal journal(folder, VORN_VERSION);
  vorn::Session session(vorn::run_whole_program, files, log, desk.mailbox(), &questions, &journal);
  session.begin_carefully(vorn::kept_careful(folder));
  desk.greet();
  const int status = session.run();
  port.tell({{"is", "ended"}, {"status", status}, {"log", vorn::shown_lines(log.str())}});
}

}  // namespace

int main() {
  vorn::WorkerPort port;
  try {
    run_program(port);
    return 0;
  } catch (const std::exception& failure) {
    port.tell({{"is", "failed"}, {"text", vorn::shown_text(failure.what())}});
    return 1;
  }
}
