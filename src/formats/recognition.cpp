#include "formats/recognition.h"

#include <array>
#include <cstddef>

#include "formats/file_status.h"
#include "formats/heidelberg_layout.h"
#include "records/text_file.h"

namespace vorn {
namespace {

constexpr int lines_examined = 4;
constexpr std::size_t shortest_decade = 18;  // name, year and one value
constexpr std::size_t full_decade = 72, value_width = 6;
constexpr std::size_t shortest_index_line = 80;

using Line = Text<85>;
const EditFormat line_edit("(A85)");
const EditFormat year_edit("(I4)");
const EditFormat digit_edit("(I1)");
const EditFormat raw_edit("(8X,I4,10I6)");
const EditFormat index_edit("(6X,I4,10(I4,I3),A5)");

bool is_heidelberg(const Line& line) {
  return heidelberg::header_key.begins(line.view());
}

bool is_compact(const Line& line) {
  return line(72) == '(' && line(79) == ')';
}

// Years of the first decade before the one that the line begins with.
bool decade_offset(const Line& line, std::int32_t& offset) {
  std::int32_t year = 0;
  if (edit_read(line.view().substr(8, 4), year_edit, year) != status::ok) return false;
  if (edit_read(line.view().substr(11, 1), digit_edit, offset) != status::ok) return false;
  // Years before 0 run towards 0: the first line holds the other part of its decade.
  const bool backwards = year < 0 || (year > 999 && line(8) == '-');
  if (offset != 0 && backwards) offset = 10 - offset;
  return true;
}

bool starts_raw_series(const Line& line) {
  std::int32_t offset = 0, year = 0;
  if (!decade_offset(line, offset)) return false;
  if (line.trimmed().size() != full_decade - value_width * static_cast<std::size_t>(offset)) return false;
  std::array<std::int32_t, 10> values{};
  return edit_read(line.view(), raw_edit, year, std::span(values)) == status::ok;
}

bool is_index_decade(const Line& line) {
  std::int32_t year = 0;
  std::array<std::int32_t, 20> pairs{};
  Text<5> label;
  return edit_read(line.view(), index_edit, year, std::span(pairs), label) == status::ok;
}

// The Tucson layout that the line is data of, or not_recognised.
Layout tucson_layout(const Line& line) {
  const std::size_t length = line.trimmed().size();
  if (length < shortest_decade) return Layout::not_recognised;
  // Deliberate: [length-decides] the length alone tells the two layouts apart.
  if (length >= shortest_index_line) {
    return is_index_decade(line) ? Layout::tucson_index : Layout::not_recognised;
  }
  return starts_raw_series(line) ? Layout::tucson_raw : Layout::not_recognised;
}

// Looks for the first line of data, from the line read already. Returns the status of the last read.
int find_tucson(Workspace& w, TextInput& file, Line line) {
  for (int number = 1; number <= lines_examined; ++number) {
    const Layout layout = tucson_layout(line);
    if (layout != Layout::not_recognised) {
      w.rftype(w.cf) = layout;
      w.rfhead(w.cf) = number - 1;
      break;
    }
    w.ios = file.read(line_edit, line);
    if (w.ios != status::ok) return w.ios;
  }
  return status::ok;
}

}  // namespace

void find_rftyp(Workspace& w) {
  const FileName name = w.cnam(w.cf);
  w.rftype(w.cf) = Layout::not_recognised;
  w.rfhead(w.cf) = 0;
  TextInput file;
  told_or_end(w, file.open(w.files, name.view()), "Open", name.view());
  int untold = status::ok;
  Line line;  // stays blank where it cannot be read
  told_or_end(w, file.read(line_edit, line), "Read", name.view());
  if (is_heidelberg(line)) {
    w.rftype(w.cf) = Layout::heidelberg;
  } else if (is_compact(line)) {
    w.rftype(w.cf) = Layout::compact;
  } else {
    untold = find_tucson(w, file, line);
  }
  close_told(w, file, name.view(), untold);
}

}  // namespace vorn
