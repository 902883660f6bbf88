// A clean copy of a file that is not read whole, for the list to name in its place.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "records/files.h"
#include "workspace/careful.h"

namespace vorn {

struct CleanCopy {
  std::string name = {};                // "site-clean.rwl", the first that is free, or that holds the same
  std::string bytes = {};               // empty where there is no copy
  std::vector<std::string> words = {};  // what was done to have it, or why there is none
};

// Reads the file anew, so carefully. `unit` is what its series without an end mark are taken for, values a
// millimetre.
CleanCopy clean_copy(Files& files, const std::string& file, std::optional<double> unit,
                     const Careful& careful = {});

// The same where the program would not read the file at all, and a copy can be had without a guess; otherwise
// nothing.
std::optional<CleanCopy> copy_of_unread(Files& files, const std::string& file);

// Writes the copy, unless it is there. Answers what went wrong.
std::optional<std::string> write_clean_copy(Files& files, const CleanCopy& copy);

// Writes the copy, and puts its name into Vorn.fil in the file's place (desk/file_list.h). Answers what went
// wrong: the list is as it was then.
std::optional<std::string> use_clean_copy(Files& files, const std::string& file, const CleanCopy& copy);

}  // namespace vorn
