// Heidelberg files: lines before the first record hide them all, and values that do not stand ten to a line
// in their columns are read as others.
#include <algorithm>
#include <cmath>
#include <optional>

#include "batch/difference.h"
#include "batch/faithful_save_fields.h"
#include "batch/reading_check.h"
#include "batch/repair_parts.h"
#include "formats/heidelberg_layout.h"
#include "records/memory_files.h"
#include "records/number_text.h"
#include "study/tucson_lines.h"

namespace vorn {
namespace {

using namespace heidelberg;

const std::string in_memory = "the copy";
constexpr ValueColumns columns{static_cast<std::size_t>(values_a_line), 6};
constexpr std::string_view between_words = " \t,;";
constexpr std::size_t most_rings = 9'999;

// The words of some lines; more than any record could hold are not looked at.
std::vector<std::string_view> words_on(std::span<const FileLine> lines) {
  std::vector<std::string_view> all;
  for (const FileLine& line : lines) {
    std::string_view text = line.text;
    while (all.size() <= 2 * most_rings &&
           !(text = text.substr(std::min(text.find_first_not_of(between_words), text.size()))).empty()) {
      const std::size_t length = std::min(text.find_first_of(between_words), text.size());
      all.push_back(text.substr(0, length));
      text.remove_prefix(length);
    }
  }
  return all;
}

std::optional<double> value_of(std::string_view word) {
  double value = 0;
  if (without_blanks(word).empty()) return 0;
  return read_real(word, 0, value) == status::ok ? std::optional(value) : std::nullopt;
}

// A record, by its lines counted from 0.
struct RecordLines {
  std::size_t header = 0, data = 0, end = 0;  // `data`: of that keyword; `end`: behind the last
};

class HeidelbergRepair {
 public:
  explicit HeidelbergRepair(std::string_view bytes) : lines_(lines_of(bytes)) {}

  Repair run();

 private:
  std::size_t leave_out_start();
  std::size_t header_from(std::size_t k) const;
  std::optional<RecordLines> record_at(std::size_t header);
  std::optional<std::int32_t> key(const RecordLines& record, const KeyedLine& keyed) const;
  void take(const RecordLines& record);
  void keep_record(const RecordLines& record, std::size_t rings);
  void write_values(const RecordLines& record, std::span<const std::string_view> words);
  bool stands_in_columns(const RecordLines& record, std::span<const std::string_view> words) const;
  bool is_read_back() const;
  void add(std::string_view text) { made_.bytes += std::string(text) + "\n"; }
  static std::string at(std::size_t k) { return at_line(static_cast<std::int64_t>(k) + 1); }

