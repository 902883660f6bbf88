#include "records/files.h"

namespace vorn {

Status write_whole(Files& files, std::string_view name, std::string_view bytes) {
  if (name.empty() || name.find('\0') != std::string_view::npos) return status::no_such_file;
  std::unique_ptr<ByteSink> sink;
  if (const Status failed = files.make(std::string(name), sink)) return failed;
  if (const Status failed = sink->write(bytes)) return failed;
  return sink->commit();
}

}  // namespace vorn
