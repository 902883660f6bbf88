#include "sessions/careful_neighbour.h"

namespace vorn {
namespace {

std::string words_on(const std::string& written, const Careful& careful) {
  if (!careful.any()) return written + " was written in the usual way.\n";
  std::string text = written + " was written carefully. What differs from the usual way:\n";
  for (const MendRow& row : mends()) {
    if (careful.has(row.mend)) text += std::string(row.name) + ": " + std::string(row.does) + '\n';
  }
  return text;
}

}  // namespace

Status write_careful_neighbour(Files& files, const std::string& written, const Careful& careful) {
  const std::string name = written + ".careful";
  FileKind kind = FileKind::missing;
  const bool is_there = files.look_at(name, kind) == status::ok && kind == FileKind::regular;
  if (!careful.any() && !is_there) return status::ok;
  return write_whole(files, name, words_on(written, careful));
}

}  // namespace vorn
