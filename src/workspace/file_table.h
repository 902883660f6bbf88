// The file table: the files of the list, each with its own chronology.
#pragma once

#include <cstdint>

#include "workspace/layout.h"
#include "workspace/names.h"
#include "workspace/table.h"

namespace vorn {

struct FileTable {
  FileTable();

  Table<FileName> cnam;        // name as the list has it
  Table<bool> rawok;           // the file exists
  Table<Layout> rftype;        // its layout
  Table<std::int32_t> rfhead;  // header lines before its first data line (Tucson layouts)
  Table<std::int32_t> cfy;     // first year of its chronology
  Table<std::int32_t> cly;     // last year of its chronology
  Table<std::int32_t> cyr;     // years of its chronology
  Grid<double> crn;  // chronology: year k of file f is crn(k, f); thousandths where read from an index file
  Grid<std::int32_t> num;   // its sample depth
  Table<bool> crn_written;  // whether crn and num of the file hold anything yet
  std::int32_t nfil = 0;    // files kept after start-up
  std::int32_t nraw = 0;    // how many of them hold ring widths
  std::int32_t cf = 0;      // the current file
};

}  // namespace vorn
