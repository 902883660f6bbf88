// A report being written line by line.
#pragma once

#include <string_view>
#include <utility>

#include "records/text_file.h"

namespace vorn {

// A TextOutput for a text of many lines, whose failures need one message only: a line that cannot be written
// is remembered and answered by close().
class ReportFile {
 public:
  Status create(Files& files, std::string_view name) { return file_.create(files, name); }

  // Writes a line whose failure the caller tells.
  template <class... Items>
  Status write(const EditFormat& format, Items&&... items) {
    return file_.write(format, std::forward<Items>(items)...);
  }

  // Writes a line whose failure is told at the end. A format that cannot be used leaves the line out.
  template <class... Items>
  void line(const EditFormat& format, Items&&... items) {
    const Status status = file_.write(format, std::forward<Items>(items)...);
    if (failure_ == status::ok && status != status::format_unusable) failure_ = status;
  }
  void empty_line() { line(EditFormat("(A)"), std::string_view()); }

  // The status of the first line() that failed, otherwise that of the closing.
  Status close() {
    const Status closing = file_.close();
    return failure_ != status::ok ? failure_ : closing;
  }

 private:
  TextOutput file_;
  Status failure_;
};

}  // namespace vorn
