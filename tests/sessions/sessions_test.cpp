// Runs every script of this folder in a copy of the examples; see README.md for what scripts say to the test.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "support/places.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

const fs::path sessions = source_folder() / "tests" / "sessions";
const fs::path examples = source_folder() / "examples";

// "#: has FILE TEXT" in three words, the last one the rest of the line.
struct Remark {
  std::string verb, first, rest;
  std::string all;  // of the line, behind the verb
};

Lines lines_of(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  Lines lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

std::vector<Remark> remarks_of(const std::string& script) {
  std::vector<Remark> remarks;
  for (const std::string& line : lines_of(sessions / script)) {
    if (!line.starts_with("#: ")) continue;
    Remark remark;
    std::istringstream words(line.substr(3));
    words >> remark.verb >> std::ws;
    std::getline(words, remark.all);
    const auto blank = remark.all.find(' ');
    remark.first = remark.all.substr(0, blank);
    if (blank != std::string::npos) remark.rest = remark.all.substr(blank + 1);
    remarks.push_back(remark);
  }
  return remarks;
}

// The program may run under another one, which VORN_UNDER names (tools/memcheck does so).
int replay(const std::string& script) {
  const char* const under = std::getenv("VORN_UNDER");
  const std::string command = (under == nullptr ? "" : under) + std::string(" \"" VORN_REPLAY "\" \"") +
                              (sessions / script).string() + "\" > said.out 2> said.err";
  const int answer = std::system(command.c_str());
  return WIFEXITED(answer) ? WEXITSTATUS(answer) : -1;
}

bool some_line_has(const std::string& file, const std::string& text) {
  const Lines lines = lines_of(file);
  return std::any_of(lines.begin(), lines.end(),
                     [&text](const std::string& line) { return line.find(text) != std::string::npos; });
}

void run_session(const std::string& script);

// Makes the preparation that a remark asks for; false when it asks for none.
bool prepare(const Remark& remark) {
  if (remark.verb == "remove") {
    EXPECT_TRUE(fs::remove(remark.all)) << remark.all;
  } else if (remark.verb == "folder") {
    EXPECT_TRUE(fs::create_directory(remark.all)) << remark.all;
  } else if (remark.verb == "write") {
    ScratchFolder::write(remark.first, remark.rest + "\n");
  } else if (remark.verb == "run") {
    run_session(remark.all);
  } else {
    return false;
  }
  return true;
}

void check_file(const Remark& remark) {
  const std::string &file = remark.first, &text = remark.rest;
  if (remark.verb == "absent") {
    EXPECT_FALSE(fs::exists(file)) << file;
    return;
  }
  ASSERT_TRUE(fs::is_regular_file(file)) << file;
  if (remark.verb == "has") {
    EXPECT_TRUE(some_line_has(file, text)) << file << " has no \"" << text << '"';
  } else if (remark.verb == "lacks") {
    EXPECT_FALSE(some_line_has(file, text)) << file << " has \"" << text << '"';
  } else if (remark.verb == "lines") {
    EXPECT_EQ(std::to_string(lines_of(file).size()), text) << file;
  } else if (remark.verb == "same") {
    ASSERT_TRUE(fs::is_regular_file(text)) << text;
    EXPECT_EQ(ScratchFolder::read(file), ScratchFolder::read(text)) << file << " and " << text;
  } else {
    FAIL() << "no such remark: " << remark.verb;
  }
}

void run_session(const std::string& script) {
  SCOPED_TRACE(script);
  std::string status = "0";
  Lines expected_to_say;
  std::vector<Remark> checks;
  for (const Remark& remark : remarks_of(script)) {
    if (prepare(remark)) continue;
    if (remark.verb == "status") {
      status = remark.all;
    } else if (remark.verb == "says") {
      expected_to_say.push_back(remark.all);
    } else {
      checks.push_back(remark);
    }
  }
  ASSERT_TRUE(fs::exists(sessions / script));
  EXPECT_EQ(std::to_string(replay(script)), status);
  EXPECT_EQ(lines_of("said.err"), expected_to_say);
  for (const Remark& remark : checks) check_file(remark);
}

Lines all_scripts() {
  std::istringstream words(VORN_SESSIONS);
  return {std::istream_iterator<std::string>(words), {}};
}

class Session : public ::testing::TestWithParam<std::string> {
 protected:
  Session() { fs::copy(examples, ".", fs::copy_options::recursive); }
  ScratchFolder folder_;
};

TEST_P(Session, EndsAsItSays) {
  run_session(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Scripts, Session, ::testing::ValuesIn(all_scripts()),
                         [](const ::testing::TestParamInfo<std::string>& of) {
                           std::string name = fs::path(of.param).stem().string();
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name;
                         });

}  // namespace
}  // namespace vorn
