#include "records/plain_file.h"

#include <vector>

#include "records/os_file.h"

namespace vorn {

std::optional<std::string> read_plain(const std::string& path, std::size_t most) {
  os::File file;
  if (file.open_to_read(path, os::Links::refused)) return {};
  std::string bytes;
  std::vector<char> buffer(std::size_t{1} << 16);
  std::size_t count = 1;
  while (count > 0) {
    if (file.read(buffer, count) || bytes.size() + count > most) return {};
    bytes.append(buffer.data(), count);
  }
  return bytes;
}

}  // namespace vorn
