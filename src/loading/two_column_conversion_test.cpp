#include "loading/two_column_conversion.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/file_bench.h"

namespace vorn {
namespace {

class TwoColumnConversion : public FileBench {
 protected:
  // A line of an input: 14 columns of anything, the year and the width in mm.
  static std::string ring(int year, const char* width) {
    char text[64];
    std::snprintf(text, sizeof text, "any words here%6d%7s\n", year, width);
    return text;
  }
};

TEST_F(TwoColumnConversion, InputsBecomeOneTucsonRawFile) {
  ScratchFolder::write("TRW.fil", "out.rwl\nNOW31.trw\ndir/NOW32.trw\n");
  std::filesystem::create_directory("dir");
  ScratchFolder::write("NOW31.trw", ring(1998, "1.234") + ring(1999, "0.5") + ring(2000, "789"));
  ScratchFolder::write("dir/NOW32.trw", ring(1950, "2.000"));
  read_trw(w);
  EXPECT_EQ(messages(), Messages{});
  EXPECT_EQ(w.nc, 2);
  EXPECT_EQ(ScratchFolder::read("out.rwl"), raw_line("NOW31", 1998, {1234, 500}) +
                                                raw_line("NOW31", 2000, {789, -9999}) +
                                                raw_line("NOW32", 1950, {2000, -9999}));
  EXPECT_EQ(w.cnam(1).trimmed(), "out.rwl");
  EXPECT_TRUE(w.derived_stale);
}

TEST_F(TwoColumnConversion, HowFarItIsIsTold) {
  ScratchFolder::write("TRW.fil", "out.rwl\nNOW31.trw\nNOW32.trw\n");
  ScratchFolder::write("NOW31.trw", ring(1998, "1.234"));
  ScratchFolder::write("NOW32.trw", ring(1998, "1.234"));
  read_trw(w);
  EXPECT_EQ(screen.told,
            (std::vector<std::pair<std::string, double>>{{"TRW.fil", 0}, {"TRW.fil", 0.5}, {"TRW.fil", 1}}));
}

TEST_F(TwoColumnConversion, Year0OnTheFirstLineDatesTheCoreToEndIn2009) {
  ScratchFolder::write("TRW.fil", "out.rwl\nfloat.trw\n");
  ScratchFolder::write("float.trw", ring(0, "1.0") + ring(1, "2.0") + ring(2, "3.0"));
  read_trw(w);
  EXPECT_EQ(w.fy(1), 2007);
  EXPECT_EQ(w.ly(1), 2009);
  EXPECT_EQ(w.yr(1), 3);
}

TEST_F(TwoColumnConversion, NegativeWidthBecomesMinus9Point99AndCountsAsAMissingRing) {
  ScratchFolder::write("TRW.fil", "out.rwl\na.trw\n");
  ScratchFolder::write("a.trw", ring(1990, "1.0") + ring(1991, "-0.5") + ring(1992, "0.0"));
  read_trw(w);
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{1.0, -9.99, 0.0}));
  EXPECT_EQ(values(w.xok, 1), (std::vector<bool>{true, false, true}));
  EXPECT_EQ(ScratchFolder::read("out.rwl"), raw_line("a", 1990, {1000, -9990, 0, -9999}));
}

TEST_F(TwoColumnConversion, OnlyTheFirstYearIsLookedAt) {
  ScratchFolder::write("TRW.fil", "out.rwl\na.trw\n");
  ScratchFolder::write("a.trw", ring(1990, "1.0") + ring(1234, "2.0"));
  read_trw(w);
  EXPECT_EQ(w.fy(1), 1990);
  EXPECT_EQ(w.ly(1), 1991);
}

// The path goes first, then four characters whatever they are.
TEST_F(TwoColumnConversion, CoreIsNamedAfterItsFileWithoutPathAndLastFourCharacters) {
  const std::vector<std::pair<std::string, std::string>> names = {
      {"NOW31.trw", "NOW31   "},        {"a/b/NOW31.trw", "NOW31   "}, {"a\\NOW31.trw", "NOW31   "},
      {"VERYLONGNAME.trw", "VERYLONG"}, {"dir/abc", "        "},       {"noextension", "noexten "}};
  std::string list = "out.rwl\n";
  for (const auto& [file, core] : names) list += file + "\n";
  ScratchFolder::write("TRW.fil", list + "a.trw\n");
  ScratchFolder::write("a.trw", ring(1990, "1.0"));
  read_trw(w);  // the others do not exist; each has its entry all the same
  for (int i = 1; i <= static_cast<int>(names.size()); ++i) {
    EXPECT_EQ(w.nam(i).view(), names[static_cast<std::size_t>(i - 1)].second);
  }
}

