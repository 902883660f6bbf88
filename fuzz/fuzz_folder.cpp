#include "fuzz_folder.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <system_error>

#include "target.h"

namespace vorn::fuzz {
namespace {

namespace fs = std::filesystem;

fs::path place() {
  const fs::path in_memory = "/dev/shm";
  if (std::getenv("TMPDIR") != nullptr) return fs::temp_directory_path();
  return ::access(in_memory.c_str(), W_OK) == 0 ? in_memory : fs::temp_directory_path();
}

}  // namespace

FuzzFolder::FuzzFolder(const SmallStore& store) {
  std::string pattern = (place() / "vorn-fuzz-XXXXXX").string();
  must_hold(mkdtemp(pattern.data()) != nullptr, "a scratch folder can be made");
  folder_ = pattern;
  fs::current_path(folder_);
  clear();
  write_store(store);
}

FuzzFolder::~FuzzFolder() {
  std::error_code ignored;
  fs::current_path("/", ignored);
  fs::remove_all(folder_, ignored);
}

void FuzzFolder::clear() const {
  for (const auto& entry : fs::directory_iterator(folder_)) fs::remove_all(entry.path());
  fs::create_directory("d");
}

// By the system's own calls: this is done several times in each run.
void FuzzFolder::write(const char* name, std::string_view bytes) const {
  const int file = ::open(name, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  must_hold(file >= 0, "a scratch file can be opened");
  while (!bytes.empty()) {
    const auto written = ::write(file, bytes.data(), bytes.size());
    must_hold(written > 0, "a scratch file can be written");
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  ::close(file);
}

void FuzzFolder::write_store(const SmallStore& store) const {
  for (const StoreFile& file : store.files) write(file.name, file.bytes);
}

std::string kept_inside(std::string_view names) {
  std::string kept(names);
  for (std::size_t k = 0; k < kept.size(); ++k) {
    if (kept[k] == '/' && (k == 0 || kept[k - 1] != 'd')) kept[k] = '|';
  }
  return kept;
}

}  // namespace vorn::fuzz
