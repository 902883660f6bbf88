#include "formats/file_work.h"

#include <string>

namespace vorn {

int told(Troubles& troubles, std::string_view file, int status, std::string_view label) {
  if (status != status::ok) {
    Trouble trouble{std::string(label), std::string(file), status, std::string(trimmed(file))};
    troubles.tell(trouble);
  }
  return status;
}

int told_read(const Reading& reading, const TextInput& input, int status, std::string_view label,
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

int told_write(const Writing& writing, int status, std::string_view label, const Name& series) {
  if (status != status::ok) {
    Trouble trouble{std::string(label), std::string(series.view()), status,
                    std::string(trimmed(writing.file))};
    trouble.series = series.trimmed();
    writing.troubles.tell(trouble);
  }
  return status;
}

void tell_words(const Reading& reading, std::string_view words, std::int64_t line) {
  Trouble trouble;
  trouble.file = trimmed(reading.file);
  trouble.line = line;
  trouble.words = words;
  reading.troubles.tell(trouble);
}

int close_told(const Reading& reading, TextInput& input, int untold) {
  const int closing = input.close();
  return told(reading.troubles, reading.file, status::of_system(untold) ? untold : closing, "Close");
}

}  // namespace vorn
