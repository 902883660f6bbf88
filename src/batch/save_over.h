// A file that is replaced by its corrected self, while its oldest self stays beside it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "batch/faithful_save.h"
#include "records/files.h"

namespace vorn {

// Where the oldest self of a file stays: its name and ".orig".
std::string path_of_oldest(const std::string& path);

// Writes what was made over the file `path`, from whose `bytes` it was made. Before that the bytes are put
// into path_of_oldest(), unless a file is there already: that is an older one, and stays. Each of both is
// written as a whole or not at all, and looked at again before the next step. Nothing is written where
// nothing is changed.
//
// Returned: nothing where the file is as it should be, otherwise one sentence that says why it is not; then
// it is as it was, unless the sentence says that it is not. It is not done where the save was refused, where
// the file holds other bytes by now, and where something that is no file has the name of the oldest one.
std::optional<std::string> save_over(Files& files, const std::string& path, std::string_view bytes,
                                     const FaithfulSave& made);

}  // namespace vorn
