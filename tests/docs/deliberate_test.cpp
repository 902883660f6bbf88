// docs/deliberate.md: each of its rows has a mark in the code, each mark a row, and each row its tests.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <regex>
#include <string>
#include <vector>

#include "docs/named_tests.h"
#include "docs/pages.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

std::vector<Row> deliberate_rows() {
  return rows(in_tree("docs/deliberate.md"), "mark");
}

// Where each mark stands: names of files, which keep them when they move to another room.
using Places = std::map<std::string, Names>;

Places marks() {
  Places all;
  for (const fs::path& file : sources_below("src")) {
    if (is_test(file)) continue;
    for (const std::string& mark : matches(contents(file), std::regex(R"(Deliberate: \[([a-z0-9-]+)\])")))
      all[mark].insert(file.filename().string());
  }
  return all;
}

TEST(Deliberate, EveryRowHasItsMarksAndEveryMarkItsRow) {
  Places listed;
  for (const Row& row : deliberate_rows())
    listed[without_backticks(row.at("mark"))] = set_of(matches(row.at("where"), std::regex("`([^`]+)`")));
  const Places found = marks();
  for (const auto& [mark, files] : found) EXPECT_TRUE(listed.contains(mark)) << mark << " has no row";
  for (const auto& [mark, files] : listed) {
    const auto at = found.find(mark);
    EXPECT_EQ(at == found.end() ? Names() : at->second, files) << mark;
  }
}

TEST(Deliberate, NoTwoRowsShareAMark) {
  Names seen;
  for (const Row& row : deliberate_rows()) EXPECT_TRUE(seen.insert(row.at("mark")).second) << row.at("mark");
  EXPECT_GT(seen.size(), 100u);
}

// A mark without its word in brackets, or another way to say the same, would be held by nothing.
TEST(Deliberate, ThereIsOneKindOfMark) {
  const std::regex other(R"(((?:Deliberate:(?! \[[a-z])|Meant[:,]|meant so|// meant|; meant\b).*))");
  for (const fs::path& file : sources_below("src")) {
    if (is_test(file)) continue;
    for (const std::string& text : matches(contents(file), other)) ADD_FAILURE() << file << ": " << text;
  }
}

TEST(Deliberate, EveryRowNamesTestsThatExist) {
  for (const Row& row : deliberate_rows()) {
    const Names tests = tests_named(row.at("pinned by"));
    EXPECT_FALSE(tests.empty()) << row.at("mark");
    expect_to_exist(tests);
  }
}

TEST(Coverage, NamesTestsThatExist) {
  const Names tests = tests_named(contents(in_tree("docs/coverage.md")));
  EXPECT_GT(tests.size(), 5u);
  expect_to_exist(tests);
}

}  // namespace
}  // namespace vorn
