// The lines of a file, to be copied with their ends.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "study/file_lines.h"

namespace vorn {

// What a line is ended by, to be written; LF for one without an end.
std::string_view bytes_of_end(LineEnd end);

// The bytes outlive it.
class OriginalBytes {
 public:
  explicit OriginalBytes(std::string_view bytes) : bytes_(bytes), lines_(lines_of(bytes)) {}

  const std::vector<FileLine>& lines() const { return lines_; }
  std::string_view all() const { return bytes_; }
  // Of lines `from` to before `to`, counted from 0.
  std::string_view of(std::size_t from, std::size_t to) const {
    return from < to ? bytes_.substr(begin(from), end(to - 1) - begin(from)) : std::string_view();
  }
  // What stands behind the last line: Ctrl-Z.
  std::string_view behind() const { return lines_.empty() ? bytes_ : bytes_.substr(end(lines_.size() - 1)); }

 private:
  std::size_t begin(std::size_t line) const {
    return static_cast<std::size_t>(lines_[line].text.data() - bytes_.data());
  }
  std::size_t end(std::size_t line) const;

  std::string_view bytes_;
  std::vector<FileLine> lines_;
};

}  // namespace vorn
