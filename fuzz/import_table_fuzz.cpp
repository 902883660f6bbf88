// Tables of ring widths: any bytes.
//
// What must hold: see import_checks.h; and each number of the data is a ring of a series, or is counted by a
// finding.
#include <string>

#include "import_checks.h"
#include "target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorn;
  using namespace vorn::fuzz;
  const std::string bytes(as_text(data, size));
  const auto one = imported(bytes, {2026});
  if (!one) return 0;
  must_be_empty(complaint_about(*one));
  if (one->layout == OtherLayout::wide_table || one->layout == OtherLayout::long_table)
    must_be_empty(dropped_of_table(bytes, *one));
  return 0;
}
