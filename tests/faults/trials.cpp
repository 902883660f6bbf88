#include "faults/trials.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include "menus/main_program.h"
#include "plot/plot.h"
#include "records/disk_files.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

constexpr unsigned longest_trial = 120;  // seconds; only what hangs takes so long

// Thrown in the copy of the process that is to go through the action.
struct TrialBegins {};

template <std::size_t size>
void put(char (&place)[size], const std::string& text) {
  std::snprintf(place, size, "%s", text.c_str());
}

}  // namespace

Contents files_here() {
  Contents files;
  for (const auto& entry : fs::directory_iterator(".")) {
    const std::string name = entry.path().filename().string();
    files[name] = ScratchFolder::read(name);
  }
  return files;
}

// What a trial tells the process that started it.
struct Trials::Report {
  bool finished, struck;
  char told[10'000], complaint[2'000];
  std::size_t written;
};

// The user: goes the way to the action, through it and on to "Quit".
class Trials::UserScreen : public Screen {
 public:
  explicit UserScreen(Trials& owner) : owner_(owner) {
    const Action& action = owner.action_;
    for (const Steps& part : {action.way, action.act, action.back, steps_to_quit()}) {
      steps_.insert(steps_.end(), part.begin(), part.end());
    }
    begins_ = action.way.size();
    ends_ = begins_ + action.act.size();
    begun_ = begins_ == ends_;  // with the program
  }

  void show(const Page&) override {}
  void forget_pending() override { message_shown_ = true; }
  void notice(std::string_view text) override { notices_ += std::string(text) + "\n"; }
  // What of a log is messages, which wait; notices are shown beside the page.
  std::string messages_of(const std::string& log) const {
    std::istringstream lines(log);
    std::string messages;
    for (std::string line; std::getline(lines, line);) {
      if (notices_.find(line + "\n") == std::string::npos) messages += line + "\n";
    }
    return messages;
  }
  Event next_event() override {
    if (std::exchange(message_shown_, false)) return {0, 0, Event::enter};
    if (at_ == begins_ && !std::exchange(begun_, true)) owner_.begin();
    if (at_ == ends_) owner_.finish_trial();
    if (at_ == steps_.size()) throw ProgramEnd(EndReason::closed);
    return steps_[at_++](*owner_.w_);
  }

 private:
  Trials& owner_;
  Steps steps_;
  std::size_t at_ = 0, begins_ = 0, ends_ = 0;
  bool begun_ = false, message_shown_ = false;
  std::string notices_;
};

Trials::Trials(const Action& action) : action_(action) {
  lay_out_files();
  void* const shared =
      mmap(nullptr, sizeof(Report), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  report_ = static_cast<Report*>(shared);
}

Trials::~Trials() {
  munmap(report_, sizeof(Report));
}

void Trials::run(const std::function<void()>& tries) {
  tries_ = tries;
  screen_ = std::make_unique<UserScreen>(*this);
  Plot plot(*screen_);
  DiskFiles disk;
  w_ = std::make_unique<Workspace>(plot, disk);
  std::ostringstream log;
  w_->log = &log;
  auto reason = EndReason::closed;
  try {
    if (action_.act.empty()) begin();
    run_program(*w_);
  } catch (const ProgramEnd& end) {
    reason = end.reason();
  }
  if (in_trial_) {
    put(report_->told, screen_->messages_of(log.str()));
    std::string complaint = report_->complaint;
    if (reason != EndReason::quit) complaint += "; the program did not end by \"Quit\"";
    if (w_->logon) complaint += "; the button pressed afterwards had no effect";
    put(report_->complaint, complaint);
    leave_trial();
  }
  EXPECT_EQ(screen_->messages_of(log.str()), "") << "on the way to the action";
}

// The program is where the action begins. Comes back in trials alone.
void Trials::begin() {
  if (action_.prepare) action_.prepare();
  before_ = files_here();
  try {
    const Outcome untroubled = try_with({});
    EXPECT_EQ(untroubled.told, "");
    EXPECT_EQ(untroubled.complaint, "");
    after_ = untroubled.files;
    Contents written = before_;
    for (const std::string& name : action_.writes) {
      EXPECT_NE(before_.at(name), after_.at(name)) << "the action does not write " << name;
      written[name] = after_.at(name);
    }
    EXPECT_EQ(written, after_) << "the action writes something else";
    if (!testing::Test::HasFailure()) tries_();
  } catch (const TrialBegins&) {
    return;
  }
  throw ProgramEnd(EndReason::closed);
}

// The action is over, and the program waits again.
void Trials::finish_trial() {
  if (report_->finished) return;
  report_->finished = true;
  report_->written = faults.written;
  report_->struck = faults.any_struck();
  faults = {};
  put(report_->complaint, broken_invariant(*w_, action_.ends_in));
}

void Trials::leave_trial() {
  _exit(0);  // nothing that the two processes share is to be tidied up twice
}

Outcome Trials::try_with(const Faults& asked_for) {
  lay_out(before_);
  return try_once_more(asked_for);
}

Outcome Trials::try_once_more(const Faults& asked_for) {
  *report_ = {};
  const int trial = fork();
  if (trial == 0) {
    alarm(longest_trial);
    in_trial_ = true;
    faults = asked_for;
    throw TrialBegins{};
  }
  return outcome_of(trial);
}

Outcome Trials::outcome_of(int trial) {
  int ended = 0;
  waitpid(trial, &ended, 0);
  Outcome outcome;
  outcome.killed = WIFSIGNALED(ended) && WTERMSIG(ended) == SIGKILL;
  outcome.struck = report_->struck;
  outcome.told = report_->told;
  outcome.complaint = report_->complaint;
  outcome.written = report_->written;
  if (!outcome.killed && WIFSIGNALED(ended)) {
    outcome.complaint += "; ended by signal " + std::to_string(WTERMSIG(ended));
  } else if (!outcome.killed && WEXITSTATUS(ended) != 0) {
    outcome.complaint += "; ended with " + std::to_string(WEXITSTATUS(ended));
  }
  outcome.files = files_here();
  return outcome;
}

void Trials::lay_out(const Contents& files) const {
  const Contents here = files_here();
  for (const auto& [name, contents] : here) {
    if (!files.contains(name)) fs::remove(name);
  }
  for (const auto& [name, contents] : files) {
    const auto found = here.find(name);
    if (found == here.end() || found->second != contents) ScratchFolder::write(name, contents);
  }
}

}  // namespace vorn