// Entry 2 stays empty and entries 1 to 2 are written: the third, although read, is not.
TEST_F(TwoColumnConversion, MissingInputUsesUpItsNumberAndTheLastCoreIsNotWritten) {
  ScratchFolder::write("TRW.fil", "out.rwl\na.trw\ngone.trw\nc.trw\n");
  ScratchFolder::write("a.trw", ring(1990, "1.0"));
  ScratchFolder::write("c.trw", ring(1980, "3.0"));
  read_trw(w);
  EXPECT_EQ(messages(), Messages{"gone.trw does not exist"});
  EXPECT_EQ(w.nc, 2);
  EXPECT_EQ(w.nam(2).trimmed(), "gone");
  EXPECT_EQ(w.yr(2), 0);
  EXPECT_EQ(w.fy(2), 0);
  EXPECT_EQ(w.ly(2), -1);
  EXPECT_EQ(w.ad(3), w.ad(2));
  EXPECT_EQ(w.x(w.ad(3)), 3.0);
  EXPECT_EQ(ScratchFolder::read("out.rwl"),
            raw_line("a", 1990, {1000, -9999}) + raw_line("gone", 0, {-9999}));
}

TEST_F(TwoColumnConversion, WithoutTRWFilTheProgramEndsAfterAMessage) {
  try {
    read_trw(w);
    ADD_FAILURE() << "went on";
  } catch (const ProgramEnd& end) {
    EXPECT_EQ(end.reason(), EndReason::cannot_go_on);
  }
  EXPECT_EQ(messages(), Messages{"TRW.fil does not exist"});
}

// Otherwise the first file of the list, whose name stands where the output's would, would be written over.
TEST_F(TwoColumnConversion, EmptyTRWFilIsToldAsRead1AndChangesNothing) {
  add_core(1900, {1, 2, 3});
  ScratchFolder::write("TRW.fil", "");
  ScratchFolder::write("site.rwl", "precious");
  w.cnam(1) = "site.rwl";
  read_trw(w);
  EXPECT_EQ(messages(), Messages{"Read1TRW.fil fail err =    -1"});
  EXPECT_EQ(ScratchFolder::read("site.rwl"), "precious");
  EXPECT_EQ(w.cnam(1).trimmed(), "site.rwl");
  EXPECT_EQ(w.nc, 1);
  EXPECT_FALSE(w.derived_stale);
}

TEST_F(TwoColumnConversion, TRWFilThatIsAFolderIsToldAsOpenAndRead1) {
  std::filesystem::create_directory("TRW.fil");
  read_trw(w);
  EXPECT_EQ(messages(), (Messages{"OpenTRW.fil fail err =    21", "Read1TRW.fil fail err =    -1"}));
}

TEST_F(TwoColumnConversion, BadLineOfAnInputIsToldAsRead2AndCountsAsARingOfWidth0) {
  ScratchFolder::write("TRW.fil", "out.rwl\na.trw\n");
  ScratchFolder::write("a.trw", ring(1990, "1.0") + ring(1991, "x") + ring(1992, "3.0"));
  read_trw(w);
  EXPECT_EQ(messages(), Messages{"Read2a.trw fail err =  5010"});
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{1, 0, 3}));
}

TEST_F(TwoColumnConversion, InputThatIsAFolderIsToldAsOpenAndHasNoYears) {
  std::filesystem::create_directory("folder.trw");
  ScratchFolder::write("TRW.fil", "out.rwl\nfolder.trw\n");
  read_trw(w);
  EXPECT_EQ(messages(), Messages{"Openfolder.trw fail err =    21"});
  EXPECT_EQ(w.nc, 1);
  EXPECT_EQ(w.yr(1), 0);
  EXPECT_EQ(w.fy(1), 2010);
  EXPECT_EQ(w.ly(1), 2009);
}

// What could not be read is missing from the cores; the older output is whole.
TEST_F(TwoColumnConversion, OlderOutputIsKeptWhenAnInputCannotBeOpened) {
  std::filesystem::create_directory("folder.trw");
  ScratchFolder::write("TRW.fil", "out.rwl\na.trw\nfolder.trw\n");
  ScratchFolder::write("a.trw", ring(1990, "1.0"));
  ScratchFolder::write("out.rwl", "precious");
  read_trw(w);
  EXPECT_EQ(messages(), (Messages{"Openfolder.trw fail err =    21", "out.rwl is kept"}));
  EXPECT_EQ(ScratchFolder::read("out.rwl"), "precious");
  EXPECT_EQ(w.nc, 2);
}

// Nothing was broken off: what is written is all that there is.
TEST_F(TwoColumnConversion, OlderOutputIsReplacedThoughAnInputIsMissingOrALineIsNoNumber) {
  ScratchFolder::write("TRW.fil", "out.rwl\na.trw\ngone.trw\n");
  ScratchFolder::write("a.trw", ring(1990, "1.0") + ring(1991, "x"));
  ScratchFolder::write("out.rwl", "older");
  read_trw(w);
  EXPECT_EQ(messages(), (Messages{"Read2a.trw fail err =  5010", "gone.trw does not exist"}));
  EXPECT_EQ(ScratchFolder::read("out.rwl"), raw_line("a", 1990, {1000, 0, -9999}));
}

