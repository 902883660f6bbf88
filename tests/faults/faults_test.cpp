// Every action that touches files, with every file operation of it failing in turn: the first open, the
// second open and so on, and so for reads, writes and the rest, until an action no longer comes to the one
// that is to fail.
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <iostream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "faults/trials.h"

namespace vorn {
namespace {

// Bytes that move at once: faults are met in the middle of files too.
constexpr std::size_t piece = 1000;

// One way in which a call fails.
struct Way {
  Fault Faults::*call;
  const char* name;
  int error;
  bool for_good = false;

  // A handle that was opened for its lock is closed when the file stands: that may fail without a word.
  bool of_no_matter(const Outcome& outcome, const Contents& after) const {
    return call == &Faults::close && outcome.told.empty() && outcome.files == after;
  }

  // What the program overcomes by itself is not told: a call that is made again, or goes on where it stopped,
  // and a removal that was not needed.
  bool told() const {
    if (call == &Faults::remove) return false;
    return for_good || (error != EINTR && error != Fault::short_count);
  }
};

std::vector<Way> all_ways() {
  std::vector<Way> ways;
  const std::pair<Fault Faults::*, const char*> calls[] = {
      {&Faults::open, "open"},   {&Faults::read, "read"},     {&Faults::write, "write"},
      {&Faults::fsync, "fsync"}, {&Faults::rename, "rename"}, {&Faults::close, "close"}};
  for (const auto& [call, name] : calls) {
    for (const int error : {ENOSPC, EACCES, EIO, EINTR}) ways.push_back({call, name, error});
  }
  ways.push_back({&Faults::fchmod, "fchmod", EIO});
  ways.push_back({&Faults::fchown, "fchown", EIO});
  ways.push_back({&Faults::flock, "flock", EIO});
  ways.push_back({&Faults::lstat, "lstat", EIO});
  ways.push_back({&Faults::remove, "remove", EIO});
  ways.push_back({&Faults::read, "read", Fault::short_count});
  ways.push_back({&Faults::write, "write", Fault::short_count});
  ways.push_back({&Faults::stat, "stat", EACCES, true});
  ways.push_back({&Faults::open, "open", EMFILE, true});
  ways.push_back({&Faults::write, "write", ENOSPC, true});
  ways.push_back({&Faults::write, "write", EINTR, true});
  return ways;
}

std::string words(const Way& way, int k) {
  const std::string error = way.error == Fault::short_count ? "short" : std::strerror(way.error);
  return std::string(way.name) + " " + std::to_string(k) + ": " + error + (way.for_good ? " for good" : "");
}

// The first message names the failure by its number; others may follow from it, like the end of a file that
// could not be opened.
void expect_named(const std::string& told, const std::string& says, int error) {
  const std::regex first("(" + says + ") fail err =" + std::string(error < 10 ? "     " : "    ") +
                         std::to_string(error));
  const std::regex further("(" + says + ")( fail err = *-?[0-9]+)?");
  std::istringstream lines(told);
  std::string line;
  ASSERT_TRUE(std::getline(lines, line)) << "nothing is told";
  EXPECT_TRUE(std::regex_match(line, first)) << line;
  while (std::getline(lines, line)) EXPECT_TRUE(std::regex_match(line, further)) << line;
}

// Every file is as it was, or whole and new where the action writes it; there is no other.
void expect_whole(const Trials& trials, const Contents& files) {
  for (const auto& [name, contents] : files) {
    ASSERT_TRUE(trials.before().contains(name)) << name << " is left behind";
    EXPECT_TRUE(contents == trials.before().at(name) || contents == trials.after().at(name))
        << name << " is neither the older one nor the new one";
  }
  EXPECT_EQ(files.size(), trials.before().size()) << "a file is lost";
}

class FileFaults : public ::testing::TestWithParam<Action> {};

TEST_P(FileFaults, AreToldAndCostNoFile) {
  const Action& action = GetParam();
  Trials trials(action);
  int faults_met = 0;
  trials.run([&] {
    for (const Way& way : all_ways()) {
      for (int k = 1;; ++k) {
        SCOPED_TRACE(words(way, k));
        Faults asked_for;
        asked_for.most_at_once = piece;
        asked_for.*way.call = {.passes = k - 1, .error = way.error, .for_good = way.for_good};
        const Outcome outcome = trials.try_with(asked_for);
        EXPECT_EQ(outcome.complaint, "");
        expect_whole(trials, outcome.files);
        if (!outcome.struck) {
          EXPECT_EQ(outcome.told, "");
          EXPECT_EQ(outcome.files, trials.after());
          break;
        }
        ++faults_met;
        if (!action.writes.empty() && way.of_no_matter(outcome, trials.after())) continue;
        if (way.told()) {
          expect_named(outcome.told, action.says, way.error);
        } else {
          EXPECT_EQ(outcome.told, "");
          EXPECT_EQ(outcome.files, trials.after());
        }
      }
    }
  });
  EXPECT_GE(faults_met, 14);
  std::cout << faults_met << " faults met" << std::endl;
}

const auto named_by_action = [](const ::testing::TestParamInfo<Action>& action) { return action.param.name; };
INSTANTIATE_TEST_SUITE_P(Reading, FileFaults, ::testing::ValuesIn(reading_actions()), named_by_action);
INSTANTIATE_TEST_SUITE_P(Writing, FileFaults, ::testing::ValuesIn(writing_actions()), named_by_action);

}  // namespace
}  // namespace vorn
