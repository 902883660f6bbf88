// The buttons by their names, as scripts give them.
#pragma once

#include <span>
#include <string_view>

#include "toolkit/buttons.h"

namespace vorn {

struct NamedButton {
  std::string_view name;
  ButtonNumber number;
};

// All buttons that have a name, those of button_list.inc, in its order.
std::span<const NamedButton> named_buttons();

// The button of this name, none where no button has it.
ButtonNumber button_named(std::string_view name);

}  // namespace vorn
