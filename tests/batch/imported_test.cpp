// Files of layouts that the program does not read: what the verbs make of them, and of their copies.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "batch/collection.h"
#include "batch/conversion.h"
#include "batch/difference.h"
#include "batch/faithful_save.h"
#include "batch/folder_look.h"
#include "batch/reading_check.h"
#include "batch/repair.h"
#include "records/memory_files.h"

namespace vorn {
namespace {

const std::string table =
    "year,Oak north 1,OAK2\n"
    "1900,1.23,\n"
    "1901,0.98,2.345\n"
    "1902,NA,1.1\n"
    "1903,0.75,0.5\n";

struct ImportedFiles : testing::Test {
  MemoryFiles files;
  Collection read(const std::string& bytes) {
    files.put("oaks.csv", bytes);
    return Collection(files, "oaks.csv", untreated());
  }
  static std::vector<std::string> kinds_of(const Collection& collection) {
    std::vector<std::string> all;
    check_findings(collection, 0, [&](const FileFinding& finding) { all.emplace_back(finding.kind->id); });
    return all;
  }
};

TEST_F(ImportedFiles, AreReadByTheVerbs) {
  const Collection oaks = read(table);
  ASSERT_TRUE(oaks.imported());
  EXPECT_TRUE(oaks.was_read());
  const auto cores = oaks.cores();
  ASSERT_EQ(cores.size(), 2u);
  EXPECT_EQ(cores[0].years(), (YearSpan{1900, 1903}));
  EXPECT_DOUBLE_EQ(cores[0].at(1901), 0.98);
  EXPECT_FALSE(cores[0].has(1902));
  EXPECT_EQ(cores[1].years(), (YearSpan{1901, 1903}));
  EXPECT_DOUBLE_EQ(cores[1].at(1901), 2.345);
  EXPECT_TRUE(is_read_whole(oaks));
}

// To those who ask whether all was read a guess is no loss.
TEST_F(ImportedFiles, GuessesAreSaidApartFromLosses) {
  const Collection oaks = read(table);
  EXPECT_EQ(oaks.words(), Sentences{});
  ASSERT_FALSE(oaks.doubts().empty());
  EXPECT_TRUE(oaks.doubts().front().starts_with("oaks.csv:1: no unit is said: taken for millimetres"));
  const Collection broken = read("year,A\n1900,1.5\n1901,much\n1902,2.5\n");
  EXPECT_FALSE(broken.words().empty());
}

// What the program's reader said of the original is no trouble of it.
TEST_F(ImportedFiles, AreToldOfByTheImportersAlone) {
  const auto kinds = kinds_of(read(table));
  EXPECT_EQ(kinds.front(), "imported");
  EXPECT_EQ(std::ranges::count(kinds, "taken-as"), 1);
  EXPECT_EQ(std::ranges::count(kinds, "read"), 0);
}

TEST_F(ImportedFiles, HaveACopyThatTheProgramReads) {
  const Repair copy = repaired(read(table), table, {});
  EXPECT_EQ(copy.ending, ".rwl");
  EXPECT_EQ(copy.done.front(), "2 series of table of ring widths, written as Tucson ring widths");
  files.put("oaks.rwl", copy.bytes);
  const Collection back(files, "oaks.rwl", untreated());
  EXPECT_FALSE(back.imported());
  EXPECT_TRUE(is_read_whole(back));
  const Collection oaks = read(table);
  EXPECT_TRUE(changes_between(ComparableCores(oaks).cores(), ComparableCores(back).cores()).empty());
}

// The program itself does not read it: who looks at its folder is told.
TEST_F(ImportedFiles, AreNotReadInAListAndHaveACopyOnOffer) {
  files.put("oaks.csv", table);
  files.put("Vorn.fil", "oaks.csv\n");
  FolderLook look(files, 2026);
  look.look();
  const FileReport& report = *look.reports()->front();
  EXPECT_FALSE(report.was_read);
  EXPECT_FALSE(report.is_whole);
  EXPECT_EQ(report.copies.size(), 1u);
}

// Whole numbers of which nobody says the unit: the guess is said, and the user may choose.
TEST_F(ImportedFiles, OfWholeNumbersTheUnitCanBeChosen) {
  const std::string whole = "year,OAK1\n1900,123\n1901,98\n1902,110\n";
  const auto ring = [&](const Repair& made) {
    files.put("copy", made.bytes);
    return Collection(files, "copy", untreated()).cores().front().at(1900);
  };
  EXPECT_DOUBLE_EQ(ring(repaired(read(whole), whole, {})), 1.23);
  EXPECT_DOUBLE_EQ(ring(repaired(read(whole), whole, {.unit = 1000})), 0.123);
  files.put("Vorn.fil", "oaks.csv\n");
  FolderLook look(files, 2026);
  look.look();
  EXPECT_EQ(look.reports()->front()->copies.size(), 2u);  // millimetres would be too wide
}

TEST_F(ImportedFiles, AreCheckedInTheUnitThatIsChosen) {
  const Collection oaks = read("year,OAK1\n1900,123\n1901,98\n1902,110\n");
  std::vector<std::string> units;
  check_findings(oaks, 0,
                 [&](const FileFinding& finding) {
                   if (finding.kind->id.starts_with("unit"))
                     units.push_back(std::string(finding.kind->id) + finding.words);
                 },
                 {.unit = 1000});
  EXPECT_EQ(oaks.doubts().size(), 1u);
  EXPECT_EQ(oaks.doubts({.unit = 1000}), Sentences{});
  EXPECT_EQ(units,
            std::vector<std::string>{
                "unit-chosenno unit is said: taken for thousandths of a millimetre, as it was chosen"});
}

// Whether a ring is still to come is asked of the check alone, which says all else as it was found at first.
TEST_F(ImportedFiles, OfYearsToComeTheCheckIsAsked) {
  const Collection oaks = read(table);
  const auto words = [&](int this_year) {
    std::vector<std::string> all;
    check_findings(oaks, this_year, [&](const FileFinding& finding) {
      if (finding.kind->id != "years-to-come")
        all.push_back(std::string(finding.kind->id) + std::to_string(finding.line) + finding.words);
    });
    return all;
  };
  const auto count = [&](int this_year) {
    std::int64_t come = 0;
    check_findings(oaks, this_year,
                   [&](const FileFinding& finding) { come += finding.kind->id == "years-to-come"; });
    return come;
  };
  EXPECT_EQ(count(1902), 2);
  EXPECT_EQ(count(1903), 0);
  EXPECT_EQ(count(0), 0);
  EXPECT_EQ(words(1902), words(0));
  EXPECT_EQ(words(1903), words(0));
}

TEST_F(ImportedFiles, AreNoPlaceToPutCoresBackInto) {
  const Collection oaks = read(table);
  EXPECT_FALSE(saved(oaks, table, oaks).refused.empty());
}

TEST_F(ImportedFiles, WhatIsNoTableIsStillNoLayout) {
  for (const char* words :
       {"", "\n", "year\n", "What was seen on the way,\nand what was not.\n", "<html>\n"}) {
    const Collection none = read(words);
    EXPECT_FALSE(none.was_read()) << words;
    EXPECT_FALSE(none.words().empty()) << words;
    EXPECT_FALSE(is_read_whole(none)) << words;
  }
}

// --- And back

TEST_F(ImportedFiles, TablesComeBackAsTheyWereWritten) {
  for (const char* target : {"csv", "noaa"}) {
    const Conversion made = converted(read(table), *target_named(target));
    EXPECT_EQ(made.refused, Sentences{}) << target;
    ASSERT_FALSE(made.bytes.empty()) << target;
    files.put("again", made.bytes);
    const Collection again(files, "again", untreated()), oaks = read(table);
    EXPECT_TRUE(changes_between(ComparableCores(oaks).cores(), ComparableCores(again).cores()).empty())
        << target << "\n"
        << made.bytes;
  }
}

// Names of Tucson files may have blanks and letters of older tables.
TEST_F(ImportedFiles, NamesStayAsTheyAreInTables) {
  files.put("old.rwl",
            "EGR108 11900   120   130   140   150   160   170   180   190   200   210\n"
            "EGR108 11910   120   130   999\n"
            "M\xfcHL1   1900   120   130   140   999\n");
  const Collection old(files, "old.rwl", untreated());
  for (const char* target : {"csv", "noaa"}) {
    const Conversion made = converted(old, *target_named(target));
    EXPECT_EQ(made.refused, Sentences{}) << target;
    EXPECT_EQ(made.lost,
              Sentences{"old.rwl: M\xc3\xbcHL1: its name is no UTF-8, and is read as Windows has it "
                        "(1252)"});
    EXPECT_NE(made.bytes.find("EGR108 1"), std::string::npos);
    EXPECT_NE(made.bytes.find("M\xc3\xbcHL1"), std::string::npos);
  }
}

TEST_F(ImportedFiles, AWidthNeverLooksLikeHundredths) {
  const Conversion made = converted(read("year;A;B\n1900;1,5;2\n1901;2;3,25\n"), *target_named("csv"));
  EXPECT_EQ(made.bytes, "year,A,B\n1900,1.500,2.000\n1901,2.000,3.250\n");
}

}  // namespace
}  // namespace vorn
