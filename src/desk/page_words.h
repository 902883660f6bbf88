// What stands on and beside the page, in words.
#pragma once

#include <string>
#include <vector>

#include "desk/page_cursor.h"
#include "sessions/standing.h"

namespace vorn {

// For those who do not see the page: "Waits for a button; marked: Quit". Empty before the first wait.
std::string page_in_words(const Standing& standing, const PageCursor& cursor);

// What the program had to tell, and behind it why no journal is kept, where none is.
std::vector<std::string> all_notices(std::vector<std::string> told, const Standing& standing);

}  // namespace vorn
