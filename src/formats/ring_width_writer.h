// The cores of the store as a file of ring widths.
#pragma once

#include <functional>
#include <string_view>

#include "records/files.h"
#include "records/troubles.h"
#include "workspace/careful.h"
#include "workspace/layout.h"
#include "workspace/names.h"
#include "workspace/series_store.h"

namespace vorn {

// The name under which the cores of `file` are written: its extension replaced by "RWW". Without a point
// among the three characters before the last one, the last four characters give way; of a name too short for
// that nothing but "RWW" is left. Cut to 60 characters.
FileName output_name(const FileName& file);

// Writes cores 1 to nc in a layout to the file `name`. With none chosen (Layout::none) the file is created
// empty. Layouts are written as `careful` says. Failures are told as "Open", "Close" and by the record
// writers. `progress` is told now and then what share is done, 0 to 1.
//
// Returns the status of the closing.
Status write_raw(const SeriesStore& w, Files& files, const FileName& name, Layout layout,
                 const Careful& careful, Troubles& troubles, const std::function<void(double)>& progress);

}  // namespace vorn
