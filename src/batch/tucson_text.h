// Whether a collection holds what was written of a core (formats/tucson_stretch.h).
#pragma once

#include "batch/collection.h"
#include "formats/tucson_stretch.h"

namespace vorn {

// Whether core i of a collection (from 1) is the stretch: its name, blanks around it apart, its years and its
// widths, negative values being rings marked as missing.
bool holds_stretch(const Collection& collection, int i, const Stretch& stretch);

}  // namespace vorn
