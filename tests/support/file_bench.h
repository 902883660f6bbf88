// For tests of files: a folder of its own, a workspace whose current file lies there, and the messages shown.
#pragma once

#include <cstdio>
#include <initializer_list>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "support/scratch_folder.h"
#include "support/specimen_store.h"

namespace vorn {

class FileBench : public SpecimenStore {
 protected:
  // Makes a file of the folder and lets it be the current one.
  void current_file(const std::string& name, std::string_view contents) {
    ScratchFolder::write(name, contents);
    w.cnam(w.cf) = name;
  }

  // A line of the Tucson raw layout: name, year and values of six columns.
  static std::string raw_line(const char* name, int year, std::initializer_list<int> values) {
    return raw_line(name, year, std::vector<int>(values));
  }
  static std::string raw_line(const char* name, int year, const std::vector<int>& values) {
    char text[32];
    std::snprintf(text, sizeof text, "%-8s%4d", name, year);
    std::string line = text;
    for (const int value : values) {
      std::snprintf(text, sizeof text, "%6d", value);
      line += text;
    }
    return line + "\n";
  }

  // What was told since the last call, one message an element.
  std::vector<std::string> messages() {
    std::istringstream lines(log.str());
    log.str("");
    std::vector<std::string> all;
    for (std::string line; std::getline(lines, line);) all.push_back(line);
    return all;
  }

  ScratchFolder folder;
};

using Messages = std::vector<std::string>;

}  // namespace vorn
