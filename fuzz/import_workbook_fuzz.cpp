// Workbooks: any XML as the sheet, the shared texts and the styles of a workbook, cut at lines of "%%"; or
// any bytes behind the mark of an archive.
//
// What must hold: see import_checks.h.
#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "import_checks.h"
#include "records/stored_archive.h"
#include "target.h"

namespace {

std::string workbook_of(std::string_view text) {
  constexpr std::array<std::string_view, 4> parts = {"xl/sheet.xml", "xl/texts.xml", "xl/styles.xml",
                                                     "xl/more.xml"};
  const std::string type = "<Relationship Type=\"t/";
  vorn::StoredArchive archive;
  archive.add("[Content_Types].xml", "<Types/>");
  archive.add("_rels/.rels", "<a>" + type + "officeDocument\" Target=\"xl/workbook.xml\"/></a>");
  archive.add(
      "xl/workbook.xml",
      "<workbook><sheets><sheet name=\"1\" id=\"1\"/><sheet name=\"2\" id=\"4\"/></sheets></workbook>");
  archive.add("xl/_rels/workbook.xml.rels", "<a>" + type + "worksheet\" Id=\"1\" Target=\"sheet.xml\"/>" +
                                                type + "sharedStrings\" Id=\"2\" Target=\"texts.xml\"/>" +
                                                type + "styles\" Id=\"3\" Target=\"styles.xml\"/>" + type +
                                                "worksheet\" Id=\"4\" Target=\"more.xml\"/></a>");
  for (const std::string_view part : parts) {
    const std::size_t end = std::min(text.find("\n%%\n"), text.size());
    archive.add(part, end == 0 ? "<a/>" : text.substr(0, end));
    text.remove_prefix(std::min(end + 4, text.size()));
  }
  return archive.finished();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorn;
  using namespace vorn::fuzz;
  const std::string_view text = as_text(data, size);
  const std::string bytes = text.starts_with("PK\x03\x04") ? std::string(text) : workbook_of(text);
  const auto one = imported(bytes, {2026});
  if (one) must_be_empty(complaint_about(*one));
  return 0;
}
