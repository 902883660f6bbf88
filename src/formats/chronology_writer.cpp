#include "formats/chronology_writer.h"

#include "formats/column_table.h"
#include "formats/file_status.h"
#include "formats/tucson_index.h"
#include "toolkit/buttons.h"

namespace vorn {

void write_ind(Workspace& w) {
  const bool decades = w.b(button::crn_index).lit;
  if (!decades && !w.b(button::crn_column).lit) return;
  const std::string_view name = trimmed(decades ? mlab[3] : mlab[4]);
  w.mtext(message::crn_written) = name;
  TextOutput out;
  told_or_end(w, out.create(w.files, name), "Open", name);
  if (decades) {
    write_indcrn(w, out);
  } else {
    write_colcrn(w, out);
  }
  told_or_end(w, out.close(), "Close", name);
}

}  // namespace vorn
