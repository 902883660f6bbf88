// The parts of an archive (ZIP) in memory, each within bounds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vorn {

inline constexpr std::size_t most_archive_parts = 5'000;
inline constexpr std::size_t most_part_bytes = 96U << 20U;       // unpacked
inline constexpr std::size_t most_unpacked_bytes = 256U << 20U;  // of all parts that are read
// A part that unpacks to more times its size than this, and to more than 1 MB, is taken for no honest one.
inline constexpr std::size_t most_times_packed = 400;

class ArchiveParts {
 public:
  // `bytes` must outlive it.
  explicit ArchiveParts(std::string_view bytes);
  ~ArchiveParts();
  ArchiveParts(const ArchiveParts&) = delete;
  ArchiveParts& operator=(const ArchiveParts&) = delete;

  // Why the archive is none that is read; empty where it is one.
  const std::string& failure() const { return failure_; }
  bool has(const std::string& name) const;
  // The part of that name, in letters of any size; nothing where there is none, or it cannot be read within
  // the bounds: then failure() says why.
  std::optional<std::string> read(const std::string& name);

 private:
  struct Archive;
  // Negative where there is none.
  std::int64_t place_of(std::string name) const;
  bool is_within_bounds(const std::string& name, unsigned long long unpacked, unsigned long long packed);

  std::unique_ptr<Archive> archive_;
  std::string failure_;
  std::size_t unpacked_ = 0;
};

}  // namespace vorn
