// Journals: any lines, read and taken up by a session, which then goes back and forth.
//
// Input: parts, cut at lines of "%%" alone. The first is the journal, the others are what was kept, in the
// order in which the journal names it.
#include <map>
#include <memory>
#include <sstream>
#include <string>

#include "fresh_workspace.h"
#include "menus/main_program.h"
#include "records/memory_files.h"
#include "sessions/journal.h"
#include "sessions/session.h"
#include "target.h"

namespace vorn::fuzz {
namespace {

// A disk where nothing may be written.
class Untouched : public MemoryFiles {
 public:
  Status make(const std::string&, std::unique_ptr<ByteSink>&) override { return refused(); }
  Status extend(const std::string&, std::unique_ptr<ByteSource>&, std::unique_ptr<ByteSink>&) override {
    return refused();
  }

 private:
  static Status refused() {
    must_hold(false, "a take-up writes no file");
    return {};
  }
};

// Goes back as far as it leads, and forth again.
class Doubter : public Inbox {
 public:
  void show(const Page&) override {}
  void stand(const SharedStanding& standing) override { standing_ = standing; }
  Event next_event() override { throw ProgramEnd(EndReason::closed); }
  Deed next_deed() override {
    if (steps_++ == most_steps) return Close{};
    back_ = back_ && standing_->can_undo;
    if (back_) return Undo{};
    if (standing_->can_redo) return Redo{};
    return Close{};
  }

 private:
  static constexpr int most_steps = 6;
  SharedStanding standing_;
  bool back_ = true;
  int steps_ = 0;
};

void must_be_sound(const ReadJournal& read) {
  Timeline timeline = read.timeline;
  auto answers = read.answers;
  while (timeline.to_redo()) timeline.redo(answers);
  const std::size_t most = timeline.taken();
  while (timeline.to_undo()) {
    const std::size_t stay = timeline.undo(answers);
    must_hold(answers.size() == stay, "so many answers stay as there were before");
  }
  while (timeline.to_redo()) timeline.redo(answers);
  must_hold(timeline.taken() == most, "what was taken back can be taken again");
  timeline = read.timeline;
  answers = read.answers;
  for (std::size_t k = timeline.steps().size(); k > 0; --k) {
    answers.resize(timeline.cut(k - 1, answers.size()));
    must_hold(timeline.steps().size() == k - 1, "it is cut where it is to be");
  }
}

}  // namespace
}  // namespace vorn::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorn;
  using namespace vorn::fuzz;
  static FreshWorkspace fresh;
  const auto parts = parts_of(as_text(data, size));
  std::map<std::string, Contents> known;
  ReadJournal read = read_journal(parts[0], [&](const std::string& name) {
    const std::size_t part = known.size() + 1;
    Contents& contents = known[name];
    if (!contents) contents = std::make_shared<const std::string>(part < parts.size() ? parts[part] : "");
    return contents;
  });
  must_be_sound(read);
  if (read.timeline.steps().empty()) return 0;

  const auto program = [](Screen& screen, Files& files, std::ostream&, const auto& started) {
    Workspace& w = fresh.start(screen, files);
    started(w);
    try {
      run_program(w);
    } catch (const ProgramEnd& end) {
      return end.exit_status();
    }
    return 0;
  };
  Untouched disk;
  std::ostringstream log;
  Doubter user;
  Session session(program, disk, log, user);
  session.begin_with({.timeline = std::move(read.timeline), .answers = std::move(read.answers)});
  session.run();
  return 0;
}
