#include "panels/kept_marks.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <optional>
#include <string_view>
#include <system_error>

#include "records/disk_files.h"
#include "records/os_file.h"
#include "records/plain_file.h"

namespace vorn {
namespace {

constexpr std::string_view folder_name = ".vorn", file_name = ".vorn/marks";
constexpr std::size_t most_bytes = std::size_t{1} << 22;
constexpr std::string_view done_word = "done ", skipped_word = "skipped ";

// On one line, between tabs.
std::string escaped(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (static_cast<unsigned char>(c) >= ' ' && c != '\\') {
      result += c;
      continue;
    }
    std::array<char, 5> code{};
    std::snprintf(code.data(), code.size(), "\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
    result += code.data();
  }
  return result;
}

std::string unescaped(std::string_view text) {
  std::string result;
  for (std::size_t k = 0; k < text.size(); ++k) {
    unsigned code = 0;
    const bool is_code =
        text.substr(k).starts_with("\\x") && k + 4 <= text.size() &&
        std::from_chars(text.data() + k + 2, text.data() + k + 4, code, 16).ptr == text.data() + k + 4;
    result += is_code ? static_cast<char>(code) : text[k];
    if (is_code) k += 3;
  }
  return result;
}

struct Line {
  std::string file, core;  // escaped
  CoreMark mark;
};

std::optional<Line> read_line(std::string_view line) {
  const bool done = line.starts_with(done_word);
  if (!done && !line.starts_with(skipped_word)) return {};
  line.remove_prefix(done ? done_word.size() : skipped_word.size());
  const auto tab = line.find('\t');
  if (tab == std::string_view::npos) return {};
  return Line{std::string(line.substr(0, tab)), std::string(line.substr(tab + 1)),
              done ? CoreMark::done : CoreMark::skipped};
}

std::string words_of(const std::string& name, int number) {
  return name + ": " + std::generic_category().message(number);
}

}  // namespace

std::string KeptMarks::place(std::string_view name) const {
  return folder_.empty() ? std::string(name) : folder_ + '/' + std::string(name);
}

KeptMarks::Marks KeptMarks::read() const {
  Marks marks;
  const std::string text = read_plain(place(file_name), most_bytes).value_or(std::string());
  for (std::size_t from = 0; from < text.size();) {
    const std::size_t end = std::min(text.find('\n', from), text.size());
    if (const auto line = read_line(std::string_view(text).substr(from, end - from)))
      marks[{line->file, line->core}] = line->mark;
    from = end + 1;
  }
  return marks;
}

std::map<std::string, CoreMark> KeptMarks::marks_of(const std::string& file) {
  std::map<std::string, CoreMark> marks;
  for (const auto& [key, mark] : read()) {
    if (key.first == escaped(file)) marks[unescaped(key.second)] = mark;
  }
  return marks;
}

std::string KeptMarks::keep(const std::string& file, const std::string& core, CoreMark mark) {
  Marks marks = read();
  const auto key = std::pair(escaped(file), escaped(core));
  if (mark == CoreMark::to_do) {
    marks.erase(key);
  } else {
    marks[key] = mark;
  }
  if (const int failed = os::make_folder(place(folder_name)))
    return words_of(std::string(folder_name), failed);
  std::string path = place(file_name);
  if (os::follow_links(path) != 0 || path != place(file_name)) return std::string(file_name) + " is a link";
  std::string text;
  for (const auto& [at, is] : marks)
    text += std::string(is == CoreMark::done ? done_word : skipped_word) + at.first + '\t' + at.second + '\n';
  DiskFiles files;
  const Status failed = write_whole(files, path, text);
  return failed ? words_of(std::string(file_name), failed.number()) : std::string();
}

}  // namespace vorn
