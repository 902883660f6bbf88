// The command line as shells meet it: what it writes where, and what it ends with.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "support/menu_bench.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

struct CommandLine : testing::Test {
  CommandLine() {
    std::string oaks;
    for (const int k : {1, 2, 3}) oaks += raw_core_text("OAK" + std::to_string(k), 1900, 60, 7u * k);
    folder.write("oak.rwl", oaks);
    folder.write("note.txt", "This is no file of ring widths.\n");
  }
  int run(const std::string& command) {
    const int status = std::system((command + " >printed.log 2>said.log").c_str());
    said = folder.read("said.log");
    printed = folder.read("printed.log");
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  long lines() const { return std::ranges::count(printed, '\n'); }
  ScratchFolder folder;
  std::string said, printed;
};

TEST_F(CommandLine, GivesARowForEachCore) {
  EXPECT_EQ(run(VORN " stats --format csv oak.rwl"), 0);
  EXPECT_EQ(lines(), 4);
  EXPECT_TRUE(printed.starts_with(
      "file,series,first_year,last_year,rings,mean_mm,sd_mm,r,rbar\noak.rwl,OAK1,1900,1959,60,"));
  EXPECT_EQ(said, "");
}

TEST_F(CommandLine, ReadsStandardInput) {
  EXPECT_EQ(run(VORN " stats --format csv --series OAK2 - <oak.rwl"), 0);
  EXPECT_TRUE(printed.find("\n-,OAK2,1900,") != std::string::npos) << printed;
  EXPECT_EQ(lines(), 2);
}

TEST_F(CommandLine, ABadFileNeverEndsTheWorkOnTheOthers) {
  EXPECT_EQ(run(VORN " stats --format csv gone.rwl note.txt . oak.rwl"), 0);
  EXPECT_EQ(lines(), 4);
  EXPECT_NE(said.find("vorn: gone.rwl: Open: No such file or directory\n"), std::string::npos) << said;
  EXPECT_NE(said.find("vorn: note.txt: no layout that is known\n"), std::string::npos) << said;
  EXPECT_NE(said.find("vorn: .: Open: Is a directory\n"), std::string::npos) << said;
}

TEST_F(CommandLine, GivesTheSameOnAnyNumberOfThreads) {
  std::string files;
  for (int k = 0; k < 200; ++k) files += k % 7 == 3 ? " note.txt" : " oak.rwl";
  ASSERT_EQ(run(VORN " stats --json -j 1" + files), 0);
  const std::string alone = printed, alone_said = said;
  ASSERT_EQ(run(VORN " stats --json -j 8" + files), 0);
  EXPECT_EQ(printed, alone);
  EXPECT_EQ(said, alone_said);
}

TEST_F(CommandLine, EndsByWhatIsFound) {
  EXPECT_EQ(run(VORN " check --fail-on error oak.rwl"), 0);
  EXPECT_EQ(run(VORN " check --fail-on error oak.rwl note.txt"), 1);
  EXPECT_EQ(run(VORN " check note.txt"), 0);
}

TEST_F(CommandLine, EndsWith2WhereItIsUsedWrongly) {
  EXPECT_EQ(run(VORN), 2);
  EXPECT_EQ(run(VORN " frob oak.rwl"), 2);
  EXPECT_EQ(run(VORN " stats"), 2);
  EXPECT_EQ(run(VORN " stats --spline 2 oak.rwl"), 2);
  EXPECT_EQ(run(VORN " stats --format xml oak.rwl"), 2);
  EXPECT_EQ(run(VORN " stats --fail-on error oak.rwl"), 2);
  EXPECT_EQ(printed, "");
}

TEST_F(CommandLine, SaysWhatItIs) {
  EXPECT_EQ(run(VORN " --version"), 0);
  EXPECT_EQ(printed, "vorn " VORN_VERSION "\n");
  EXPECT_EQ(run(VORN " --help"), 0);
  for (const char* verb : {"locate", "date", "site", "stats", "chron", "check"})
    EXPECT_NE(printed.find(verb), std::string::npos) << verb;
}

TEST_F(CommandLine, WritesToAFileOrSaysWhyNot) {
  EXPECT_EQ(run(VORN " chron --format csv -o out.csv oak.rwl"), 0);
  EXPECT_TRUE(folder.read("out.csv").starts_with("file,year,value,depth\noak.rwl,1900,"));
  EXPECT_EQ(printed, "");
  EXPECT_EQ(run(VORN " chron -o nowhere/out.csv oak.rwl"), 4);
  EXPECT_EQ(said, "vorn: nowhere/out.csv: No such file or directory\n");
}

// As every file of the program is.
TEST_F(CommandLine, ReplacesAFileAsAWholeOrNotAtAll) {
  folder.write("out.csv", "older\n");
  ASSERT_EQ(run("chmod 640 out.csv && (ulimit -f 1; " VORN
                " chron --format csv -o out.csv oak.rwl oak.rwl oak.rwl)"),
            4);
  EXPECT_EQ(folder.read("out.csv"), "older\n");
  ASSERT_EQ(run(VORN " chron --format csv -o out.csv oak.rwl && stat -c %a out.csv"), 0);
  EXPECT_EQ(printed, "640\n");
}

TEST_F(CommandLine, SaysWhenTheDiskIsFullAndNothingWhenNobodyReadsOn) {
  ASSERT_EQ(run("test -e /dev/full"), 0);
  EXPECT_EQ(run("(" VORN " chron oak.rwl >/dev/full)"), 4);
  EXPECT_EQ(said, "vorn: standard output cannot be written\n");
  std::string files;
  for (int k = 0; k < 500; ++k) files += " oak.rwl";
  EXPECT_EQ(run(VORN " chron --format csv" + files + " | head -n 1"), 0);
  EXPECT_EQ(printed, "file,year,value,depth\n");
  EXPECT_EQ(said, "");
}

TEST_F(CommandLine, OptionsTakeOneValueEachSoThatFilesMayFollow) {
  EXPECT_EQ(run(VORN " stats --format csv --series OAK1,OAK2 oak.rwl"), 0);
  EXPECT_EQ(lines(), 3);
  EXPECT_EQ(run(VORN " stats --format csv --series OAK1 --series OAK3 oak.rwl"), 0);
  EXPECT_EQ(lines(), 3);
  EXPECT_EQ(run(VORN " date --format csv --reference oak.rwl oak.rwl"), 0);
  EXPECT_EQ(lines(), 4);
}

TEST_F(CommandLine, NothingToDateByEndsIt) {
  EXPECT_EQ(run(VORN " date oak.rwl --reference note.txt"), 4);
  EXPECT_NE(said.find("vorn: note.txt: no chronology to date by\n"), std::string::npos) << said;
}

}  // namespace
}  // namespace vorn
