// The tests that documents name.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "docs/pages.h"

namespace vorn {

using Names = std::set<std::string>;

// The first groups of all matches of `pattern` in `text`.
inline std::vector<std::string> matches(const std::string& text, const std::regex& pattern) {
  std::vector<std::string> all;
  for (std::sregex_iterator at(text.begin(), text.end(), pattern), end; at != end; ++at)
    all.push_back((*at)[1]);
  return all;
}

inline Names set_of(const std::vector<std::string>& all) {
  return {all.begin(), all.end()};
}

// "Suite.Name" of every test in the tree.
inline Names all_tests() {
  Names all;
  const std::regex test(R"(TEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)\))");
  for (const char* folder : {"src", "tests", "tools"}) {
    for (const std::filesystem::path& file : sources_below(folder)) {
      const std::string text = contents(file);
      for (std::sregex_iterator at(text.begin(), text.end(), test), end; at != end; ++at)
        all.insert((*at)[1].str() + "." + (*at)[2].str());
    }
  }
  return all;
}

// The tests that a text names; names of files look alike, but for their endings.
inline Names tests_named(const std::string& text) {
  return set_of(matches(text, std::regex(R"(`([A-Z]\w*\.[A-Z]\w*)`)")));
}

inline void expect_to_exist(const Names& tests) {
  static const Names all = all_tests();
  for (const std::string& name : tests) EXPECT_TRUE(all.contains(name)) << name;
}

}  // namespace vorn
