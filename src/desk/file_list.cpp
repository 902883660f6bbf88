#include "desk/file_list.h"

#include <algorithm>
#include <array>
#include <memory>
#include <span>

#include "records/text.h"

namespace vorn {
namespace {

using Failure = std::optional<std::string>;

constexpr std::string_view list_name = "Vorn.fil";
constexpr std::size_t name_columns = 60;
constexpr int most_kept = 9'999;

Failure read_whole(Files& files, const std::string& name, std::string& bytes) {
  std::unique_ptr<ByteSource> source;
  if (files.open(name, source)) return name + " cannot be opened";
  std::array<char, 4096> piece;
  for (std::size_t count = 1; count > 0;) {
    if (source->read(piece, count)) return name + " cannot be read";
    bytes.append(piece.data(), count);
  }
  source->close();
  return {};
}

// A line of the list: where it begins, and how many bytes it has before its end.
struct Line {
  std::size_t begin = 0, length = 0;
};

std::string_view name_in(std::string_view list, Line line) {
  return trimmed(list.substr(line.begin, line.length).substr(0, name_columns));
}

std::optional<Line> line_of(std::string_view list, std::string_view name) {
  for (std::size_t begin = 0; begin < list.size();) {
    const std::size_t end = std::min(list.find_first_of("\r\n", begin), list.size());
    const Line line = {begin, end - begin};
    if (name_in(list, line) == name) return line;
    begin = end + 1;
  }
  return {};
}

// The line with another name. What stands behind the columns of the name stays where it is.
std::string renamed(std::string_view line, std::string_view name) {
  std::string text(name);
  if (line.size() > name_columns) text.resize(name_columns, ' ');
  return text += line.substr(std::min(line.size(), name_columns));
}

Failure keep(Files& files, std::string_view list) {
  for (int k = 1; k <= most_kept; ++k) {
    const std::string name = std::string(list_name) + "." + std::to_string(k);
    FileKind kind{};
    if (files.look_at(name, kind)) return name + " cannot be looked at";
    if (kind != FileKind::missing) continue;
    if (write_whole(files, name, list)) return name + " cannot be written";
    return {};
  }
  return std::string(list_name) + " was kept too often: there is no free name left";
}

Failure look_for(Files& files, std::string_view name) {
  if (name.empty()) return "no file is named";
  FileKind kind{};
  if (files.look_at(std::string(name), kind)) return std::string(name) + " cannot be looked at";
  if (kind != FileKind::regular) return std::string(name) + " is no file";
  return {};
}

}  // namespace

std::optional<std::string> use_corrected(Files& files, std::string_view old_name, std::string_view new_name) {
  const std::string_view before = trimmed(old_name), after = trimmed(new_name);
  if (after.size() > name_columns)
    return std::string(after) + " is too long: a name in " + std::string(list_name) +
           " has at most 60 characters";
  if (auto failure = look_for(files, after)) return failure;
  std::string list;
  if (auto failure = read_whole(files, std::string(list_name), list)) return failure;
  const std::optional<Line> line = line_of(list, before);
  if (!line) return std::string(list_name) + " has no line " + std::string(before);
  if (line_of(list, after)) return std::string(list_name) + " has " + std::string(after) + " already";
  if (auto failure = keep(files, list)) return failure;
  list.replace(line->begin, line->length, renamed(list.substr(line->begin, line->length), after));
  if (write_whole(files, list_name, list)) return std::string(list_name) + " cannot be written";
  return {};
}

}  // namespace vorn
