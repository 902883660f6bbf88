#include "records/line_copy.h"

#include <vector>

namespace vorn {
namespace {

constexpr std::size_t block_size = std::size_t{1} << 16;
constexpr std::string_view line_ends = "\r\n";
constexpr char ctrl_z = '\x1a';

// `text` without the one line end that it may have.
std::string_view without_end(std::string_view text) {
  if (text.ends_with("\n")) {
    text.remove_suffix(1);
    while (text.ends_with('\r')) text.remove_suffix(1);
  } else if (text.ends_with('\r')) {
    text.remove_suffix(1);
  }
  return text;
}

// What to keep of the end of a file, `tail`, in which every character is a Ctrl-Z, CR or LF. The line that it
// begins in holds other text before it when `inside_line`.
std::string_view without_ctrl_z(std::string_view tail, bool inside_line) {
  const auto line = without_end(tail);
  const auto before = line.substr(0, line.find_last_not_of(ctrl_z) + 1);
  const bool has_ctrl_z = before.size() < line.size();
  const bool line_of_its_own = before.empty() ? !inside_line : true;
  const bool at_the_very_end = line.size() == tail.size();
  return has_ctrl_z && (line_of_its_own || at_the_very_end) ? before : tail;
}

// Copies what it is given, but holds back the end of it, as that may be the end of the file.
class LineCopy {
 public:
  explicit LineCopy(ByteSink& to) : to_(to) {}

  Status add(std::string_view block) {
    const auto text_end = block.find_last_not_of("\r\n\x1a") + 1;  // 0 when there is no other character
    if (text_end > 0) {
      if (const Status failed = release(held_)) return failed;
      held_.clear();
      if (const Status failed = release(block.substr(0, text_end))) return failed;
    }
    held_ += block.substr(text_end);
    if (held_.size() <= most_held) return status::ok;
    const Status failed = release(held_);
    held_.clear();
    return failed;
  }

  Status finish() {
    const bool inside_line = line_ends.find(last_) == std::string_view::npos;
    if (const Status failed = release(without_ctrl_z(held_, inside_line))) return failed;
    return line_ends.find(last_) == std::string_view::npos ? to_.write("\n") : status::ok;
  }

 private:
  // No end of a text is longer.
  static constexpr std::size_t most_held = std::size_t{1} << 20;

  Status release(std::string_view text) {
    if (!text.empty()) last_ = text.back();
    return to_.write(text);
  }

  ByteSink& to_;
  std::string held_;
  char last_ = '\n';  // written; an empty file has no line that could want an end
};

}  // namespace

Status copy_lines(ByteSource& from, ByteSink& to) {
  LineCopy copy(to);
  std::vector<char> block(block_size);
  for (;;) {
    std::size_t count = 0;
    if (const Status failed = from.read(block, count)) return failed;
    if (count == 0) return copy.finish();
    if (const Status failed = copy.add({block.data(), count})) return failed;
  }
}

}  // namespace vorn
