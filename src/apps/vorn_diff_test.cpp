// vorn diff and vorn convert as shells meet them.
#include <gtest/gtest.h>

#include <string>

#include "support/command_bench.h"
#include "support/raw_text.h"

namespace vorn {
namespace {

struct Diff : CommandBench {
  Diff() {
    folder.write("oak.rwl", raw_text("OAK1", 1900, oak) + raw_text("OAK2", 1900, elm));
    std::vector<int> rings = oak;
    rings.insert(rings.begin() + 3, 9'000);
    folder.write("more.rwl", raw_text("OAK1", 1900, rings) + raw_text("OAK2", 1900, elm));
    folder.write("named.rwl", raw_text("OAK1", 1900, oak) + raw_text("OAK9", 1900, elm));
    folder.write("note.txt", "This is no file of ring widths.\n");
  }
  const std::vector<int> oak = {1100, 1200, 1300, 1400, 1500, 1600, 1700, 1800, 1900, 2000};
  const std::vector<int> elm = {2100, 2200, 2300, 2400, 2500, 2600, 2700, 2800, 2900, 3000};
};

TEST_F(Diff, GivesARowForTheOneRingThatWasPutIn) {
  EXPECT_EQ(run(VORN " diff oak.rwl more.rwl"), 0);
  EXPECT_EQ(printed,
            "series  change    year  before  after  end\n"
            "OAK1    inserted  1903              9  inner\n");
  EXPECT_EQ(run(VORN " diff --format csv more.rwl oak.rwl"), 0);
  EXPECT_EQ(printed, "series,change,year,before,after,end\nOAK1,deleted,1903,9,,inner\n");
  EXPECT_EQ(said, "");
}

TEST_F(Diff, GivesJsonWithWholeNumbersWidthsAndNames) {
  EXPECT_EQ(run(VORN " diff --json oak.rwl more.rwl"), 0);
  EXPECT_NE(printed.find("\"schema\": \"vorn-diff-1\""), std::string::npos) << printed;
  EXPECT_NE(printed.find("{\"series\":\"OAK1\",\"change\":\"inserted\",\"year\":1903,\"before\":null,"
                         "\"after\":9,\"end\":\"inner\"}"),
            std::string::npos)
      << printed;
  EXPECT_EQ(run(VORN " diff --json oak.rwl named.rwl"), 0);
  EXPECT_NE(printed.find("\"change\":\"renamed\",\"year\":1900,\"before\":\"OAK2\",\"after\":\"OAK9\""),
            std::string::npos)
      << printed;
}

// A file that is read better carefully: without, its second core is lost.
TEST_F(Diff, TakesCarefulAsAllVerbsDo) {
  folder.write("blank.rwl", raw_text("OAK1", 1900, oak) + "\n" + raw_text("OAK2", 1900, elm));
  EXPECT_EQ(run(VORN " diff --format csv -q oak.rwl blank.rwl"), 0);
  EXPECT_EQ(printed, "series,change,year,before,after,end\nOAK2,gone,1900,10,,\n");
  EXPECT_EQ(run(VORN " diff --json --careful oak.rwl blank.rwl"), 0);
  EXPECT_NE(printed.find("\"recipe\": \"fewest changes, careful all\""), std::string::npos) << printed;
  EXPECT_EQ(printed.find("gone"), std::string::npos) << printed;
  EXPECT_EQ(run(VORN " convert blank.rwl --to csv -q"), 0);
  EXPECT_EQ(printed.find("OAK2"), std::string::npos) << printed;
  EXPECT_EQ(run(VORN " convert blank.rwl --to csv --careful=blank-line"), 0);
  EXPECT_NE(printed.find("OAK2"), std::string::npos) << printed;
  EXPECT_EQ(run(VORN " save blank.rwl more.rwl"), 4);
  EXPECT_EQ(run(VORN " save --careful=blank-line blank.rwl more.rwl"), 0);
  EXPECT_NE(printed.find("\n\nOAK2"), std::string::npos) << printed;
  EXPECT_EQ(run(VORN " convert blank.rwl --to csv --careful=blank-lime"), 2);
}

TEST_F(Diff, OfAFileWithItselfIsEmpty) {
  EXPECT_EQ(run(VORN " diff --format csv --fail-on warning oak.rwl oak.rwl"), 0);
  EXPECT_EQ(lines(), 1);
}

TEST_F(Diff, EndsWith1WhereItIsAskedTo) {
  EXPECT_EQ(run(VORN " diff --fail-on warning oak.rwl named.rwl"), 1);
  EXPECT_EQ(run(VORN " diff --fail-on error oak.rwl named.rwl"), 0);
  EXPECT_EQ(run(VORN " diff --fail-on error oak.rwl more.rwl"), 1);
  EXPECT_EQ(lines(), 2);
}

TEST_F(Diff, ReadsOneOfBothFromStandardInput) {
  EXPECT_EQ(run(VORN " diff --format csv - more.rwl <oak.rwl"), 0);
  EXPECT_EQ(lines(), 2);
  EXPECT_EQ(run(VORN " diff --format csv oak.rwl - <more.rwl"), 0);
  EXPECT_EQ(lines(), 2);
  EXPECT_EQ(run(VORN " diff - - <oak.rwl"), 2);
}

TEST_F(Diff, NeverTakesCoresThatCouldNotBeReadForGone) {
  EXPECT_EQ(run(VORN " diff oak.rwl gone.rwl"), 4);
  EXPECT_TRUE(said.starts_with("vorn: gone.rwl: Open: No such file or directory\n")) << said;
  EXPECT_EQ(run(VORN " diff -q note.txt oak.rwl"), 4);
  EXPECT_EQ(said, "vorn: note.txt: no ring widths to compare\n");
  EXPECT_EQ(printed, "");
}

TEST_F(Diff, WritesToAFile) {
  EXPECT_EQ(run(VORN " diff --format csv -o out.csv oak.rwl more.rwl"), 0);
  EXPECT_EQ(folder.read("out.csv"), "series,change,year,before,after,end\nOAK1,inserted,1903,,9,inner\n");
  EXPECT_EQ(run(VORN " diff -o nowhere/out.csv oak.rwl more.rwl"), 4);
}

TEST_F(Diff, EndsWith2WhereItIsUsedWrongly) {
  EXPECT_EQ(run(VORN " diff oak.rwl"), 2);
  EXPECT_EQ(run(VORN " diff oak.rwl oak.rwl oak.rwl"), 2);
  EXPECT_EQ(run(VORN " diff --fail-on note oak.rwl oak.rwl"), 2);
  EXPECT_EQ(run(VORN " diff --format xml oak.rwl oak.rwl"), 2);
}

using Convert = Diff;

TEST_F(Convert, WritesTheSameCoresInAnotherLayout) {
  for (const std::string layout : {"tucson", "heidelberg", "compact"}) {
    EXPECT_EQ(run(VORN " convert oak.rwl --to " + layout + " -o new"), 0) << layout;
    EXPECT_EQ(said + printed, "");
    EXPECT_EQ(run(VORN " diff --fail-on warning oak.rwl new"), 0) << layout;
  }
}

TEST_F(Convert, WritesToStandardOutput) {
  EXPECT_EQ(run(VORN " convert --to tucson - <oak.rwl"), 0);
  EXPECT_EQ(printed, folder.read("oak.rwl"));
}

TEST_F(Convert, RefusesWhatWouldNotComeBackAndLeavesTheOlderFile) {
  folder.write("new", "older\n");
  folder.write("wide.rwl", raw_text("OAK1", 1900, elm) + raw_text("ELM", 1900, {500, 10'000, 700}));
  EXPECT_EQ(run(VORN " convert wide.rwl --to compact -o new"), 4);
  EXPECT_EQ(said, "vorn: wide.rwl: ELM: widths of 10 mm or more do not fit\n");
  EXPECT_EQ(run(VORN " convert note.txt --to compact -o new"), 4);
  EXPECT_EQ(folder.read("new"), "older\n");
  EXPECT_EQ(run(VORN " convert note.txt --to compact"), 4);
  EXPECT_EQ(printed, "");
}

TEST_F(Convert, SaysWhatIsLost) {
  folder.write("headed.rwl", "A site\n" + folder.read("oak.rwl"));
  EXPECT_EQ(run(VORN " convert headed.rwl --to compact -o new"), 0);
  EXPECT_EQ(said, "vorn: headed.rwl: 1 line before the data is not kept\n");
  EXPECT_EQ(run(VORN " convert headed.rwl --to compact -o new --fail-on error"), 0);
  EXPECT_EQ(run(VORN " convert headed.rwl --to compact -o new --fail-on warning"), 1);
}

TEST_F(Convert, SaysOnlyWhyItRefusesWhereNobodyWantsToHearMore) {
  folder.write("headed.rwl", "A site\n" + folder.read("oak.rwl") + "\n" + folder.read("more.rwl"));
  EXPECT_EQ(run(VORN " convert -q headed.rwl --to compact -o new --fail-on error"), 1);
  EXPECT_EQ(said, "");
  EXPECT_EQ(run(VORN " diff --fail-on warning oak.rwl new"), 0);
  EXPECT_EQ(run(VORN " convert -q note.txt --to compact -o new"), 4);
  EXPECT_EQ(said, "vorn: note.txt: no ring widths to write\n");
}

TEST_F(Convert, WritesWhatCouldBeReadAndSaysWhatNot) {
  folder.write("cut.rwl", folder.read("oak.rwl") + "\n" + folder.read("more.rwl"));
  EXPECT_EQ(run(VORN " convert cut.rwl --to compact -o new --fail-on error"), 1);
  EXPECT_EQ(said, "vorn: cut.rwl:5: what follows is not read\n");
  EXPECT_EQ(run(VORN " diff --fail-on warning oak.rwl new"), 0);
  EXPECT_EQ(run(VORN " convert cut.rwl --to compact -o new"), 0);
}

TEST_F(Convert, EndsWith2WhereItIsUsedWrongly) {
  EXPECT_EQ(run(VORN " convert oak.rwl"), 2);
  EXPECT_EQ(run(VORN " convert --to compact"), 2);
  EXPECT_EQ(run(VORN " convert oak.rwl --to frob"), 2);
  EXPECT_EQ(run(VORN " convert oak.rwl oak.rwl --to compact"), 2);
  EXPECT_EQ(run(VORN " convert oak.rwl --to compact -o nowhere/new"), 4);
}

}  // namespace
}  // namespace vorn
