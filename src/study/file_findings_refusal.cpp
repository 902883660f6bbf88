// Why a file is none that can be read, and what stands in it all the same.
#include <algorithm>
#include <array>
#include <cctype>

#include "formats/layouts.h"
#include "formats/tucson_index.h"
#include "formats/tucson_raw_layout.h"
#include "study/file_findings_parts.h"

namespace vorn {
namespace {

struct ForeignStart {
  std::string_view bytes, what;
};

constexpr std::array foreign = {
    ForeignStart{"PK\x03\x04", "a zip archive, or a spreadsheet or document kept in one"},
    ForeignStart{"\xd0\xcf\x11\xe0", "a spreadsheet or document of an office program"},
    ForeignStart{"\x1f\x8b", "compressed by gzip"},
    ForeignStart{"%PDF", "a PDF document"},
    ForeignStart{"<?xml", "XML"},
    ForeignStart{"<!DOCTYPE", "a page of the web"},
    ForeignStart{"<html", "a page of the web"},
    ForeignStart{"{\\rtf", "a document of a word processor"},
    ForeignStart{"\xff\xfe", "text in UTF-16: save it as plain text"},
    ForeignStart{"\xfe\xff", "text in UTF-16: save it as plain text"}};

// As capital letters and blanks before them are written by some.
bool begins_with(std::string_view text, std::string_view start) {
  const bool is_markup = start.starts_with('<');
  if (is_markup) text = text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
  const auto same = [](char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
  };
  if (!is_markup) return text.starts_with(start);
  return text.size() >= start.size() && std::equal(start.begin(), start.end(), text.begin(), same);
}

// Every other byte of the beginning is 0: text of two bytes a character.
bool is_wide_text(std::string_view bytes) {
  constexpr std::size_t bytes_looked_at = 64, least = 8;
  const std::string_view start = bytes.substr(0, bytes_looked_at);
  std::size_t even = 0, odd = 0;
  for (std::size_t k = 0; k < start.size(); ++k) (k % 2 == 0 ? even : odd) += start[k] == '\0' ? 1 : 0;
  return start.size() >= least && std::max(even, odd) == start.size() / 2 && std::min(even, odd) == 0;
}

constexpr std::size_t lines_examined = 4;  // by the recognition of layouts
constexpr std::string_view byte_order_mark = "\xef\xbb\xbf";

// Too many other lines, and it is no file of decades.
bool holds_cores(std::span<const CoreLines> cores, std::span<const FileLine> lines) {
  std::size_t decades = 0, others = 0;
  for (const CoreLines& core : cores) decades += core.decades.size();
  if (decades == 0) return false;
  const auto first = static_cast<std::size_t>(cores.front().decades.front().line) - 1;
  for (const FileLine& line : lines.subspan(first)) others += trimmed(line.text).empty() ? 0 : 1;
  return 2 * decades >= others;
}

bool has_decade_of_indices(std::span<const FileLine> lines) {
  return std::ranges::any_of(lines.first(std::min<std::size_t>(lines.size(), 500)),
                             [](const FileLine& line) { return is_index_decade(FirstLine(line.text)); });
}

bool is_known(std::string_view text) {
  return std::ranges::any_of(layouts(), [&](const LayoutRow& row) { return row.test(FirstLine(text)); });
}

// How long the first line of a core should be for its year, and how long it is.
std::string length_words(const DecadeLine& decade, std::string_view text) {
  const LayoutField& widths = tucson_raw::fields.back();
  const auto years = static_cast<int>(decade.next_year() - decade.year);
  const int wanted = widths.first - 1 + years * (widths.width() / tucson_raw::values_a_line);
  return "line " + std::to_string(decade.line) + " is " + std::to_string(trimmed(text).size()) +
         " columns long, and " + std::to_string(decade.year) + " asks for " + std::to_string(wanted);
}

std::string why_not_raw(const DecadeLine& first, std::span<const FileLine> lines) {
  const auto before = static_cast<std::size_t>(first.line) - 1;
  if (before >= lines_examined) {
    const auto empty = std::ranges::count_if(lines.first(before),
                                             [](const FileLine& line) { return trimmed(line.text).empty(); });
    return std::to_string(before) + " lines stand before the data, " +
           (empty > 0 ? std::to_string(empty) + " of them empty; " : "") + "three at most may";
  }
  if (first.is_shifted)
    return "line " + std::to_string(first.line) + " begins the data and stands to the left of its columns";
  if (!first.in_columns)
    return "line " + std::to_string(first.line) + " begins the data and does not keep to the columns";
  return length_words(first, lines[before].text);
}

std::string why_refused(const FileTaken& file, std::span<const FileLine> lines,
                        std::span<const CoreLines> cores) {
  for (const ForeignStart& start : foreign) {
    if (begins_with(file.bytes, start.bytes)) return std::string(start.what);
  }
  if (is_wide_text(file.bytes)) return "text in UTF-16: save it as plain text";
  if (lines.empty()) return "the file is empty";
  std::string_view first = lines.front().text;
  if (first.starts_with(byte_order_mark) && is_known(first.substr(byte_order_mark.size())))
    return "a byte order mark stands before the first line, which would be known without it";
  if (!cores.empty()) return why_not_raw(cores.front().decades.front(), lines);
  if (has_decade_of_indices(lines)) return "more than three lines stand before the decades of a chronology";
  const auto header = std::ranges::find_if(
      lines, [](const FileLine& line) { return row_of(Layout::heidelberg)->test(FirstLine(line.text)); });
  if (header != lines.end())
    return "HEADER: does not stand in the first line, but in line " +
           std::to_string(header - lines.begin() + 1);
  const auto compact = std::ranges::find_if(
      lines, [](const FileLine& line) { return row_of(Layout::compact)->test(FirstLine(line.text)); });
  if (compact != lines.end())
    return "the header of a compact series does not stand in the first line, but in line " +
           std::to_string(compact - lines.begin() + 1);
  return "none of its first four lines is that of a layout";
}

}  // namespace

void add_refusal_findings(const FileTaken& file, std::span<const FileLine> lines, FindingList& found) {
  std::vector<CoreLines> cores = cores_on(lines, 0);
  if (!holds_cores(cores, lines)) cores.clear();
  found.add({.kind = kind("layout", Effect::lost),
             .words = "no layout that is known: " + why_refused(file, lines, cores)});
  add_lost_cores(file, cores, found);
}

}  // namespace vorn
