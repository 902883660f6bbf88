// One series of a TRiDaS file, taken into the file found.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "import/found_series.h"

namespace vorn {

// The words of an element that has a term of the standard: its attribute of the standard, or else what stands
// there.
std::string tridas_words(const pugi::xml_node& node);

struct TridasSource {
  FoundFile& found;
  RingVariable variable = RingVariable::whole;
  std::function<std::int64_t(const pugi::xml_node&)> line_of;  // from 1
  std::deque<std::string>& texts;                              // of fields, which view them
};

// Takes the rings of a series, measured or made of others, under the name. Values more than the first ones of
// a kind, and those of other kinds, are told.
void take_tridas_series(const TridasSource& source, const pugi::xml_node& series, const std::string& name);

}  // namespace vorn
