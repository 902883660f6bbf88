#include "import/imported.h"

#include "import/heidelberg_variants.h"
#include "import/noaa_template.h"
#include "import/source_text.h"
#include "import/tables.h"
#include "study/file_lines.h"

namespace vorn {
namespace {

// Files of programs have zeros early on.
bool is_no_text(std::string_view bytes) {
  constexpr std::size_t looked_at = 4096;
  return bytes.substr(0, looked_at).find('\0') != std::string_view::npos;
}

}  // namespace

std::optional<Imported> imported(std::string_view bytes, const ImportWishes& wishes) {
  if (bytes.size() > most_imported_bytes) return std::nullopt;
  const SourceText text(bytes);
  if (is_no_text(text.bytes)) return std::nullopt;
  const std::vector<FileLine> lines = lines_of(text.bytes);
  if (starts_heidelberg(lines)) return import_heidelberg(bytes, lines, text.is_utf_16, wishes);
  if (auto noaa = import_noaa_template(lines, text.is_utf_16, wishes)) return noaa;
  return import_table(lines, text.is_utf_16, wishes);
}

}  // namespace vorn
