// The file that the cores at work come from, with what became of them put back into it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "batch/faithful_save.h"
#include "records/files.h"
#include "situation/situation.h"

namespace vorn {

struct CorrectedFile {
  std::string file = {};                        // as the list names it
  std::string was = {};                         // its bytes
  FaithfulSave made = {};                       // refused where it cannot be read
  std::vector<std::string> changes = {};        // of its cores, one sentence each
  std::string oldest = {};                      // where its oldest self stays, if it is there; else empty
  std::vector<std::string> changes_since = {};  // of its cores since then
  std::vector<std::string> not_yet = {};        // cores on the page whose change is not saved: not among them
};

// Reads the file anew, as carefully as it was read for the situation, and holds the cores of the situation
// against it.
CorrectedFile corrected_file(Files& files, const Situation& now);

// All of it in lines, as it is shown to be read: what was changed, what cannot be put back.
std::vector<std::string> changes_page(const CorrectedFile& corrected);

// Writes it over the file (see save_over.h). Answers what went wrong.
std::optional<std::string> save_over_original(Files& files, const CorrectedFile& corrected);

}  // namespace vorn
