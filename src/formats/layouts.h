// The one list of the layouts: what each is called, and who recognises, reads and writes it. A new layout is
// a row here, a number of its own in workspace/layout.h, and files of its own.
#pragma once

#include <span>
#include <string_view>

#include "formats/file_work.h"
#include "formats/layout_table.h"
#include "formats/read_decisions.h"
#include "workspace/file_table.h"
#include "workspace/layout.h"
#include "workspace/series_store.h"

namespace vorn {

struct LayoutRow {
  Layout layout;
  std::string_view name;  // as the list of files shows it

  int lines_tested;  // how many of a file's first lines are put to the test
  bool (*test)(const FirstLine&);
  std::string_view test_words;

  // One of the two: a file of ring widths fills the store, one of indices a column of the file table.
  ReadDecisions (*read_cores)(SeriesStore&, const Reading&);
  ReadDecisions (*read_chronology)(FileTable&, int f, const Reading&);

  // Writes a core; returns: it was written whole. Nothing for a layout that cores are not written in.
  bool (*write_core)(const SeriesStore&, const Writing&, int i);
};

// In the order in which their tests are tried.
std::span<const LayoutRow> layouts();

// The row of a layout; nothing for a file that was not recognised or not looked at.
const LayoutRow* row_of(Layout layout);

// "Format not recognised" for one without a row.
std::string_view name_of(Layout layout);

bool holds_ring_widths(Layout layout);

}  // namespace vorn
