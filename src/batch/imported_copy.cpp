#include "batch/imported_copy.h"

namespace vorn {
namespace {

// What is not as a user may think.
bool is_worth_saying(const FileFinding& finding) {
  return severity_of(finding.kind->effect) != Severity::note || finding.kind == kind("taken-as") ||
         finding.kind == kind("copy-form");
}

std::string sentence_of(const FileFinding& finding) {
  return (finding.line > 0 ? "line " + std::to_string(finding.line) + ": " : "") +
         (finding.series.empty() ? "" : finding.series + ": ") + finding.words;
}

}  // namespace

Repair repair_of(const Imported& imported) {
  Repair made{.bytes = imported.tucson, .ending = ".rwl"};
  for (const FileFinding& finding : imported.findings) {
    const bool is_error = severity_of(finding.kind->effect) == Severity::error;
    if (imported.tucson.empty() ? is_error : is_worth_saying(finding))
      (imported.tucson.empty() ? made.refused : made.done).push_back(sentence_of(finding));
  }
  if (!made.bytes.empty())
    made.done.insert(made.done.begin(), std::to_string(imported.series.size()) + " series of " +
                                            imported.layout_name + ", written as Tucson ring widths");
  return made;
}

}  // namespace vorn
