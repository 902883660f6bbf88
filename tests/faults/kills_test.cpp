// A program that is killed without warning while it writes: at every call of the operating system, and after
// random bytes. Every file is then the older one or the new one, complete, and the next run is not in any
// way the worse for it. VORN_KILL_SEED takes other moments. They are counted, never timed, so that every kill
// hits on any machine.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>
#include <set>
#include <sstream>
#include <string>

#include "faults/trials.h"

namespace vorn {
namespace {

std::uint32_t kill_seed() {
  const char* const value = std::getenv("VORN_KILL_SEED");
  return value == nullptr ? 1 : static_cast<std::uint32_t>(std::strtoul(value, nullptr, 10));
}

// What a killed program may leave behind of a file that it was making.
bool is_neighbour(const std::string& name) {
  return name.ends_with(".vorn-part");
}

bool one_of(const std::string& contents, const std::string& older, const std::string& newer) {
  return contents == older || contents == newer;
}

class Kills : public ::testing::TestWithParam<Action> {
 protected:
  // Nothing is lost; an appended-to file begins with all that it held.
  void expect_older_or_newer(const Contents& files) {
    for (const auto& [name, older] : trials_.before()) {
      ASSERT_TRUE(files.contains(name)) << name << " is lost";
      EXPECT_TRUE(one_of(files.at(name), older, trials_.after().at(name))) << name << " is not whole";
      EXPECT_TRUE(!appends_ || files.at(name).starts_with(older)) << name << " has lost something";
    }
    for (const auto& [name, contents] : files) {
      EXPECT_TRUE(trials_.before().contains(name) || is_neighbour(name)) << name << " is left behind";
    }
  }

  // The same action once more, in the folder as the killed program left it, writes all there is to write and
  // tidies up.
  void expect_next_run_is_well(const Contents& left) {
    const Outcome next = trials_.try_once_more({});
    EXPECT_EQ(next.told, "");
    EXPECT_EQ(next.complaint, "");
    for (const auto& [name, contents] : next.files) {
      EXPECT_FALSE(is_neighbour(name)) << name << " stays";
      const bool added_twice = appends_ && contents.starts_with(left.at(name));
      EXPECT_TRUE(added_twice || contents == trials_.after().at(name)) << name;
    }
  }

