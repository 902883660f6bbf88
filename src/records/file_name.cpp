#include "records/file_name.h"

#include "records/files.h"
#include "records/text.h"
#include "records/text_file.h"

namespace vorn {

std::optional<std::string> path_of(std::string_view name) {
  const auto path = trimmed(name);
  if (path.empty() || path.find('\0') != std::string_view::npos) return std::nullopt;
  return std::string(path);
}

bool file_exists(Files& files, std::string_view name) {
  const auto path = path_of(name);
  auto kind = FileKind::missing;
  return path && (files.look_at(*path, kind) != status::ok || kind != FileKind::missing);
}

}  // namespace vorn
