#include "records/files.h"

#include <cerrno>

namespace vorn {

int write_whole(Files& files, std::string_view name, std::string_view bytes) {
  if (name.empty() || name.find('\0') != std::string_view::npos) return ENOENT;
  std::unique_ptr<ByteSink> sink;
  if (const int failed = files.make(std::string(name), sink)) return failed;
  if (const int failed = sink->write(bytes)) return failed;
  return sink->commit();
}

}  // namespace vorn
