// What the parts of the study of a file share (file_findings.h).
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "study/file_findings.h"
#include "study/file_lines.h"
#include "study/tucson_lines.h"

namespace vorn {

// The findings about one file, as they are made.
class FindingList {
 public:
  void add(FileFinding finding);
  bool is_full() const { return all_.size() >= most_findings; }
  // In the order of the lines, with a word on those for which there was no place.
  std::vector<FileFinding> taken();

 private:
  std::vector<FileFinding> all_;
  std::int64_t more_ = 0;
};

// A finding about a series that was read: at its first line, and about all of its lines.
FileFinding about(const SeriesRead& series, const FindingKind* of);

// "1 ring", "12 rings".
std::string counted(std::int64_t number, std::string_view one, std::string_view many);

// "1950 to 1961, 1970 and 12 more", of years or lines in any order.
std::string spans_words(std::vector<std::int64_t> numbers);

// A text of a file as it may stand in a sentence: its beginning.
std::string quoted(std::string_view text);

// Each adds what it finds.
void add_text_findings(const FileTaken& file, std::span<const FileLine> lines, FindingList& found);
void add_refusal_findings(const FileTaken& file, std::span<const FileLine> lines, FindingList& found);
void add_reading_findings(const FileTaken& file, std::span<const FileLine> lines, FindingList& found);
void add_raw_findings(const FileTaken& file, std::span<const FileLine> lines, FindingList& found);
void add_index_findings(const FileTaken& file, std::span<const FileLine> lines, FindingList& found);
void add_heidelberg_findings(const FileTaken& file, std::span<const FileLine> lines, FindingList& found);
void add_compact_findings(const FileTaken& file, std::span<const FileLine> lines, FindingList& found);

// Zeros, negative values and years of a core, whatever its layout: `years` and `values` are as the file has
// them.
struct CoreAsWritten {
  std::string_view name;
  std::int64_t line = 0, last_line = 0;
  std::vector<std::int64_t> years = {};
  std::vector<double> values = {};
};
void add_value_findings(const CoreAsWritten& core, int this_year, FindingList& found);
// Names that several of them have.
void add_name_findings(std::span<const CoreAsWritten> cores, FindingList& found);
// What of Tucson cores was not taken, or as something else.
void add_lost_cores(const FileTaken& file, std::span<const CoreLines> cores, FindingList& found);

}  // namespace vorn
