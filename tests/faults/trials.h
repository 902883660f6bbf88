// An action tried again and again from the same start, each time with something else going wrong.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "faults/actions.h"
#include "support/os_faults.h"
#include "support/scratch_folder.h"

namespace vorn {

using Microseconds = std::chrono::microseconds;
// Names and contents of all files of a folder.
using Files = std::map<std::string, std::string>;
Files files_here();

// How a trial ended.
struct Outcome {
  bool killed = false;    // by dies_at or from outside
  bool struck = false;    // whether a fault happened
  std::string told;       // the messages shown, one a line
  std::string complaint;  // what was not as it must be; empty when all was
  Files files;            // afterwards
  Microseconds took{};    // the action
};

// Runs the whole program to where the action begins. There every trial is a copy of the process, which goes
// through the action and all that follows, to "Quit": so one start of the program serves them all, and none
// learns of another. Each begins with the files as they were; messages are dismissed by Return.
class Trials {
 public:
  explicit Trials(const Action& action);
  ~Trials();

  // Calls `tries` where the action begins.
  void run(const std::function<void()>& tries);

  // --- To be called by `tries`.

  // Tries the action with these faults. Where `kill_after` is given the trial is killed so long after its
  // start.
  Outcome try_with(const Faults& asked_for, std::optional<Microseconds> kill_after = std::nullopt);
  // The same, with the files as the last trial left them.
  Outcome try_once_more(const Faults& asked_for, std::optional<Microseconds> kill_after = std::nullopt);

  // What the action finds, and what it leaves when nothing goes wrong.
  const Files& before() const { return before_; }
  const Files& after() const { return after_; }

 private:
  class UserScreen;
  struct Report;

  void begin();
  void finish_trial();
  [[noreturn]] void leave_trial();
  Outcome outcome_of(int trial, std::optional<Microseconds> kill_after);
  void lay_out(const Files& files) const;

  const Action& action_;
  ScratchFolder folder_;
  Files before_, after_;
  std::function<void()> tries_;
  std::unique_ptr<UserScreen> screen_;
  std::unique_ptr<Workspace> w_;
  Report* report_ = nullptr;  // memory shared with the trials
  bool in_trial_ = false;
};

}  // namespace vorn
