#include "toolkit/button_names.h"

#include <algorithm>

namespace vorn {
namespace {

constexpr NamedButton names[] = {
#define VORN_BUTTON(name, number) {#name, ButtonNumber{number}},
#include "toolkit/button_list.inc"
#undef VORN_BUTTON
};

}  // namespace

std::span<const NamedButton> named_buttons() {
  return names;
}

ButtonNumber button_named(std::string_view name) {
  const auto found = std::ranges::find(names, name, &NamedButton::name);
  return found == std::end(names) ? ButtonNumber::none : found->number;
}

}  // namespace vorn
