// What is done carefully, kept for a folder.
#pragma once

#include <string>

#include "workspace/careful.h"

namespace vorn {

// In the file .vorn/careful of the folder, "" for the current one: the names, with commas in between. Names
// that are none are passed over; nothing is on where there is no such file. A link in its place is not
// followed.
Careful kept_careful(const std::string& folder);

// Writes it; where nothing is on the file goes. Returns why it could not be, empty where it was.
std::string keep_careful(const std::string& folder, const Careful& careful);

}  // namespace vorn
