// The text for the methods section of a paper.
#pragma once

#include <string>
#include <string_view>

#include "sessions/standing.h"

namespace vorn {

// Program and version, the recipe (detrending, prewhitening, transformation, segments), and each change that
// holds with core, years and the user's reason. Plain text, lines of at most 100 columns.
std::string methods_text(const Standing& standing, std::string_view program_version);

}  // namespace vorn
