#include <algorithm>

#include "import/fields.h"
#include "import/tridas.h"

namespace vorn {

bool looks_like_tridas(std::string_view text) {
  constexpr std::size_t far_enough = 1U << 20U;
  if (!bare(text.substr(0, std::min(text.find_first_not_of("\r\n\t "), text.size()) + 1)).starts_with('<') &&
      !text.starts_with('<'))
    return false;
  const std::string_view beginning = text.substr(0, far_enough);
  return beginning.find("measurementSeries") != std::string_view::npos ||
         beginning.find("derivedSeries") != std::string_view::npos ||
         beginning.find("tridas") != std::string_view::npos;
}

}  // namespace vorn
