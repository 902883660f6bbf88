// Workbooks: specimens of their parts, typed here as the standard has them.
#include "import/workbook.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "import/sheet_cells.h"
#include "import/workbook_parts.h"
#include "records/stored_archive.h"
#include "support/imported_specimens.h"

namespace vorn {
namespace {

using Parts = std::map<std::string, std::string>;

const std::string type = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";

std::string relations(const std::vector<std::vector<std::string>>& all) {
  std::string xml = "<Relationships>";
  for (const auto& one : all)
    xml += "<Relationship Id=\"" + one[0] + "\" Type=\"" + type + one[1] + "\" Target=\"" + one[2] + "\"/>";
  return xml + "</Relationships>";
}

std::string sheet(const std::string& rows, const std::string& behind = "") {
  return "<?xml version=\"1.0\"?><worksheet "
         "xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">"
         "<sheetData>" +
         rows + "</sheetData>" + behind + "</worksheet>";
}

// A row of cells: numbers as they are, and texts in the row itself.
std::string row(const std::vector<std::string>& cells) {
  std::string xml = "<row>";
  for (const std::string& cell : cells) {
    const bool number = !cell.empty() && cell.find_first_not_of("0123456789.-") == std::string::npos;
    if (cell.empty())
      xml += "<c/>";
    else if (cell[0] == '<')
      xml += cell;
    else
      xml += number ? "<c><v>" + cell + "</v></c>" : "<c t=\"inlineStr\"><is><t>" + cell + "</t></is></c>";
  }
  return xml + "</row>";
}

Parts plain(const std::string& sheet_xml) {
  return {{"[Content_Types].xml", "<Types/>"},
          {"_rels/.rels", relations({{"rId1", "officeDocument", "xl/workbook.xml"}})},
          {"xl/workbook.xml",
           "<workbook xmlns:r=\"r\"><sheets><sheet name=\"Widths\" sheetId=\"1\" "
           "r:id=\"rId1\"/></sheets></workbook>"},
          {"xl/_rels/workbook.xml.rels", relations({{"rId1", "worksheet", "worksheets/sheet1.xml"}})},
          {"xl/worksheets/sheet1.xml", sheet_xml}};
}

std::string file_of(const Parts& parts) {
  StoredArchive archive;
  for (const auto& [name, bytes] : parts) archive.add(name, bytes);
  return archive.finished();
}

std::string book(const std::string& rows, const std::string& behind = "") {
  return file_of(plain(sheet(rows, behind)));
}

const std::string three_years = row({"year", "A", "B"}) + row({"1990", "1.25", "0.5"}) +
                                row({"1991", "1.5", "0.75"}) + row({"1992", "", "1.25"});
constexpr const char* as_three_years = "A 1990: 1.25 1.5\nB 1990: 0.5 0.75 1.25\n";

std::string words_of(const Imported& one) {
  std::string all;
  for (const FileFinding& finding : one.findings)
    if (severity_of(finding.kind->effect) == Severity::error) all += finding.words + "\n";
  return all;
}

TEST(Workbook, SheetsAreReadAsTables) {
  const Imported one = taken(book(three_years));
  EXPECT_EQ(shown(one), as_three_years);
  EXPECT_EQ(one.layout_name, "workbook");
  EXPECT_EQ(doubts(one), "unit-guessed:1");
  EXPECT_EQ(one.series[1].column, 3) << "that of the cell";
  EXPECT_EQ(one.series[1].line, 1);
}

TEST(Workbook, PartsAreFoundByTheirRelations) {
  for (const std::string target :
       {"/data/one.xml", "../data/one.xml", "./../data/one.xml", "/DATA/one.xml"}) {
    Parts parts = plain("");
    parts.erase("xl/worksheets/sheet1.xml");
    parts["data/one.xml"] = sheet(three_years);
    parts["xl/_rels/workbook.xml.rels"] = relations({{"rId1", "worksheet", target}});
    EXPECT_EQ(series_of(file_of(parts)), as_three_years) << target;
  }
  Parts elsewhere = plain("");
  elsewhere["_rels/.rels"] = relations({{"x", "officeDocument", "/book/main.xml"}});
  elsewhere["book/main.xml"] = elsewhere["xl/workbook.xml"];
  elsewhere["book/_rels/main.xml.rels"] = relations({{"rId1", "worksheet", "s.xml"}});
  elsewhere["book/s.xml"] = sheet(three_years);
  EXPECT_EQ(series_of(file_of(elsewhere)), as_three_years);
  EXPECT_EQ(part_name("xl/", "../../../a"), "a");
}

TEST(Workbook, TextsMayBeSharedAndOfRuns) {
  Parts parts = plain(sheet("<row><c t=\"s\"><v>0</v></c><c t=\"s\"><v>1</v></c></row>" +
                            row({"1990", "1.25"}) + row({"1991", "1.5"})));
  parts["xl/_rels/workbook.xml.rels"] = relations(
      {{"rId1", "worksheet", "worksheets/sheet1.xml"}, {"rId2", "sharedStrings", "/xl/sharedStrings.xml"}});
  parts["xl/sharedStrings.xml"] =
      "<sst><si><t>year</t></si><si><r><rPr><b/></rPr><t>PI</t></r><r><t xml:space=\"preserve\">N 1</t></r>"
      "<rPh sb=\"0\" eb=\"1\"><t>x</t></rPh></si></sst>";
  const Imported one = taken(file_of(parts));
  ASSERT_EQ(one.series.size(), 1U);
  EXPECT_EQ(one.series[0].name, "PIN 1");
}

TEST(Workbook, TextsThatTheWorkbookLacksAreSaid) {
  Parts parts = plain(sheet(row({"year", "A"}) + row({"1990", "1.25"}) +
                            row({"1991", "<c t=\"s\"><v>7</v></c>"}) + row({"1992", "1.5"})));
  const Imported one = taken(file_of(parts));
  EXPECT_EQ(shown(one), "A 1990: 1.25 - 1.5\n");
  EXPECT_EQ(doubts(one), "unit-guessed:1 no-stored-value:3");
}

TEST(Workbook, CharactersMayBeWrittenByTheirNumbers) {
  EXPECT_EQ(unescaped("a_x000D_b"), "a b");
  EXPECT_EQ(unescaped("A_x005F_x0031_"), "A_x0031_");
  EXPECT_EQ(unescaped("_x0041__x0042_"), "AB");
  for (const std::string as_it_is : {"_x", "a_x12", "_x000g_", "_x00411", "_x0041", "_x20AC_", "_xxxxx_"})
    EXPECT_EQ(unescaped(as_it_is), as_it_is);
  const Imported one = taken(book(row({"year", "PIN_x000A_1"}) + row({"1990", "1.25"}) + row({"1991", "1"})));
  ASSERT_EQ(one.series.size(), 1U);
  EXPECT_EQ(one.series[0].name, "PIN 1");
}

TEST(Workbook, NumbersHaveAllTheirDigits) {
  const Imported one = taken(book(row({"year", "A (mm)"}) + row({"1990", "1.2345678901234567"}) +
                                  row({"1991", "1.1000000000000001"})));
  ASSERT_EQ(one.series.size(), 1U);
  EXPECT_EQ(one.series[0].widths[0], 1.2345678901234567);
  EXPECT_EQ(one.series[0].widths[1], 1.1);
  EXPECT_EQ(
      series_of(
          book("<row><c t=\"inlineStr\"><is><t>year</t></is></c><c><v>1.1000000000000001</v></c></row>" +
               row({"1990", "1.25"}) + row({"1991", "1E-1"}) +
               "<row><c><v>1992</v></c><c><v>2.5E-1</v></c></row>"))
          .substr(0, 4),
      "1.1 ");
}

TEST(Workbook, FormulasHaveTheirStoredValues) {
  const std::string stored = "<c><f>B1*2</f><v>1.25</v></c>", text = "<c t=\"str\"><f>x</f><v>1,5</v></c>",
                    none = "<c><f>B1*2</f><v/></c>";
  EXPECT_EQ(series_of(book(row({"year", "A"}) + row({"1990", stored}) + row({"1991", text}) +
                           row({"1992", "2.5"}))),
            "A 1990: 1.25 1.5 2.5\n");
  const Imported one =
      taken(book(row({"year", "A"}) + row({"1990", "1.25"}) + row({"1991", none}) + row({"1992", "2.5"})));
  EXPECT_EQ(doubts(one), "unit-guessed:1 no-stored-value:3");
}

// Programs that do not compute write 0, and that it is to be done when the workbook is opened.
TEST(Workbook, FormulasThatWaitToBeComputedHaveNoValue) {
  const std::string zero = "<c><f>B1*2</f><v>0</v></c>", other = "<c><f>B1*2</f><v>1.25</v></c>";
  const std::string rows = row({"year", "A"}) + row({"1990", "1.5"}) + row({"1991", zero}) +
                           row({"1992", other}) + row({"1993", "0"});
  EXPECT_EQ(series_of(book(rows)), "A 1990: 1.5 0 1.25 0\n");
  Parts parts = plain(sheet(rows));
  parts["xl/workbook.xml"].insert(parts["xl/workbook.xml"].find("</workbook>"),
                                  "<calcPr fullCalcOnLoad=\"1\"/>");
  const Imported one = taken(file_of(parts));
  EXPECT_EQ(shown(one), "A 1990: 1.5 - 1.25 0\n");
  EXPECT_NE(doubts(one).find("no-stored-value:3"), std::string::npos);
}

TEST(Workbook, ErrorsAndBooleansAreNoWidths) {
  const Imported one =
      taken(book(row({"year", "A"}) + row({"1990", "1.25"}) + row({"1991", "<c t=\"e\"><v>#N/A</v></c>"}) +
                 row({"1992", "<c t=\"e\"><v>#DIV/0!</v></c>"}) + row({"1993", "<c t=\"b\"><v>1</v></c>"}) +
                 row({"1994", "2.5"})));
  EXPECT_EQ(shown(one), "A 1990: 1.25 - - - 2.5\n");
  EXPECT_EQ(doubts(one), "unit-guessed:1 no-number:4 no-number:5");
  for (const FileFinding& finding : one.findings) {
    if (finding.kind == kind("no-number")) {
      EXPECT_EQ(finding.column, 2) << "that of the cell";
    }
  }
}

// 32,874 days behind 1899-12-30 is 1990-01-01, by the published table of the calendar; 1904 is 1,462 days
// later.
TEST(Workbook, DatesAreYears) {
  EXPECT_EQ(date_of(32874, false), "1990-01-01");
  EXPECT_EQ(date_of(32874 - 1462, true), "1990-01-01");
  EXPECT_EQ(date_of(1, false), "1900-01-01");
  EXPECT_EQ(date_of(59, false), "1900-02-28");
  EXPECT_EQ(date_of(61, false), "1900-03-01");
  EXPECT_EQ(date_of(45351.75, false), "2024-02-29");
  EXPECT_EQ(date_of(-1, false), "");
  EXPECT_EQ(date_of(3e6, false), "");
  EXPECT_TRUE(shows_date("yyyy\\-mm\\-dd"));
  EXPECT_TRUE(shows_date("[$-409]d/m/yy;@"));
  EXPECT_FALSE(shows_date("0.00\" day\""));
  EXPECT_FALSE(shows_date("[Red]0.0"));
  EXPECT_FALSE(shows_date("0;d"));
  for (const bool from_1904 : {false, true}) {
    const std::string year = "<c s=\"1\"><v>", first = from_1904 ? "31412" : "32874",
                      next = from_1904 ? "31777" : "33239";
    Parts parts = plain(sheet(row({"year", "A"}) + row({year + first + "</v></c>", "1.25"}) +
                              row({year + next + "</v></c>", "1.5"})));
    parts["xl/_rels/workbook.xml.rels"] =
        relations({{"rId1", "worksheet", "worksheets/sheet1.xml"}, {"rId2", "styles", "styles.xml"}});
    parts["xl/styles.xml"] =
        "<styleSheet><numFmts><numFmt numFmtId=\"164\" formatCode=\"yyyy\"/></numFmts>"
        "<cellXfs><xf numFmtId=\"0\"/><xf numFmtId=\"164\"/></cellXfs></styleSheet>";
    if (from_1904)
      parts["xl/workbook.xml"].insert(parts["xl/workbook.xml"].find("<sheets>"),
                                      "<workbookPr date1904=\"1\"/>");
    EXPECT_EQ(series_of(file_of(parts)), "A 1990: 1.25 1.5\n");
  }
}

Parts of_sheets(const std::vector<std::string>& sheets, const std::string& state_of_second = "") {
  Parts parts = plain(sheets[0]);
  std::string list, related = "<Relationships>";
  for (std::size_t k = 0; k < sheets.size(); ++k) {
    const std::string number = std::to_string(k + 1);
    list += "<sheet name=\"Plot " + number + "\" r:id=\"r" + number + "\"" + (k == 1 ? state_of_second : "") +
            "/>";
    related += "<Relationship Id=\"r" + number + "\" Type=\"" + type +
               "worksheet\" Target=\"worksheets/sheet" + number + ".xml\"/>";
    parts["xl/worksheets/sheet" + number + ".xml"] = sheets[k];
  }
  parts["xl/workbook.xml"] = "<workbook xmlns:r=\"r\"><sheets>" + list + "</sheets></workbook>";
  parts["xl/_rels/workbook.xml.rels"] = related + "</Relationships>";
  return parts;
}

TEST(Workbook, AllSheetsThatAreTablesAreTaken) {
  const std::string other =
      sheet(row({"year", "C"}) + row({"1990", "2.5"}) + row({"1991", "x"}) + row({"1992", "2.25"}));
  const Imported one = taken(file_of(of_sheets(
      {sheet(three_years), sheet(""), sheet(row({"site", "Nowhere"}) + row({"height", "300"})), other})));
  EXPECT_EQ(shown(one), std::string(as_three_years) + "C 1990: 2.5 - 2.25\n");
  EXPECT_EQ(doubts(one), "unit-guessed:1 no-number:3");
  EXPECT_EQ(words_of(one), "\"x\" is no number: 1991 has no ring (sheet \"Plot 4\")\n");
  EXPECT_EQ(std::ranges::count(one.findings, kind("sheet"), &FileFinding::kind), 2);
}

TEST(Workbook, WordsNameTheRowsOfTheirSheet) {
  const Imported one = taken(file_of(
      of_sheets({sheet(three_years), sheet(row({"year", "C"}) + row({"1990", "2.5"}) + row({"1991", "2"}) +
                                           row({"1991", "2"}) + row({"1992", "1"}))})));
  const auto twice = std::ranges::find(one.findings, std::string_view("year-twice"),
                                       [](const FileFinding& finding) { return finding.kind->id; });
  ASSERT_NE(twice, one.findings.end());
  EXPECT_EQ(twice->line, 4);
  EXPECT_EQ(twice->words, "1991 stands on line 3 too, with the same width (sheet \"Plot 2\")");
}

TEST(Workbook, SeriesOfOneNameAreNamedByTheirSheets) {
  const Imported one =
      taken(file_of(of_sheets({sheet(three_years), sheet(row({"year", "C"}) + row({"1990", "1.5"})),
                               sheet(row({"year", "C"}) + row({"1990", "2.5"}) + row({"1991", "2"}))})));
  const auto twice = std::ranges::find(one.findings, std::string_view("name-twice-same-years"),
                                       [](const FileFinding& finding) { return finding.kind->id; });
  ASSERT_NE(twice, one.findings.end());
  EXPECT_EQ(twice->words,
            "two series of one name: 1990 to 1990 from line 1 of sheet \"Plot 2\" on, and here 1990 to 1991 "
            "(sheet \"Plot 3\")");
}

TEST(Workbook, HiddenSheetsArePassedOverAndSaid) {
  for (const std::string state : {" state=\"hidden\"", " state=\"veryHidden\""}) {
    const Imported one = taken(file_of(of_sheets({sheet(three_years), sheet(three_years)}, state)));
    EXPECT_EQ(shown(one), as_three_years);
    EXPECT_EQ(doubts(one), "hidden-sheet unit-guessed:1");
  }
}

TEST(Workbook, HiddenRowsAndColumnsAreTakenAndSaid) {
  std::string rows = three_years;
  rows.replace(rows.rfind("<row>"), 5, "<row hidden=\"1\">");
  Parts parts = plain(sheet(rows));
  std::string& xml = parts["xl/worksheets/sheet1.xml"];
  xml.insert(xml.find("<sheetData>"), "<cols><col min=\"2\" max=\"16384\" hidden=\"true\"/></cols>");
  const Imported one = taken(file_of(parts));
  EXPECT_EQ(shown(one), as_three_years);
  EXPECT_EQ(doubts(one), "hidden-sheet unit-guessed:1");
  for (const FileFinding& finding : one.findings) {
    if (finding.kind == kind("hidden-sheet")) {
      EXPECT_EQ(finding.words,
                "sheet \"Widths\": 1 row and 2 columns that are hidden are taken as if they were not");
    }
  }
  xml.erase(xml.find(" hidden=\"1\""), 11);
  xml.replace(xml.find("min=\"2\""), 7, "min=\"4\"");
  EXPECT_EQ(doubts(taken(file_of(parts))), "unit-guessed:1") << "columns that hold nothing";
}

TEST(Workbook, PartsMayBePartedAsOnWindows) {
  StoredArchive archive;
  for (const auto& [name, bytes] : plain(sheet(three_years))) {
    std::string parted = name;
    std::ranges::replace(parted, '/', '\\');
    archive.add(parted, bytes);
  }
  EXPECT_EQ(series_of(archive.finished()), as_three_years);
}

TEST(Workbook, MergedCellsAreSaid) {
  const Imported one = taken(book(three_years, "<mergeCells><mergeCell ref=\"A6:B6\"/></mergeCells>"));
  EXPECT_NE(notes(one).find("merged-cells"), std::string::npos);
}

// Rows and cells that are not written are empty; a lone far cell costs its rows alone.
TEST(Workbook, PlacesOfCellsAreTheirOwn) {
  const std::string sparse =
      "<row r=\"3\"><c r=\"B3\" t=\"inlineStr\"><is><t>year</t></is></c><c r=\"D3\" "
      "t=\"inlineStr\"><is><t>A</t></is></c></row>"
      "<row r=\"4\"><c r=\"B4\"><v>1990</v></c><c r=\"D4\"><v>1.25</v></c></row>"
      "<row r=\"5\"><c r=\"B5\"><v>1991</v></c><c r=\"D5\"><v>1.5</v></c></row>";
  const Imported one = taken(book(sparse));
  EXPECT_EQ(shown(one), "A 1990: 1.25 1.5\n");
  EXPECT_EQ(one.series[0].line, 3);
  EXPECT_EQ(one.series[0].column, 4);
  const Imported far = taken(book(sparse + "<row r=\"1048576\"><c r=\"XFD1048576\"><v>7</v></c></row>"));
  EXPECT_EQ(shown(far), "A 1990: 1.25 1.5\n");
  EXPECT_EQ(doubts(far), "unit-guessed:3 no-year:1048576");
  EXPECT_EQ(place_of_cell("XFD1048576").column, 16384);
  EXPECT_EQ(place_of_cell("AB12").column, 28);
  EXPECT_EQ(place_of_cell("12").column, 0);
  EXPECT_EQ(place_of_cell("A").column, 0);
  EXPECT_EQ(place_of_cell(std::string(1000, 'Z') + "1").column, 16385);
}

TEST(Workbook, TextsStayOnTheirRow) {
  const Imported one = taken(book(row({"year", "A", "notes"}) + row({"1990", "1.25", "a\tb\nc"}) +
                                  row({"1991", "1.5", "\"quoted"}) + row({"1992", "1.75", "#5"})));
  EXPECT_EQ(shown(one), "A 1990: 1.25 1.5 1.75\n");
}

// --- What is not read

TEST(Workbook, OtherArchivesAndSpreadsheetsSayWhatToDo) {
  EXPECT_EQ(words_of(taken(std::string("\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1", 8) + "...")),
            "is not read: save it as a workbook (.xlsx) without a password, or as CSV\n");
  StoredArchive ods;
  ods.add("mimetype", "application/vnd.oasis.opendocument.spreadsheet");
  EXPECT_EQ(words_of(taken(ods.finished())), "is not read: save it as a workbook (.xlsx) or as CSV\n");
  StoredArchive in_another_order;
  for (const std::string part : {"META-INF/manifest.xml", "content.xml", "mimetype"})
    in_another_order.add(part, "");
  EXPECT_EQ(words_of(taken(in_another_order.finished())),
            "is not read: save it as a workbook (.xlsx) or as CSV\n");
  StoredArchive zip;
  zip.add("a.rwl", "x");
  EXPECT_EQ(words_of(taken(zip.finished())),
            "is not read: it holds no workbook: unpack it and open the files in it\n");
  Parts binary = plain("");
  binary["_rels/.rels"] = relations({{"rId1", "officeDocument", "xl/workbook.bin"}});
  EXPECT_EQ(words_of(taken(file_of(binary))),
            "is not read: it is a binary workbook (.xlsb): save it as a workbook (.xlsx)\n");
  Parts text = plain("");
  text["xl/workbook.xml"] = "<document/>";
  EXPECT_EQ(words_of(taken(file_of(text))), "is not read: it holds another document, no workbook\n");
}

TEST(Workbook, PartsThatAreMissingOrDamagedAreNamed) {
  for (const std::string part :
       {"xl/workbook.xml", "xl/_rels/workbook.xml.rels", "xl/worksheets/sheet1.xml"}) {
    Parts parts = plain(sheet(three_years));
    parts.erase(part);
    EXPECT_NE(words_of(taken(file_of(parts))).find("its part " + part + " is missing"), std::string::npos)
        << part;
    parts[part] = "<a><b></a>";
    EXPECT_NE(words_of(taken(file_of(parts))).find("it is no XML from line 1 on"), std::string::npos) << part;
  }
  std::string bytes = book(three_years);
  bytes[bytes.find("1.25")] = '9';
  EXPECT_NE(words_of(taken(bytes)).find("is damaged, or has a password"), std::string::npos) << "by its sum";
}

TEST(Workbook, EntitiesAreNotExpanded) {
  Parts parts = plain("<!DOCTYPE a [<!ENTITY b \"c\">]>" + sheet(three_years));
  EXPECT_NE(words_of(taken(file_of(parts))).find("declares entities"), std::string::npos);
}

TEST(Workbook, DepthIsBounded) {
  std::string deep;
  for (int k = 0; k < 200'000; ++k) deep += "<a>";
  for (int k = 0; k < 200'000; ++k) deep += "</a>";
  EXPECT_NE(words_of(taken(file_of(plain(deep)))).find("more than 100 deep"), std::string::npos);
}

// A few kilobytes of archive that would be gigabytes of elements.
TEST(Workbook, ElementsAreBounded) {
  std::string rows;
  for (int k = 0; k < 12'000'001; ++k) rows += "<c/>";
  EXPECT_NE(words_of(taken(book("<row>" + rows + "</row>"))).find("more than 12 million elements"),
            std::string::npos);
}

TEST(Workbook, SheetsBehindTheLastAreSaid) {
  Parts parts = plain(sheet(three_years));
  std::string list = "<sheet name=\"A\" r:id=\"rId1\"/>";
  for (int k = 0; k < 1'000; ++k) list += "<sheet name=\"x\"/>";
  parts["xl/workbook.xml"] = "<workbook xmlns:r=\"r\"><sheets>" + list + "</sheets></workbook>";
  const Imported one = taken(file_of(parts));
  EXPECT_EQ(shown(one), as_three_years);
  EXPECT_EQ(words_of(one), "1 sheet behind the 1,000th is not looked at\n");
}

TEST(Workbook, PartsAreBounded) {
  StoredArchive many;
  for (int k = 0; k < 5'001; ++k) many.add(std::to_string(k), "");
  EXPECT_NE(words_of(taken(many.finished())).find("more than 5000"), std::string::npos);
  EXPECT_NE(words_of(taken(file_of(plain(std::string(97U << 20U, ' '))))).find("larger than 96 MB"),
            std::string::npos);
}

// One long text that every cell shares would fill gigabytes.
TEST(Workbook, TextIsBounded) {
  std::string rows;
  for (int k = 0; k < 3'000; ++k) rows += "<row><c t=\"s\"><v>0</v></c></row>";
  Parts parts = of_sheets({sheet(three_years), sheet(rows)});
  std::string& related = parts["xl/_rels/workbook.xml.rels"];
  related.insert(related.find("</Rel"),
                 "<Relationship Id=\"x\" Type=\"" + type + "sharedStrings\" Target=\"sharedStrings.xml\"/>");
  parts["xl/sharedStrings.xml"] = "<sst><si><t>" + std::string(60'000, 'x') + "</t></si></sst>";
  const Imported one = taken(file_of(parts));
  EXPECT_EQ(shown(one), as_three_years);
  EXPECT_NE(words_of(one).find("more than 64 MB of text"), std::string::npos);
}

// Every cut, and every byte changed, of a small workbook is read or refused.
TEST(Workbook, DamagedBytesDoNoHarm) {
  const std::string whole = book(three_years);
  for (std::size_t length = 0; length < whole.size(); length += 3) {
    const auto one = imported(whole.substr(0, length), {2026});
    if (one) {
      EXPECT_FALSE(one->findings.empty());
    }
  }
  for (std::size_t at = 0; at < whole.size(); ++at) {
    std::string bytes = whole;
    bytes[at] = static_cast<char>(~bytes[at]);
    const auto one = imported(bytes, {2026});
    if (one && !one->tucson.empty()) {
      EXPECT_EQ(lost_in_copy(*one), "");
    }
  }
}

}  // namespace
}  // namespace vorn
