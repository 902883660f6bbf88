#include "formats/file_work.h"

#include <string>

namespace vorn {

Status told_read(const Reading& reading, const TextInput& input, Status status, std::string_view label,
                 const Name& series) {
  if (status != status::ok) {
    Trouble trouble{std::string(label), std::string(reading.file), status,
                    std::string(trimmed(reading.file))};
    trouble.line = input.line();
    trouble.column = input.bad_column();
    trouble.series = series.trimmed();
    reading.troubles.tell(trouble);
  }
  return status;
}

Status told_write(const Writing& writing, Status status, std::string_view label, const Name& series) {
  if (status != status::ok) {
    Trouble trouble{std::string(label), std::string(series.view()), status,
                    std::string(trimmed(writing.file))};
    trouble.series = series.trimmed();
    writing.troubles.tell(trouble);
  }
  return status;
}

bool is_blank_line(std::string_view line) {
  return line.find_first_not_of(blank_characters) == std::string_view::npos;
}

void tell_words(const Reading& reading, std::string_view words, std::int64_t line) {
  Trouble trouble;
  trouble.file = trimmed(reading.file);
  trouble.line = line;
  trouble.words = words;
  reading.troubles.tell(trouble);
}

Status close_told(const Reading& reading, TextInput& input, Status untold) {
  const Status closing = input.close();
  return told(reading.troubles, reading.file, status::of_system(untold) ? untold : closing, "Close");
}

}  // namespace vorn
