#include "batch/faithful_save_lines.h"

namespace vorn {

std::string_view bytes_of_end(LineEnd end) {
  switch (end) {
    case LineEnd::cr_lf:
      return "\r\n";
    case LineEnd::cr_cr_lf:
      return "\r\r\n";
    case LineEnd::cr:
      return "\r";
    case LineEnd::lf:
    case LineEnd::none:
      break;
  }
  return "\n";
}

std::size_t OriginalBytes::end(std::size_t line) const {
  if (line + 1 < lines_.size()) return begin(line + 1);
  const std::size_t at = begin(line) + lines_[line].text.size();
  const LineEnd end = lines_[line].end;
  if (end == LineEnd::none) return at;
  return end == LineEnd::cr_cr_lf ? bytes_.find('\n', at) + 1 : at + bytes_of_end(end).size();
}

}  // namespace vorn
