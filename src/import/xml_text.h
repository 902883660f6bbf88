// XML as it is read: within bounds, and with nothing expanded that a document declares.
#pragma once

#include <cstddef>
#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace vorn {

inline constexpr std::size_t most_xml_bytes = 96U << 20U;
inline constexpr std::size_t most_xml_depth = 100;
// Signs "<" and "=" of a document. Each may become a node or an attribute, of which a few bytes of text need
// some seventy in memory.
inline constexpr std::size_t most_xml_signs = 12'000'000;

// Reads the document; empty, or why it is not read. What lies deeper than most_xml_depth, declares entities,
// or is larger than most_xml_bytes is not.
std::string read_xml(pugi::xml_document& document, std::string_view text,
                     pugi::xml_encoding encoding = pugi::encoding_auto);

// The name of an element or attribute without what stands before its colon.
std::string_view local_name(const char* name);

// The first element of that local name within one, and its next sibling of the same local name; null where
// there is none.
pugi::xml_node child_named(const pugi::xml_node& node, std::string_view name);
pugi::xml_node next_named(const pugi::xml_node& node);
// The same among the first children alone, where they may be many and it stands before them.
pugi::xml_node early_child_named(const pugi::xml_node& node, std::string_view name);

// The value of the attribute of that local name; empty where there is none.
std::string_view attribute_named(const pugi::xml_node& node, std::string_view name);

// The text within an element, that of its own text nodes together.
std::string text_within(const pugi::xml_node& node);

// The text of a workbook's string: that of its elements "t", and of those within its runs "r".
std::string text_of_runs(const pugi::xml_node& node);

}  // namespace vorn
