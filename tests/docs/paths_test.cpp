// Every file and folder that a page names is there.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "docs/pages.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

Names pages() {
  Names all;
  for (const char* folder : {"", "docs", "docs/formats", "examples", "fuzz", "tests/sessions"}) {
    for (const auto& entry : fs::directory_iterator(in_tree(folder))) {
      if (entry.path().extension() == ".md")
        all.push_back((fs::path(folder) / entry.path().filename()).string());
    }
  }
  return all;
}

Names all_matches(const std::string& text, const std::regex& pattern) {
  Names all;
  for (std::sregex_iterator at(text.begin(), text.end(), pattern), end; at != end; ++at)
    all.push_back((*at)[1]);
  return all;
}

// What comes into being when the project is built, run or reported on, and so need not be there.
bool is_made(const std::string& path) {
  const Names made = {"build/",    "out/",           "share/", "bin/",     "reports/",   "corpus/",
                      "failures/", "fuzz/failures/", ".vorn/", "results/", "/usr/share/"};
  return std::any_of(made.begin(), made.end(),
                     [&](const std::string& begin) { return path.starts_with(begin); });
}

// "statistics/*_report.cpp"
bool some_file_fits(const fs::path& pattern) {
  const std::string wanted = pattern.filename().string();
  const std::size_t star = wanted.find('*');
  if (star == std::string::npos || !fs::is_directory(pattern.parent_path())) return false;
  const std::string begin = wanted.substr(0, star), end = wanted.substr(star + 1);
  return std::any_of(fs::directory_iterator(pattern.parent_path()), {},
                     [&](const fs::directory_entry& entry) {
                       const std::string name = entry.path().filename().string();
                       return name.starts_with(begin) && name.ends_with(end);
                     });
}

// In the tree or where the page's reader would look first: the rooms, the tests. Kernels are named without
// ending.
bool is_there(const std::string& path) {
  for (const char* base : {".", "src", "tests"}) {
    const fs::path here = in_tree(base) / path;
    if (fs::exists(here) || fs::exists(here.string() + ".h") || fs::exists(here.string() + ".cpp") ||
        some_file_fits(here))
      return true;
  }
  return false;
}

TEST(Pages, NameFilesThatAreThere) {
  const std::regex quoted("`(\\.?/?[A-Za-z0-9_][A-Za-z0-9_.*-]*/[A-Za-z0-9_.*/-]*)`");
  std::size_t looked_at = 0;
  for (const std::string& page : pages()) {
    for (const std::string& path : all_matches(contents(in_tree(page)), quoted)) {
      if (is_made(path)) continue;
      ++looked_at;
      EXPECT_TRUE(is_there(path)) << page << " names " << path;
    }
  }
  EXPECT_GT(looked_at, 50u);
}

TEST(Pages, LinkToFilesThatAreThere) {
  const std::regex link(R"(\]\(([^)#:]+)(?:#[^)]*)?\))");
  std::size_t looked_at = 0;
  for (const std::string& page : pages()) {
    for (const std::string& target : all_matches(contents(in_tree(page)), link)) {
      ++looked_at;
      EXPECT_TRUE(fs::exists(in_tree(page).parent_path() / target)) << page << " links to " << target;
    }
  }
  EXPECT_GT(looked_at, 30u);
}

}  // namespace
}  // namespace vorn
