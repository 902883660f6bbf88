// docs/careful.md: each mend has its row, its place in the code and its tests, and each row of what is meant
// says by which mend it is mended, or why it stays.
#include "workspace/careful.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>

#include "docs/named_tests.h"
#include "docs/pages.h"

namespace vorn {
namespace {

std::vector<Row> rows_of(const std::string& heading) {
  return rows(in_tree("docs/careful.md"), heading);
}

Names deliberate_marks() {
  Names all;
  for (const Row& row : rows(in_tree("docs/deliberate.md"), "where"))
    all.insert(without_backticks(row.at("mark")));
  return all;
}

TEST(CarefulPage, HasARowForEachMendInTheOrderOfTheList) {
  std::vector<std::string> listed, known;
  for (const Row& row : rows_of("mend")) listed.push_back(without_backticks(row.at("mend")));
  for (const MendRow& mend : mends()) known.emplace_back(mend.name);
  EXPECT_EQ(listed, known);
}

TEST(CarefulPage, NamesTestsThatExistForEachMend) {
  for (const Row& row : rows_of("mend")) {
    const Names tests = tests_named(row.at("tests"));
    EXPECT_FALSE(tests.empty()) << row.at("mend");
    expect_to_exist(tests);
  }
}

TEST(CarefulPage, NamesMarksThatExist) {
  const Names marks = deliberate_marks();
  for (const Row& row : rows_of("mend")) {
    for (const std::string& mark : matches(row.at("marks"), std::regex("`([^`]+)`")))
      EXPECT_TRUE(marks.contains(mark)) << mark;
  }
}

TEST(CarefulPage, SaysOfEverythingThatIsMeantWhatBecomesOfIt) {
  Names said;
  for (const Row& row : rows_of("mended, or why not")) {
    EXPECT_TRUE(said.insert(without_backticks(row.at("mark"))).second) << row.at("mark") << " stands twice";
    EXPECT_GT(row.at("mended, or why not").size(), 10u) << row.at("mark");
    for (const std::string& mend : matches(row.at("mended, or why not"), std::regex("mended by `([^`]+)`")))
      EXPECT_NE(mend_named(mend), nullptr) << mend;
  }
  EXPECT_EQ(said, deliberate_marks());
}

// One `if` at the place, or two where a mend has two halves: a mend that nothing asks for mends nothing.
TEST(Careful, EveryMendIsAskedForInTheCode) {
  Names asked;
  for (const std::filesystem::path& file : sources_below("src")) {
    if (is_test(file) || file.stem() == "careful") continue;
    for (const std::string& mend : matches(contents(file), std::regex(R"(has\(Mend::(\w+)\))"))) {
      std::string name = mend;
      std::ranges::replace(name, '_', '-');
      asked.insert(name);
    }
  }
  for (const MendRow& mend : mends()) EXPECT_TRUE(asked.contains(std::string(mend.name))) << mend.name;
}

}  // namespace
}  // namespace vorn
