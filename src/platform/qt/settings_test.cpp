#include "platform/qt/settings.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QScreen>

#include "platform/qt/window_system_for_tests.h"

namespace vorn {
namespace {

constexpr QSize first_size(400, 300);

// The offscreen system has one screen of 800 x 800.
struct RememberedPlace : testing::Test {
  QApplication& application = application_for_tests();
  RememberedPlace() { program_settings().clear(); }
  ~RememberedPlace() override { program_settings().clear(); }

  static QRect place_of(QWidget& window) {
    window.show();
    QCoreApplication::processEvents();
    return window.geometry();
  }
  // The size that a window gets from settings that hold this.
  static QSize size_from(const QVariant& remembered) {
    program_settings().setValue("window/place", remembered);
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
  EXPECT_EQ(size_from(42), first_size);
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
      program_settings().setValue("window/place", damaged);
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
  const QString name = program_settings().fileName();
  EXPECT_TRUE(name.endsWith("/Vorn/Vorn.ini")) << name.toStdString();
  program_settings().setValue("folder", "x");
  QFile file(name);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(QByteArray(3000, '\xFE'));
  file.close();
  EXPECT_EQ(program_settings().value("folder"), QVariant());
  QWidget window;
  restore_place(window, first_size);
  EXPECT_EQ(place_of(window).size(), first_size);
}

}  // namespace
}  // namespace vorn
