// How this room has the user told what happens: whoever calls has the page.
#pragma once

#include <functional>
#include <string_view>

namespace vorn {

// Tells a text.
using Tell = std::function<void(std::string_view text)>;

// Tells the outcome of the last file operation, w.ios, when it is not ok, under `label` and the file's name.
// Returns whether what is under way is to be given up.
using TellStatus = std::function<bool(std::string_view label, std::string_view file)>;

}  // namespace vorn
