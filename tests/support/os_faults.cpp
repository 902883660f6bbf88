#include "support/os_faults.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <iterator>

namespace vorn {

Faults faults;

bool Fault::strikes() {
  if (error == 0 || (struck && !for_good)) return false;
  if (passes > 0) {
    --passes;
    return false;
  }
  struck = true;
  if (error == short_count) return false;
  errno = error;
  return true;
}

bool Faults::any_struck() const {
  const Fault* const all[] = {&open,   &read, &write, &fsync, &close,  &rename, &fchmod,
                              &remove, &stat, &lstat, &fstat, &access, &fchown, &flock};
  return std::any_of(std::begin(all), std::end(all), [](const Fault* fault) { return fault->struck; });
}

}  // namespace vorn

namespace {

using vorn::Fault;
using vorn::faults;

bool time_to_die() {
  return faults.dies_at > 0 && --faults.dies_at == 0;
}

void die() {
  kill(getpid(), SIGKILL);
  pause();
}

// Whether the call fails. Does not return when the process is to die here.
bool fails(Fault& fault) {
  if (time_to_die()) die();
  return fault.strikes();
}

// Bytes that a read or write moves, which has not failed.
std::size_t moved(const Fault& fault, bool struck_before, std::size_t count) {
  const bool cut = fault.error == Fault::short_count && fault.struck && !struck_before;
  return cut ? std::min<std::size_t>(count, 1) : std::min(count, faults.most_at_once);
}

}  // namespace

extern "C" {
int __real_open(const char* path, int flags, ...);
ssize_t __real_read(int handle, void* bytes, size_t count);
ssize_t __real_write(int handle, const void* bytes, size_t count);
int __real_fsync(int handle);
int __real_close(int handle);
int __real_rename(const char* from, const char* to);
int __real_fchmod(int handle, mode_t mode);
int __real_fchown(int handle, uid_t owner, gid_t group);
int __real_flock(int handle, int operation);
int __real_unlink(const char* path);
int __real_stat(const char* path, struct stat* about);
int __real_lstat(const char* path, struct stat* about);
int __real_fstat(int handle, struct stat* about);
int __real_access(const char* path, int mode);

int __wrap_open(const char* path, int flags, ...) {
  mode_t mode = 0;
  if ((flags & O_CREAT) != 0) {
    va_list rest;
    va_start(rest, flags);
    mode = va_arg(rest, mode_t);
    va_end(rest);
  }
  return fails(faults.open) ? -1 : __real_open(path, flags, mode);
}

ssize_t __wrap_read(int handle, void* bytes, size_t count) {
  const bool struck_before = faults.read.struck;
  return fails(faults.read) ? -1 : __real_read(handle, bytes, moved(faults.read, struck_before, count));
}

// Ends the process in the midst of the write that reaches its last byte.
static ssize_t counted_write(int handle, const void* bytes, size_t count) {
  const bool last = faults.dies_after > 0 && faults.written + count >= faults.dies_after;
  const ssize_t wrote = __real_write(handle, bytes, last ? faults.dies_after - faults.written : count);
  if (wrote > 0) faults.written += static_cast<size_t>(wrote);
  if (last && faults.written == faults.dies_after) die();
  return wrote;
}

ssize_t __wrap_write(int handle, const void* bytes, size_t count) {
  if (time_to_die()) {
    if (__real_write(handle, bytes, count / 2) >= 0) die();
  }
  const bool struck_before = faults.write.struck;
  if (faults.write.strikes()) return -1;
  return counted_write(handle, bytes, moved(faults.write, struck_before, count));
}

int __wrap_fsync(int handle) {
  if (fails(faults.fsync)) return -1;
  return faults.passes_fsync_over ? 0 : __real_fsync(handle);
}

int __wrap_close(int handle) {
  if (time_to_die()) die();
  // The handle is gone, whatever is answered.
  const int closed = __real_close(handle);
  return faults.close.strikes() ? -1 : closed;
}

int __wrap_rename(const char* from, const char* to) {
  return fails(faults.rename) ? -1 : __real_rename(from, to);
}

int __wrap_fchmod(int handle, mode_t mode) {
  return fails(faults.fchmod) ? -1 : __real_fchmod(handle, mode);
}

int __wrap_fchown(int handle, uid_t owner, gid_t group) {
  return fails(faults.fchown) ? -1 : __real_fchown(handle, owner, group);
}

int __wrap_flock(int handle, int operation) {
  return fails(faults.flock) ? -1 : __real_flock(handle, operation);
}

int __wrap_unlink(const char* path) {
  return fails(faults.remove) ? -1 : __real_unlink(path);
}

int __wrap_stat(const char* path, struct stat* about) {
  return fails(faults.stat) ? -1 : __real_stat(path, about);
}

int __wrap_lstat(const char* path, struct stat* about) {
  return fails(faults.lstat) ? -1 : __real_lstat(path, about);
}

int __wrap_fstat(int handle, struct stat* about) {
  return fails(faults.fstat) ? -1 : __real_fstat(handle, about);
}

int __wrap_access(const char* path, int mode) {
  return fails(faults.access) ? -1 : __real_access(path, mode);
}
}
