#include "study/file_findings.h"

#include <algorithm>
#include <utility>

#include "study/file_findings_parts.h"

namespace vorn {

void FindingList::add(FileFinding finding) {
  if (all_.size() < most_findings)
    all_.push_back(std::move(finding));
  else
    ++more_;
}

std::vector<FileFinding> FindingList::taken() {
  std::ranges::stable_sort(all_, {}, &FileFinding::line);
  if (more_ > 0) {
    FileFinding more{kind("more")};
    more.value = more_;
    more.words = "further findings are not given";
    all_.push_back(std::move(more));
  }
  return std::move(all_);
}

FileFinding about(const SeriesRead& series, const FindingKind* of) {
  return {.kind = of,
          .line = series.first_line,
          .from = series.first_line,
          .to = series.last_line,
          .series = std::string(without_blanks(series.name.view()))};
}

std::string counted(std::int64_t number, std::string_view one, std::string_view many) {
  return std::to_string(number) + " " + std::string(number == 1 ? one : many);
}

std::string spans_words(std::vector<std::int64_t> numbers) {
  constexpr std::size_t most_spans = 4;
  std::ranges::sort(numbers);
  numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
  std::string words;
  std::size_t spans = 0;
  for (std::size_t k = 0; k < numbers.size(); ++spans) {
    if (spans == most_spans) return words + " and " + std::to_string(numbers.size() - k) + " more";
    std::size_t last = k;
    while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1) ++last;
    words += (spans > 0 ? ", " : "") + std::to_string(numbers[k]);
    if (last > k) words += " to " + std::to_string(numbers[last]);
    k = last + 1;
  }
  return words;
}

std::string quoted(std::string_view text) {
  constexpr std::size_t most = 40;
  text = trimmed(text);
  return "\"" + std::string(text.substr(0, most)) + (text.size() > most ? "…" : "") + "\"";
}

std::vector<FileFinding> file_findings(const FileTaken& file) {
  const std::vector<FileLine> lines = lines_of(file.bytes);
  FindingList found;
  add_text_findings(file, lines, found);
  add_reading_findings(file, lines, found);
  switch (file.recognition.layout) {
    case Layout::tucson_raw:
      add_raw_findings(file, lines, found);
      break;
    case Layout::tucson_index:
      add_index_findings(file, lines, found);
      break;
    case Layout::heidelberg:
      add_heidelberg_findings(file, lines, found);
      break;
    case Layout::compact:
      add_compact_findings(file, lines, found);
      break;
    case Layout::none:
    case Layout::not_recognised:
      add_refusal_findings(file, lines, found);
      break;
  }
  return found.taken();
}

}  // namespace vorn