  std::vector<FileLine> lines_;
  std::vector<std::vector<double>> values_;  // of each record, as they stand there
  Repair made_;
};

std::size_t HeidelbergRepair::header_from(std::size_t k) const {
  while (k < lines_.size() && !header_key.begins(lines_[k].text)) ++k;
  return k;
}

// Answers where the first record begins: behind the last line where there is none.
std::size_t HeidelbergRepair::leave_out_start() {
  std::size_t first = 0;
  const auto begins = [](std::string_view text) {
    return header_key.begins(text.substr(length_of_foreign_start(text)));
  };
  while (first < lines_.size() && !begins(lines_[first].text)) ++first;
  if (first == lines_.size()) return first;
  for (std::size_t k = 0; k < lines_.size(); ++k) {
    const std::size_t foreign = length_of_foreign_start(lines_[k].text);
    lines_[k].text.remove_prefix(foreign);
    if (foreign > 0) made_.done.push_back(at(k) + ", what stood before the first character left out");
  }
  for (std::size_t k = 0; k < first; ++k)
    leave_out(lines_[k], static_cast<std::int64_t>(k) + 1, no_data, made_);
  return first;
}

// Nothing, which is said, where no values follow.
std::optional<RecordLines> HeidelbergRepair::record_at(std::size_t header) {
  RecordLines record{header, header, header_from(header + 1)};
  while (record.data < record.end && !data_key.begins(lines_[record.data].text)) ++record.data;
  if (record.data < record.end) return record;
  made_.refused.push_back(at(header) + ": a record without values");
  return std::nullopt;
}

std::optional<std::int32_t> HeidelbergRepair::key(const RecordLines& record, const KeyedLine& keyed) const {
  std::optional<std::int32_t> found;
  for (std::size_t k = record.header; k < record.data; ++k) {
    if (!keyed.begins(lines_[k].text)) continue;
    const auto first = std::min(static_cast<std::size_t>(keyed.first) - 1, lines_[k].text.size());
    std::int32_t number = 0;
    const auto width = static_cast<std::size_t>(keyed.last - keyed.first) + 1;
    if (read_integer(lines_[k].text.substr(first, width), number) == status::ok) found = number;
  }
  return found;
}

// Whether the reader finds these values in the columns of as many lines as it reads.
bool HeidelbergRepair::stands_in_columns(const RecordLines& record,
                                         std::span<const std::string_view> words) const {
  const auto lines = std::span(lines_).subspan(record.data + 1, record.end - record.data - 1);
  if (columns.lines_for(words.size()) > lines.size()) return false;
  const std::vector<std::string> fields = fields_on(lines, words.size(), columns);
  return std::ranges::equal(fields, words, {}, value_of, value_of);
}

void HeidelbergRepair::keep_record(const RecordLines& record, std::size_t rings) {
  for (std::size_t k = record.header; k <= record.data; ++k) add(lines_[k].text);
  if (!key(record, length_key)) {
    const std::string line = std::string(length_key.line) + std::to_string(rings);
    const std::size_t data = std::string(lines_[record.data].text).size() + 1;
    made_.bytes.insert(made_.bytes.size() - data, line + "\n");
    made_.done.push_back(at(record.data) + ", " + line + " put before it, as its first and last year say");
  }
}

void HeidelbergRepair::write_values(const RecordLines& record, std::span<const std::string_view> words) {
  const StandingCore none{};
  SavedCore core{none};
  for (const std::string_view word : words) core.rings.push_back({std::nullopt, std::string(word)});
  for (const SavedLine& line : value_lines(core, columns, LineRest::zeros)) add(line.text);
  made_.done.push_back("lines " + std::to_string(record.data + 2) + " to " + std::to_string(record.end) +
                       ", values written anew in their columns");
}

void HeidelbergRepair::take(const RecordLines& record) {
  const std::string_view data = lines_[record.data].text;
  for (const char* pairs : {"Double", "Quadro", "Chrono"}) {
    if (data.find(pairs) != std::string_view::npos)
      return made_.refused.push_back(
          at(record.data) + ": a width and other numbers take turns; save it again " + "with widths alone");
  }
  const auto first = key(record, first_year_key), last = key(record, last_year_key);
  auto length = key(record, length_key);
  if (!length && first && last) length = *last - *first + 1;
  if (!length || *length < 1 || static_cast<std::size_t>(*length) > most_rings)
    return made_.refused.push_back(at(record.header) + ": how many rings? It has no Length= that says it");
  const auto rings = static_cast<std::size_t>(*length);
  std::vector<std::string_view> words =
      words_on(std::span(lines_).subspan(record.data + 1, record.end - record.data - 1));
  if (words.size() < rings)
    return made_.refused.push_back(at(record.header) + ": its length says " + std::to_string(rings) +
                                   " rings, and " + std::to_string(words.size()) + " values stand there");
  const bool is_filled_up = std::all_of(words.begin() + *length, words.end(),
                                        [](std::string_view word) { return value_of(word) == 0; });
  words.resize(rings);
  values_.emplace_back();
  for (const std::string_view word : words) {
    const auto value = value_of(word);
    if (!value || word.size() > columns.width)
      return made_.refused.push_back(at(record.header) + ": what is its width " +
                                     std::string(word.substr(0, 20)) + "?");
    values_.back().push_back(*value);
  }
  keep_record(record, rings);
  if (stands_in_columns(record, words)) {
    for (std::size_t k = record.data + 1; k < record.end; ++k) add(lines_[k].text);
  } else if (is_filled_up) {
    write_values(record, words);
  } else {
    made_.refused.push_back(at(record.header) + ": more values than its length says, and not in columns");
  }
}

bool HeidelbergRepair::is_read_back() const {
  MemoryFiles files;
  files.put(in_memory, made_.bytes);
  const Collection copy(files, in_memory, untreated());
  const std::vector<SeriesView> cores = copy.cores();
  if (!is_read_whole(copy) || cores.size() != values_.size()) return false;
  for (std::size_t k = 0; k < cores.size(); ++k) {
    const double unit = copy.decided().series[k].unit;
    const bool same = cores[k].values.size() == values_[k].size();
    for (std::size_t ring = 0; same && ring < values_[k].size(); ++ring) {
      const double value = values_[k][ring];
      if (cores[k].present[ring] ? !(std::abs(cores[k].values[ring] * unit - value) < 1e-6) : value >= 0)
        return false;
    }
    if (!same) return false;
  }
  return true;
}

Repair HeidelbergRepair::run() {
  std::size_t header = leave_out_start();
  if (header == lines_.size()) return {};
  while (header < lines_.size()) {
    const auto record = record_at(header);
    if (record) take(*record);
    header = record ? record->end : header_from(header + 1);
  }
  if (made_.done.empty() && made_.refused.empty()) return {};
  if (made_.refused.empty() && !is_read_back())
    made_.refused = {"a copy would not be read back as the file stands"};
  if (!made_.refused.empty()) made_.bytes.clear();
  return std::move(made_);
}

}  // namespace

Repair repaired_heidelberg(std::string_view bytes) {
  return HeidelbergRepair(bytes).run();
}

}  // namespace vorn
