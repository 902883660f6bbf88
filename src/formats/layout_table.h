// What the tables of the layouts are made of. Each layout's file begins with its table, as data; the pages in
// docs/formats/ show users the same rows, and tests/docs/ holds the two together.
#pragma once

#include <cstddef>
#include <string_view>

#include "records/text.h"

namespace vorn {

// As much of each of a file's first lines as is looked at to recognise its layout.
using FirstLine = Text<85>;

// What stands in the columns `first` to `last` of a line, counted from 1.
struct LayoutField {
  int first = 0, last = 0;
  std::string_view content;

  constexpr int width() const { return last - first + 1; }
};

// A line that is known by how it begins.
struct KeyedLine {
  std::string_view line;    // its beginning as files have it
  std::string_view key;     // as much of that as is looked at
  int first = 0, last = 0;  // the columns of its content; 0 where the key says all
  std::string_view content;

  constexpr bool begins(std::string_view text) const { return text.starts_with(key); }
  // Those columns of `text`, which reaches to `last`.
  constexpr std::string_view columns(std::string_view text) const {
    return text.substr(static_cast<std::size_t>(first - 1), static_cast<std::size_t>(last - first + 1));
  }
};

}  // namespace vorn
