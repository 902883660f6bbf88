// `check --list`: what a list of files such as Vorn.fil names, and what of it the program does not get.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "records/files.h"
#include "study/file_findings.h"

namespace vorn {

struct ListedFiles {
  std::vector<std::string> files = {};     // that are there, in their order
  std::vector<FileFinding> findings = {};  // about the lines of the list
};

// Reads the lines of a list as the start-up does: 60 characters each, at most as many as there is room for.
ListedFiles listed_files(Files& files, std::string_view list);

// The list with other names in the place of those that it has, line by line.
struct RenamedList {
  std::string bytes = {};
  std::string too_long = {};  // a name that does not fit into a list, the first one
};
RenamedList renamed_list(std::string_view list, const std::function<std::string(const std::string&)>& name);

}  // namespace vorn
