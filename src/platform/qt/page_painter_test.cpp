#include "platform/qt/page_painter.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <array>

#include "platform/qt/window_system_for_tests.h"

namespace vorn {
namespace {

// The widths in pixels that windows and pictures have: a small window, half a pixel to a page unit, a whole
// one.
constexpr std::array windows = {900, 1485, 2970};

struct PagePainting : testing::Test {
  PagePainting() { application_for_tests(); }

  void add(Mark::Kind kind, Colour colour, std::vector<PagePoint> points) {
    page.add({.kind = kind, .colour = colour, .points = std::move(points)});
  }
  QImage painted(int pixels_across) {
    const double scale = static_cast<double>(pixels_across) / Page::width;
    QImage image(pixels_across, static_cast<int>(Page::height * scale), QImage::Format_RGB32);
    QPainter painter(&image);
    painter.scale(scale, scale);
    paint_page(painter, page, Typefaces(), Device::pixels);
    return image;
  }
  // How much ink lies on a row of pixels, in full pixels.
  static double ink_across(const QImage& image, int y) {
    double ink = 0;
    for (int x = 0; x < image.width(); ++x) ink += 1 - qGray(image.pixel(x, y)) / 255.0;
    return ink;
  }

  Page page;
};

TEST_F(PagePainting, AnAreaWithoutWidthIsSeenAsALineOfOnePixel) {
  add(Mark::Kind::fill, colour::ink, {{1450, 1400}, {1450, 1400}, {1450, 1580}, {1450, 1580}});
  for (const int pixels : windows) {
    EXPECT_NEAR(ink_across(painted(pixels), pixels / 2), 1, 0.05) << pixels;
  }
}

TEST_F(PagePainting, AnAreaThinnerThanAPixelIsNeverLost) {
  for (const double x : {1450.0, 1450.3, 1450.9, 1451.7}) {
    page.clear();
    add(Mark::Kind::fill, colour::ink, {{x, 1400}, {x + 0.3, 1400}, {x + 0.3, 1580}, {x, 1580}});
    for (const int pixels : windows) {
      EXPECT_NEAR(ink_across(painted(pixels), pixels / 2), 1, 0.05) << x << ' ' << pixels;
    }
  }
}

TEST_F(PagePainting, AreasOfSomeWidthHaveSharpEdges) {
  add(Mark::Kind::fill, colour::ink, {{1450, 1400}, {1475, 1400}, {1475, 1580}, {1450, 1580}});
  for (const int pixels : windows) {
    const QImage image = painted(pixels);
    for (int x = 0; x < image.width(); ++x) {
      const int grey = qGray(image.pixel(x, pixels / 2));
      EXPECT_TRUE(grey == 0 || grey == 255) << pixels << ' ' << x << ' ' << grey;
    }
  }
}

TEST_F(PagePainting, ACurveHasNoGapsWhereItsLinesMeet) {
  const std::vector<PagePoint> zigzag = {{500, 1000}, {525, 600}, {550, 1100}, {575, 1090}, {600, 700}};
  add(Mark::Kind::line, colour::ink, zigzag);
  for (const int pixels : windows) {
    const QImage image = painted(pixels);
    const double scale = static_cast<double>(pixels) / Page::width;
    for (const PagePoint& point : zigzag) {
      const QPoint at(static_cast<int>(point.x * scale), static_cast<int>(point.y * scale));
      int darkest = 255;
      for (const QPoint by : {QPoint(0, 0), QPoint(-1, 0), QPoint(0, -1), QPoint(-1, -1)}) {
        darkest = std::min(darkest, qGray(image.pixel(at + by)));
      }
      EXPECT_LT(darkest, 128) << pixels << ' ' << point.x;
    }
  }
}

TEST_F(PagePainting, LinesAreTwoPageUnitsWideAndNeverThinnerThanAPixel) {
  add(Mark::Kind::line, colour::ink, {{1000, 1000}, {1000, 2000}});
  EXPECT_NEAR(ink_across(painted(900), 450), 1, 0.01);
  EXPECT_NEAR(ink_across(painted(1485), 742), 1, 0.01);
  EXPECT_NEAR(ink_across(painted(2970), 1485), 2, 0.01);
}

}  // namespace
}  // namespace vorn
