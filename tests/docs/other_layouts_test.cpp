// What is known of other layouts stands on their pages.
#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "docs/pages.h"
#include "import/archive_parts.h"
#include "import/coordinates.h"
#include "import/fields.h"
#include "import/heidelberg_record.h"
#include "import/noaa_template.h"
#include "import/sheet_cells.h"
#include "import/sheffield.h"
#include "import/table_words.h"
#include "import/tridas.h"
#include "import/workbook_parts.h"

namespace vorn {
namespace {

using Words = std::set<std::string>;

// The words in backticks, by their letters and digits.
Words words_in(const std::string& text) {
  const std::regex code("`([^`]*)`");
  Words all;
  for (std::sregex_iterator at(text.begin(), text.end(), code), end; at != end; ++at)
    all.insert(letters_of((*at)[1].str()));
  return all;
}

std::string heading_of(ColumnMeaning meaning) {
  switch (meaning) {
    case ColumnMeaning::year:
      return "years";
    case ColumnMeaning::year_bp:
      return "years before 1950";
    case ColumnMeaning::series:
      return "series";
    case ColumnMeaning::tree:
      return "tree";
    case ColumnMeaning::core:
      return "core";
    case ColumnMeaning::width:
      return "widths";
    case ColumnMeaning::other:
      return "no widths";
    case ColumnMeaning::unknown:
      break;
  }
  return "";
}

TEST(OtherLayoutPages, TablesShowTheNamesOfColumns) {
  std::map<std::string, Words> shown, meant;
  for (const Row& row : rows(in_tree("docs/formats/tables.md"), "Column"))
    shown[row.at("Column")] = words_in(row.at("Names"));
  for (const KnownColumn& known : known_columns)
    meant[heading_of(known.meaning)].insert(std::string(known.letters));
  shown["tree"].erase("treecore");  // what a series is named, no name of a column
  EXPECT_EQ(shown, meant);
}

TEST(OtherLayoutPages, HeidelbergVariantsShowTheKindsOfData) {
  std::vector<std::string> shown, meant;
  for (const Row& row : rows(in_tree("docs/formats/heidelberg-variants.md"), "Behind `DATA:`"))
    shown.push_back(letters_of(row.at("Behind `DATA:`")) + " " + row.at("Numbers a year") + " " +
                    row.at("Which are"));
  for (const HeidelbergData& data : heidelberg_data)
    meant.push_back(std::string(data.word) + " " + std::to_string(data.numbers) + " " +
                    std::string(data.content));
  EXPECT_EQ(shown, meant);
}

TEST(OtherLayoutPages, NoaaTemplateShowsTheCommentsThatAreRead) {
  using namespace noaa_template;
  Words shown, meant{std::string(missing_key) + "s"};
  meant.insert(first_year_keys.begin(), first_year_keys.end());
  meant.insert(last_year_keys.begin(), last_year_keys.end());
  for (const Row& row : rows(in_tree("docs/formats/noaa-template.md"), "Comment")) {
    for (const std::string& word : words_in(row.at("Comment") + row.at("Content"))) shown.insert(word);
  }
  shown.erase("name");
  shown.erase("units");
  EXPECT_EQ(shown, meant);
}

TEST(OtherLayoutPages, CoordinatesShowTheirPointsAndWords) {
  std::vector<std::string> shown, meant;
  for (const Row& row : rows(in_tree("docs/formats/coordinates.md"), "Letter"))
    shown.push_back(without_backticks(row.at("Letter")) + " " + row.at("Numbers") + " " +
                    row.at("Which are"));
  for (const PointMark& mark : point_marks)
    meant.push_back((mark.letter == '\0' ? "" : std::string(1, mark.letter)) + " " +
                    std::to_string(mark.coordinates) + " " + std::string(mark.content));
  EXPECT_EQ(shown, meant);
  shown.clear();
  meant.clear();
  for (const Row& row : rows(in_tree("docs/formats/coordinates.md"), "Word")) {
    const std::string_view content = coordinate_keys.at(shown.size()).content;
    shown.push_back(letters_of(row.at("Word")) + " " + row.at("Content").substr(0, content.size()));
  }
  for (const CoordinateKey& key : coordinate_keys)
    meant.push_back(std::string(key.word) + " " + std::string(key.content));
  EXPECT_EQ(shown, meant);
}

TEST(OtherLayoutPages, SheffieldShowsItsLinesAndMeasures) {
  std::vector<std::string> shown, meant;
  for (const Row& row : rows(in_tree("docs/formats/sheffield.md"), "Line"))
    shown.push_back(row.at("Line") + " " + without_backticks(row.at("Content")));
  for (std::size_t k = 0; k < sheffield_header.size(); ++k)
    meant.push_back(std::to_string(k + 1) + " " +
                    without_backticks(std::string(sheffield_header.at(k).content)));
  EXPECT_EQ(shown, meant);
  shown.clear();
  meant.clear();
  for (const Row& row : rows(in_tree("docs/formats/sheffield.md"), "Measured"))
    shown.push_back(without_backticks(row.at("Measured")) + " " + row.at("Which are") + " " +
                    row.at("Taken"));
  for (const SheffieldVariable& one : sheffield_variables)
    meant.push_back(std::string(1, one.letter) + " " + std::string(one.content) +
                    (one.are_widths ? " yes" : " no"));
  EXPECT_EQ(shown, meant);
}

// "1,048,576" of 1048576.
std::string with_commas(std::size_t number) {
  std::string text = std::to_string(number);
  for (std::size_t at = text.size(); at > 3; at -= 3) text.insert(at - 3, 1, ',');
  return text;
}

// "0.05" of "0.050", "10" of "10.000".
std::string without_zeros(std::string text) {
  text.erase(text.find_last_not_of('0') + 1);
  if (text.ends_with('.')) text.pop_back();
  return text;
}

std::string megabytes(std::size_t bytes) {
  return std::to_string(bytes >> 20U) + " MB";
}

TEST(OtherLayoutPages, WorkbooksShowTheirLimits) {
  std::vector<std::string> shown;
  for (const Row& row : rows(in_tree("docs/formats/workbooks.md"), "Limit")) shown.push_back(row.at(""));
  EXPECT_EQ(shown, (std::vector<std::string>{
                       with_commas(most_archive_parts), megabytes(most_part_bytes),
                       megabytes(most_unpacked_bytes), std::to_string(most_times_packed) + " times its size",
                       "12 million", "100", with_commas(most_sheets),
                       with_commas(most_sheet_rows) + " and " + with_commas(most_sheet_columns),
                       megabytes(most_sheet_text)}));
}

TEST(OtherLayoutPages, TridasShowsItsVariablesAndUnits) {
  std::map<std::string, Words> shown, meant;
  for (const Row& row : rows(in_tree("docs/formats/tridas.md"), "Variable"))
    shown[row.at("Variable")] = words_in(row.at("Names"));
  for (const TridasVariableWords& known : tridas_variables)
    meant[known.variable == TridasVariable::ring        ? "ring widths"
          : known.variable == TridasVariable::earlywood ? "earlywood widths"
                                                        : "latewood widths"]
        .insert(std::string(known.letters));
  EXPECT_EQ(shown, meant);
  std::vector<std::string> units, known;
  for (const Row& row : rows(in_tree("docs/formats/tridas.md"), "Unit"))
    units.push_back(without_backticks(row.at("Unit")) + " " + row.at("Millimetres"));
  for (const TridasUnit& unit : tridas_units)
    known.push_back(std::string(unit.word) + " " + without_zeros(decimal(unit.times / unit.unit, 3)));
  EXPECT_EQ(units, known);
}

}  // namespace
}  // namespace vorn