  const bool appends_ = GetParam().name.starts_with("Move");
  Trials trials_{GetParam()};
};

TEST_P(Kills, AtEveryCallLeaveTheOlderOrTheNewFile) {
  int killed = 0, newer = 0;
  trials_.run([&] {
    for (int k = 1;; ++k) {
      SCOPED_TRACE("call " + std::to_string(k));
      Faults asked_for;
      asked_for.most_at_once = 500;
      asked_for.dies_at = k;
      const Outcome outcome = trials_.try_with(asked_for);
      expect_older_or_newer(outcome.files);
      if (!outcome.killed) break;
      ++killed;
      if (outcome.files == trials_.after()) ++newer;
      expect_next_run_is_well(outcome.files);
    }
  });
  EXPECT_GE(killed, 6);  // to make, write, flush, close and rename are calls
  EXPECT_LT(newer, killed);
  std::cout << killed << " kills" << std::endl;
}

constexpr int random_kills = 25;

class KillsInContents : public Kills {};

// Opening the editor only empties a file.
std::vector<Action> actions_that_write_bytes() {
  std::vector<Action> actions = writing_actions();
  std::erase_if(actions, [](const Action& action) { return action.name == "OpenEditor"; });
  return actions;
}

TEST_P(KillsInContents, AfterRandomBytesLeaveTheOlderOrTheNewFile) {
  std::mt19937 random(kill_seed());
  int killed = 0;
  trials_.run([&] {
    const std::size_t whole = trials_.try_with({}).written;
    ASSERT_GT(whole, 0u);
    for (int k = 1; k <= random_kills; ++k) {
      Faults asked_for;
      asked_for.dies_after = std::uniform_int_distribution<std::size_t>(1, whole)(random);
      SCOPED_TRACE("seed " + std::to_string(kill_seed()) + ", kill " + std::to_string(k) + " after " +
                   std::to_string(asked_for.dies_after) + " of " + std::to_string(whole) + " bytes");
      const Outcome outcome = trials_.try_with(asked_for);
      expect_older_or_newer(outcome.files);
      killed += outcome.killed;
      if (k % 5 == 0) expect_next_run_is_well(outcome.files);
    }
  });
  EXPECT_EQ(killed, random_kills);
}

INSTANTIATE_TEST_SUITE_P(Writing, Kills, ::testing::ValuesIn(writing_actions()),
                         [](const ::testing::TestParamInfo<Action>& action) { return action.param.name; });
INSTANTIATE_TEST_SUITE_P(Writing, KillsInContents, ::testing::ValuesIn(actions_that_write_bytes()),
                         [](const ::testing::TestParamInfo<Action>& action) { return action.param.name; });

// --- The real program, from its start to its end, built with calls that can end it (killed_replay.cpp).

// What it is to do, step by step; each step writes one file. The core list is loaded anew before each move.
const std::vector<std::string> script_steps = {
    "press 109\n",
    "press 108\n",
    "press 114\npress 107\n",
    "press 115\npress 107\n",
    "press 101\nclick 300 263\npress 111\npress 106\n",
    "press 112\npress 106\n",
    "press 113\npress 106\n",
    "press 105\npress 28\npress 67\nclick 378 543\npress 62\npress 61\npress 29\n",
    "press 101\nclick 300 263\npress 105\npress 28\npress 67\nclick 378 450\npress 62\npress 61\npress 29\n",
    "press 101\nclick 300 263\npress 105\npress 28\npress 67\nclick 378 497\npress 62\npress 61\npress 29\n",
    "press 101\nclick 300 263\npress 105\npress 28\npress 66\npress 62\npress 135\npress 61\npress 29\n",
    "press 110\n"};

// It is killed at each call of so many, in a whole run of some 300.
constexpr int stride = 12;

class KilledProgram : public ::testing::Test {
 protected:
  // Plays the first steps of the script from the start on, at most to call `dies_at` of the operating system
  // (0: to the end). Returns the status.
  static int play(std::size_t steps, int dies_at = 0) {
    std::string script;
    for (std::size_t k = 0; k < steps; ++k) script += script_steps[k];
    ScratchFolder::write("script.vrs", script + "press 102\n");
    const int program = fork();
    if (program == 0) {
      setenv("VORN_DIES_AT", std::to_string(dies_at).c_str(), 1);
      execl(KILLED_REPLAY, KILLED_REPLAY, "script.vrs", static_cast<char*>(nullptr));
      _exit(127);
    }
    int ended = 0;
    waitpid(program, &ended, 0);
    return ended;
  }

  // Every file is as it was after one of the steps, or a neighbour of one.
  void expect_whole_files() {
    const Contents files = files_here();
    for (const auto& [name, contents] : files) {
      if (is_neighbour(name)) continue;
      EXPECT_TRUE(allowed_[name].contains(contents)) << name << " is not whole";
    }
    for (const auto& [name, contents] : before_) EXPECT_TRUE(files.contains(name)) << name << " is lost";
  }

  ScratchFolder folder_;
  Contents before_;
  std::map<std::string, std::set<std::string>> allowed_;
};

TEST_F(KilledProgram, LeavesEveryFileAsItWasAfterOneOfTheSteps) {
  for (std::size_t steps = 0; steps <= script_steps.size(); ++steps) {
    lay_out_files();
    ASSERT_EQ(play(steps), 0) << steps;
    for (const auto& [name, contents] : files_here()) allowed_[name].insert(contents);
  }
  lay_out_files();
  before_ = files_here();
  EXPECT_EQ(allowed_["rings.RWW"].size(), 4u);  // the older one and three layouts
  for (const char* appended : {"more.rwl", "rings.fh", "rings.rwm"}) EXPECT_EQ(allowed_[appended].size(), 2u);

  std::size_t killed = 0;
  for (int k = 1 + static_cast<int>(kill_seed() % stride);; k += stride) {
    SCOPED_TRACE("call " + std::to_string(k));
    lay_out_files();  // what the last kill left beside them stays
    const int ended = play(script_steps.size(), k);
    expect_whole_files();
    if (!WIFSIGNALED(ended)) {
      EXPECT_EQ(ended, 0);
      break;
    }
    ASSERT_EQ(WTERMSIG(ended), SIGKILL);
    ++killed;
  }
  EXPECT_GT(killed, script_steps.size());
  std::cout << killed << " kills" << std::endl;
  for (const auto& [name, contents] : files_here()) EXPECT_FALSE(is_neighbour(name)) << name << " stays";
}

}  // namespace
}  // namespace vorn
