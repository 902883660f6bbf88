#include "formats/recognition.h"

#include "formats/file_work.h"
#include "formats/layouts.h"

namespace vorn {
namespace {

constexpr int lines_examined = 4;

const EditFormat line_edit("(A85)");

// The first layout of the list of which line `number` passes the test; nothing if there is none.
const LayoutRow* layout_of(const FirstLine& line, int number) {
  for (const LayoutRow& row : layouts()) {
    if (number <= row.lines_tested && row.test(line)) return &row;
  }
  return nullptr;
}

// Looks for the line that decides, from the first one, which is read already, on. Returns the status of the
// last read.
Status look_at_lines(TextInput& input, FirstLine line, Recognition& found) {
  for (int number = 1; number <= lines_examined; ++number) {
    if (const LayoutRow* row = layout_of(line, number)) {
      found.layout = row->layout;
      found.header_lines = number - 1;
      found.line = number;
      found.test = row->test_words;
      return status::ok;
    }
    if (const Status answer = input.read(line_edit, line)) return answer;
  }
  return status::ok;
}

}  // namespace

Recognition find_rftyp(Files& files, std::string_view file, Troubles& troubles) {
  Recognition found;
  const Reading reading{files, file, 0, troubles};
  TextInput input;
  told(troubles, file, input.open(files, file), "Open");
  FirstLine line;  // stays blank where it cannot be read
  told_read(reading, input, input.read(line_edit, line), "Read");
  const Status untold = look_at_lines(input, line, found);
  found.status = close_told(reading, input, untold);
  return found;
}

}  // namespace vorn
