#include <vector>

#include "formats/compact.h"
#include "formats/compact_layout.h"
#include "formats/file_status.h"
#include "formats/width_fields.h"

namespace vorn {

bool write_crec(Workspace& w, TextOutput& out, int i) {
  const Name name = w.nam(i);
  const int header = out.write(compact::header_line, w.yr(i), w.fy(i), name, compact::values_format);
  told_or_end(w, header, "writeH", name.view());

  const std::vector<Integer> values = width_fields(w, i, compact::missing_ring);
  // Deliberate: [four-columns] 10 mm and more do not fit, and become asterisks.
  const int data = out.write(compact::values_line, std::span(values));
  told_or_end(w, data, "writeD", name.view());
  return header == status::ok && data == status::ok;
}

}  // namespace vorn
