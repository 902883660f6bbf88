// For tests of readers and writers: no page takes part. What they tell is kept, as values and in the words
// that the page would show; the procedures go by their names alone, for the current file.
#pragma once

#include <gtest/gtest.h>

#include <string_view>
#include <utility>
#include <vector>

#include "formats/chronology_writer.h"
#include "formats/layouts.h"
#include "formats/recognition.h"
#include "formats/ring_width_writer.h"
#include "formats/tucson_index.h"
#include "records/text_file.h"
#include "support/file_bench.h"
#include "support/kept_troubles.h"

namespace vorn {

class FormatBench : public FileBench {
 protected:
  Reading reading() { return {disk, w.cnam(w.cf).view(), w.rfhead(w.cf), troubles, w.careful}; }
  ReadDecisions read_as(Layout layout) {
    const LayoutRow* row = row_of(layout);
    return row->read_cores ? row->read_cores(w, reading()) : row->read_chronology(w, w.cf, reading());
  }
  ReadDecisions read_raw(Workspace&) { return read_as(Layout::tucson_raw); }
  ReadDecisions read_heidel(Workspace&) { return read_as(Layout::heidelberg); }
  ReadDecisions read_compact(Workspace&) { return read_as(Layout::compact); }
  ReadDecisions read_ind(Workspace&) { return read_as(Layout::tucson_index); }
  Recognition find_rftyp(Workspace&) {
    const Recognition found = vorn::find_rftyp(disk, w.cnam(w.cf).view(), troubles);
    w.rftype(w.cf) = found.layout;
    w.rfhead(w.cf) = found.header_lines;
    return found;
  }

  Writing writing(TextOutput& out) { return {"output", out, troubles, w.careful}; }
  void write_raw(Workspace&) {
    vorn::write_raw(w, disk, output_name(w.cnam(w.cf)), w.raw_output, w.careful, troubles,
                    [this](double share) { shares.push_back(share); });
  }
  void write_ind(Workspace&) { vorn::write_ind(w, w.cf, w.crn_output, w.careful, disk, troubles); }

  KeptTroubles troubles{log};
  std::vector<double> shares;  // of a file of cores, as told while it is written
};

}  // namespace vorn
