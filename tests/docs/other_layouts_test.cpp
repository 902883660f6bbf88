// What is known of other layouts stands on their pages.
#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "docs/pages.h"
#include "import/fields.h"
#include "import/heidelberg_record.h"
#include "import/noaa_template.h"
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

}  // namespace
}  // namespace vorn
