// The copy of a file that the importers read, as a repair.
#pragma once

#include <string_view>

#include "batch/repair.h"
#include "import/imported.h"

namespace vorn {

// Their Tucson file, with a word on all that was decided on the way; refused where there is none.
Repair repair_of(const Imported& imported);

}  // namespace vorn
