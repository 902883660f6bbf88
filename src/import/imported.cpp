#include "import/imported.h"

#include <algorithm>

#include "import/coordinates.h"
#include "import/heidelberg_variants.h"
#include "import/noaa_template.h"
#include "import/refused_files.h"
#include "import/sheffield.h"
#include "import/source_text.h"
#include "import/tables.h"
#include "import/tridas.h"
#include "import/workbook.h"
#include "study/file_findings_parts.h"
#include "study/file_lines.h"

namespace vorn {
namespace {

// Files of programs have many zeros early on; in texts a few may stand by mistake.
bool is_no_text(std::string_view bytes) {
  constexpr std::size_t looked_at = 4096, one_of = 100;
  const std::string_view text = bytes.substr(0, looked_at);
  return static_cast<std::size_t>(std::ranges::count(text, '\0')) * one_of > text.size();
}

std::optional<Imported> import_lines(std::string_view bytes, std::span<const FileLine> lines, bool is_utf_16,
                                     const ImportWishes& wishes) {
  if (auto coordinates = import_coordinates(lines, is_utf_16, wishes)) return coordinates;
  if (auto sheffield = import_sheffield(lines, is_utf_16, wishes)) return sheffield;
  if (starts_heidelberg(lines)) return import_heidelberg(bytes, lines, is_utf_16, wishes);
  if (auto noaa = import_noaa_template(lines, is_utf_16, wishes)) return noaa;
  return import_table(lines, is_utf_16, wishes);
}

void tell_zeros(std::span<const FileLine> lines, Imported& one) {
  const auto has_zero = [](const FileLine& line) { return line.text.find('\0') != std::string_view::npos; };
  const auto first = std::ranges::find_if(lines, has_zero);
  if (first == lines.end()) return;
  const auto line = static_cast<std::int64_t>(first - lines.begin()) + 1;
  const auto place =
      std::ranges::upper_bound(one.findings, line, {}, [](const FileFinding& each) { return each.line; });
  const auto count = std::ranges::count_if(lines, has_zero);
  one.findings.insert(place, {.kind = kind("control-character"),
                              .line = line,
                              .from = line,
                              .to = line,
                              .words = counted(count, "line holds", "lines hold") + " zero bytes"});
}

}  // namespace

std::optional<Imported> imported(std::string_view bytes, const ImportWishes& wishes) {
  if (bytes.size() > most_imported_bytes) return std::nullopt;
  if (auto refused = refused_spreadsheet(bytes)) return refused;
  if (auto workbook = import_workbook(bytes, wishes)) return workbook;
  const SourceText text(bytes);
  if (is_no_text(text.bytes)) return std::nullopt;
  if (auto tridas = import_tridas(text.bytes, text.is_utf_16, wishes)) return tridas;
  const std::vector<FileLine> lines = lines_of(text.bytes);
  auto one = import_lines(bytes, lines, text.is_utf_16, wishes);
  if (one) tell_zeros(lines, *one);
  return one;
}

}  // namespace vorn
