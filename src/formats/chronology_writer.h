// A chronology as a file.
#pragma once

#include <string_view>

#include "records/files.h"
#include "records/troubles.h"
#include "workspace/file_table.h"
#include "workspace/settings.h"

namespace vorn {

// The name of the file that a chronology is written to: "Index.prn" or "Column.prn"; empty where none is
// chosen.
std::string_view output_name(ChronologyOutput output);

// Writes the chronology of file f: its decades (write_indcrn) or a table (write_colcrn). With none chosen
// nothing is written. It is written as `careful` says. Failures are told as "Open", "Write" and "Close".
//
// Returns the status of the closing.
Status write_ind(const FileTable& w, int f, ChronologyOutput output, const Careful& careful, Files& files,
                 Troubles& troubles);

}  // namespace vorn
