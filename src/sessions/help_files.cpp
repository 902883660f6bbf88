#include "sessions/help_files.h"

namespace vorn {

bool HelpFiles::is_elsewhere(const std::string& name) const {
  if (name != "Help.prn" || installed_.empty()) return false;
  auto kind = FileKind::missing;
  return files_.look_at(name, kind) == 0 && kind == FileKind::missing;
}

int HelpFiles::look_at(const std::string& name, FileKind& kind) {
  return files_.look_at(is_elsewhere(name) ? installed_ : name, kind);
}

int HelpFiles::open(const std::string& name, std::unique_ptr<ByteSource>& source) {
  return files_.open(is_elsewhere(name) ? installed_ : name, source);
}

int HelpFiles::make(const std::string& name, std::unique_ptr<ByteSink>& sink) {
  return files_.make(name, sink);
}

int HelpFiles::extend(const std::string& name, std::unique_ptr<ByteSource>& older,
                      std::unique_ptr<ByteSink>& sink) {
  return files_.extend(name, older, sink);
}

}  // namespace vorn
