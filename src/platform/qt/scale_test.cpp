#include "platform/qt/scale.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QImage>

#include "platform/qt/page_painter.h"
#include "platform/qt/page_window.h"
#include "platform/qt/window_system_for_tests.h"
#include "plot/colour.h"
#include "plot/plot.h"

namespace vorn {
namespace {

TEST(Scales, BelowOneAreRaisedAndAllOthersStay) {
  EXPECT_EQ(raised_to_one("0.5"), "1");
  EXPECT_EQ(raised_to_one("1.25"), "1.25");
  EXPECT_EQ(raised_to_one("0.5;2"), "1;2");
  EXPECT_EQ(raised_to_one("HDMI-1=0.75;DP-1=1.5"), "HDMI-1=1;DP-1=1.5");
  EXPECT_EQ(raised_to_one(""), "");
  EXPECT_EQ(raised_to_one("large"), "large");
}

// A page whose four corners are red, as the pixels of the window show it: the corners that are not there.
int corners_missing() {
  EventMailbox mailbox([] {});
  PageWindow window(mailbox, ".");
  Plot plot(mailbox);
  plot.setclr(colour::light_red);
  for (const int x : {0, Page::width - 200}) {
    for (const int y : {0, Page::height - 200}) plot.rectangle(x, y, x + 200, y + 200);
  }
  plot.show();
  window.resize(594, 420);
  window.show();
  const QImage seen = window.grab().toImage();
  int missing = 0;
  for (const int x : {10, seen.width() - 10}) {
    for (const int y : {10, seen.height() - 10})
      missing += seen.pixelColor(x, y) != area_shade(colour::light_red);
  }
  return missing;
}

// Whether a button in the last corner of a dialog is painted where it lies.
bool shows_its_button() {
  QDialog dialog;
  dialog.resize(400, 300);
  QWidget button(&dialog);
  button.setGeometry(360, 260, 40, 40);
  button.setPalette(QColor(Qt::green));
  button.setAutoFillBackground(true);
  dialog.show();
  const QImage seen = dialog.grab().toImage();
  const QPoint middle = QPoint(380, 280) * seen.devicePixelRatio();
  return seen.pixelColor(middle) == button.palette().color(QPalette::Window);
}

class Scaled : public testing::TestWithParam<const char*> {};

// The scale is fixed when the application object is made, so each is tried in a process of its own.
TEST_P(Scaled, NothingIsCropped) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto look = [] {
    prepare_offscreen();
    qputenv("QT_SCALE_FACTOR", GetParam());
    raise_scales_below_one();
    application_for_tests();
    if (const int missing = corners_missing()) return missing;
    return shows_its_button() ? 7 : 5;
  };
  EXPECT_EXIT(std::_Exit(look()), testing::ExitedWithCode(7), "");
}

INSTANTIATE_TEST_SUITE_P(AllOf, Scaled, testing::Values("0.5", "0.75", "1", "1.5", "2"));

}  // namespace
}  // namespace vorn
