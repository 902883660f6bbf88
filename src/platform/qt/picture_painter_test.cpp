#include "platform/qt/picture_painter.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QXmlStreamReader>
#include <array>
#include <cmath>

#include "platform/qt/page_painter.h"
#include "platform/qt/window_system_for_tests.h"
#include "plot/font_metrics.h"
#include "plot/plot.h"
#include "records/disk_files.h"
#include "support/queue_screen.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

struct Pictures : testing::Test {
  Pictures() { application_for_tests(); }

  // A button and a curve.
  void draw_something() {
    plot.setclr(colour::yellow);
    plot.rectangle(200, 300, 600, 400);
    plot.setclr(colour::ink);
    plot.messag("Crossdate <&>", 205, 312);
    plot.setclr(colour::light_blue);
    plot.line(1000, 1000, 2000, 1500);
  }
  QImage painted() {
    EXPECT_EQ(write_page(plot.page(), "page.png", files, pictures), std::nullopt);
    return QImage("page.png");
  }
  // The smallest rectangle, in page units, around all that is not white.
  QRectF ink_extent() {
    const QImage image = painted();
    QRect extent;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        if (qGray(image.pixel(x, y)) < 128) extent |= QRect(x, y, 1, 1);
      }
    }
    return {extent.x() * 2.0, extent.y() * 2.0, extent.width() * 2.0, extent.height() * 2.0};
  }

  ScratchFolder folder;
  QueueScreen screen;
  Plot plot{screen};
  PicturePainter pictures;
  DiskFiles files;
};

TEST_F(Pictures, PngIsHalfAPixelToAPageUnitOnAnA4Sheet) {
  draw_something();
  const QImage image = painted();
  EXPECT_EQ(image.size(), QSize(1485, 1050));
  EXPECT_EQ(image.dotsPerMeterX(), 5000);  // 1485 pixels are 297 mm
  EXPECT_EQ(image.pixelColor(5, 5), QColor(Qt::white));
  EXPECT_EQ(image.pixelColor(290, 190), area_shade(colour::yellow));
}

TEST_F(Pictures, AnAreaHasTheLightShadeOfItsColourAndALineTheDarkOne) {
  for (int i = 0; i < 16; ++i) {
    plot.setclr(Colour{i});
    plot.rectangle(100 * i, 0, 100 * i + 100, 100);
    plot.line(100 * i + 10, 300, 100 * i + 90, 300);
  }
  const QImage image = painted();
  for (int i = 0; i < 16; ++i) {
    EXPECT_EQ(image.pixelColor(50 * i + 25, 25), area_shade(Colour{i})) << i;
    EXPECT_EQ(image.pixelColor(50 * i + 25, 150), line_shade(Colour{i})) << i;
  }
}

TEST_F(Pictures, CapitalsAreAsHighAsAskedAndStandBelowTheirPlace) {
  plot.height(200);
  plot.messag("H", 400, 600);
  const QRectF extent = ink_extent();
  EXPECT_NEAR(extent.top(), 600, 3);
  EXPECT_NEAR(extent.height(), 200, 4);
  EXPECT_GE(extent.left(), 400);
}

TEST_F(Pictures, TextsAreAsWideAsTheirMetricsSay) {
  for (const auto& [family, font] : {std::pair{"Arial", Font::arial}, {"Times New Roman", Font::times}}) {
    for (const int height : {20, 25, 90}) {
      plot.erase();
      plot.winfnt(family);
      plot.height(height);
      plot.messag("HAVE To yield: 0.45 < -2 H", 100, 600);
      const double width = text_width("HAVE To yield: 0.45 < -2 H", height, font);
      // Its first and last letters have small margins of their own.
      EXPECT_NEAR(ink_extent().width(), width, 0.2 * height + 4) << family << ' ' << height;
    }
  }
}

TEST_F(Pictures, ATextWrittenAgainOverItselfDoesNotComeOutBolder) {
  plot.messag("PARAMETER OPTIONS", 440, 435);
  const QImage once = painted();
  for (int i = 0; i < 6; ++i) plot.messag("PARAMETER OPTIONS", 440, 435);
  EXPECT_EQ(painted(), once);
}

