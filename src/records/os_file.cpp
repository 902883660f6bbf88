#include "records/os_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <system_error>

#ifdef _WIN32
#include <io.h>
#else
#include <poll.h>
#endif

namespace vorn::os {
namespace {

#ifdef _WIN32
constexpr int bytes_as_they_are = O_BINARY;
constexpr int without_waiting = 0;
using ByteCount = unsigned;
#else
constexpr int bytes_as_they_are = 0;
constexpr int without_waiting = O_NONBLOCK | O_NOCTTY;
using ByteCount = std::size_t;
#endif

// As many of `size` bytes as one call takes on every system.
ByteCount for_one_call(std::size_t size) {
  constexpr std::size_t most = 1 << 30;
  return static_cast<ByteCount>(std::min(size, most));
}

int answer(int result) {
  return result < 0 ? errno : 0;
}

// The same, 0 too where the file system has no such thing.
int answer_where_known(int result) {
  const int failed = answer(result);
  return failed == EINVAL || failed == ENOTSUP || failed == ENOSYS || failed == EPERM ? 0 : failed;
}

int answer(const std::error_code& error) {
  return error.default_error_condition().value();
}

// So often a call that did nothing is made again: no signals may keep the program for ever.
constexpr int most_attempts = 1000;

// What `call` answers when no signal interrupts it.
template <class Call>
auto uninterrupted(Call call) {
  auto result = call();
  for (int attempt = 1; result < 0 && errno == EINTR && attempt < most_attempts; ++attempt) result = call();
  return result;
}

int open_file(const std::string& path, int flags, int& handle) {
  constexpr int readable_and_writable = 0666;  // less what the user's mask takes away
  handle =
      uninterrupted([&] { return ::open(path.c_str(), flags | bytes_as_they_are, readable_and_writable); });
  return answer(handle);
}

// Lets reads of a file that was opened without waiting wait as usual.
void wait_from_now_on([[maybe_unused]] int handle) {
#ifndef _WIN32
  const int flags = ::fcntl(handle, F_GETFL);
  if (flags >= 0) ::fcntl(handle, F_SETFL, flags & ~O_NONBLOCK);
#endif
}

// Waits until a pipe can take more.
int wait_for_room([[maybe_unused]] int handle) {
#ifdef _WIN32
  return EAGAIN;
#else
  constexpr int longest_wait = 3000;  // ms
  pollfd pipe{handle, POLLOUT, 0};
  const int ready = ::poll(&pipe, 1, longest_wait);
  return ready == 0 ? ETIMEDOUT : 0;  // what else there is the next write tells
#endif
}

FileKind kind_from(const struct stat& about) {
  if (S_ISDIR(about.st_mode)) return FileKind::folder;
  return S_ISREG(about.st_mode) ? FileKind::regular : FileKind::other;
}

// Deliberate: [no-pipes] pipes and devices are not, since nobody knows where they end.
// Why a file of this kind is not read; 0 when it is.
int reason_not_to_read(FileKind kind) {
  if (kind == FileKind::folder) return EISDIR;
  return kind == FileKind::other ? ENODEV : 0;
}

Stamp stamp_from(const struct stat& about) {
  Stamp stamp{static_cast<std::uint64_t>(about.st_dev), static_cast<std::uint64_t>(about.st_ino),
              static_cast<std::uint64_t>(about.st_size), 0, 0};
#ifdef _WIN32
  stamp.device = stamp.number = 0;  // Windows tells others of an open file than of the same file by its name
  stamp.seconds = about.st_mtime;
#elif defined(__APPLE__)
  stamp.seconds = about.st_mtimespec.tv_sec;
  stamp.nanoseconds = about.st_mtimespec.tv_nsec;
#else
  stamp.seconds = about.st_mtim.tv_sec;
  stamp.nanoseconds = about.st_mtim.tv_nsec;
#endif
  return stamp;
}

}  // namespace

int kind_of(const std::string& path, FileKind& kind) {
  struct stat about {};
  kind = FileKind::missing;
  const int failed = answer(::stat(path.c_str(), &about));
  if (!failed) kind = kind_from(about);
  return failed == ENOENT || failed == ENOTDIR ? 0 : failed;
}

void let_writes_fail() {
#ifdef SIGPIPE
  std::signal(SIGPIPE, SIG_IGN);
#endif
#ifdef SIGXFSZ
  std::signal(SIGXFSZ, SIG_IGN);
#endif
}

int stamp_of(const std::string& path, Stamp& stamp) {
  struct stat about {};
  const int failed = answer(::stat(path.c_str(), &about));
  if (!failed) stamp = stamp_from(about);
  return failed;
}

File& File::operator=(File&& other) noexcept {
  if (this != &other) {
    close();
    handle_ = other.handle_;
    other.handle_ = none;
  }
  return *this;
}

int File::open_to_read(const std::string& path) {
  close();
  // Looked at before the opening, which of some devices is an action, and after it, as another may have come.
  auto kind = FileKind::missing;
  if (const int failed = kind_of(path, kind)) return failed;
  if (const int reason = reason_not_to_read(kind)) return reason;
  if (const int failed = open_file(path, O_RDONLY | without_waiting, handle_)) return failed;
  struct stat about {};
  int failed = answer(::fstat(handle_, &about));
  if (!failed) failed = reason_not_to_read(kind_from(about));
  if (failed)
    close();
  else
    wait_from_now_on(handle_);
  return failed;
}

int File::make(const std::string& path) {
  close();
  let_writes_fail();
  return open_file(path, O_WRONLY | O_CREAT | O_EXCL, handle_);
}

int File::open_device(const std::string& path) {
  close();
  let_writes_fail();
  return open_file(path, O_WRONLY | O_APPEND | without_waiting, handle_);
}

int File::read(std::span<char> buffer, std::size_t& count) {
  const auto result =
      uninterrupted([&] { return ::read(handle_, buffer.data(), for_one_call(buffer.size())); });
  count = result < 0 ? 0 : static_cast<std::size_t>(result);
  return result < 0 ? errno : 0;
}

int File::write(std::string_view bytes) {
  for (int attempt = 1; !bytes.empty() && attempt < most_attempts; ++attempt) {
    const auto result =
        uninterrupted([&] { return ::write(handle_, bytes.data(), for_one_call(bytes.size())); });
    if (result < 0 && errno != EAGAIN) return errno;
    if (result < 0)
      if (const int failed = wait_for_room(handle_)) return failed;
    if (result > 0) {
      bytes.remove_prefix(static_cast<std::size_t>(result));
      attempt = 0;
    }
  }
  return bytes.empty() ? 0 : ENOSPC;  // what takes nothing more is full
}

int File::sync() {
#ifdef _WIN32
  return answer(::_commit(handle_));
#else
  return answer_where_known(uninterrupted([&] { return ::fsync(handle_); }));
#endif
}

bool File::stands_at([[maybe_unused]] const std::string& path) const {
#ifdef _WIN32
  return true;  // nobody can take the place of an open file there
#else
  struct stat mine {};
  struct stat there {};
  return ::fstat(handle_, &mine) == 0 && ::stat(path.c_str(), &there) == 0 && mine.st_dev == there.st_dev &&
         mine.st_ino == there.st_ino;
#endif
}

int File::stamp(Stamp& stamp) const {
  struct stat about {};
  const int failed = answer(::fstat(handle_, &about));
  if (!failed) stamp = stamp_from(about);
  return failed;
}

int File::close() {
  if (!is_open()) return 0;
  const int failed = answer(::close(handle_));
  handle_ = none;
  return failed == EINTR ? 0 : failed;  // interrupted, it is closed all the same
}

int follow_links(std::string& path) {
  constexpr int most_links = 40;
  namespace fs = std::filesystem;
  fs::path here(path);
  for (int links = 0; links <= most_links; ++links) {
    std::error_code error;
    const auto type = fs::symlink_status(here, error).type();
    if (type == fs::file_type::none) return answer(error);
    if (type != fs::file_type::symlink) {
      path = here.string();
      return 0;
    }
    const fs::path target = fs::read_symlink(here, error);
    if (error) return answer(error);
    here = here.parent_path() / target;  // an absolute target stands for itself
  }
  return ELOOP;
}

int may_write(const std::string& path) {
  return answer(::access(path.c_str(), W_OK));
}

int copy_permissions(const std::string& from, const std::string& to) {
  struct stat about {};
  if (::stat(from.c_str(), &about) != 0) return errno;
#ifndef _WIN32
  if (const int failed = answer_where_known(::chown(to.c_str(), about.st_uid, about.st_gid))) return failed;
#endif
  return answer_where_known(::chmod(to.c_str(), about.st_mode & 07777));
}

int rename(const std::string& from, const std::string& to) {
#ifdef _WIN32
  std::error_code error;  // the C library's own refuses to take the place of a file
  std::filesystem::rename(from, to, error);
  return answer(error);
#else
  return answer(uninterrupted([&] { return ::rename(from.c_str(), to.c_str()); }));
#endif
}

int remove(const std::string& path) {
  return answer(::unlink(path.c_str()));
}

}  // namespace vorn::os
