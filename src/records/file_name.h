// Names of files as the lists and layouts hold them: padded with blanks.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vorn {

// The path that `name` stands for: without its trailing blanks, leading ones belong to it. Nothing for a
// blank name, or one with a zero byte, which no file can have.
std::optional<std::string> path_of(std::string_view name);

}  // namespace vorn
