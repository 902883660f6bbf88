// A word beside each file that was written carefully.
#pragma once

#include <string>

#include "records/files.h"
#include "workspace/careful.h"

namespace vorn {

// What was written says by itself nothing of how. So beside "Stats.prn" comes "Stats.prn.careful", which
// names what was done carefully; where nothing is, one that is there from before is made to say so.
Status write_careful_neighbour(Files& files, const std::string& written, const Careful& careful);

}  // namespace vorn
