#include "platform/qt/settings.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScreen>

#include "platform/qt/window_system_for_tests.h"

namespace vorn {
namespace {

constexpr QSize first_size(400, 300);

// The offscreen system has one screen of 800 x 800.
struct RememberedPlace : testing::Test {
  QApplication& application = application_for_tests();
  RememberedPlace() { QFile::remove(settings_file()); }
  ~RememberedPlace() override { QFile::remove(settings_file()); }

  static QRect place_of(QWidget& window) {
    window.show();
    QCoreApplication::processEvents();
    return window.geometry();
  }
  // The size that a window gets from settings that hold this.
  static QSize size_from(const QByteArray& place) {
    remember("place", place);
    QWidget window;
    restore_place(window, first_size);
    return place_of(window).size();
  }
};

TEST_F(RememberedPlace, AtFirstTheWindowHasItsFirstSize) {
  QWidget window;
  restore_place(window, first_size);
  EXPECT_EQ(place_of(window).size(), first_size);
}

TEST_F(RememberedPlace, TheNextWindowStandsWhereTheLastOneStood) {
  QWidget last;
  last.setGeometry(120, 80, 500, 350);
  last.show();
  remember_place(last);
  QWidget next;
  restore_place(next, first_size);
  EXPECT_EQ(place_of(next), QRect(120, 80, 500, 350));
}

TEST_F(RememberedPlace, FullScreenIsNotTakenUpAgain) {
  QWidget last;
  last.setGeometry(120, 80, 500, 350);
  last.show();
  last.showFullScreen();
  remember_place(last);
  QWidget next;
  restore_place(next, first_size);
  EXPECT_FALSE(next.isFullScreen());
  EXPECT_EQ(place_of(next), QRect(120, 80, 500, 350));
}

TEST_F(RememberedPlace, AWindowOnAScreenThatIsGoneComesBackToOneThatIsThere) {
  QWidget last;
  last.setGeometry(5000, 4000, 500, 350);
  last.show();
  remember_place(last);
  QWidget next;
  restore_place(next, first_size);
  const QRect seen = place_of(next) & QGuiApplication::primaryScreen()->availableGeometry();
  EXPECT_GE(seen.width(), 100);
  EXPECT_GE(seen.height(), 100);
}

TEST_F(RememberedPlace, NonsenseInTheSettingsGivesTheFirstSize) {
  EXPECT_EQ(size_from("wide"), first_size);
  EXPECT_EQ(size_from(""), first_size);
  EXPECT_EQ(size_from(QByteArray("\x01\xD9\xD0\xCB", 4)), first_size);
}

TEST_F(RememberedPlace, EveryDamageToWhatWasRememberedLeavesAWindowWithinReach) {
  QWidget last;
  last.setGeometry(120, 80, 500, 350);
  last.show();
  const QByteArray sound = last.saveGeometry();
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  for (qsizetype i = 0; i < sound.size(); ++i) {
    for (const char damage : {'\x00', '\x7F', '\xFF'}) {
      QByteArray damaged = sound;
      damaged[i] = damage;
      remember("place", damaged);
      QWidget window;
      restore_place(window, first_size);
      const QRect seen = window.geometry() & screen;
      ASSERT_TRUE(seen.width() >= 100 && seen.height() >= 100)
          << "byte " << i << ": " << window.x() << ',' << window.y() << ' ' << window.width() << 'x'
          << window.height();
    }
  }
}

TEST_F(RememberedPlace, AFileThatIsNoSettingsFileCountsAsEmpty) {
  EXPECT_TRUE(settings_file().endsWith("/Vorn/Vorn.ini")) << settings_file().toStdString();
  remember("folder", "x");
  QFile file(settings_file());
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(QByteArray(3000, '\xFE'));
  file.close();
  EXPECT_EQ(remembered("folder"), "");
  QWidget window;
  restore_place(window, first_size);
  EXPECT_EQ(place_of(window).size(), first_size);
}

TEST_F(RememberedPlace, AnyBytesAreRememberedAmongOthers) {
  const QByteArray bytes("a=b\n\0\xFF%41", 9);
  remember("first", bytes);
  remember("second", "/home/M\xC3\xBChle");
  remember("third", "");
  EXPECT_EQ(remembered("first"), bytes);
  EXPECT_EQ(remembered("second"), "/home/M\xC3\xBChle");
  EXPECT_EQ(remembered("third"), "");
  EXPECT_EQ(remembered("fourth"), "");
}

// Some keep their settings elsewhere and link to them.
TEST_F(RememberedPlace, AFileThatIsALinkStaysOne) {
  const QString kept = settings_file() + ".kept";
  remember("folder", "x");
  ASSERT_TRUE(QFile::rename(settings_file(), kept));
  ASSERT_TRUE(QFile::link(kept, settings_file()));
  remember("folder", "y");
  EXPECT_EQ(remembered("folder"), "y");
  EXPECT_TRUE(QFileInfo(settings_file()).isSymLink());
  QFile::remove(kept);
}

TEST_F(RememberedPlace, WhatCannotBeKeptIsNotRemembered) {
  QDir().mkpath(settings_file());  // a folder stands in its place
  remember("folder", "x");
  EXPECT_EQ(remembered("folder"), "");
  QDir().rmdir(settings_file());
}

}  // namespace
}  // namespace vorn
