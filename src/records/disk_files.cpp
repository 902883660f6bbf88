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
  Status read(std::span<char> buffer, std::size_t& count) override {
    return Status(file_.read(buffer, count));
  }
  std::uint64_t expected_size() const override {
    os::Stamp now;
    return file_.stamp(now) == 0 ? now.size : 0;
  }
  Status close() override { return Status(file_.close()); }

 private:
  os::File file_;
};

// What is no regular file is written as it comes.
class DeviceSink : public ByteSink {
 public:
  explicit DeviceSink(os::File file) : file_(std::move(file)) {}
  Status write(std::string_view bytes) override { return Status(file_.write(bytes)); }
  Status commit() override { return Status(file_.close()); }

 private:
  os::File file_;
};

// What is made for NAME lies beside it as NAME.0123456789abcdef.vorn-part: a name that nobody can put
// something in the way of. While it is made it is locked; one that is not was left behind by a program that
// was killed, and goes when the file is written again.
constexpr std::string_view neighbour_ending = ".vorn-part";
constexpr int most_neighbours = 9;

void remove_left_over(const std::string& target) {
  const std::filesystem::path path(target);
  const std::string beginning = path.filename().string() + ".";
  const std::string folder = path.parent_path().string();
  const std::size_t length = beginning.size() + os::unguessable().size() + neighbour_ending.size();
  for (const std::string& left : os::files_named(folder, beginning, neighbour_ending)) {
    if (std::filesystem::path(left).filename().string().size() == length) os::File::remove_unlocked(left);
  }
}

// A file that is being made. One that goes before it is committed takes its neighbour with it.
class NeighbourSink : public ByteSink {
 public:
  explicit NeighbourSink(std::string target) : target_(std::move(target)) {}
  ~NeighbourSink() override {
    if (!neighbour_.empty()) file_.discard(neighbour_);
  }
  NeighbourSink(const NeighbourSink&) = delete;
  NeighbourSink& operator=(const NeighbourSink&) = delete;

  // In the place of an older file, it is nobody else's to read before it has the permissions of that one.
  int begin(bool over_older);
  // Opens the older file to be copied, and remembers how it was.
  int begin_with(os::File& older);

  Status write(std::string_view bytes) override { return Status(file_.write(bytes)); }
  Status commit() override { return Status(take_place()); }

 private:
  int take_place();
  int make_neighbour(const std::string& path, bool over_older);
  int check_copied() const;

  std::string target_;
  os::File file_;
  std::string neighbour_;            // nothing before it is made, and after it took its place
  std::optional<os::Stamp> copied_;  // the target that is added to, as it was when it was copied
};

int NeighbourSink::begin(bool over_older) {
  remove_left_over(target_);
  int failed = 0;
  for (int tries = 0; tries < most_neighbours; ++tries) {
    failed = make_neighbour(target_ + "." + os::unguessable() + std::string(neighbour_ending), over_older);
    if (failed != EEXIST && failed != EBUSY) break;
  }
  return failed;
}

// Gives 16 (EBUSY) where another program took it for a left-over one before it was locked.
int NeighbourSink::make_neighbour(const std::string& path, bool over_older) {
  bool locked = false;
  if (const int failed = file_.make(path, over_older)) return failed;
  int failed = file_.lock(locked);
  if (!failed) failed = file_.check_place(path);
  if (failed)
    file_.discard(path);
  else
    neighbour_ = path;
  return failed;
}

int NeighbourSink::begin_with(os::File& older) {
  if (const int failed = begin(true)) return failed;
  if (const int failed = older.open_to_read(target_)) return failed;
  return older.stamp(copied_.emplace());
}

int NeighbourSink::take_place() {
  if (const int failed = file_.sync()) return failed;
  os::File older;  // until its name is this file's, others wait
  if (const int failed = older.hold(target_)) return failed;
  if (older.is_open())
    if (const int failed = file_.take_permissions(older)) return failed;
  if (const int failed = check_copied()) return failed;
  if (const int failed = file_.check_place(neighbour_)) return failed;
  const os::File lock = file_.twin();
  if (const int failed = file_.close()) return failed;
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

Status DiskFiles::look_at(const std::string& name, FileKind& kind) {
  return Status(os::kind_of(path_to(name), kind));
}

Status DiskFiles::open(const std::string& name, std::unique_ptr<ByteSource>& source) {
  os::File file;
  if (const int failed = file.open_to_read(path_to(name))) return Status(failed);
  source = std::make_unique<DiskSource>(std::move(file));
  return status::ok;
}

Status DiskFiles::make(const std::string& name, std::unique_ptr<ByteSink>& sink) {
  std::string path = path_to(name);
  auto about = FileKind::missing;
  if (const int failed = find_target(path, about)) return Status(failed);
  if (about == FileKind::other) return Status(open_device(path, sink));
  auto made = std::make_unique<NeighbourSink>(path);
  if (const int failed = made->begin(about == FileKind::regular)) return Status(failed);
  sink = std::move(made);
  return status::ok;
}

Status DiskFiles::extend(const std::string& name, std::unique_ptr<ByteSource>& older,
                         std::unique_ptr<ByteSink>& sink) {
  std::string path = path_to(name);
  auto about = FileKind::missing;
  if (const int failed = find_target(path, about)) return Status(failed);
  if (about == FileKind::missing) return status::no_such_file;
  if (about == FileKind::other) return Status(open_device(path, sink));
  auto made = std::make_unique<NeighbourSink>(path);
  os::File file;
  if (const int failed = made->begin_with(file)) return Status(failed);
  older = std::make_unique<DiskSource>(std::move(file));
  sink = std::move(made);
  return status::ok;
}

}  // namespace vorn
