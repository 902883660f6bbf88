#include "formats/chronology_writer.h"

#include "formats/column_table.h"
#include "formats/file_work.h"
#include "formats/tucson_index.h"
#include "workspace/vorndata.h"

namespace vorn {

std::string_view output_name(ChronologyOutput output) {
  switch (output) {
    case ChronologyOutput::index:
      return trimmed(mlab[3]);
    case ChronologyOutput::column:
      return trimmed(mlab[4]);
    case ChronologyOutput::none:
      break;
  }
  return {};
}

Status write_ind(const FileTable& w, int f, ChronologyOutput output, const Careful& careful, Files& files,
                 Troubles& troubles) {
  if (output == ChronologyOutput::none) return status::ok;
  const std::string_view name = output_name(output);
  TextOutput out;
  told(troubles, name, out.create(files, name), "Open");
  const auto write = output == ChronologyOutput::index ? write_indcrn : write_colcrn;
  write(w, f, {name, out, troubles, careful});
  return told(troubles, name, out.close(), "Close");
}

}  // namespace vorn
