#include "import/workbook_parts.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>

#include "import/fields.h"
#include "import/xml_text.h"

namespace vorn {
namespace {

constexpr std::string_view list_of_parts = "[Content_Types].xml", first_relations = "_rels/.rels",
                           usual_workbook = "xl/workbook.xml";

// What a part says of another one.
struct Relation {
  std::string type = {}, part = {};  // the last word of its type; the part's name
};
using Relations = std::map<std::string, Relation, std::less<>>;  // by id

std::string folder_of(std::string_view part) {
  return std::string(part.substr(0, part.find_last_of('/') + 1));
}

// "xl/_rels/workbook.xml.rels" of "xl/workbook.xml".
std::string relations_of(std::string_view part) {
  const std::string folder = folder_of(part);
  return folder + "_rels/" + std::string(part.substr(folder.size())) + ".rels";
}

// A part of the archive, as XML: why it is none that is read, or nothing.
std::string read_part(ArchiveParts& archive, const std::string& name, pugi::xml_document& document) {
  const auto text = archive.read(name);
  if (!text) return archive.failure().empty() ? "its part " + name + " is missing" : archive.failure();
  const std::string wrong = read_xml(document, *text);
  return wrong.empty() ? wrong : "its part " + name + ": " + wrong;
}

std::string read_relations(ArchiveParts& archive, const std::string& name, std::string_view folder,
                           Relations& relations) {
  pugi::xml_document document;
  if (std::string wrong = read_part(archive, name, document); !wrong.empty()) return wrong;
  for (pugi::xml_node one = child_named(document.document_element(), "Relationship"); one;
       one = next_named(one)) {
    if (attribute_named(one, "TargetMode") == "External") continue;
    const std::string_view type = attribute_named(one, "Type");
    relations[std::string(attribute_named(one, "Id"))] = {
        std::string(type.substr(type.find_last_of('/') + 1)),
        part_name(folder, attribute_named(one, "Target"))};
  }
  return {};
}

std::optional<std::string> part_of_type(const Relations& relations, std::string_view type) {
  const auto found =
      std::ranges::find_if(relations, [&](const auto& one) { return one.second.type == type; });
  return found == relations.end() ? std::nullopt : std::optional(found->second.part);
}

// --- Texts and styles

std::string read_shared(ArchiveParts& archive, const std::string& name, std::vector<std::string>& shared) {
  pugi::xml_document document;
  if (std::string wrong = read_part(archive, name, document); !wrong.empty()) return wrong;
  for (pugi::xml_node one = child_named(document.document_element(), "si"); one; one = next_named(one)) {
    shared.push_back(unescaped(text_of_runs(one)));
  }
  return {};
}

// Of the formats that have a number and no text.
bool is_date_format(std::int64_t number) {
  return (number >= 14 && number <= 17) || number == 22 || (number >= 27 && number <= 31) || number == 36 ||
         (number >= 50 && number <= 54) || number == 57 || number == 58;
}

std::string read_styles(ArchiveParts& archive, const std::string& name, CellStyles& styles) {
  pugi::xml_document document;
  if (std::string wrong = read_part(archive, name, document); !wrong.empty()) return wrong;
  const pugi::xml_node root = document.document_element();
  std::map<std::int64_t, bool> own;
  for (pugi::xml_node one = child_named(child_named(root, "numFmts"), "numFmt"); one; one = next_named(one)) {
    if (const auto number = whole_number_in(attribute_named(one, "numFmtId")))
      own[*number] = shows_date(attribute_named(one, "formatCode"));
  }
  for (pugi::xml_node one = child_named(child_named(root, "cellXfs"), "xf"); one; one = next_named(one)) {
    const std::int64_t number = whole_number_in(attribute_named(one, "numFmtId")).value_or(0);
    styles.are_dates.push_back(own.contains(number) ? own[number] : is_date_format(number));
  }
  return {};
}

// --- Sheets

void take_sheets(const pugi::xml_node& root, const Relations& relations, WorkbookParts& parts) {
  parts.styles.from_1904 = says_yes(attribute_named(child_named(root, "workbookPr"), "date1904"));
  parts.styles.computed_when_opened =
      says_yes(attribute_named(child_named(root, "calcPr"), "fullCalcOnLoad"));
  for (pugi::xml_node one = child_named(child_named(root, "sheets"), "sheet"); one; one = next_named(one)) {
    if (parts.sheets.size() == most_sheets) {
      ++parts.sheets_behind;
      continue;
    }
    SheetPart sheet{.name = std::string(attribute_named(one, "name").substr(0, 200))};
    const std::string_view state = attribute_named(one, "state");
    sheet.is_hidden = state == "hidden" || state == "veryHidden";
    const auto relation = relations.find(attribute_named(one, "id"));
    if (relation != relations.end()) {
      sheet.part = relation->second.part;
      sheet.is_table = relation->second.type == "worksheet";
    }
    parts.sheets.push_back(std::move(sheet));
  }
}

// By the relations of the archive; where they say nothing, in its usual place.
std::string workbook_part(ArchiveParts& archive) {
  Relations relations;
  const std::string first(first_relations);
  if (archive.has(first) && !read_relations(archive, first, "", relations).empty()) relations.clear();
  return part_of_type(relations, "officeDocument").value_or(std::string(usual_workbook));
}

}  // namespace

std::string part_name(std::string_view folder, std::string_view target) {
  std::string whole =
      target.starts_with('/') ? std::string(target.substr(1)) : std::string(folder) + std::string(target);
  std::vector<std::string> steps;
  for (std::size_t at = 0; at <= whole.size();) {
    const std::size_t end = std::min(whole.find('/', at), whole.size());
    const std::string step = whole.substr(at, end - at);
    if (step == ".." && !steps.empty()) steps.pop_back();
    if (step != ".." && step != "." && !step.empty()) steps.push_back(step);
    at = end + 1;
  }
  std::string name;
  for (const std::string& step : steps) name += (name.empty() ? "" : "/") + step;
  return name;
}

bool holds_workbook(const ArchiveParts& archive) {
  return archive.has(std::string(list_of_parts)) &&
         (archive.has(std::string(usual_workbook)) || archive.has(std::string(first_relations)));
}

std::string read_workbook_parts(ArchiveParts& archive, WorkbookParts& parts) {
  const std::string workbook = workbook_part(archive);
  if (!archive.failure().empty()) return archive.failure();
  if (workbook.ends_with(".bin")) return "it is a binary workbook (.xlsb): save it as a workbook (.xlsx)";
  pugi::xml_document document;
  if (std::string wrong = read_part(archive, workbook, document); !wrong.empty()) return wrong;
  if (local_name(document.document_element().name()) != "workbook")
    return "it holds another document, no workbook";
  Relations relations;
  if (std::string wrong = read_relations(archive, relations_of(workbook), folder_of(workbook), relations);
      !wrong.empty())
    return wrong;
  take_sheets(document.document_element(), relations, parts);
  if (const auto shared = part_of_type(relations, "sharedStrings")) {
    if (std::string wrong = read_shared(archive, *shared, parts.shared); !wrong.empty()) return wrong;
  }
  const auto styles = part_of_type(relations, "styles");
  return styles ? read_styles(archive, *styles, parts.styles) : std::string();
}

}  // namespace vorn
