// Coordinates of ring boundaries: any bytes behind the line that begins the file.
//
// What must hold: see import_checks.h.
#include <string>

#include "import_checks.h"
#include "target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorn;
  using namespace vorn::fuzz;
  const std::string bytes = "#DENDRO\n" + std::string(as_text(data, size));
  const auto one = imported(bytes, {2026});
  if (one) must_be_empty(complaint_about(*one));
  return 0;
}
