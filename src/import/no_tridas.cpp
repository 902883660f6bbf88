#include "import/refused_files.h"
#include "import/tridas.h"

namespace vorn {

std::optional<Imported> import_tridas(std::string_view text, bool /*is_utf_16*/,
                                      const ImportWishes& /*wishes*/) {
  if (!looks_like_tridas(text)) return std::nullopt;
  return refused_file("TRiDaS", "XML of measured series",
                      "this edition of the program cannot read TRiDaS files: save them in another layout");
}

}  // namespace vorn
