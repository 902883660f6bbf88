// Tables as text: rows of fields with a separator between them, quoted where they need it (RFC 4180).
#pragma once

#include <cstdint>
#include <deque>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "study/file_lines.h"

namespace vorn {

// One field, without the quotes around it.
struct TableField {
  std::string_view text = {};  // lives until the next row is read
  std::int64_t line = 0;       // from 1
  int column = 0;              // of its first character, quotes included; in bytes, from 1
  bool quoted = false;
};

// A line of more fields than these is cut.
inline constexpr std::size_t most_fields_a_row = 25'000;
// A quoted field that goes on over more lines than these has no end: its quote is taken for a letter.
inline constexpr std::size_t most_quoted_lines = 50;

// Goes through the rows. A field may hold ends of lines where it is quoted; "" stands for a quote there.
class TableRows {
 public:
  // Of lines `first` (from 0) on. A separator of ' ' stands for blanks and tabs, however many.
  TableRows(std::span<const FileLine> lines, char separator, std::size_t first = 0)
      : lines_(lines), separator_(separator), next_(first) {}

  // Reads the next row that is neither blank nor a comment. False: there is none.
  bool next();
  const std::vector<TableField>& fields() const { return fields_; }
  // The lines that the row takes, from 1.
  std::int64_t first_line() const { return first_; }
  std::int64_t last_line() const { return static_cast<std::int64_t>(next_); }
  // Lines that begin with "#" so far.
  std::int64_t comments() const { return comments_; }
  // Whether the row has more fields than are given.
  bool is_cut() const { return is_cut_; }
  // Whether a quote of the row has no end.
  bool has_open_quote() const { return has_open_quote_; }

 private:
  bool skip_to_row();
  void read_row();
  void read_field();
  void read_plain();
  bool read_quoted();
  bool at_separator() const;
  void skip_separator();
  std::string_view line() const { return lines_[next_].text; }

  std::span<const FileLine> lines_;
  char separator_;
  std::size_t next_;    // line that is read next, or at which the row is
  std::size_t at_ = 0;  // in it
  std::int64_t first_ = 0, comments_ = 0;
  bool is_cut_ = false, has_open_quote_ = false;
  std::vector<TableField> fields_;
  std::deque<std::string> joined_;  // texts of the row that stand nowhere in one piece
};

}  // namespace vorn
