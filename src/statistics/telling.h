// How a procedure that has no page shows figures: whoever calls has one.
#pragma once

#include <functional>
#include <string_view>

namespace vorn {

// Tells a text.
using Tell = std::function<void(std::string_view text)>;

}  // namespace vorn
