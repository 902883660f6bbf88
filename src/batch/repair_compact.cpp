// Compact files: empty lines between the series end the file, and lines before the first header hide it.
#include <algorithm>

#include "batch/difference.h"
#include "batch/faithful_save_fields.h"
#include "batch/reading_check.h"
#include "batch/repair_parts.h"
#include "formats/compact.h"
#include "formats/compact_layout.h"
#include "records/memory_files.h"
#include "records/number_text.h"
#include "study/tucson_lines.h"

namespace vorn {
namespace {

const std::string in_memory = "the copy";

class CompactRepair {
 public:
  explicit CompactRepair(std::string_view bytes) : lines_(lines_of(bytes)) {}

  Repair run();

 private:
  bool is_header(std::size_t k) const { return is_compact(FirstLine(lines_[k].text)); }
  void keep(std::size_t k) { made_.bytes += std::string(lines_[k].text) + "\n"; }
  void drop(std::size_t k) { leave_out(lines_[k], static_cast<std::int64_t>(k) + 1, no_data, made_); }
  bool leave_out_start();
  std::size_t lines_of_values() const;
  bool take_series();
  bool is_read_back() const;
  bool refuse(std::size_t k, const std::string& words) {
    made_.refused.push_back(at_line(static_cast<std::int64_t>(k) + 1) + words);
    return false;
  }

  std::vector<FileLine> lines_;
  std::size_t at_ = 0;  // the line at hand
  int series_ = 0;
  Repair made_;
};

// Answers whether there is a header at all.
bool CompactRepair::leave_out_start() {
  std::size_t first = 0;
  for (FileLine& line : lines_) line.text.remove_prefix(length_of_foreign_start(line.text));
  while (first < lines_.size() && !is_header(first)) ++first;
  while (first < lines_.size() && at_ < first) drop(at_++);
  return first < lines_.size();
}

// That the header at hand asks for; 0 where it does not say.
std::size_t CompactRepair::lines_of_values() const {
  const auto field = [&](const LayoutField& columns) {
    return lines_[at_].text.substr(static_cast<std::size_t>(columns.first) - 1,
                                   static_cast<std::size_t>(columns.width()));
  };
  std::int32_t count = 0;
  const auto format = value_format(field(compact::header_fields.back()));
  if (!format || read_integer(field(compact::header_fields.front()), count) != status::ok || count < 1)
    return 0;
  return format->columns.lines_for(static_cast<std::size_t>(count));
}

// Answers whether there may be another one.
bool CompactRepair::take_series() {
  const std::size_t header = at_, wanted = lines_of_values();
  if (wanted == 0) return refuse(header, ": how many values, in which format?");
  keep(at_++);
  ++series_;
  for (std::size_t taken = 0; taken < wanted; ++at_) {
    if (at_ == lines_.size() || is_header(at_))
      return refuse(header, " says that there are more values than stand behind it");
    if (is_blank(lines_[at_])) {
      drop(at_);
    } else {
      keep(at_);
      ++taken;
    }
  }
  while (at_ < lines_.size() && is_blank(lines_[at_])) drop(at_++);
  if (at_ == lines_.size()) return false;
  return is_header(at_) || refuse(at_, " is no header of a series, and behind the values of one");
}

bool CompactRepair::is_read_back() const {
  MemoryFiles files;
  files.put(in_memory, made_.bytes);
  const Collection copy(files, in_memory, untreated());
  return is_read_whole(copy) && copy.state().nc == series_;
}

Repair CompactRepair::run() {
  if (!leave_out_start()) return {};
  while (take_series()) {
  }
  if (made_.refused.empty() && !is_read_back())
    made_.refused = {"a copy would not be read back as the file stands"};
  if (!made_.refused.empty()) made_.bytes.clear();
  return std::move(made_);
}

}  // namespace

Repair repaired_compact(std::string_view bytes) {
  return CompactRepair(bytes).run();
}

}  // namespace vorn
