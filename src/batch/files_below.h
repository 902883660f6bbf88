// The files of a folder and of those below it: an archive.
#pragma once

#include <string>
#include <vector>

namespace vorn {

// All regular files, below `folder`, parts separated by "/", in the order of their names as bytes. Names that
// begin with a point are left out, with what is below them, and so is what is below links to folders. Throws
// std::runtime_error, with words for the user, where the folder or one below it cannot be read.
std::vector<std::string> files_below(const std::string& folder);

}  // namespace vorn
