#include "sessions/help_files.h"

namespace vorn {

bool HelpFiles::is_elsewhere(const std::string& name) const {
  if (name != "Help.prn" || installed_.empty()) return false;
  auto kind = FileKind::missing;
  return files_.look_at(name, kind) == status::ok && kind == FileKind::missing;
}

Status HelpFiles::look_at(const std::string& name, FileKind& kind) {
  return files_.look_at(is_elsewhere(name) ? installed_ : name, kind);
}

Status HelpFiles::open(const std::string& name, std::unique_ptr<ByteSource>& source) {
  return files_.open(is_elsewhere(name) ? installed_ : name, source);
}

Status HelpFiles::make(const std::string& name, std::unique_ptr<ByteSink>& sink) {
  return files_.make(name, sink);
}

Status HelpFiles::extend(const std::string& name, std::unique_ptr<ByteSource>& older,
                         std::unique_ptr<ByteSink>& sink) {
  return files_.extend(name, older, sink);
}

}  // namespace vorn