TEST_F(Pictures, ATextWrittenAgainAfterItWasCoveredIsSeenAgain) {
  plot.messag("Exit", 440, 435);
  const QImage once = painted();
  plot.setclr(colour::paper);
  plot.rectangle(450, 440, 2100, 450);
  EXPECT_NE(painted(), once);
  plot.rectangle(400, 400, 2100, 500);
  plot.setclr(colour::ink);
  plot.messag("Exit", 440, 435);
  EXPECT_EQ(painted(), once);
}

TEST_F(Pictures, ControlCharactersAreNotSeen) {
  plot.messag("A\x08\x1B\x7FZ", 100, 100);
  const QRectF with = ink_extent();
  plot.erase();
  plot.messag("AZ", 100, 100);
  EXPECT_EQ(ink_extent(), with);
}

TEST_F(Pictures, BytesAboveAsciiAreUtf8WhereValidElseLatin1) {
  EXPECT_EQ(shown_characters("M\xC3\xBChle"), QString("M") + QChar(0xFC) + "hle");
  EXPECT_EQ(shown_characters("M\xFChle"), QString("M") + QChar(0xFC) + "hle");
  EXPECT_EQ(shown_characters("a\x85z"), "az");                // a control character of Latin-1
  EXPECT_EQ(shown_characters("a\xEF\xBF\xBEz"), "az");        // no character, and not allowed in XML
  EXPECT_EQ(shown_characters("\xF0\x9F\x8C\xB2").size(), 2);  // a tree, two units of UTF-16
}

TEST(PicturesWithoutFonts, SayWhichFontsAreMissingAndArePaintedAllTheSame) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto write_two = [] {
    const ScratchFolder bare;
    bare.write("fonts.conf", "<fontconfig><dir>nothing</dir><cachedir>cache</cachedir></fontconfig>");
    setenv("FONTCONFIG_FILE", (bare.path() / "fonts.conf").c_str(), 1);
    prepare_offscreen();
    Page page;
    page.add({.kind = Mark::Kind::text, .points = {{9, 9}}, .writing = "Quit", .height = 25});
    PicturePainter pictures;
    DiskFiles files;
    return write_page(page, "one.png", files, pictures) || write_page(page, "two.png", files, pictures) ? 1
                                                                                                        : 7;
  };
  EXPECT_EXIT(std::exit(write_two()), testing::ExitedWithCode(7),
              "the font Liberation Sans is missing[^\n]*\nvorn: the font Liberation Serif is missing");
}

TEST_F(Pictures, SvgIsWellFormedAndKeepsTexts) {
  draw_something();
  plot.messag("M\xFChle \x01\x08", 205, 512);
  ASSERT_EQ(write_page(plot.page(), "page.svg", files, pictures), std::nullopt);
  const std::string svg = folder.read("page.svg");
  QXmlStreamReader xml(QByteArray::fromStdString(svg));
  QString texts;
  while (!xml.atEnd()) {
    if (xml.readNext() == QXmlStreamReader::Characters) texts += xml.text();
  }
  EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
  EXPECT_TRUE(texts.contains("Crossdate <&>"));
  EXPECT_TRUE(texts.contains(QString("M") + QChar(0xFC) + "hle"));
  EXPECT_NE(svg.find("viewBox=\"0 0 2970 2100\""), std::string::npos);
  EXPECT_NE(svg.find("width=\"297mm\""), std::string::npos);
}

TEST_F(Pictures, OnPaperTheReferencesCurveIsWiderThanTheSamples) {
  const auto width_of = [&](Colour colour) {
    plot.erase();
    plot.setclr(colour);
    plot.line(100, 100, 2000, 1500);
    plot.rectangle(300, 300, 400, 400);
    EXPECT_EQ(write_page(plot.page(), "page.svg", files, pictures), std::nullopt);
    return folder.read("page.svg").find("stroke-width=\"4\"") != std::string::npos ? 4 : 2;
  };
  EXPECT_EQ(width_of(colour::light_blue), 2);
  EXPECT_EQ(width_of(colour::light_red), 4);
}

TEST_F(Pictures, SvgShowsWhatPngShows) {
  draw_something();
  const QImage png = painted();
  ASSERT_EQ(write_page(plot.page(), "page.svg", files, pictures), std::nullopt);
  QImage image(1485, 1050, QImage::Format_RGB32);
  image.fill(Qt::red);
  QSvgRenderer renderer(QString("page.svg"));
  ASSERT_TRUE(renderer.isValid());
  QPainter painter(&image);
  renderer.render(&painter);
  painter.end();
  long different = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      different += std::abs(qGray(image.pixel(x, y)) - qGray(png.pixel(x, y))) > 96;
    }
  }
  EXPECT_LT(different, 2000);  // the edges of letters and lines, of 1.5 million pixels
}

