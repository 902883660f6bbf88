// What the window offers around the page, tried on the window itself.
#include "platform/qt/window_comforts.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPageLayout>
#include <QPrintDialog>
#include <QPrinter>
#include <QTest>
#include <QTextBrowser>
#include <optional>

#include "platform/qt/page_painter.h"
#include "platform/qt/page_window.h"
#include "platform/qt/window_system_for_tests.h"
#include "plot/plot.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

struct Comforts : testing::Test {
  QApplication& application = application_for_tests();
  ScratchFolder folder;  // before the window, which saves here
  EventMailbox mailbox{[] {}};
  PageWindow window{mailbox, QDir::currentPath(), QDir::currentPath() + "/bin"};
  Plot plot{mailbox};

  Comforts() {
    window.resize(990, 700);
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    show_red_page();
  }
  void show_page(Colour colour) {
    plot.erase();
    plot.setclr(colour);
    plot.rectangle(0, 0, Page::width, Page::height);
    plot.show();
    window.repaint();
  }
  void show_red_page() { show_page(colour::light_red); }
  void press(Qt::Key key, Qt::KeyboardModifiers held = Qt::ControlModifier) {
    QTest::keyClick(&window, key, held);
  }
  // The code of the key that reached the program; nothing when none did.
  std::optional<int> arrived() {
    constexpr int end = 999;
    mailbox.put_key({0, 0, end}, mailbox.page().number);
    const int code = mailbox.next_event().code;
    if (code == end) return {};
    while (mailbox.next_event().code != end) {
    }
    return code;
  }
  template <class Dialog>
  Dialog* open_dialog() {
    for (auto* dialog : window.findChildren<Dialog*>()) {
      if (dialog->isVisible()) return dialog;
    }
    return nullptr;
  }
  // The user types a file name into the dialog that is open and presses Return.
  void save_as(const char* name) {
    auto* dialog = open_dialog<QFileDialog>();
    ASSERT_NE(dialog, nullptr);
    auto* field = dialog->findChild<QLineEdit*>();
    dialog->findChild<QListView*>("listView")->clearSelection();  // typing does so too
    field->setText(name);
    QTest::keyClick(field, Qt::Key_Return);
  }
  static QColor colour_in_file(const char* name) { return QImage(name).pixelColor(100, 100); }
};

TEST_F(Comforts, NoneOfTheirKeysReachesTheProgram) {
  press(Qt::Key_F11, Qt::NoModifier);
  for (const Qt::Key key : {Qt::Key_S, Qt::Key_P, Qt::Key_C, Qt::Key_H}) press(key);
  EXPECT_EQ(arrived(), std::nullopt);
}

TEST_F(Comforts, TheSameKeysOtherwiseHeldAreTheProgramsOrNobodys) {
  const auto asked = [](int key, Qt::KeyboardModifiers held) {
    return comfort_of(QKeyEvent(QEvent::KeyPress, key, held)).has_value();
  };
  EXPECT_TRUE(asked(Qt::Key_S, Qt::ControlModifier));
  EXPECT_FALSE(asked(Qt::Key_S, Qt::NoModifier));
  EXPECT_FALSE(asked(Qt::Key_S, Qt::ShiftModifier));
  EXPECT_FALSE(asked(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier));
  EXPECT_FALSE(asked(Qt::Key_C, Qt::ControlModifier | Qt::AltModifier));  // AltGr of some keyboards
  EXPECT_FALSE(asked(Qt::Key_F11, Qt::ControlModifier));
  EXPECT_FALSE(asked(Qt::Key_F1, Qt::NoModifier));
  EXPECT_FALSE(asked(Qt::Key_Backspace, Qt::ControlModifier));
  QTest::keyClick(&window, 's');
  EXPECT_EQ(arrived(), 's');
}

TEST_F(Comforts, F11FillsTheScreenAndGoesBack) {
  press(Qt::Key_F11, Qt::NoModifier);
  EXPECT_TRUE(window.isFullScreen());
  press(Qt::Key_F11, Qt::NoModifier);
  EXPECT_FALSE(window.isFullScreen());
}

TEST_F(Comforts, AKeyHeldDownAsksOnce) {
  QKeyEvent held(QEvent::KeyPress, Qt::Key_F11, Qt::NoModifier, QString(), true);
  QApplication::sendEvent(&window, &held);
  EXPECT_FALSE(window.isFullScreen());
}

TEST_F(Comforts, CtrlSSavesThePageUnderTheFilesName) {
  mailbox.subject("trees/nowhere.rwl");
  press(Qt::Key_S);
  auto* dialog = open_dialog<QFileDialog>();
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(QFileInfo(dialog->selectedFiles().first()).fileName(), "nowhere.png");
  QTest::keyClick(dialog->findChild<QLineEdit*>(), Qt::Key_Return);
  EXPECT_EQ(colour_in_file("nowhere.png"), area_shade(colour::light_red));
}

TEST_F(Comforts, TheEndingSaysWhichKindOfPictureIsSaved) {
  for (const char* name : {"page.png", "page.svg", "page.pdf"}) {
    press(Qt::Key_S);
    save_as(name);
  }
  EXPECT_TRUE(folder.read("page.png").starts_with("\x89PNG"));
  EXPECT_TRUE(folder.read("page.svg").starts_with("<?xml"));
  EXPECT_TRUE(folder.read("page.pdf").starts_with("%PDF"));
}

