// `check --list`: what a list of files such as Vorn.fil names, and what of it the program does not get.
#pragma once

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

}  // namespace vorn
