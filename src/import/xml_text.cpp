#include "import/xml_text.h"

#include <algorithm>

namespace vorn {
namespace {

// Where the type of the document declares entities, which could grow without end.
bool declares_entities(std::string_view text) {
  const std::size_t type = text.find("<!DOCTYPE");
  return type != std::string_view::npos && text.find("<!ENTITY", type) != std::string_view::npos;
}

bool is_too_deep(const pugi::xml_document& document) {
  std::size_t depth = 0;
  pugi::xml_node node = document.first_child();
  while (node) {
    if (node.first_child()) {
      if (++depth > most_xml_depth) return true;
      node = node.first_child();
      continue;
    }
    while (!node.next_sibling()) {
      node = node.parent();
      if (!node || depth == 0) return false;
      --depth;
    }
    node = node.next_sibling();
  }
  return false;
}

}  // namespace

std::string read_xml(pugi::xml_document& document, std::string_view text, pugi::xml_encoding encoding) {
  if (text.size() > most_xml_bytes)
    return "it is larger than " + std::to_string(most_xml_bytes >> 20U) + " MB";
  if (std::ranges::count_if(text, [](char c) { return c == '<' || c == '='; }) >
      static_cast<std::ptrdiff_t>(most_xml_signs))
    return "it has more than 12 million elements, ends of elements and attributes";
  if (declares_entities(text))
    return "it declares entities, which are not expanded: put in what they stand for";
  const auto result = document.load_buffer(text.data(), text.size(),
                                           pugi::parse_default | pugi::parse_ws_pcdata_single, encoding);
  if (!result) {
    const auto line =
        1 + std::count(text.begin(),
                       text.begin() + std::clamp<std::ptrdiff_t>(result.offset, 0, std::ssize(text)), '\n');
    return "it is no XML from line " + std::to_string(line) + " on (" + result.description() + ")";
  }
  if (is_too_deep(document)) return "its elements lie more than " + std::to_string(most_xml_depth) + " deep";
  return {};
}

std::string_view local_name(const char* name) {
  const std::string_view whole(name);
  return whole.substr(whole.find(':') + 1);  // from the beginning where there is none
}

namespace {

pugi::xml_node from_here(pugi::xml_node node, std::string_view name) {
  while (node && local_name(node.name()) != name) node = node.next_sibling();
  return node;
}

}  // namespace

pugi::xml_node child_named(const pugi::xml_node& node, std::string_view name) {
  return from_here(node.first_child(), name);
}

pugi::xml_node next_named(const pugi::xml_node& node) {
  return from_here(node.next_sibling(), local_name(node.name()));
}

pugi::xml_node early_child_named(const pugi::xml_node& node, std::string_view name) {
  constexpr int most_looked_at = 50;
  pugi::xml_node child = node.first_child();
  for (int k = 0; child && k < most_looked_at; ++k, child = child.next_sibling()) {
    if (local_name(child.name()) == name) return child;
  }
  return {};
}

std::string_view attribute_named(const pugi::xml_node& node, std::string_view name) {
  for (const pugi::xml_attribute& one : node.attributes()) {
    if (local_name(one.name()) == name) return one.value();
  }
  return {};
}

std::string text_within(const pugi::xml_node& node) {
  std::string all;
  for (const pugi::xml_node& child : node.children()) {
    if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) all += child.value();
  }
  return all;
}

std::string text_of_runs(const pugi::xml_node& node) {
  std::string all;
  for (const pugi::xml_node& child : node.children()) {
    if (local_name(child.name()) == "t") all += text_within(child);
    if (local_name(child.name()) == "r") all += text_within(child_named(child, "t"));
  }
  return all;
}

}  // namespace vorn
