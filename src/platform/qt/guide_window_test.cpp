#include "platform/qt/guide_window.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>
#include <QTextBlock>

#include "platform/qt/window_system_for_tests.h"
#include "support/places.h"

namespace vorn {
namespace {

const QString guide = QString::fromStdString((source_folder() / "docs/guide.md").string());

struct Guide : testing::Test {
  QApplication& application = application_for_tests();
  GuidePages pages{guide};

  // What the links of the page shown lead to.
  QStringList targets() const {
    QStringList all;
    for (QTextBlock block = pages.document()->begin(); block.isValid(); block = block.next()) {
      for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
        const QTextCharFormat format = piece.fragment().charFormat();
        if (!format.anchorHref().isEmpty()) all << format.anchorHref();
        if (format.isImageFormat()) all << format.toImageFormat().name();
      }
    }
    return all;
  }
};

TEST_F(Guide, IsShownAsReadableTextWithItsTables) {
  EXPECT_TRUE(pages.toPlainText().startsWith("Guide: screen by screen"));
  EXPECT_FALSE(pages.toPlainText().contains("|---|"));
  EXPECT_FALSE(pages.toPlainText().contains("## "));
}

TEST_F(Guide, EveryLinkAndPictureLeadsToAFile) {
  const QDir folder = QFileInfo(guide).dir();
  EXPECT_GT(targets().size(), 20);
  for (const QString& target : targets()) {
    const QString file = target.section('#', 0, 0);
    EXPECT_TRUE(file.isEmpty() || QFileInfo(folder.filePath(file)).isFile()) << target.toStdString();
  }
}

TEST_F(Guide, ALinkIsFollowedAndOneComesBack) {
  pages.setSource(QUrl("formats/tucson-raw.md"));
  EXPECT_FALSE(pages.toPlainText().startsWith("Guide"));
  EXPECT_TRUE(pages.toPlainText().contains("Tucson"));
  EXPECT_TRUE(pages.isBackwardAvailable());
  pages.backward();
  EXPECT_TRUE(pages.toPlainText().startsWith("Guide"));
}

TEST_F(Guide, ALinkMayNameAHeadingOfItsPage) {
  pages.setSource(QUrl("formats/tucson-raw.md#any"));
  EXPECT_TRUE(pages.toPlainText().contains("Tucson"));
}

TEST_F(Guide, PicturesFitIntoTheText) {
  pages.resize(860, 900);
  pages.show();
  pages.document()->setTextWidth(pages.viewport()->width());
  EXPECT_LE(pages.document()->idealWidth(), pages.viewport()->width());
}

TEST_F(Guide, AWordIsFoundOnAndOnRoundToTheStart) {
  EXPECT_TRUE(pages.find_next("skeleton"));
  const int first = pages.textCursor().position();
  while (pages.find_next("skeleton") && pages.textCursor().position() > first) {
  }
  EXPECT_EQ(pages.textCursor().position(), first);
  EXPECT_FALSE(pages.find_next("no such word stands here"));
}

TEST_F(Guide, TheFieldForAWordIsReachedByCtrlFAndLooksForItAtReturn) {
  auto* window = new GuideWindow(guide);  // goes when it is closed
  window->show();
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window));
  auto* text = window->findChild<QTextBrowser*>();
  QTest::keyClick(text, Qt::Key_F, Qt::ControlModifier);
  auto* field = window->findChild<QLineEdit*>();
  ASSERT_TRUE(field->hasFocus());
  QTest::keyClicks(field, "skeleton");
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(text->textCursor().selectedText().toLower(), "skeleton");
  QTest::keyClick(field, Qt::Key_W, Qt::ControlModifier);
  EXPECT_FALSE(window->isVisible());
  QCoreApplication::sendPostedEvents(window, QEvent::DeferredDelete);
}

}  // namespace
}  // namespace vorn
