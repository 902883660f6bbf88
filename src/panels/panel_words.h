// Words that panels share.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "panels/drawn_panels.h"
#include "panels/panel.h"

namespace vorn {

// A panel that has nothing to show yet, and says why.
Panel words_alone(const PanelView& view, std::string_view title, const std::string& words);
// What is being worked on, or else why there is nothing.
std::string waiting_words(const PanelInputs& inputs, const std::string& nothing);
// Behind a heading: that the values are those of before, or what is being worked on.
std::string in_older(const PanelInputs& inputs);

}  // namespace vorn
