#include "formats/column_table.h"

#include "formats/column_table_layout.h"
#include "formats/file_status.h"
#include "formats/tucson_index_layout.h"

namespace vorn {
namespace {

constexpr std::string_view output_name = "Column.prn";

}  // namespace

void write_colcrn(Workspace& w, TextOutput& out) {
  told_or_end(w, out.write(column_table::heading_line, w.cnam(w.cf)), "Write", output_name);
  for (int k = 1; k <= w.cyr(w.cf); ++k) {
    const std::int32_t depth = w.num(k, w.cf);
    // Deliberate: [negative-depth] of a negative depth, which an index file may bring, the index is shown
    // here but not in Index.prn.
    const Integer index = depth == 0 ? Integer(tucson_index::no_data) : thousandths(w.crn(k, w.cf));
    told_or_end(w, out.write(column_table::year_line, w.cfy(w.cf) - 1 + k, index, depth), "Write",
                output_name);
  }
}

}  // namespace vorn
