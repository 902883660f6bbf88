// Folders and files that are opened, tried beside a window; the test answers what is asked.
#include "platform/qt/file_opening.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <filesystem>

#include "platform/qt/recent_folders.h"
#include "platform/qt/settings.h"
#include "platform/qt/window_system_for_tests.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

struct Opening : testing::Test {
  QApplication& application = application_for_tests();
  ScratchFolder folder;
  QWidget window;
  QStringList opened;
  FileOpening opening{window, [this](const QString& chosen) { opened << chosen; }};

  Opening() {
    for (const char* name : {"a", "b"}) std::filesystem::create_directory(name);
    folder.write("a/one.rwl", "one");
    folder.write("a/two.crn", "two");
    folder.write("b/three.rwl", "three");
    window.show();
  }
  QString path(const char* name) { return QDir::current().filePath(name); }
  QMessageBox* box() {
    for (auto* found : window.findChildren<QMessageBox*>()) {
      if (found->isVisible()) return found;
    }
    return nullptr;
  }
  void answer(const char* text) {
    ASSERT_NE(box(), nullptr);
    for (QAbstractButton* button : box()->buttons()) {
      if (button->text() == text) return button->click();
    }
    FAIL() << text << " is no answer to " << box()->text().toStdString();
  }
};

TEST_F(Opening, AFolderWithAListIsOpenedAtOnce) {
  folder.write("a/Vorn.fil", "one.rwl\n");
  opening.open_any({path("a")});
  EXPECT_EQ(opened, QStringList(path("a")));
}

TEST_F(Opening, ForAFolderWithoutAListOneIsMadeAfterAYes) {
  opening.open_folder(path("a"));
  answer("Cancel");
  EXPECT_FALSE(folder.exists("a/Vorn.fil"));
  EXPECT_TRUE(opened.isEmpty());
  opening.open_folder(path("a"));
  answer("Make the List");
  EXPECT_EQ(folder.read("a/Vorn.fil"), "one.rwl\ntwo.crn\n");
  EXPECT_EQ(opened, QStringList(path("a")));
}

TEST_F(Opening, WhatHoldsNothingToWorkOnIsTold) {
  std::filesystem::create_directory("empty");
  for (const char* name : {"empty", "gone"}) {
    opening.open_folder(path(name));
    ASSERT_NE(box(), nullptr);
    EXPECT_TRUE(box()->text().contains(name));
    box()->close();
  }
  opening.open_any({path("gone.rwl")});
  EXPECT_NE(box(), nullptr);
  EXPECT_TRUE(opened.isEmpty());
}

TEST_F(Opening, FilesOfOneFolderBecomeItsListWidthsFirst) {
  opening.open_files({path("a/two.crn"), path("a/one.rwl")});
  answer("Make the List");
  EXPECT_EQ(folder.read("a/Vorn.fil"), "one.rwl\ntwo.crn\n");
  EXPECT_EQ(opened, QStringList(path("a")));
}

// What the program does not read is read into a copy, which is listed in its place.
TEST_F(Opening, ATableOfWidthsIsReadIntoAFileOfTheProgram) {
  const std::string table = "year,OAK1,OAK2\n1900,1.25,0.5\n1901,1.5,0.75\n1902,1.75,1\n";
  folder.write("a/oaks.csv", table);
  folder.write("a/oaks.rwl", "of somebody else");
  opening.open_files({path("a/oaks.csv"), path("a/one.rwl")});
  ASSERT_NE(box(), nullptr);
  EXPECT_TRUE(box()->informativeText().contains("oaks.csv is read into oaks-2.rwl."))
      << box()->text().toStdString();
  EXPECT_FALSE(folder.exists("a/oaks-2.rwl"));
  answer("Make the List");
  EXPECT_EQ(folder.read("a/Vorn.fil"), "oaks-2.rwl\none.rwl\n");
  EXPECT_NE(folder.read("a/oaks-2.rwl").find("OAK2    1900"), std::string::npos);
  EXPECT_EQ(folder.read("a/oaks.csv"), table);
  EXPECT_EQ(folder.read("a/oaks.rwl"), "of somebody else");
}

