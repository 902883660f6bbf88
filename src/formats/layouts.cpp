#include "formats/layouts.h"

#include <algorithm>
#include <array>

#include "formats/compact.h"
#include "formats/heidelberg.h"
#include "formats/tucson_index.h"
#include "formats/tucson_raw.h"

namespace vorn {
namespace {

// Deliberate: [tuscon] "Tuscon" is what this program has always called it.
constexpr std::array rows = {
    LayoutRow{Layout::heidelberg, "Heidelberg", 1, is_heidelberg, "begins with HEADER:", read_heidel, nullptr,
              write_hrec},
    LayoutRow{Layout::compact, "Compact", 1, is_compact, "has an edit format in columns 72 to 79",
              read_compact, nullptr, write_crec},
    LayoutRow{Layout::tucson_raw, "Tuscon Raw", 4, starts_raw_series,
              "is as long as its year asks for, and all numbers", read_raw, nullptr, write_rrec},
    LayoutRow{Layout::tucson_index, "Tuscon Indices", 4, is_index_decade,
              "has 80 columns or more and is a decade of indices", nullptr, read_ind, nullptr}};

}  // namespace

std::span<const LayoutRow> layouts() {
  return rows;
}

const LayoutRow* row_of(Layout layout) {
  const auto* row = std::ranges::find(rows, layout, &LayoutRow::layout);
  return row == rows.end() ? nullptr : row;
}

std::string_view name_of(Layout layout) {
  const LayoutRow* row = row_of(layout);
  return row ? row->name : "Format not recognised";
}

bool holds_ring_widths(Layout layout) {
  const LayoutRow* row = row_of(layout);
  return row && row->read_cores;
}

}  // namespace vorn
