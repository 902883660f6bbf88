#include "batch/workbook_text.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/loud_failure.h"
#include "records/stored_archive.h"

namespace vorn {
namespace {

constexpr std::string_view head = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
constexpr std::string_view package = "http://schemas.openxmlformats.org/package/2006/";
constexpr std::string_view document = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
constexpr std::string_view main_names = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
constexpr std::string_view content = "application/vnd.openxmlformats-officedocument.spreadsheetml.";
constexpr std::size_t longest_text = 32'767;  // of a cell

std::string part_type(std::string_view part, std::string_view type) {
  return "<Override PartName=\"" + std::string(part) + "\" ContentType=\"" + std::string(content) +
         std::string(type) + "+xml\"/>";
}

std::string content_types() {
  return std::string(head) + "<Types xmlns=\"" + std::string(package) +
         "content-types\"><Default Extension=\"rels\" "
         "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
         "<Default Extension=\"xml\" ContentType=\"application/xml\"/>" +
         part_type("/xl/workbook.xml", "sheet.main") + part_type("/xl/worksheets/sheet1.xml", "worksheet") +
         part_type("/xl/styles.xml", "styles") + "</Types>";
}

std::string relation(std::string_view id, std::string_view type, std::string_view target) {
  return "<Relationship Id=\"" + std::string(id) + "\" Type=\"" + std::string(document) + "/" +
         std::string(type) + "\" Target=\"" + std::string(target) + "\"/>";
}

std::string relations(const std::string& all) {
  return std::string(head) + "<Relationships xmlns=\"" + std::string(package) + "relationships\">" + all +
         "</Relationships>";
}

std::string workbook(const std::string& name) {
  return std::string(head) + "<workbook xmlns=\"" + std::string(main_names) + "\" xmlns:r=\"" +
         std::string(document) + "\"><sheets><sheet name=\"" + xml_escaped(name) +
         "\" sheetId=\"1\" r:id=\"rId1\"/></sheets></workbook>";
}

// Style 0 is that of all cells, style 1 that of names: bold.
std::string styles() {
  return std::string(head) + "<styleSheet xmlns=\"" + std::string(main_names) +
         "\"><fonts count=\"2\"><font><sz val=\"11\"/><name val=\"Calibri\"/></font>"
         "<font><b/><sz val=\"11\"/><name val=\"Calibri\"/></font></fonts>"
         "<fills count=\"2\"><fill><patternFill patternType=\"none\"/></fill>"
         "<fill><patternFill patternType=\"gray125\"/></fill></fills>"
         "<borders count=\"1\"><border><left/><right/><top/><bottom/><diagonal/></border></borders>"
         "<cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" "
         "borderId=\"0\"/></cellStyleXfs>"
         "<cellXfs count=\"2\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\"/>"
         "<xf numFmtId=\"0\" fontId=\"1\" fillId=\"0\" borderId=\"0\" xfId=\"0\" applyFont=\"1\"/></cellXfs>"
         "<cellStyles count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" "
         "builtinId=\"0\"/></cellStyles></styleSheet>";
}

std::string sheet(const std::string& rows, const std::string& last_cell) {
  return std::string(head) + "<worksheet xmlns=\"" + std::string(main_names) +
         "\"><dimension ref=\"A1:" + last_cell +
         "\"/><sheetViews><sheetView workbookViewId=\"0\"><pane ySplit=\"1\" topLeftCell=\"A2\" "
         "activePane=\"bottomLeft\" state=\"frozen\"/></sheetView></sheetViews><sheetData>" +
         rows + "</sheetData></worksheet>";
}

// The beginning of a text that a cell holds, cut between characters.
std::string_view beginning(std::string_view text) {
  if (text.size() <= longest_text) return text;
  std::size_t length = longest_text;
  while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80) --length;
  return text.substr(0, length);
}

// "_x0041_", which readers of workbooks take for the character of that number.
bool begins_number_of_character(std::string_view text) {
  constexpr std::string_view begin = "_x", digits = "0123456789abcdefABCDEF";
  constexpr std::size_t length = 7;
  return text.size() >= length && text.starts_with(begin) && text[length - 1] == '_' &&
         text.substr(begin.size(), 4).find_first_not_of(digits) == std::string_view::npos;
}

}  // namespace

std::string column_letters(std::size_t column) {
  std::string letters;
  for (; column > 0; column = (column - 1) / 26)
    letters.insert(letters.begin(), static_cast<char>('A' + (column - 1) % 26));
  return letters;
}

std::string xml_escaped(std::string_view text) {
  constexpr std::array<std::pair<char, std::string_view>, 4> marks = {
      {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}}};
  std::string all;
  for (std::size_t k = 0; k < text.size(); ++k) {
    const auto* const mark = std::ranges::find(marks, text[k], &std::pair<char, std::string_view>::first);
    if (mark != marks.end()) {
      all += mark->second;
    } else if (text.substr(k, 3) == "\xef\xbf\xbe" || text.substr(k, 3) == "\xef\xbf\xbf") {
      all += "\xef\xbf\xbd";
      k += 2;
    } else {
      if (begins_number_of_character(text.substr(k))) all += "_x005F";
      all += text[k];
    }
  }
  return all;
}

WorkbookText::WorkbookText(std::string name, const std::vector<std::string>& columns)
    : name_(std::move(name)), columns_(columns.size()) {
  VORN_ASSERT(columns_ >= 1 && columns_ <= most_workbook_columns);
  std::vector<WorkbookCell> names;
  names.reserve(columns.size());
  for (const std::string& column : columns) names.push_back({column, false});
  add_row(names, true);
}

bool WorkbookText::add(const std::vector<WorkbookCell>& row) {
  constexpr std::size_t most_bytes = 0xf0000000U;  // of a part of an archive
  VORN_ASSERT(row.size() <= columns_);
  if (row_ == most_workbook_rows || rows_.size() >= most_bytes) return false;
  add_row(row, false);
  return true;
}

void WorkbookText::add_row(const std::vector<WorkbookCell>& row, bool is_head) {
  const std::string number = std::to_string(++row_);
  rows_ += "<row r=\"" + number + "\">";
  for (std::size_t k = 0; k < row.size(); ++k) {
    if (row[k].text.empty()) continue;
    rows_ += "<c r=\"" + column_letters(k + 1) + number + (is_head ? "\" s=\"1\"" : "\"");
    if (row[k].is_number)
      rows_ += "><v>" + row[k].text + "</v></c>";
    else
      rows_ += " t=\"inlineStr\"><is><t xml:space=\"preserve\">" + xml_escaped(beginning(row[k].text)) +
               "</t></is></c>";
  }
  rows_ += "</row>\n";
}

std::string WorkbookText::finished() {
  StoredArchive archive;
  archive.add("[Content_Types].xml", content_types());
  archive.add("_rels/.rels", relations(relation("rId1", "officeDocument", "xl/workbook.xml")));
  archive.add("xl/workbook.xml", workbook(name_));
  archive.add("xl/_rels/workbook.xml.rels", relations(relation("rId1", "worksheet", "worksheets/sheet1.xml") +
                                                      relation("rId2", "styles", "styles.xml")));
  archive.add("xl/styles.xml", styles());
  archive.add("xl/worksheets/sheet1.xml", sheet(rows_, column_letters(columns_) + std::to_string(row_)));
  return archive.finished();
}

}  // namespace vorn
