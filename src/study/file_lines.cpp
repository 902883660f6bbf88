#include "study/file_lines.h"

#include <algorithm>

#include "records/text.h"

namespace vorn {
namespace {

bool only_ctrl_z(std::string_view text) {
  return text.find_first_not_of('\x1a') == std::string_view::npos;
}

// Whether the line, behind which the file ends, is none.
bool is_none(const FileLine& line) {
  return only_ctrl_z(line.text) && (line.end == LineEnd::none || !line.text.empty());
}

}  // namespace

std::vector<FileLine> lines_of(std::string_view bytes) {
  std::vector<FileLine> all;
  std::size_t at = 0;
  while (at < bytes.size() && all.size() < most_lines_examined) {
    const std::size_t end = std::min(bytes.find_first_of("\r\n", at), bytes.size());
    const std::size_t behind = std::min(bytes.find_first_not_of('\r', end), bytes.size());
    const std::size_t returns = behind - end;
    const bool feed = behind < bytes.size() && bytes[behind] == '\n';
    FileLine line{bytes.substr(at, end - at)};
    if (feed) line.end = returns == 0 ? LineEnd::lf : returns == 1 ? LineEnd::cr_lf : LineEnd::cr_cr_lf;
    if (!feed && returns > 0) line.end = LineEnd::cr;
    at = behind + (feed ? 1 : 0);
    const std::size_t empty_ones = feed || returns == 0 ? 0 : returns - 1;
    if (at == bytes.size() && empty_ones == 0 && is_none(line)) break;
    all.push_back(line);
    // Of a run of lone CRs each ends a line.
    for (std::size_t k = 1; k <= empty_ones && all.size() < most_lines_examined; ++k)
      all.push_back({bytes.substr(end + k, 0), LineEnd::cr});
  }
  return all;
}

bool is_blank(const FileLine& line) {
  return line.text.find_first_not_of(" \t\x1a") == std::string_view::npos;
}

std::string_view without_blanks(std::string_view text) {
  text = trimmed(text);
  return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

}  // namespace vorn
