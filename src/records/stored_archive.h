// An archive (ZIP) whose parts are stored as they are: the same bytes on every machine and at any time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vorn {

// The sum by which archives check a part (CRC-32 of ISO 3309).
std::uint32_t archive_sum(std::string_view bytes);

class StoredArchive {
 public:
  // A further part. Names are in UTF-8 and parted by "/"; all parts together have less than 4 GB, and there
  // are at most 65,535.
  void add(std::string_view name, std::string_view bytes);
  // The whole archive. Once, and last.
  std::string finished();

 private:
  std::string parts_, list_;
  std::size_t count_ = 0;
};

}  // namespace vorn
