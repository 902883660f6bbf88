// The lines of a file with their ends, numbered as the readers count them.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace vorn {

enum class LineEnd {
  none,      // the file ends
  lf,        // as Linux and macOS write it
  cr_lf,     // as Windows does
  cr_cr_lf,  // two CRs or more, then LF: written twice over by a transfer
  cr         // alone, as the first Macintosh wrote it
};

// One line; its number is its place, from 1.
struct FileLine {
  std::string_view text = {};  // without its end
  LineEnd end = LineEnd::none;
};

// More of them than any table of the program could take are not looked at.
inline constexpr std::size_t most_lines_examined = 1'300'000;

// The lines of `bytes`, which they view, cut where TextInput cuts them (records/text_file.h): at LF, at a run
// of CRs followed by LF, at a lone CR. A last one without an end counts unless it holds nothing, or nothing
// but Ctrl-Z.
std::vector<FileLine> lines_of(std::string_view bytes);

// Whether nothing but blanks, tabs and Ctrl-Z stands on it.
bool is_blank(const FileLine& line);

// `text` without the blanks around it.
std::string_view without_blanks(std::string_view text);

}  // namespace vorn
