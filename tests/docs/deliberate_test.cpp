// What the documents promise about the tests.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <string>

#include "docs/pages.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

std::set<std::string> matches(const std::string& text, const std::regex& pattern) {
  std::set<std::string> all;
  for (std::sregex_iterator at(text.begin(), text.end(), pattern), end; at != end; ++at) {
    all.insert((*at)[1].str() + "." + (*at)[2].str());
  }
  return all;
}

// "Suite.Name" of every test in the tree.
std::set<std::string> all_tests() {
  std::set<std::string> all;
  for (const char* folder : {"src", "tests", "tools"}) {
    for (const auto& entry : fs::recursive_directory_iterator(in_tree(folder))) {
      if (entry.path().extension() != ".cpp") continue;
      all.merge(matches(contents(entry.path()), std::regex(R"(TEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)\))")));
    }
  }
  return all;
}

TEST(Deliberate, EveryLineNamesTestsThatExist) {
  const std::set<std::string> tests = all_tests();
  const std::string page = contents(in_tree("docs/deliberate.md"));
  // Names of files look alike, but for their endings.
  const auto named = matches(page, std::regex(R"(`([A-Z]\w*)\.([A-Z]\w*)`)"));
  EXPECT_GT(named.size(), 50u);
  for (const std::string& name : named) EXPECT_TRUE(tests.contains(name)) << name;
}

TEST(Coverage, NamesTestsThatExist) {
  const std::set<std::string> tests = all_tests();
  const std::string page = contents(in_tree("docs/coverage.md"));
  const auto named = matches(page, std::regex(R"(`([A-Z]\w*)\.([A-Z]\w*)`)"));
  EXPECT_GT(named.size(), 5u);
  for (const std::string& name : named) EXPECT_TRUE(tests.contains(name)) << name;
}

TEST(Deliberate, EveryLineNamesATest) {
  std::ifstream page(in_tree("docs/deliberate.md"));
  std::string line;
  int lines = 0;
  while (std::getline(page, line)) {
    if (!line.starts_with("| ") || line.starts_with("| what ")) continue;
    ++lines;
    EXPECT_TRUE(std::regex_search(line, std::regex(R"(\| `[A-Z]\w*\.[A-Z]\w*`[^|]*\|$)"))) << line;
  }
  EXPECT_GT(lines, 50);
}

}  // namespace
}  // namespace vorn
