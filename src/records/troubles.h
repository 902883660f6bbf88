// What goes wrong with files, and the port through which those who read and write them tell it. The page
// shows it as a message (toolkit/page_troubles.h); a test, or whoever reads without a page, keeps it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "records/status.h"

namespace vorn {

// One thing that went wrong: an operation that failed, or, where `words` are given, a plain text.
struct Trouble {
  std::string label = {};   // of the operation, as messages show it: "Read2 "
  std::string shown = {};   // and what they show behind it: the name of the file or the series, or the line
  Status status = {};       // what the operation answered; never ok
  std::string file = {};    // the name of the file
  std::int64_t line = 0;    // the line of it that was read last, from 1; 0 where none was
  int column = 0;           // where a field was bad, the column in which it begins, from 1; otherwise 0
  std::string series = {};  // the name of the series at hand, where there is one
  std::string words = {};   // a plain text, to be shown as it is
};

class Troubles {
 public:
  virtual ~Troubles() = default;
  // Takes note of what went wrong, in the order in which it happens. Who tells goes on afterwards with
  // whatever the failed operation left.
  virtual void tell(const Trouble& trouble) = 0;
};

// Tells `status`, of the file as a whole (its opening, its closing), under `label` unless it is ok, and
// answers it.
Status told(Troubles& troubles, std::string_view file, Status status, std::string_view label);

}  // namespace vorn
