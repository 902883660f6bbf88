#include "platform/qt/folder_choice.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>
#include <deque>
#include <functional>

#include "platform/qt/settings.h"
#include "platform/qt/window_system_for_tests.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

struct FolderChoice : testing::Test {
  QApplication& application = application_for_tests();
  ScratchFolder scratch;
  QStringList asked;  // what the questions said

  FolderChoice() {
    QFile::remove(settings_file());
    qputenv("HOME", QDir::currentPath().toUtf8());  // where the documents are
    std::filesystem::create_directories("installed/examples");
    ScratchFolder::write("installed/examples/Vorn.fil", "a.rwl\n");
    ScratchFolder::write("installed/examples/a.rwl", "rings\n");
    std::filesystem::create_directories("site");
    ScratchFolder::write("site/Vorn.fil", "b.rwl\n");
    std::filesystem::create_directories("unlisted");
  }
  ~FolderChoice() override { QFile::remove(settings_file()); }

  static QString path(const char* name) { return QDir::current().filePath(name); }
  // The user answers each question by a button that begins so; "folder:NAME" picks that folder in a dialog.
  std::optional<QString> choose(std::deque<QString> answers) {
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, &user, [&] { answer_next(answers); });
    user.start(20);
    const auto folder = choose_folder({path("installed")});
    EXPECT_TRUE(answers.empty()) << answers.front().toStdString();
    return folder;
  }

 private:
  void answer_next(std::deque<QString>& answers) {
    QWidget* question = QApplication::activeModalWidget();
    if (question == nullptr) return;
    if (answers.empty()) {
      ADD_FAILURE() << "asked once more";
      question->close();
      return;
    }
    const QString answer = answers.front();
    if (auto* dialog = qobject_cast<QFileDialog*>(question); dialog && answer.startsWith("folder:")) {
      answers.pop_front();
      // Typed, not picked: the names to be picked from come in their own time.
      dialog->findChild<QLineEdit*>("fileNameEdit")->setText(path(answer.sliced(7).toUtf8()));
      return static_cast<QDialog*>(dialog)->accept();
    }
    if (++tries_ > 500) {  // ten seconds
      ADD_FAILURE() << "nothing to answer " << answer.toStdString() << " to";
      question->close();
      return;
    }
    auto* box = qobject_cast<QMessageBox*>(question);
    if (box == nullptr) return;
    for (QAbstractButton* button : box->buttons()) {
      if (!button->text().remove('&').startsWith(answer)) continue;
      tries_ = 0;
      asked << box->text() + ' ' + box->informativeText();
      answers.pop_front();
      return button->click();
    }
  }

  int tries_ = 0;  // to answer the question now asked
};

TEST_F(FolderChoice, QuitMeansNoFolder) {
  EXPECT_EQ(choose({"Quit"}), std::nullopt);
}

TEST_F(FolderChoice, AFolderWithAListIsTakenAndOfferedTheNextTime) {
  EXPECT_EQ(choose({"Choose", "folder:site"}), path("site"));
  EXPECT_EQ(choose({"Open site"}), path("site"));
  std::filesystem::remove("site/Vorn.fil");
  EXPECT_EQ(choose({"Quit"}), std::nullopt);  // no longer offered: "Open" would come first
  EXPECT_FALSE(asked.isEmpty());
}

TEST_F(FolderChoice, TheExamplesAreCopiedAndTheCopyIsKept) {
  const auto folder = choose({"Try"});
  ASSERT_TRUE(folder);
  EXPECT_EQ(ScratchFolder::read(folder->toStdString() + "/a.rwl"), "rings\n");
  ScratchFolder::write(folder->toStdString() + "/a.rwl", "changed\n");
  EXPECT_EQ(choose({"Try"}), folder);
  EXPECT_EQ(ScratchFolder::read(folder->toStdString() + "/a.rwl"), "changed\n");
}

TEST_F(FolderChoice, ExamplesThatAreNotThereAreToldAndTheQuestionComesAgain) {
  std::filesystem::remove_all("installed/examples");
  EXPECT_EQ(choose({"Try", "OK", "Quit"}), std::nullopt);
  EXPECT_TRUE(asked[1].contains(path("installed"))) << asked[1].toStdString();
}

TEST_F(FolderChoice, AFolderWithoutAListGetsOneIfWanted) {
  ScratchFolder::write("unlisted/b.rwl", "");
  ScratchFolder::write("unlisted/a.crn", "");
  EXPECT_EQ(choose({"Choose", "folder:unlisted", "Back", "Quit"}), std::nullopt);
  EXPECT_FALSE(scratch.exists("unlisted/Vorn.fil"));
  EXPECT_TRUE(asked[1].contains("b.rwl, a.crn")) << asked[1].toStdString();
  EXPECT_EQ(choose({"Choose", "folder:unlisted", "Make"}), path("unlisted"));
  EXPECT_EQ(ScratchFolder::read("unlisted/Vorn.fil"), "b.rwl\na.crn\n");
}

TEST_F(FolderChoice, AFolderWithoutAnythingToReadIsTold) {
  EXPECT_EQ(choose({"Choose", "folder:unlisted", "OK", "Quit"}), std::nullopt);
  EXPECT_FALSE(scratch.exists("unlisted/Vorn.fil"));
}

TEST_F(FolderChoice, AListNamesRingWidthsFirstAndOnlyWhatItCanHold) {
  for (const std::string name :
       {"z.rwl", "b.fh", "c.RWM", "a.crn", "Edit.raw", "notes.txt", "Stats.prn", "z.RWW"}) {
    ScratchFolder::write("unlisted/" + name, "");
  }
  ScratchFolder::write("unlisted/" + std::string(57, 'y') + ".rwl", "");  // 61 characters
  EXPECT_EQ(names_for_list("unlisted"), QStringList({"b.fh", "c.RWM", "z.rwl", "a.crn"}));
  for (int i = 0; i < 120; ++i) ScratchFolder::write("site/core" + std::to_string(i) + ".rwl", "");
  EXPECT_EQ(names_for_list("site").size(), 100);
}

TEST_F(FolderChoice, ACopyCutShortIsMadeWhole) {
  std::filesystem::create_directories("copy");
  ScratchFolder::write("copy/a.rwl", "mine\n");
  EXPECT_EQ(copy_examples("installed/examples", "copy"), std::nullopt);
  EXPECT_EQ(ScratchFolder::read("copy/a.rwl"), "mine\n");
  EXPECT_EQ(ScratchFolder::read("copy/Vorn.fil"), "a.rwl\n");
}

TEST_F(FolderChoice, ACopyThatCannotBeMadeIsTold) {
  ScratchFolder::write("file", "");
  EXPECT_NE(copy_examples("installed/examples", "file/copy"), std::nullopt);
  EXPECT_NE(write_list("no/such/folder", {"a.rwl"}), std::nullopt);
}

}  // namespace
}  // namespace vorn
