// How a session stands at a wait: what those around the page show.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sessions/deeds.h"
#include "situation/situation.h"

namespace vorn {

// One decision of the user, in words.
struct Decision {
  std::string what = {};                // "Insert 1750 in T001"
  std::vector<std::string> cores = {};  // that it changed
  std::string before = {};              // the years of the core, "1701 to 1850", where they changed
  std::string after = {};
  std::string note = {};   // the user's, one line
  bool is_final = false;   // cannot be taken back: it changed files that are read again
  std::string wrote = {};  // the files that were written, which stay when it is taken back
  bool in_copy = false;    // changed a working copy alone; "Save Change" brings it to the cores
};

// A question that must be answered before a deed is done.
struct Question {
  struct Answer {
    std::string text;      // of its button: "Save Change First"
    bool does_it = false;  // the deed is done, behind `first`; otherwise nothing is
    std::vector<PlayStep> first = {};
  };
  std::string text;             // one sentence: what would be lost
  std::string more;             // and what it means
  std::vector<Answer> answers;  // the last one stays: nothing is done
};

struct Standing {
  SharedSituation situation;        // null before the first wait
  std::vector<Decision> decisions;  // all, those taken back behind the others
  std::size_t taken = 0;            // how many of them hold
  std::size_t steps = 0;            // the events that led here
  bool can_undo = false, can_redo = false;
  std::string to_undo = {}, to_redo = {};  // what undo and redo would do, in words
  std::string undo_says;                   // what taking back the last one leaves as it is; empty for nothing
  std::optional<Question> question;        // it stands, and nothing else is done before it is answered
  std::string written;                     // what was written last: "wrote Stats.prn, 25 cores"
  std::string journal_trouble;             // why no journal is kept; empty where one is
  std::string to_take_up;                  // the journal of an earlier session whose work was not written
  bool unsaved() const { return situation && situation->unsaved(); }
};

using SharedStanding = std::shared_ptr<const Standing>;

}  // namespace vorn
