// An action tried again and again from the same start, each time with something else going wrong.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "faults/actions.h"
#include "support/os_faults.h"
#include "support/scratch_folder.h"

namespace vorn {

// Names and contents of all files of a folder.
using Contents = std::map<std::string, std::string>;
Contents files_here();

// How a trial ended.
struct Outcome {
  bool killed = false;      // by dies_at or dies_after
  bool struck = false;      // whether a fault happened
  std::size_t written = 0;  // bytes, by an action that came to its end
  std::string told;         // the messages shown, one a line
  std::string complaint;    // what was not as it must be; empty when all was
  Contents files;           // afterwards
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

  // Tries the action with these faults.
  Outcome try_with(const Faults& asked_for);
  // The same, with the files as the last trial left them.
  Outcome try_once_more(const Faults& asked_for);

  // What the action finds, and what it leaves when nothing goes wrong.
  const Contents& before() const { return before_; }
  const Contents& after() const { return after_; }

 private:
  class UserScreen;
  struct Report;

  void begin();
  void finish_trial();
  [[noreturn]] void leave_trial();
  Outcome outcome_of(int trial);
  void lay_out(const Contents& files) const;

  const Action& action_;
  ScratchFolder folder_;
  Contents before_, after_;
  std::function<void()> tries_;
  std::unique_ptr<UserScreen> screen_;
  std::unique_ptr<Workspace> w_;
  Report* report_ = nullptr;  // memory shared with the trials
  bool in_trial_ = false;
};

}  // namespace vorn
