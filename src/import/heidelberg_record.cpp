#include "import/heidelberg_record.h"

#include <algorithm>
#include <limits>

#include "import/fields.h"

namespace vorn {
namespace {

constexpr std::size_t longest_key = 60, column_width = 6;
constexpr std::string_view blanks = " \t\x1a";

int column_of(std::size_t at) {
  return static_cast<int>(std::min<std::size_t>(at, std::numeric_limits<int>::max() - 1)) + 1;
}

// What stands behind the word and a colon that a line begins with; nothing where it begins otherwise.
std::optional<std::string_view> behind_word(std::string_view text, std::string_view word) {
  text = bare(text);
  if (lower_case(text.substr(0, word.size())) != word) return std::nullopt;
  text = bare(text.substr(word.size()));
  if (!text.starts_with(':')) return std::nullopt;
  return bare(text.substr(1));
}

bool is_key_line(std::string_view text) {
  const std::size_t sign = text.find('=');
  if (sign > longest_key) return false;
  const std::string key = letters_of(text.substr(0, sign));
  return !key.empty() && (key.front() < '0' || key.front() > '9');
}

// The fields of a line as blanks part them.
std::vector<TableField> words_of(std::string_view text, std::int64_t line) {
  std::vector<TableField> all;
  for (std::size_t at = text.find_first_not_of(blanks); at != std::string_view::npos;
       at = text.find_first_not_of(blanks, at)) {
    const std::size_t end = std::min(text.find_first_of(blanks, at), text.size());
    all.push_back({text.substr(at, end - at), line, column_of(at), false});
    at = end;
  }
  return all;
}

// The same as columns of six part them, without empty ones.
std::vector<TableField> columns_of(std::string_view text, std::int64_t line) {
  std::vector<TableField> all;
  for (std::size_t at = 0; at < text.size(); at += column_width) {
    const std::string_view field = bare(text.substr(at, column_width));
    if (!field.empty()) all.push_back({field, line, column_of(at), false});
  }
  return all;
}

bool is_value(const TableField& field) {
  return number_in(field.text, true).has_value();
}

// Whether two values may touch in it.
bool may_touch(const TableField& field) {
  return field.text.size() > column_width && field.text.find_first_of(".,") == std::string_view::npos;
}

// Columns decide where values touch.
std::vector<TableField> values_on(std::string_view text, std::int64_t line) {
  std::vector<TableField> words = words_of(text, line);
  const bool plain =
      std::ranges::all_of(words, [](auto& word) { return is_value(word) && !may_touch(word); });
  if (plain) return words;
  std::vector<TableField> columns = columns_of(text, line);
  return std::ranges::all_of(columns, is_value) ? columns : words;
}

}  // namespace

TableField HeidelbergRecord::of(std::string_view key) const {
  auto found = keys.find(std::string(key));
  for (const KeyInOtherWords& other : other_keys) {
    if (found == keys.end() && other.key == key) found = keys.find(std::string(other.words));
  }
  return found == keys.end() ? TableField{} : found->second;
}

bool is_header_line(std::string_view text) {
  return behind_word(text, "header").has_value();
}

void HeidelbergRecords::read_key(HeidelbergRecord& record) {
  const std::size_t sign = text().find('=');
  if (sign > longest_key) return;
  std::size_t at = text().find_first_not_of(" \t", sign + 1);
  at = std::min(at, text().size());
  record.keys.try_emplace(
      letters_of(text().substr(0, sign)),
      TableField{bare(text().substr(at)), static_cast<std::int64_t>(at_) + 1, column_of(at), false});
}

void HeidelbergRecords::read_values(HeidelbergRecord& record) {
  for (; at_ < lines_.size() && !is_header_line(text()) && !is_key_line(text()); ++at_) {
    for (const TableField& value : values_on(text(), static_cast<std::int64_t>(at_) + 1)) {
      record.is_cut = record.values.size() >= most_record_values;
      if (record.is_cut) break;
      record.values.push_back(value);
    }
  }
}

bool HeidelbergRecords::next(HeidelbergRecord& record) {
  while (at_ < lines_.size() && is_blank(lines_[at_])) ++at_;
  if (at_ == lines_.size()) return false;
  record = HeidelbergRecord{};
  record.first_line = static_cast<std::int64_t>(at_) + 1;
  if (is_header_line(text())) ++at_;
  for (; at_ < lines_.size() && !is_header_line(text()); ++at_) {
    if (const auto word = behind_word(text(), "data")) {
      record.data = letters_of(word->substr(0, longest_key));
      record.data_line = static_cast<std::int64_t>(at_++) + 1;
      read_values(record);
      break;
    }
    read_key(record);
  }
  record.last_line = static_cast<std::int64_t>(at_);
  return true;
}

}  // namespace vorn
