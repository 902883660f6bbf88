#include "import/refused_files.h"

#include <algorithm>
#include <utility>

#include "study/file_findings_parts.h"

namespace vorn {
namespace {

// Where the first part of an archive has its name.
constexpr std::size_t first_name = 30;

}  // namespace

Imported refused_file(std::string layout_name, std::string why, std::string words) {
  Imported one{.layout = OtherLayout::refused, .layout_name = std::move(layout_name), .why = std::move(why)};
  one.findings.push_back({.kind = kind("layout", Effect::none), .words = one.layout_name + ": " + one.why});
  one.findings.push_back({.kind = kind("no-copy"), .words = "is not read: " + std::move(words)});
  return one;
}

Imported refused_open_document(std::string why) {
  return refused_file("OpenDocument", std::move(why), "save it as a workbook (.xlsx) or as CSV");
}

std::optional<Imported> refused_spreadsheet(std::string_view bytes) {
  if (bytes.starts_with("\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1"))
    return refused_file("older spreadsheet", "begins as binary workbooks do, and those with a password",
                        "save it as a workbook (.xlsx) without a password, or as CSV");
  constexpr std::string_view document = "mimetypeapplication/vnd.oasis.opendocument";
  if (bytes.starts_with("PK\x03\x04") &&
      bytes.substr(std::min(first_name, bytes.size())).starts_with(document))
    return refused_open_document("the first part of the archive says so");
  return std::nullopt;
}

}  // namespace vorn
