#include "formats/column_table.h"

#include "formats/column_table_layout.h"
#include "formats/tucson_index_layout.h"

namespace vorn {

void write_colcrn(const FileTable& w, int f, const Writing& writing) {
  const auto write = [&](Status answer) { told(writing.troubles, writing.file, answer, "Write"); };
  write(writing.out.write(column_table::heading_line, w.cnam(f)));
  for (int k = 1; k <= w.cyr(f); ++k) {
    const std::int32_t depth = w.num(k, f);
    // Deliberate: [negative-depth] of a negative depth, which an index file may bring, the index is shown
    // here but not in Index.prn.
    const Integer index = depth == 0 ? Integer(tucson_index::no_data) : thousandths(w.crn(k, f));
    write(writing.out.write(column_table::year_line, w.cfy(f) - 1 + k, index, depth));
  }
}

}  // namespace vorn