TEST_F(TwoColumnConversion, OutputThatCannotBeCreatedIsToldAsOpenW) {
  ScratchFolder::write("TRW.fil", "nowhere/out.rwl\na.trw\n");
  ScratchFolder::write("a.trw", ring(1990, "1.0"));
  read_trw(w);
  EXPECT_EQ(messages(), Messages{"OpenWnowhere/out.rwl fail err =     2"});
  EXPECT_EQ(w.nc, 1);
}

TEST_F(TwoColumnConversion, InputThatWouldPassThePoolsEndIsRefusedAndThoseBeforeItWritten) {
  ScratchFolder::write("TRW.fil", "out.rwl\na.trw\nlong.trw\na.trw\n");
  ScratchFolder::write("a.trw", ring(1990, "1.0"));
  std::string lines;
  for (int k = 0; k < 1'200'000; ++k) lines += k == 0 ? ring(1990, "0.0") : "\n";  // a ring of width 0 each
  ScratchFolder::write("long.trw", lines);
  read_trw(w);
  EXPECT_EQ(messages(), Messages{"Would be too many rings"});
  EXPECT_EQ(w.nc, 1);
  EXPECT_EQ(w.yr(2), 0);
  EXPECT_EQ(w.fy(2), 0);
  EXPECT_EQ(w.ly(2), -1);
  EXPECT_EQ(ScratchFolder::read("out.rwl"), raw_line("a", 1990, {1000, -9999}));
}

TEST_F(TwoColumnConversion, TakesUpTo10000Names) {
  std::string list = "out.rwl\n";
  for (int k = 1; k <= 10'001; ++k) list += "a.trw\n";
  ScratchFolder::write("TRW.fil", list);
  ScratchFolder::write("a.trw", ring(1990, "1.0"));
  read_trw(w);
  EXPECT_EQ(messages(), Messages{"TRW.fil: inputs behind the 10,000th were not read"});
  EXPECT_EQ(w.nc, 10'000);
}

// What is in the store and in an older output is worth more than nothing.
TEST_F(TwoColumnConversion, WithoutAnyInputStoreAndOlderOutputStay) {
  add_core(1953, {0.1, 0.2});
  w.nam(1) = "CORE01";
  w.cnam(1) = "site.rwl";
  ScratchFolder::write("out.rwl", "older");
  ScratchFolder::write("TRW.fil", "out.rwl\ngone.trw\nlost.trw\n");
  read_trw(w);
  EXPECT_EQ(messages(), (Messages{"gone.trw does not exist", "lost.trw does not exist"}));
  EXPECT_EQ(ScratchFolder::read("out.rwl"), "older");
  EXPECT_EQ(w.nc, 1);
  EXPECT_EQ(w.nam(1), Name("CORE01"));
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{0.1, 0.2}));
  EXPECT_EQ(w.cnam(1).trimmed(), "site.rwl");
  EXPECT_FALSE(w.derived_stale);
}

TEST_F(TwoColumnConversion, WithAnOutputAndNoInputListedNothingIsChanged) {
  ScratchFolder::write("out.rwl", "older");
  ScratchFolder::write("TRW.fil", "out.rwl\n");
  read_trw(w);
  EXPECT_EQ(messages(), Messages{});
  EXPECT_EQ(ScratchFolder::read("out.rwl"), "older");
}

// --- Carefully.

TEST_F(TwoColumnConversion, CarefullyWithoutTRWFilTheMessageIsAll) {
  add_core(1950, {1, 2});
  w.cnam(1) = "site.rwl";
  w.careful.set(Mend::read_trw, true);
  read_trw(w);
  EXPECT_EQ(messages(), Messages{"TRW.fil does not exist"});
  EXPECT_EQ(w.nc, 1);
  EXPECT_EQ(w.cnam(1).trimmed(), "site.rwl");
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{1, 2}));
}

TEST_F(TwoColumnConversion, CarefullyAMissingInputUsesUpNoNumberAndAllCoresAreWritten) {
  ScratchFolder::write("TRW.fil", "out.rwl\ngone.trw\na.trw\nlost.trw\nb.trw\n");
  ScratchFolder::write("a.trw", ring(1950, "1.000"));
  ScratchFolder::write("b.trw", ring(1960, "2.000"));
  w.careful.set(Mend::read_trw, true);
  read_trw(w);
  EXPECT_EQ(messages(), (Messages{"gone.trw does not exist", "lost.trw does not exist"}));
  EXPECT_EQ(w.nc, 2);
  EXPECT_EQ(ScratchFolder::read("out.rwl"),
            raw_line("a", 1950, {1000, -9999}) + raw_line("b", 1960, {2000, -9999}));
}

}  // namespace
}  // namespace vorn
