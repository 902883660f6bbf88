#include "batch/repair.h"

#include <algorithm>
#include <array>
#include <utility>

#include "batch/difference.h"
#include "batch/imported_copy.h"
#include "batch/reading_check.h"
#include "batch/repair_parts.h"
#include "formats/tucson_index.h"
#include "formats/tucson_index_layout.h"
#include "records/memory_files.h"
#include "study/tucson_lines.h"

namespace vorn {
namespace {

const std::string in_memory = "the copy";

// --- Chronologies: lines that are no decades are left out, and all others stay

bool is_decade_of_indices(std::string_view text) {
  Text<6> site;
  std::int32_t year = 0;
  std::array<std::int32_t, tucson_index::fields_a_line> pairs{};
  return edit_read(text, tucson_index::first_line_edit, site, year, std::span(pairs)) == status::ok;
}

// `from`: the first line of its data, counted from 0.
Repair repaired_chronology(std::span<const FileLine> lines, std::size_t from) {
  constexpr std::size_t most_header_lines = 3;
  Repair made;
  std::size_t headers = 0;
  for (std::size_t k = 0; k < lines.size(); ++k) {
    const std::string_view text = lines[k].text;
    const bool is_header = k < from && headers < most_header_lines && !is_blank(lines[k]);
    if (is_header || (k >= from && is_decade_of_indices(text) && !is_blank(lines[k]))) {
      made.bytes += std::string(text) + "\n";
      headers += is_header ? 1 : 0;
    } else {
      leave_out(lines[k], static_cast<std::int64_t>(k) + 1, no_data, made);
    }
  }
  if (made.done.empty() && made.refused.empty()) return {};
  MemoryFiles files;
  files.put(in_memory, made.bytes);
  const Collection copy(files, in_memory, untreated());
  const bool is_one = copy.recognition().layout == Layout::tucson_index && is_read_whole(copy);
  if (!is_one || !made.refused.empty()) made.bytes.clear();
  return is_one || !made.refused.empty() ? made : Repair{};
}

Repair repaired_chronology(const Collection& collection, std::string_view bytes) {
  const std::vector<FileLine> lines = lines_of(bytes);
  if (collection.recognition().layout == Layout::tucson_index)
    return repaired_chronology(lines, static_cast<std::size_t>(collection.recognition().header_lines));
  const auto first =
      std::ranges::find_if(lines, [](const FileLine& line) { return is_index_decade(FirstLine(line.text)); });
  return first == lines.end() ? Repair{}
                              : repaired_chronology(lines, static_cast<std::size_t>(first - lines.begin()));
}

// Whether the file, although it was taken for something else, is ring widths from its first decade on, with
// an end mark for each core.
bool is_ring_widths(std::string_view bytes) {
  const std::vector<FileLine> lines = lines_of(bytes);
  const std::vector<CoreLines> cores = cores_on(lines, 0);
  if (cores.empty() || std::ranges::any_of(cores, [](const CoreLines& core) { return !core.mark; }))
    return false;
  std::size_t decades = 0;
  for (const CoreLines& core : cores) decades += core.decades.size();
  const auto first = cores.front().decades.front().line - 1;
  const auto others = std::count_if(lines.begin() + static_cast<std::ptrdiff_t>(first), lines.end(),
                                    [](const FileLine& line) { return !is_blank(line); });
  return static_cast<std::size_t>(others) == decades;
}

// The first that can be had of the ways in which a file of no layout may be meant.
Repair repaired_unknown(const Collection& collection, std::string_view bytes, const RepairChoices& choices,
                        bool holds_series) {
  Repair made = repaired_heidelberg(bytes);
  if (is_nothing(made)) made = repaired_compact(bytes);
  if (is_nothing(made) && holds_series) made = repaired_widths(bytes, choices);
  if (is_nothing(made)) made = repaired_chronology(collection, bytes);
  return made;
}

Repair repaired_as(const Collection& collection, std::string_view bytes, const RepairChoices& choices,
                   bool holds_series) {
  switch (collection.recognition().layout) {
    case Layout::tucson_raw:
      return repaired_widths(bytes, choices);
    case Layout::heidelberg:
      return repaired_heidelberg(bytes);
    case Layout::compact:
      return repaired_compact(bytes);
    case Layout::tucson_index:
      return holds_series || is_ring_widths(bytes) ? repaired_widths(bytes, choices)
                                                   : repaired_chronology(collection, bytes);
    default:
      return repaired_unknown(collection, bytes, choices, holds_series);
  }
}

// Why a file is none that can be read, or that nothing else can be said of it.
std::string why_nothing(std::span<const FileFinding> findings) {
  const auto layout = std::ranges::find_if(
      findings, [](const FileFinding& finding) { return finding.kind == kind("layout", Effect::lost); });
  return layout == findings.end() ? "nothing of it can be put right without a guess" : layout->words;
}

bool has(std::span<const FileFinding> findings, const FindingKind* of) {
  return std::ranges::find(findings, of, &FileFinding::kind) != findings.end();
}

// Whether which ring is of which year, or which number is a ring, does not stand in the file.
bool is_a_guess(const Imported& imported) {
  constexpr std::array<const FindingKind*, 3> guesses = {kind("short-data"), kind("data-kind"),
                                                         kind("behind-length")};
  return std::ranges::any_of(guesses, [&](const FindingKind* of) { return has(imported.findings, of); }) ||
         std::ranges::any_of(imported.findings, [](const FileFinding& finding) {
           return severity_of(finding.kind->effect) == Severity::error;
         });
}

}  // namespace

std::string at_line(std::int64_t line) {
  return "line " + std::to_string(line);
}

std::string beginning_of(std::string_view text) {
  constexpr std::size_t longest = 40;
  return std::string(trimmed(text).substr(0, longest));
}

bool is_nothing(const Repair& made) {
  return made.bytes.empty() && made.refused.empty();
}

bool may_hold_data(std::string_view text) {
  constexpr std::size_t fewest = 4;
  if (text.starts_with('#')) return false;
  std::size_t words = 0, numbers = 0;
  while (!(text = text.substr(std::min(text.find_first_not_of(" \t,;"), text.size()))).empty()) {
    const std::size_t length = std::min(text.find_first_of(" \t,;"), text.size());
    const std::string_view word = text.substr(0, length);
    const std::string_view digits = word.substr(word.starts_with('-') ? 1 : 0);
    numbers += !digits.empty() && digits.find_first_not_of("0123456789") == std::string_view::npos ? 1 : 0;
    ++words;
    text.remove_prefix(length);
  }
  return numbers >= fewest && 5 * numbers >= 3 * (words - 1);
}

void leave_out(const FileLine& line, std::int64_t number, const std::string& why, Repair& made) {
  if (may_hold_data(line.text))
    made.refused.push_back(at_line(number) + " may hold data and is not understood, put it right or take " +
                           "it out: " + beginning_of(line.text));
  else
    made.done.push_back(at_line(number) + (is_blank(line) ? left_out_empty : why + beginning_of(line.text)));
}

// Why a table is not copied, although it was read: its numbers are in the wrong place, or no widths. Empty
// where it may be.
std::string why_no_copy(const Imported& table) {
  constexpr std::array<const FindingKind*, 4> wrong = {
      kind("second-table"), kind("no-column"), kind("year-twice", Effect::lost), kind("unit-unlikely")};
  for (const FileFinding& finding : table.findings) {
    if (std::ranges::find(wrong, finding.kind) != wrong.end())
      return (finding.line > 0 ? at_line(finding.line) + ": " : "") + finding.words;
  }
  return "";
}

ImportWishes wishes_of(const Collection& collection, const RepairChoices& choices) {
  return collection.wishes({.unit = choices.unit, .variable = choices.variable});
}

bool has_choice(const RepairChoices& choices) {
  return choices.unit || choices.variable != RingVariable::whole;
}

Repair copied(const Imported& table) {
  const std::string why = why_no_copy(table);
  return why.empty() ? repair_of(table) : Repair{.refused = {why}};
}

// What the importers can read is what it says; of a Heidelberg file its own lines say more.
Repair repaired(const Collection& collection, std::string_view bytes, const RepairChoices& choices) {
  const Imported* imported_as = collection.imported();
  if (imported_as && imported_as->layout != OtherLayout::heidelberg)
    return copied(has_choice(choices) ? *imported(bytes, wishes_of(collection, choices)) : *imported_as);
  const std::vector<FileFinding> findings = findings_of(collection, bytes, 0);
  const bool is_unread = std::ranges::any_of(
      collection.troubles(), [](const Trouble& trouble) { return status::of_system(trouble.status); });
  const bool is_whole = !imported_as && is_read_whole(collection) && !has(findings, kind("shifted"));
  if (is_unread || is_whole) return {};
  Repair made = repaired_as(collection, bytes, choices, has(findings, kind("lost-series")));
  if (!made.bytes.empty()) return made;
  if (const auto other = imported(bytes, wishes_of(collection, choices));
      other && !other->tucson.empty() && !is_a_guess(*other))
    return repair_of(*other);
  if (is_nothing(made)) made.refused.push_back(why_nothing(findings));
  return made;
}

}  // namespace vorn
