#include "import/table_rows.h"

#include <algorithm>
#include <limits>

#include "import/fields.h"

namespace vorn {
namespace {

constexpr std::string_view blanks = " \t";

int column_of(std::size_t at) {
  constexpr auto largest = static_cast<std::size_t>(std::numeric_limits<int>::max() - 1);
  return static_cast<int>(std::min(at, largest)) + 1;
}

}  // namespace

bool TableRows::next() {
  fields_.clear();
  joined_.clear();
  is_cut_ = has_open_quote_ = false;
  if (!skip_to_row()) return false;
  first_ = static_cast<std::int64_t>(next_) + 1;
  read_row();
  ++next_;
  return true;
}

bool TableRows::skip_to_row() {
  for (; next_ < lines_.size(); ++next_) {
    const bool is_comment = line().starts_with('#');
    comments_ += is_comment;
    if (!is_comment && !is_blank(lines_[next_])) return true;
  }
  return false;
}

void TableRows::read_row() {
  at_ = 0;
  if (separator_ == ' ') at_ = std::min(line().find_first_not_of(blanks), line().size());
  for (;;) {
    if (fields_.size() == most_fields_a_row) {
      is_cut_ = true;
      return;
    }
    read_field();
    if (at_ >= line().size()) return;
    skip_separator();
    if (separator_ == ' ' && at_ >= line().size()) return;
  }
}

bool TableRows::at_separator() const {
  const char c = line()[at_];
  return c == separator_ || (separator_ == ' ' && c == '\t');
}

void TableRows::skip_separator() {
  ++at_;
  if (separator_ == ' ') at_ = std::min(line().find_first_not_of(blanks, at_), line().size());
}

void TableRows::read_field() {
  TableField field;
  field.line = static_cast<std::int64_t>(next_) + 1;
  field.column = column_of(at_);
  fields_.push_back(field);
  // Blanks before a quote are passed over.
  const std::size_t quote = line().find_first_not_of(' ', at_);
  if (!has_open_quote_ && quote != std::string_view::npos && line()[quote] == '"') {
    const std::size_t start = at_;
    at_ = quote;
    if (read_quoted()) return;
    at_ = start;
    has_open_quote_ = true;
  }
  read_plain();
}

void TableRows::read_plain() {
  const std::size_t from = at_;
  while (at_ < line().size() && !at_separator()) ++at_;
  fields_.back().text = bare(line().substr(from, at_ - from));
}

// Reads a field whose quote stands here. False: it has no end, and nothing is read.
bool TableRows::read_quoted() {
  const std::size_t start_line = next_;
  std::string text;
  std::size_t at = at_ + 1, line_at = next_;
  for (;;) {
    const std::string_view here = lines_[line_at].text;
    const std::size_t quote = std::min(here.find('"', at), here.size());
    text += here.substr(at, quote - at);
    if (quote < here.size() && quote + 1 < here.size() && here[quote + 1] == '"') {
      text += '"';
      at = quote + 2;
    } else if (quote < here.size()) {
      at = quote + 1;
      break;
    } else if (line_at + 1 >= lines_.size() || line_at - start_line >= most_quoted_lines) {
      return false;
    } else {
      text += '\n';
      ++line_at;
      at = 0;
    }
  }
  next_ = line_at;
  at_ = at;
  const std::size_t from = at_;
  while (at_ < line().size() && !at_separator()) ++at_;
  text += bare(line().substr(from, at_ - from));
  joined_.push_back(std::move(text));
  fields_.back().text = bare(joined_.back());
  fields_.back().quoted = true;
  return true;
}

}  // namespace vorn
