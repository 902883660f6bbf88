#include "platform/qt/readable_letters.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <algorithm>
#include <cmath>
#include <memory>

#include "platform/qt/window_system_for_tests.h"

namespace vorn {
namespace {

// Of WCAG 2.1: relative luminances, a twentieth added for the light of the room.
double contrast(const QColor& a, const QColor& b) {
  const auto light = [](double stored) {
    return stored <= 0.04045 ? stored / 12.92 : std::pow((stored + 0.055) / 1.055, 2.4);
  };
  const auto bright = [&](const QColor& c) {
    return 0.2126 * light(c.redF()) + 0.7152 * light(c.greenF()) + 0.0722 * light(c.blueF()) + 0.05;
  };
  return std::max(bright(a), bright(b)) / std::min(bright(a), bright(b));
}

// Disabled letters that are as faint as some desktops make them.
QPalette desktop_of(const QColor& letters, const QColor& ground, const QColor& faint) {
  QPalette palette;
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, letters);
    palette.setColor(QPalette::Disabled, role, faint);
  }
  for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Button}) palette.setColor(role, ground);
  return palette;
}

void expect_readable(const QPalette& palette) {
  for (const auto& [letters, ground] :
       {std::pair{QPalette::WindowText, QPalette::Window}, std::pair{QPalette::Text, QPalette::Base},
        std::pair{QPalette::ButtonText, QPalette::Button}}) {
    const double disabled = contrast(palette.color(QPalette::Disabled, letters),
                                     palette.color(QPalette::Active, ground)),
                 usual = contrast(palette.color(QPalette::Active, letters),
                                  palette.color(QPalette::Active, ground));
    EXPECT_GE(disabled, 3) << letters;
    EXPECT_LT(disabled, usual / 2) << letters;
  }
}

TEST(ReadableLetters, OfWhatCannotBeDoneOnALightDesktopAndADarkOne) {
  expect_readable(with_readable_disabled(desktop_of("#000000", "#efefef", "#bebebe")));
  expect_readable(with_readable_disabled(desktop_of("#ffffff", "#353535", "#555555")));
}

TEST(ReadableLetters, FollowTheDesktopFromLightToDark) {
  QApplication& application = application_for_tests();
  const QPalette before = QApplication::palette();
  {
    const auto letters = std::make_unique<ReadableLetters>(&application);
    expect_readable(QApplication::palette());
    QApplication::setPalette(desktop_of("#ffffff", "#353535", "#555555"));
    QApplication::processEvents();
    expect_readable(QApplication::palette());
  }
  QApplication::setPalette(before);
}

}  // namespace
}  // namespace vorn
