// The folder that the program under test works in: one for each process, in TMPDIR or, when that is not set,
// in memory; gone when the process ends.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "small_store.h"

namespace vorn::fuzz {

class FuzzFolder {
 public:
  // Makes the folder, enters it and writes `store` there.
  explicit FuzzFolder(const SmallStore& store = {});
  ~FuzzFolder();
  FuzzFolder(const FuzzFolder&) = delete;
  FuzzFolder& operator=(const FuzzFolder&) = delete;

  // Empties the folder, but for an empty folder "d".
  void clear() const;
  void write(const char* name, std::string_view bytes) const;
  void write_store(const SmallStore& store) const;

 private:
  std::filesystem::path folder_;
};

// `names` with every path that leads out of the folder broken: of the slashes only those of "d/" are left.
std::string kept_inside(std::string_view names);

}  // namespace vorn::fuzz
