// What is known of other layouts stands on their pages.
#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "docs/pages.h"
#include "import/coordinates.h"
#include "import/fields.h"
#include "import/heidelberg_record.h"
#include "import/noaa_template.h"
#include "import/sheffield.h"
#include "import/table_words.h"

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

}  // namespace
}  // namespace vorn
