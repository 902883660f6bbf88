// What is to be said of a file: what was decided about it, what was not read and why, and what of it may not
// be what is meant.
//
// The file is looked at anew, line by line, by eyes that do not stop at columns (tucson_lines.h), and each
// ring that they find is looked for among those that the reader took. What it did not take, or took as
// something else, is an error; nothing else is, however odd it looks.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "formats/read_decisions.h"
#include "formats/recognition.h"
#include "study/finding_kinds.h"
#include "workspace/series_view.h"

namespace vorn {

// The figure that a finding is about; nothing where there is none.
using FindingValue = std::variant<std::monostate, std::string, std::int64_t, double>;

struct FileFinding {
  const FindingKind* kind = nullptr;
  std::int64_t line = 0;          // from 1; 0 where it is about no line
  std::int64_t from = 0, to = 0;  // the lines concerned; 0 where there are none, `to` also to the end
  int column = 0;                 // from 1; 0 where it is about none
  std::string series = {};        // as the file has it, without blanks around it
  FindingValue value = {};
  std::string words = {};
};

// A file, and what was made of it.
struct FileTaken {
  std::string_view bytes;
  const Recognition& recognition;
  const ReadDecisions& decided;
  std::span<const SeriesView> cores;  // as many as decided.series, mm
  // Of an index file: its values as read and its depths, from its first year on.
  std::int64_t first_year = 0;
  std::span<const double> indices = {};
  std::span<const std::int32_t> depths = {};
  int this_year = 0;  // behind which no ring can have grown; 0 where nobody says
};

// More findings about one file than these are counted, not given (`more`).
inline constexpr std::size_t most_findings = 20'000;

// All of them, in the order of the lines; those about no line come first. The bytes may be anything.
std::vector<FileFinding> file_findings(const FileTaken& file);

// Whether a line of a Heidelberg file says that in the values behind it a width and other numbers take turns.
bool says_pairs(std::string_view line);

// Whether nothing but blanks stands behind the last record of a Heidelberg file, so that nothing is lost
// where the reader tells that the file ends in a header.
bool ends_in_blank_lines(const FileTaken& file);

}  // namespace vorn
