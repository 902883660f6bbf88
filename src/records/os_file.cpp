#include "records/os_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <random>
#include <system_error>
#include <utility>

#ifdef _WIN32
#include <io.h>
#else
#include <poll.h>
#include <sys/file.h>
#endif

namespace vorn::os {
namespace {

#ifdef _WIN32
constexpr int without_links = 0;
constexpr int for_this_program = O_BINARY | O_NOINHERIT;
constexpr int without_waiting = 0;
using ByteCount = unsigned;
#else
constexpr int without_links = O_NOFOLLOW;
constexpr int for_this_program = O_CLOEXEC;
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

// Whether a call failed because the file system has no such thing, or not for this user.
bool is_unknown_here(int failed) {
  return failed == EINVAL || failed == ENOTSUP || failed == ENOSYS || failed == EPERM;
}

// The same as answer(), 0 too where the file system has no such thing.
int answer_where_known(int result) {
  const int failed = answer(result);
  return is_unknown_here(failed) ? 0 : failed;
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

constexpr int for_everybody = 0666;  // less what the user's mask takes away
constexpr int for_the_user = 0600;

int open_file(const std::string& path, int flags, int& handle, int permissions = for_everybody) {
  handle = uninterrupted([&] { return ::open(path.c_str(), flags | for_this_program, permissions); });
  return answer(handle);
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
    handle_ = std::exchange(other.handle_, none);
    bytes_read_ = other.bytes_read_;
  }
  return *this;
}

int File::open_to_read(const std::string& path, Links links) {
  close();
  // Looked at before the opening, which of some devices is an action, and after it, as another may have come.
  auto kind = FileKind::missing;
  if (const int failed = kind_of(path, kind)) return failed;
  if (const int reason = reason_not_to_read(kind)) return reason;
  // cppcheck-suppress duplicateValueTernary  ; on Windows there is nothing to refuse
  const int about_links = links == Links::refused ? without_links : 0;
  if (const int failed = open_file(path, O_RDONLY | without_waiting | about_links, handle_)) return failed;
  struct stat about {};
  int failed = answer(::fstat(handle_, &about));
  if (!failed) failed = reason_not_to_read(kind_from(about));
  if (!failed && static_cast<std::uint64_t>(about.st_size) > most_bytes_read) failed = EFBIG;
  if (failed) close();
  return failed;
}

int File::make(const std::string& path, bool is_private) {
  close();
  let_writes_fail();
  return open_file(path, O_WRONLY | O_CREAT | O_EXCL, handle_, is_private ? for_the_user : for_everybody);
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
  if (result < 0) return errno;
  // Of some files the system makes up the contents as they are read, whatever size it says.
  bytes_read_ += count;
  if (bytes_read_ <= most_bytes_read) return 0;
  count = 0;
  return EFBIG;
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

int File::take_lock(const std::string& path) {
  close();
  if (const int failed =
          open_file(path, O_WRONLY | O_CREAT | without_links | without_waiting, handle_, for_the_user))
    return failed;
  bool held = false;
  const int failed = lock(held);
  if (failed) close();
  return failed;
}

// On Windows an open file can be neither replaced nor removed, so that nothing needs a lock.
#ifdef _WIN32

int File::lock(bool& held) {
  held = false;
  return 0;
}

int File::hold(const std::string&) {
  return 0;
}

void File::remove_unlocked(const std::string& path) {
  os::remove(path);
}

File File::twin() const {
  return {};
}

int File::check_place(const std::string&) const {
  return 0;
}

int File::take_permissions(const File&) {
  return 0;  // a file that may be written has none but those of a new one
}

void File::discard(const std::string& path) {
  close();
  os::remove(path);
}

#else

int File::lock(bool& held) {
  const int failed = answer(uninterrupted([&] { return ::flock(handle_, LOCK_EX | LOCK_NB); }));
  held = failed == 0;
  if (failed == EWOULDBLOCK) return EBUSY;
  return failed == ENOLCK || is_unknown_here(failed) ? 0 : failed;
}

int File::open_to_lock(const std::string& path) {
  close();
  return open_file(path, O_WRONLY | O_NOFOLLOW | without_waiting, handle_);
}

int File::hold(const std::string& path) {
  constexpr int most_tries = 300;
  constexpr int pause = 10;  // ms
  int failed = 0;
  for (int tries = 0; tries < most_tries; ++tries) {
    failed = open_to_lock(path);
    if (failed == ENOENT) return 0;
    if (!failed) {
      bool held = false;  // also not where the file system knows no locks: then nobody holds it
      failed = lock(held);
    }
    if (!failed) failed = check_place(path);  // another program may just have replaced it
    if (failed != EBUSY) return failed;
    ::poll(nullptr, 0, pause);
  }
  return failed;
}

void File::remove_unlocked(const std::string& path) {
  File file;
  bool held = false;
  if (file.open_to_lock(path) || file.lock(held)) return;
  if (held && file.check_place(path) == 0) os::remove(path);
}

File File::twin() const {
  File second;
  second.handle_ = ::fcntl(handle_, F_DUPFD_CLOEXEC, 0);
  return second;
}

int File::check_place(const std::string& path) const {
  struct stat mine {};
  struct stat there {};
  if (const int failed = answer(::fstat(handle_, &mine))) return failed;
  const int failed = answer(::lstat(path.c_str(), &there));
  if (failed && failed != ENOENT) return failed;
  return !failed && mine.st_dev == there.st_dev && mine.st_ino == there.st_ino ? 0 : EBUSY;
}

int File::take_permissions(const File& other) {
  struct stat about {};
  if (const int failed = answer(::fstat(other.handle_, &about))) return failed;
  mode_t permissions = about.st_mode & 07777;
  const int not_given = answer(::fchown(handle_, about.st_uid, about.st_gid));
  if (not_given && !is_unknown_here(not_given)) return not_given;
  if (not_given) {
    constexpr auto same_owner = static_cast<uid_t>(-1);
    permissions &= 0777;  // what ran as its owner does not run as another one
    if (::fchown(handle_, same_owner, about.st_gid) != 0) permissions &= 0707 | permissions << 3;
  }
  return answer_where_known(::fchmod(handle_, permissions));
}

void File::discard(const std::string& path) {
  if (!is_open() || check_place(path) != EBUSY) os::remove(path);
  close();
}

#endif

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

int make_folder(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code error;
  const auto type = fs::symlink_status(path, error).type();
  if (type == fs::file_type::directory) return 0;
  if (type != fs::file_type::not_found) return ENOTDIR;
  fs::create_directory(path, error);
  if (!error) fs::permissions(path, fs::perms::owner_all, error);
  return answer(error);
}

std::vector<std::string> files_named(const std::string& folder, std::string_view beginning,
                                     std::string_view ending) {
  namespace fs = std::filesystem;
  std::vector<std::string> found;
  std::error_code error;
  for (fs::directory_iterator at(folder.empty() ? "." : folder, error), end; !error && at != end;
       at.increment(error)) {
    const std::string name = at->path().filename().string();
    if (name.starts_with(beginning) && name.ends_with(ending))
      found.push_back((fs::path(folder) / name).string());
  }
  return found;
}

std::string unguessable() {
  constexpr std::string_view digits = "0123456789abcdef";
  std::random_device chance;
  std::string text;
  for (int k = 0; k < 16; ++k) text += digits[chance() % digits.size()];
  return text;
}

}  // namespace vorn::os
