// What is chosen, compared and edited.
#pragma once

#include <cstdint>

#include "workspace/table.h"

namespace vorn {

// The entries chosen, the pair on the cross-dating screen, and the edit at hand there.
struct Comparison {
  Comparison();

  Table<std::int32_t> chc;            // entry numbers chosen
  std::int32_t chs = 0;               // how many of chc are in use
  std::int32_t tr1 = 0, tr2 = 0;      // the sample and the reference
  bool tr1ok = false, tr2ok = false;  // their working copies hold changes not yet saved
  bool ins = false;                   // the cross-dating screen inserts (rather than deletes)
  bool ul = false;                    // an edit acts on the sample (the upper one)
  std::int32_t insdel = 0;            // the year of the edit
  double rgx = 0, rgax = 0;           // the ring deleted last: width and analysis value
  bool rgxok = false;                 // and whether it was present
};

// The raw-data editor: the entry and the column at work, the first year shown, the columns in use.
struct RawEditorState {
  std::int32_t edtree = 0, edfs = 0, edcol = 0, edcols = 0;
};

}  // namespace vorn
