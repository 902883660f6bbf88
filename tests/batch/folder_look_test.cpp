// What became of the files of a list, one after the other.
#include "batch/folder_look.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "batch/specimens.h"
#include "records/memory_files.h"
#include "support/raw_text.h"

namespace vorn {
namespace {

const std::string oak1 = raw_text("OAK1", 1903, widths(47), 999);
const std::string oak2 = raw_text("OAK2", 1913, widths(44));

class Folder : public testing::Test {
 protected:
  // Looks at all files.
  std::vector<SharedReport> look(const std::string& list) {
    files.put("Vorn.fil", list);
    FolderLook all(files, 2026);
    while (!all.is_done()) all.look();
    return *all.reports();
  }
  MemoryFiles files;
};

TEST_F(Folder, FilesThatAreReadWholeHaveTheirCoresAndYears) {
  files.put("oaks.rwl", oak1 + oak2);
  const auto reports = look("oaks.rwl\n");
  ASSERT_EQ(reports.size(), 1u);
  EXPECT_EQ(reports[0]->file, "oaks.rwl");
  EXPECT_EQ(reports[0]->layout, "Tuscon Raw");
  EXPECT_EQ(reports[0]->cores, 2u);
  EXPECT_EQ(reports[0]->first_year, 1903);
  EXPECT_EQ(reports[0]->last_year, 1956);
  EXPECT_TRUE(reports[0]->is_whole);
  EXPECT_TRUE(reports[0]->copies.empty());
  EXPECT_EQ(words_on_loss(reports), "");
}

TEST_F(Folder, WhatIsLostComesFirstWithTheCopyThatHasIt) {
  files.put("oaks.rwl", oak1 + "\n" + oak2);
  const auto reports = look("oaks.rwl\n");
  ASSERT_EQ(reports.size(), 1u);
  EXPECT_FALSE(reports[0]->is_whole);
  EXPECT_TRUE(reports[0]->was_read);
  EXPECT_EQ(reports[0]->cores, 1u);
  EXPECT_EQ(severity_of(reports[0]->findings.front().kind->effect), Severity::error);
  EXPECT_EQ(severity_of(reports[0]->findings.back().kind->effect), Severity::note);
  ASSERT_EQ(reports[0]->copies.size(), 1u);
  EXPECT_FALSE(reports[0]->copies[0].choices.unit);
  EXPECT_EQ(reports[0]->copies[0].done, std::vector<std::string>{"line 7, empty, left out"});
  EXPECT_EQ(words_on_loss(reports), "oaks.rwl is not read whole: the panel Files says what is missing");
}

// Without an end mark nothing says the unit: both are offered.
TEST_F(Folder, WhereTheUnitIsAGuessThereIsACopyForEach) {
  std::string no_mark = oak2;
  no_mark.erase(no_mark.rfind(" -9999"));
  files.put("oaks.rwl", no_mark + "\n\n" + oak1);
  const auto reports = look("oaks.rwl\n");
  ASSERT_EQ(reports.size(), 1u);
  ASSERT_EQ(reports[0]->copies.size(), 2u);
  EXPECT_EQ(reports[0]->copies[0].choices.unit, 100.0);
  EXPECT_EQ(reports[0]->copies[1].choices.unit, 1000.0);
  EXPECT_TRUE(reports[0]->no_copy.empty());
}

TEST_F(Folder, NamesThatAreNotThereAreTheLists) {
  files.put("oaks.rwl", oak1);
  const auto reports = look("oaks.rwl\nelms.rwl\n");
  ASSERT_EQ(reports.size(), 2u);
  EXPECT_EQ(reports[0]->file, "Vorn.fil");
  EXPECT_FALSE(reports[0]->is_whole);
  EXPECT_EQ(reports[0]->findings.front().line, 2);
  EXPECT_TRUE(reports[1]->is_whole);
}

TEST_F(Folder, AFileOfNoLayoutIsNotRead) {
  files.put("notes.txt", "what was seen on the way\n");
  const auto reports = look("notes.txt\n");
  ASSERT_EQ(reports.size(), 1u);
  EXPECT_FALSE(reports[0]->was_read);
  EXPECT_FALSE(reports[0]->is_whole);
  EXPECT_TRUE(reports[0]->copies.empty());
  EXPECT_FALSE(reports[0]->no_copy.empty());
}

TEST_F(Folder, WithoutAListThereIsNothingToLookAt) {
  FolderLook none(files, 2026);
  EXPECT_TRUE(none.is_done());
  EXPECT_TRUE(none.reports()->empty());
}

TEST_F(Folder, ItSaysWhichFileIsLookedAt) {
  files.put("a.rwl", oak1);
  files.put("b.rwl", oak2);
  files.put("Vorn.fil", "a.rwl\nb.rwl\n");
  FolderLook look(files, 2026);
  EXPECT_EQ(look.working(), "file 1 of 2: a.rwl");
  look.look();
  EXPECT_EQ(look.working(), "file 2 of 2: b.rwl");
  EXPECT_EQ(look.reports()->size(), 1u);
  const SharedReport first = look.reports()->front();
  look.look();
  EXPECT_EQ(look.reports()->front(), first) << "it is not made anew for each that comes behind it";
  EXPECT_EQ(look.working(), "");
}

TEST_F(Folder, OfManyThatAreNotReadWholeThreeAreNamed) {
  std::vector<SharedReport> reports;
  for (const char* name : {"a", "b", "c", "d"})
    reports.push_back(std::make_shared<const FileReport>(FileReport{.file = name}));
  EXPECT_EQ(words_on_loss(reports),
            "a, b, c and 1 more are not read whole: the panel Files says what is missing");
}

}  // namespace
}  // namespace vorn