TEST_F(Pictures, PdfIsAnA4SheetAcross) {
  draw_something();
  ASSERT_EQ(write_page(plot.page(), "page.pdf", files, pictures), std::nullopt);
  const std::string pdf = folder.read("page.pdf");
  EXPECT_TRUE(pdf.starts_with("%PDF-"));
  EXPECT_NE(pdf.find("/MediaBox [0 0 842"), std::string::npos);
  EXPECT_NE(pdf.find("/FontFile2"), std::string::npos);  // texts are set in an embedded font, not drawn
  EXPECT_NE(pdf.find("/Producer"), std::string::npos);
  EXPECT_EQ(pdf.find("/CreationDate"), std::string::npos);  // the same page, the same file
}

// --- A page of its own size, as panels have.

struct PanelPictures : Pictures {
  Page panel{1200, 500};
  PanelPictures() {
    panel.add({.kind = Mark::Kind::fill,
               .colour = colour::pale_red,
               .points = {{0, 0}, {1200, 0}, {1200, 500}, {0, 500}}});
    panel.add({.kind = Mark::Kind::text,
               .colour = colour::muted,
               .points = {{20, 20}},
               .writing = "Site",
               .height = 22});
  }
  std::string written(const char* name) {
    EXPECT_EQ(write_page(panel, name, files, pictures), std::nullopt);
    return folder.read(name);
  }
};

TEST_F(PanelPictures, PngHasHalfAPixelToAUnitAndNothingBeside) {
  written("panel.png");
  const QImage image("panel.png");
  EXPECT_EQ(image.size(), QSize(600, 250));
  EXPECT_EQ(image.dotsPerMeterX(), 5000);
  for (const QPoint corner : {QPoint(0, 0), QPoint(599, 0), QPoint(0, 249), QPoint(599, 249)}) {
    EXPECT_EQ(image.pixelColor(corner), area_shade(colour::pale_red)) << corner.x() << ' ' << corner.y();
  }
}

TEST_F(PanelPictures, AnOddSizeGivesThePixelsThatAreWhole) {
  panel = Page(1201, 501);
  written("panel.png");
  EXPECT_EQ(QImage("panel.png").size(), QSize(600, 250));
}

TEST_F(PanelPictures, SvgIsAsLarge) {
  const std::string svg = written("panel.svg");
  EXPECT_NE(svg.find("viewBox=\"0 0 1200 500\""), std::string::npos);
  EXPECT_NE(svg.find("width=\"120mm\" height=\"50mm\""), std::string::npos);
}

TEST_F(PanelPictures, PdfIsASheetAsLarge) {
  // 120 mm and 50 mm, in whole points of 1/72 inch.
  EXPECT_NE(written("panel.pdf").find("/MediaBox [0 0 340.000000 142.000000]"), std::string::npos);
}

TEST_F(PanelPictures, AWholeLongListIsOneSheet) {
  panel = Page(1200, 12'000);
  const std::string pdf = written("panel.pdf");
  EXPECT_NE(pdf.find("/Count 1"), std::string::npos);
  EXPECT_NE(pdf.find("/MediaBox [0 0 340.000000 3402.000000]"), std::string::npos);
}

TEST_F(Pictures, LongCurvesAndDegenerateMarksArePainted) {
  std::vector<double> years, values;
  for (int i = 0; i < 12'000; ++i) years.push_back(i), values.push_back(std::sin(i * 0.7));
  plot.axspos(200, 1300);
  plot.axslen(2500, 850);
  plot.graf(0, 12'000, 0, 1000, -1, 1, -1, 1);
  plot.setclr(colour::light_blue);
  plot.curve(years, values);
  plot.line(5, 5, 5, 5);
  plot.rectangle(10, 10, 10, 10);
  plot.line(-100'000'000, 5, 100'000'000, 5);
  const QImage image = painted();
  EXPECT_NE(image.pixelColor(725, 437), QColor(Qt::white));
}

}  // namespace
}  // namespace vorn
