// Files that the program keeps for itself, which others may have put links in the place of.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace vorn {

// All of a file that is no link; nothing where it cannot be read or has more than `most` bytes.
std::optional<std::string> read_plain(const std::string& path, std::size_t most);

}  // namespace vorn
