// Reading the documents: whole files, and the tables in them.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "support/places.h"

namespace vorn {

inline std::filesystem::path in_tree(const std::string& path) {
  return source_folder() / path;
}

inline std::string contents(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

// Every C++ file below a folder of the tree.
inline std::vector<std::filesystem::path> sources_below(const std::string& folder) {
  std::vector<std::filesystem::path> all;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(in_tree(folder))) {
    const std::string ending = entry.path().extension().string();
    if (ending == ".cpp" || ending == ".h") all.push_back(entry.path());
  }
  return all;
}

inline bool is_test(const std::filesystem::path& file) {
  return file.filename().string().ends_with("_test.cpp");
}

inline std::string without_backticks(std::string text) {
  std::erase(text, '`');
  return text;
}

inline std::string without_blanks_around(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// "| a | b |" -> "a", "b"; nothing for a line of no table.
inline std::vector<std::string> cells(const std::string& line) {
  std::vector<std::string> all;
  if (!line.starts_with("|")) return all;
  std::istringstream rest(line.substr(1));
  for (std::string cell; std::getline(rest, cell, '|');) all.push_back(without_blanks_around(cell));
  return all;
}

// A row by the headings of its table.
using Row = std::map<std::string, std::string>;

// The rows of every table of a page that has a column of that heading.
inline std::vector<Row> rows(const std::filesystem::path& page, const std::string& heading) {
  std::istringstream text(contents(page));
  std::vector<Row> all;
  std::vector<std::string> headings;
  for (std::string line; std::getline(text, line);) {
    const std::vector<std::string> row = cells(line);
    if (row.empty()) headings.clear();
    if (row.empty() || row[0].starts_with("---")) continue;
    if (headings.empty()) {
      headings = row;
      continue;
    }
    Row named;
    for (std::size_t k = 0; k < row.size() && k < headings.size(); ++k) named[headings[k]] = row[k];
    if (named.contains(heading)) all.push_back(named);
  }
  return all;
}

}  // namespace vorn
