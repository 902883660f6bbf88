#include "platform/qt/page_printer.h"

#include <gtest/gtest.h>

#include "platform/qt/page_painter.h"
#include "platform/qt/window_system_for_tests.h"
#include "plot/plot.h"
#include "support/queue_screen.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

struct PagePrinter : testing::Test {
  PagePrinter() {
    plot.messag("Years", 100, 100);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName("printed.pdf");
  }
  QApplication& application = application_for_tests();
  ScratchFolder folder;
  Typefaces typefaces;
  QueueScreen screen;
  Plot plot{screen};
  QPrinter printer{QPrinter::HighResolution};
};

TEST_F(PagePrinter, PutsThePageOnOneSheet) {
  printer.setPageOrientation(QPageLayout::Landscape);
  EXPECT_EQ(print_page(plot.page(), typefaces, printer), std::nullopt);
  const std::string pdf = folder.read("printed.pdf");
  EXPECT_TRUE(pdf.starts_with("%PDF"));
  EXPECT_NE(pdf.find("/Count 1"), std::string::npos);
}

// All of it is as large as its sheet allows: none of it lies beyond.
TEST_F(PagePrinter, PutsAPageOfItsOwnSizeOnOneSheetToo) {
  Page panel(1000, 3000);
  panel.add({.kind = Mark::Kind::text, .points = {{10, 2950}}, .writing = "Last", .height = 22});
  EXPECT_EQ(print_page(panel, typefaces, printer), std::nullopt);
  const std::string pdf = folder.read("printed.pdf");
  EXPECT_NE(pdf.find("/Count 1"), std::string::npos);
  EXPECT_NE(pdf.find("/FontFile2"), std::string::npos);
}

TEST_F(PagePrinter, TellsWhenThePrinterDoesNotTakeIt) {
  printer.setOutputFileName("no/such/folder/printed.pdf");
  EXPECT_NE(print_page(plot.page(), typefaces, printer), std::nullopt);
}

// A sheet 210 wide and 297 high: the page is as wide as the sheet and 210 / 297 x 210 high.
TEST(PageOnArea, KeepsItsProportionsInTheMiddle) {
  const QTransform upright = page_to_area(QSizeF(210, 297));
  EXPECT_NEAR(upright.map(QPointF(0, 0)).x(), 0, 1e-9);
  EXPECT_NEAR(upright.map(QPointF(0, 0)).y(), (297 - 210 / 297.0 * 210) / 2, 1e-9);
  EXPECT_NEAR(upright.map(QPointF(2970, 2100)).x(), 210, 1e-9);
  const QTransform across = page_to_area(QSizeF(397, 210));
  EXPECT_NEAR(across.map(QPointF(0, 0)).x(), 50, 1e-9);
  EXPECT_NEAR(across.map(QPointF(2970, 2100)).y(), 210, 1e-9);
}

TEST(PageOnArea, APageOfItsOwnSizeKeepsItsOwnProportions) {
  const QTransform to_area = page_to_area(QSizeF(300, 300), Page(600, 200));
  EXPECT_EQ(to_area.map(QPointF(0, 0)), QPointF(0, 100));
  EXPECT_EQ(to_area.map(QPointF(600, 200)), QPointF(300, 200));
}

}  // namespace
}  // namespace vorn