TEST_F(Opening, AListThatStandsThereIsReplacedOnlyAfterAYesAndKept) {
  folder.write("a/Vorn.fil", "old.rwl\n");
  folder.write("a/Vorn.fil.1", "older.rwl\n");
  opening.open_files({path("a/one.rwl")});
  EXPECT_TRUE(box()->informativeText().contains("Vorn.fil.2"));
  answer("Work with the List as It Is");
  EXPECT_EQ(folder.read("a/Vorn.fil"), "old.rwl\n");
  EXPECT_FALSE(folder.exists("a/Vorn.fil.2"));
  opening.open_files({path("a/one.rwl")});
  answer("Cancel");
  EXPECT_EQ(opened.size(), 1);
  opening.open_files({path("a/one.rwl")});
  answer("Replace the List");
  EXPECT_EQ(folder.read("a/Vorn.fil"), "one.rwl\n");
  EXPECT_EQ(folder.read("a/Vorn.fil.1"), "older.rwl\n");
  EXPECT_EQ(folder.read("a/Vorn.fil.2"), "old.rwl\n");
  EXPECT_EQ(opened.size(), 2);
}

TEST_F(Opening, TheListItselfStandsForItsFolder) {
  folder.write("a/Vorn.fil", "old.rwl\n");
  opening.open_files({path("a/Vorn.fil")});
  EXPECT_EQ(opened, QStringList(path("a")));
}

TEST_F(Opening, FilesOfSeveralFoldersAreCopiedIntoOneThatTheUserPicks) {
  std::filesystem::create_directory("c");
  opening.open_files({path("a/one.rwl"), path("b/three.rwl")});
  answer("Choose the Folder for the Copies...");
  auto* dialog = window.findChild<QFileDialog*>();
  ASSERT_NE(dialog, nullptr);
  emit dialog->fileSelected(path("c"));
  answer("Make the List");
  EXPECT_EQ(folder.read("c/one.rwl"), "one");
  EXPECT_EQ(folder.read("c/three.rwl"), "three");
  EXPECT_EQ(folder.read("c/Vorn.fil"), "one.rwl\nthree.rwl\n");
  EXPECT_EQ(folder.read("a/one.rwl"), "one");
  EXPECT_EQ(opened, QStringList(path("c")));
}

TEST_F(Opening, NoCopyIsWrittenOverAnotherFile) {
  folder.write("b/one.rwl", "another one");
  opening.open_files({path("a/one.rwl"), path("b/three.rwl")});
  answer("Choose the Folder for the Copies...");
  auto* dialog = window.findChild<QFileDialog*>();
  ASSERT_NE(dialog, nullptr);
  emit dialog->fileSelected(path("b"));
  ASSERT_NE(box(), nullptr);
  EXPECT_TRUE(box()->text().contains("one.rwl"));
  EXPECT_EQ(folder.read("b/one.rwl"), "another one");
  EXPECT_FALSE(folder.exists("b/Vorn.fil"));
}

TEST_F(Opening, NamesThatAListCannotHoldAreTold) {
  EXPECT_EQ(trouble_with_names({"one.rwl"}), "");
  EXPECT_NE(trouble_with_names({}), "");
  EXPECT_EQ(trouble_with_names({QString(60, 'x')}), "");
  EXPECT_NE(trouble_with_names({QString(61, 'x')}), "");
  EXPECT_NE(trouble_with_names({"two\nlines.rwl"}), "");
  QStringList many;
  for (int i = 0; i < 101; ++i) many << QString::number(i);
  EXPECT_NE(trouble_with_names(many), "");
}

TEST_F(Opening, TheLastFoldersAreRememberedTheLatestFirst) {
  QFile::remove(settings_file());
  EXPECT_TRUE(recent_folders().isEmpty());
  remember_recent_folder(path("a"));
  remember_recent_folder(path("b"));
  remember_recent_folder(path("a"));
  EXPECT_EQ(recent_folders(), QStringList({path("a"), path("b")}));
  std::filesystem::remove_all("b");
  EXPECT_EQ(recent_folders(), QStringList(path("a")));
  for (int i = 0; i < 12; ++i) {
    const std::string name = std::to_string(i);
    std::filesystem::create_directory(name);
    remember_recent_folder(path(name.c_str()));
  }
  EXPECT_EQ(recent_folders().size(), 8);
  EXPECT_EQ(recent_folders().first(), path("11"));
  QFile::remove(settings_file());
}

}  // namespace
}  // namespace vorn