TEST_F(Comforts, AnotherKindChosenChangesTheEnding) {
  press(Qt::Key_S);
  auto* dialog = open_dialog<QFileDialog>();
  ASSERT_NE(dialog, nullptr);
  dialog->selectNameFilter("PDF document (*.pdf)");
  emit dialog->filterSelected("PDF document (*.pdf)");
  EXPECT_EQ(QFileInfo(dialog->selectedFiles().first()).fileName(), "page.pdf");
  save_as("without-ending");
  EXPECT_TRUE(folder.read("without-ending.pdf").starts_with("%PDF"));
}

TEST_F(Comforts, ThePageSavedIsTheOneSeenWhenTheKeyWasPressed) {
  plot.erase();
  plot.show();  // not painted yet: the user still sees the red page
  press(Qt::Key_S);
  show_page(colour::light_blue);
  save_as("seen.png");
  EXPECT_EQ(colour_in_file("seen.png"), area_shade(colour::light_red));
}

TEST_F(Comforts, APageThatCannotBeSavedIsToldAndTheProgramGoesOn) {
  press(Qt::Key_S);
  save_as("page.bmp");
  auto* box = open_dialog<QMessageBox>();
  ASSERT_NE(box, nullptr);
  EXPECT_TRUE(box->text().contains("page.bmp")) << box->text().toStdString();
  EXPECT_FALSE(folder.exists("page.bmp"));
  box->accept();
  QTest::keyClick(&window, 'x');
  EXPECT_EQ(arrived(), 'x');
}

TEST_F(Comforts, AFolderThatIsGoneByTheTimeIsToldToo) {
  std::filesystem::create_directory("gone");
  press(Qt::Key_S);
  auto* dialog = open_dialog<QFileDialog>();
  ASSERT_NE(dialog, nullptr);
  std::filesystem::remove("gone");
  emit dialog->fileSelected(QDir::current().filePath("gone/page.png"));
  ASSERT_NE(open_dialog<QMessageBox>(), nullptr);
}

TEST_F(Comforts, ADialogKeepsTheProgramWaitingForNothing) {
  press(Qt::Key_S);
  ASSERT_NE(open_dialog<QFileDialog>(), nullptr);
  plot.show();  // the program goes on with what it was doing
  mailbox.put_key({0, 0, 'k'}, mailbox.page().number);
  EXPECT_EQ(plot.csrpos().code, 'k');
}

TEST_F(Comforts, CtrlPAsksForThePrinterAndPrintsOnOneSheetAcross) {
  mailbox.subject("nowhere.rwl");
  press(Qt::Key_P);
  auto* dialog = open_dialog<QPrintDialog>();
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(dialog->printer()->pageLayout().orientation(), QPageLayout::Landscape);
  dialog->printer()->setOutputFormat(QPrinter::PdfFormat);
  dialog->printer()->setOutputFileName("printed.pdf");
  emit dialog->accepted(dialog->printer());
  EXPECT_TRUE(folder.read("printed.pdf").starts_with("%PDF"));
}

TEST_F(Comforts, WhatIsNotPrintedIsTold) {
  press(Qt::Key_P);
  auto* dialog = open_dialog<QPrintDialog>();
  ASSERT_NE(dialog, nullptr);
  dialog->printer()->setOutputFormat(QPrinter::PdfFormat);
  dialog->printer()->setOutputFileName("no/such/folder/printed.pdf");
  emit dialog->accepted(dialog->printer());
  EXPECT_NE(open_dialog<QMessageBox>(), nullptr);
}

TEST_F(Comforts, CtrlCCopiesThePageAsAPictureWhateverTheWindowsSize) {
  press(Qt::Key_C);
  const QImage copied = QGuiApplication::clipboard()->image();
  EXPECT_EQ(copied.size(), QSize(Page::width, Page::height));
  EXPECT_EQ(copied.pixelColor(1000, 1000), area_shade(colour::light_red));
}

TEST_F(Comforts, CtrlHOpensTheGuideOnce) {
  std::filesystem::create_directories("share/vorn/docs");
  ScratchFolder::write("share/vorn/docs/guide.md", "# How it is done\n");
  press(Qt::Key_H);
  press(Qt::Key_H);
  QStringList texts;
  for (QWidget* shown : QApplication::topLevelWidgets()) {
    if (const auto* pages = shown->findChild<QTextBrowser*>(); pages && shown->isVisible()) {
      texts << pages->toPlainText();
    }
  }
  EXPECT_EQ(texts, QStringList("How it is done"));
}

TEST_F(Comforts, AGuideThatIsNotThereIsToldWithThePlaceWhereItWasLookedFor) {
  press(Qt::Key_H);
  auto* box = open_dialog<QMessageBox>();
  ASSERT_NE(box, nullptr);
  EXPECT_TRUE(box->text().contains(QDir::currentPath() + "/share/vorn")) << box->text().toStdString();
}

TEST_F(Comforts, NothingOfThemChangesThePage) {
  const Page before = *mailbox.page().page;
  const unsigned long number = mailbox.page().number;
  press(Qt::Key_F11, Qt::NoModifier);
  for (const Qt::Key key : {Qt::Key_S, Qt::Key_P, Qt::Key_C, Qt::Key_H}) press(key);
  EXPECT_EQ(mailbox.page().number, number);
  EXPECT_EQ(mailbox.page().page->marks(), before.marks());
}

}  // namespace
}  // namespace vorn
