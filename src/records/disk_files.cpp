#include "records/disk_files.h"

#include <cerrno>
#include <filesystem>
#include <optional>
#include <utility>

#include "records/os_file.h"

namespace vorn {
namespace {

class DiskSource : public ByteSource {
 public:
  explicit DiskSource(os::File file) : file_(std::move(file)) {}
  int read(std::span<char> buffer, std::size_t& count) override { return file_.read(buffer, count); }
  int close() override { return file_.close(); }

 private:
  os::File file_;
};

// What is no regular file is written as it comes.
class DeviceSink : public ByteSink {
 public:
  explicit DeviceSink(os::File file) : file_(std::move(file)) {}
  int write(std::string_view bytes) override { return file_.write(bytes); }
  int commit() override { return file_.close(); }

 private:
  os::File file_;
};

// Behind the name of a file, that of the neighbour in which it is made. Nobody would give a file such a name,
// so that one that stands there was left behind when a program was killed, and is removed. Where it cannot
// be, another number is taken.
constexpr const char* neighbour_ending = ".vorn-part";
constexpr int most_neighbours = 9;

// A file that is being made. One that goes before it is committed takes its neighbour with it.
class NeighbourSink : public ByteSink {
 public:
  explicit NeighbourSink(std::string target) : target_(std::move(target)) {}
  ~NeighbourSink() override;
  NeighbourSink(const NeighbourSink&) = delete;
  NeighbourSink& operator=(const NeighbourSink&) = delete;

  int begin();
  // Opens the older file to be copied, and remembers how it was.
  int begin_with(os::File& older);

  int write(std::string_view bytes) override { return file_.write(bytes); }
  int commit() override;

 private:
  int check_copied() const;

  std::string target_;
  os::File file_;
  std::string neighbour_;            // nothing before it is made, and after it took its place
  std::optional<os::Stamp> copied_;  // the target that is added to, as it was when it was copied
};

NeighbourSink::~NeighbourSink() {
  const bool taken_over = file_.is_open() && !file_.stands_at(neighbour_);
  file_.close();
  if (!neighbour_.empty() && !taken_over) os::remove(neighbour_);
}

int NeighbourSink::begin() {
  int failed = EEXIST;
  for (int number = 1; number <= most_neighbours && failed == EEXIST; ++number) {
    const auto part = target_ + neighbour_ending + (number == 1 ? "" : std::to_string(number));
    os::remove(part);  // there mostly is none; where one cannot be removed, the next line fails
    failed = file_.make(part);
    if (!failed) neighbour_ = part;
  }
  return failed;
}

int NeighbourSink::begin_with(os::File& older) {
  if (const int failed = begin()) return failed;
  if (const int failed = older.open_to_read(target_)) return failed;
  return older.stamp(copied_.emplace());
}

int NeighbourSink::commit() {
  auto about = FileKind::missing;
  if (const int failed = os::kind_of(target_, about)) return failed;
  if (about == FileKind::regular)
    if (const int failed = os::copy_permissions(target_, neighbour_)) return failed;
  if (const int failed = file_.sync()) return failed;
  if (!file_.stands_at(neighbour_)) return EBUSY;  // another program has begun to write the same file
  if (const int failed = file_.close()) return failed;
  if (const int failed = check_copied()) return failed;
  if (const int failed = os::rename(neighbour_, target_)) return failed;
  neighbour_.clear();
  return 0;
}

// Deliberate: [changed-meanwhile] what somebody else has done to a file since it was copied must not be lost.
int NeighbourSink::check_copied() const {
  if (!copied_) return 0;
  os::Stamp now;
  if (const int failed = os::stamp_of(target_, now)) return failed;
  return now == *copied_ ? 0 : EBUSY;
}

// What is to be written: follows the links of `path`, and finds out what stands there. A failure for what may
// not be written.
int find_target(std::string& path, FileKind& about) {
  if (const int failed = os::follow_links(path)) return failed;
  if (const int failed = os::kind_of(path, about)) return failed;
  if (about == FileKind::folder) return EISDIR;
  return about == FileKind::regular ? os::may_write(path) : 0;
}

int open_device(const std::string& path, std::unique_ptr<ByteSink>& sink) {
  os::File device;
  if (const int failed = device.open_device(path)) return failed;
  sink = std::make_unique<DeviceSink>(std::move(device));
  return 0;
}

}  // namespace

std::string DiskFiles::path_to(const std::string& name) const {
  return folder_.empty() ? name : (std::filesystem::path(folder_) / name).string();
}

int DiskFiles::look_at(const std::string& name, FileKind& kind) {
  return os::kind_of(path_to(name), kind);
}

int DiskFiles::open(const std::string& name, std::unique_ptr<ByteSource>& source) {
  os::File file;
  if (const int failed = file.open_to_read(path_to(name))) return failed;
  source = std::make_unique<DiskSource>(std::move(file));
  return 0;
}

int DiskFiles::make(const std::string& name, std::unique_ptr<ByteSink>& sink) {
  std::string path = path_to(name);
  auto about = FileKind::missing;
  if (const int failed = find_target(path, about)) return failed;
  if (about == FileKind::other) return open_device(path, sink);
  auto made = std::make_unique<NeighbourSink>(path);
  if (const int failed = made->begin()) return failed;
  sink = std::move(made);
  return 0;
}

int DiskFiles::extend(const std::string& name, std::unique_ptr<ByteSource>& older,
                      std::unique_ptr<ByteSink>& sink) {
  std::string path = path_to(name);
  auto about = FileKind::missing;
  if (const int failed = find_target(path, about)) return failed;
  if (about == FileKind::missing) return ENOENT;
  if (about == FileKind::other) return open_device(path, sink);
  auto made = std::make_unique<NeighbourSink>(path);
  os::File file;
  if (const int failed = made->begin_with(file)) return failed;
  older = std::make_unique<DiskSource>(std::move(file));
  sink = std::move(made);
  return 0;
}

}  // namespace vorn
