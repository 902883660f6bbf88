// The guide to a first cross-dating: its session is played, its quotations are held against the files
// written, and its pictures are those that the session makes.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "support/places.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;
using Lines = std::set<std::string>;

const fs::path source = source_folder();
const std::string second_reports = "# 7.";  // where the session writes the reports again
const std::string bark_end_fixed = "# 8.";  // where it begins anew, dated from the bark

std::string contents(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::string without_blanks_behind(const std::string& line) {
  return line.substr(0, line.find_last_not_of(" \r") + 1);
}

void add_lines(Lines& lines, const fs::path& file) {
  std::istringstream text(contents(file));
  for (std::string line; std::getline(text, line);) lines.insert(without_blanks_behind(line));
}

// What the first group of `pattern` matches.
Lines all_of(const std::string& text, const std::regex& pattern) {
  Lines found;
  for (std::sregex_iterator at(text.begin(), text.end(), pattern), end; at != end; ++at) {
    found.insert((*at)[1].str());
  }
  return found;
}

class Guide : public ::testing::Test {
 protected:
  Guide() { fs::copy(source / "examples", "."); }

  // Plays a session in the copy of the examples; answers its exit status.
  int play(const std::string& session) {
    ScratchFolder::write("session.vrs", session);
    const int answer = std::system("\"" VORN_REPLAY "\" session.vrs 2> said.err");
    return WIFEXITED(answer) ? WEXITSTATUS(answer) : -1;
  }

  const std::string page_ = contents(source / "docs" / "first-crossdating.md");
  const std::string session_ = contents(source / "docs" / "first-crossdating.vrs");
  ScratchFolder folder_;
};

TEST_F(Guide, SessionGoesAsItIsTold) {
  EXPECT_EQ(play(session_), 0) << ScratchFolder::read("said.err");
}

TEST_F(Guide, EveryQuotedLineStandsInAFileOfTheSession) {
  Lines written;
  const auto cut = session_.find(second_reports);
  ASSERT_NE(cut, std::string::npos);
  ASSERT_EQ(play(session_.substr(0, cut)), 3);  // left while the program waits
  for (const char* file : {"nowhere.rwl", "Stats.prn", "Corr.prn"}) add_lines(written, file);
  fs::copy(source / "examples", ".", fs::copy_options::overwrite_existing);
  ASSERT_EQ(play(session_), 0);
  for (const char* file : {"nowhere.RWW", "Stats.prn", "Corr.prn"}) add_lines(written, file);

  int quoted = 0;
  bool quoting = false;
  std::istringstream text(page_);
  for (std::string line; std::getline(text, line);) {
    if (line.starts_with("```")) {
      quoting = !quoting;
    } else if (quoting) {
      ++quoted;
      EXPECT_TRUE(written.contains(line)) << line;
    }
  }
  EXPECT_GE(quoted, 15);
}

TEST_F(Guide, WritesTheSameWidthsWithTheBarkEndFixed) {
  const auto cut = session_.find(bark_end_fixed);
  ASSERT_NE(cut, std::string::npos);
  ASSERT_EQ(play(session_.substr(0, cut)), 3);  // left while the program waits
  const std::string from_the_inner_end = ScratchFolder::read("nowhere.RWW");
  fs::remove("nowhere.RWW");
  ASSERT_EQ(play(session_), 0);
  EXPECT_FALSE(from_the_inner_end.empty());
  EXPECT_EQ(ScratchFolder::read("nowhere.RWW"), from_the_inner_end);
}

TEST_F(Guide, ShowsThePicturesThatTheSessionMakes) {
  const Lines made = all_of(session_, std::regex(R"(\npage (\S+))"));
  EXPECT_EQ(all_of(page_, std::regex(R"(\]\(pictures/([^)]+)\))")), made);
  Lines kept;
  for (const auto& entry : fs::directory_iterator(source / "docs" / "pictures")) {
    const std::string name = entry.path().filename().string();
    if (name.starts_with("first-")) kept.insert(name);
  }
  EXPECT_EQ(kept, made);
  ASSERT_EQ(play(session_), 0);
  for (const std::string& picture : made) EXPECT_GT(fs::file_size(picture), 10'000u) << picture;
}

}  // namespace
}  // namespace vorn
