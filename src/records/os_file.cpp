#include "records/os_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <system_error>

#ifdef _WIN32
#include <io.h>
#endif

namespace vorn::os {
namespace {

#ifdef _WIN32
constexpr int bytes_as_they_are = O_BINARY;
constexpr int without_waiting = 0;
#else
constexpr int bytes_as_they_are = 0;
constexpr int without_waiting = O_NONBLOCK;
#endif

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

int open_file(const std::string& path, int flags, int& handle) {
  constexpr int readable_and_writable = 0666;  // less what the user's mask takes away
  do handle = ::open(path.c_str(), flags | bytes_as_they_are, readable_and_writable);
  while (handle < 0 && errno == EINTR);
  return answer(handle);
}

// Lets reads and writes of a file that was opened without waiting wait as usual.
void wait_from_now_on([[maybe_unused]] int handle) {
#ifndef _WIN32
  const int flags = ::fcntl(handle, F_GETFL);
  if (flags >= 0) ::fcntl(handle, F_SETFL, flags & ~O_NONBLOCK);
#endif
}

// A terminal, a disk, an endless source of zeros: what need not have an end.
bool is_device([[maybe_unused]] const std::string& path) {
#ifdef _WIN32
  return false;
#else
  struct stat about {};
  return ::stat(path.c_str(), &about) == 0 && (S_ISCHR(about.st_mode) || S_ISBLK(about.st_mode));
#endif
}

}  // namespace

Kind kind_of(const std::string& path) {
  struct stat about {};
  if (::stat(path.c_str(), &about) != 0) return Kind::missing;
  if (S_ISDIR(about.st_mode)) return Kind::folder;
  return S_ISREG(about.st_mode) ? Kind::regular : Kind::other;
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
  if (kind_of(path) == Kind::folder) return EISDIR;
  if (is_device(path)) return ENODEV;
  // A pipe that nobody writes to must not stop the program: it is read as an empty file.
  const int failed = open_file(path, O_RDONLY | without_waiting, handle_);
  if (!failed) wait_from_now_on(handle_);
  return failed;
}

int File::make(const std::string& path) {
  close();
  return open_file(path, O_WRONLY | O_CREAT | O_EXCL, handle_);
}

int File::open_device(const std::string& path) {
  close();
#ifdef SIGPIPE
  // A reader that goes away is a failed write (32), not the end of the program.
  std::signal(SIGPIPE, SIG_IGN);
#endif
  const int failed = open_file(path, O_WRONLY | O_APPEND | without_waiting, handle_);
  if (!failed) wait_from_now_on(handle_);
  return failed;
}

int File::read(std::span<char> buffer, std::size_t& count) {
  for (;;) {
    const auto result = ::read(handle_, buffer.data(), buffer.size());
    count = result < 0 ? 0 : static_cast<std::size_t>(result);
    if (result >= 0) return 0;
    if (errno != EINTR) return errno;
  }
}

int File::write(std::string_view bytes) {
  while (!bytes.empty()) {
    const auto result = ::write(handle_, bytes.data(), bytes.size());
    if (result < 0 && errno != EINTR) return errno;
    if (result > 0) bytes.remove_prefix(static_cast<std::size_t>(result));
  }
  return 0;
}

int File::sync() {
#ifdef _WIN32
  return answer(::_commit(handle_));
#else
  return answer_where_known(::fsync(handle_));
#endif
}

bool File::stands_at(const std::string& path) const {
  struct stat mine {};
  struct stat there {};
  return ::fstat(handle_, &mine) == 0 && ::stat(path.c_str(), &there) == 0 && mine.st_dev == there.st_dev &&
         mine.st_ino == there.st_ino;
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
    if (!fs::is_symlink(fs::symlink_status(here, error))) {
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
  return answer(::rename(from.c_str(), to.c_str()));
#endif
}

int remove(const std::string& path) {
  return answer(::unlink(path.c_str()));
}

}  // namespace vorn::os
