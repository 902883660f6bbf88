// Workbooks as they are written: their parts, typed here as the standard has them.
#include "batch/workbook_text.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "batch/workbook_table.h"

namespace vorn {
namespace {

bool holds(const std::string& bytes, const std::string& text) {
  return bytes.find(text) != std::string::npos;
}

TEST(WorkbookText, ColumnsHaveLetters) {
  EXPECT_EQ(column_letters(1), "A");
  EXPECT_EQ(column_letters(26), "Z");
  EXPECT_EQ(column_letters(27), "AA");
  EXPECT_EQ(column_letters(702), "ZZ");
  EXPECT_EQ(column_letters(703), "AAA");
  EXPECT_EQ(column_letters(16'384), "XFD");
}

TEST(WorkbookText, NumbersAreNumbersAndNamesAreText) {
  WorkbookText book("widths", {"year", "=A1"});
  EXPECT_TRUE(book.add({{"1990", true}, {"1.25", true}}));
  EXPECT_TRUE(book.add({{"1991", true}, {"-x & <y>", false}}));
  EXPECT_TRUE(book.add({{"1992", true}, {}}));
  const std::string bytes = book.finished();
  EXPECT_TRUE(
      holds(bytes, "<c r=\"B1\" s=\"1\" t=\"inlineStr\"><is><t xml:space=\"preserve\">=A1</t></is></c>"));
  EXPECT_TRUE(holds(bytes, "<row r=\"2\"><c r=\"A2\"><v>1990</v></c><c r=\"B2\"><v>1.25</v></c></row>"));
  EXPECT_TRUE(holds(bytes, "preserve\">-x &amp; &lt;y&gt;</t>"));
  EXPECT_TRUE(holds(bytes, "<row r=\"4\"><c r=\"A4\"><v>1992</v></c></row>"));
  EXPECT_TRUE(holds(bytes, "<dimension ref=\"A1:B4\"/>"));
  EXPECT_TRUE(holds(bytes, "ySplit=\"1\" topLeftCell=\"A2\" activePane=\"bottomLeft\" state=\"frozen\""));
  EXPECT_FALSE(holds(bytes, "<f>"));
}

TEST(WorkbookText, TheSameCellsGiveTheSameBytes) {
  const auto made = [] {
    WorkbookText book("widths", {"year"});
    EXPECT_TRUE(book.add({{"1990", true}}));
    return book.finished();
  };
  EXPECT_EQ(made(), made());
}

TEST(WorkbookText, TextsStayWithinACellAndWithinXml) {
  EXPECT_EQ(xml_escaped("a\xef\xbf\xbe\"\xef\xbf\xbf"), "a\xef\xbf\xbd&quot;\xef\xbf\xbd");
  EXPECT_EQ(xml_escaped("_x0041_ _x00g1_ _x0041"), "_x005F_x0041_ _x00g1_ _x0041") << "read as A else";
  WorkbookText book("widths", {"name"});
  std::string text;
  while (text.size() < 40'000) text += "\xc3\xa4";
  EXPECT_TRUE(book.add({{text, false}}));
  const std::string bytes = book.finished();
  EXPECT_TRUE(holds(bytes, ">" + text.substr(0, 32'766) + "<"));
}

TEST(WorkbookText, ASheetIsFullAtItsLastRow) {
  WorkbookText book("widths", {"year"});
  for (std::size_t row = 2; row <= most_workbook_rows; ++row) ASSERT_TRUE(book.add({{}}));
  EXPECT_FALSE(book.add({{}}));
}

TEST(WorkbookTable, RowsOfAVerbHaveTheNumbersOfTheirCsv) {
  std::ostringstream out;
  const auto writer =
      table_writer(out, TableFormat::workbook, {"stats", {"file", "rings", "r", "flag"}}, "1", "");
  writer->add({std::string("a\tb.rwl"), std::int64_t{12}, 0.123456789, Cell()});
  EXPECT_TRUE(writer->end());
  EXPECT_TRUE(holds(
      out.str(), ">a\\x09b.rwl</t></is></c><c r=\"B2\"><v>12</v></c><c r=\"C2\"><v>0.123457</v></c></row>"));
}

}  // namespace
}  // namespace vorn
