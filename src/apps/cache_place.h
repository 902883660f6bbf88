// Where the programs keep for the next time what they can make anew.
#pragma once

#include <string>
#include <string_view>

namespace vorn {

// The file in which the references of a folder are kept that were made by this recipe: in the user's folder
// for caches (XDG_CACHE_HOME or ~/.cache, ~/Library/Caches on macOS, LOCALAPPDATA on Windows), which is made
// where it is not there. Empty where there is no such folder, and none can be made.
std::string reference_cache(const std::string& folder, std::string_view recipe);

}  // namespace vorn
