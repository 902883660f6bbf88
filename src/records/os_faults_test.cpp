// What happens when the operating system refuses. Its calls are replaced at link time by ones that fail when
// asked to, so that nothing of the program is built differently for it.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <utility>

#include "records/text_file.h"
#include "support/scratch_folder.h"

namespace {

// One call that fails.
struct Fault {
  int passes = 0;  // calls that still succeed before it
  int error = 0;   // 0: none fails

  // Whether this call fails; sets errno then.
  bool strikes() {
    if (error == 0 || passes-- > 0) return false;
    errno = std::exchange(error, 0);
    return true;
  }
};

struct Faults {
  Fault read, write, fsync, close, rename, chmod;
  size_t most_at_once = SIZE_MAX;  // bytes that a read or write moves
} faults;

}  // namespace

extern "C" {
ssize_t __real_read(int handle, void* bytes, size_t count);
ssize_t __real_write(int handle, const void* bytes, size_t count);
int __real_fsync(int handle);
int __real_close(int handle);
int __real_rename(const char* from, const char* to);
int __real_chmod(const char* path, mode_t mode);

ssize_t __wrap_read(int handle, void* bytes, size_t count) {
  return faults.read.strikes() ? -1 : __real_read(handle, bytes, std::min(count, faults.most_at_once));
}
ssize_t __wrap_write(int handle, const void* bytes, size_t count) {
  return faults.write.strikes() ? -1 : __real_write(handle, bytes, std::min(count, faults.most_at_once));
}
int __wrap_fsync(int handle) {
  return faults.fsync.strikes() ? -1 : __real_fsync(handle);
}
int __wrap_close(int handle) {
  // The handle is gone, whatever is answered.
  const int closed = __real_close(handle);
  return faults.close.strikes() ? -1 : closed;
}
int __wrap_rename(const char* from, const char* to) {
  return faults.rename.strikes() ? -1 : __real_rename(from, to);
}
int __wrap_chmod(const char* path, mode_t mode) {
  return faults.chmod.strikes() ? -1 : __real_chmod(path, mode);
}
}

namespace vorn {
namespace {

namespace fs = std::filesystem;

class OsFaults : public testing::Test {
 protected:
  OsFaults() { ScratchFolder::write("file.txt", "old\n"); }
  ~OsFaults() override { faults = Faults(); }

  static int create_write_close() {
    TextOutput file;
    EXPECT_EQ(file.create("file.txt"), status::ok);
    EXPECT_EQ(file.write(line_, "new"), status::ok);
    return file.close();
  }

  // The older file as it was, and nothing beside it.
  static void expect_nothing_changed() {
    faults = Faults();
    EXPECT_EQ(ScratchFolder::read("file.txt"), "old\n");
    EXPECT_EQ(std::distance(fs::directory_iterator("."), fs::directory_iterator()), 1);
  }

  ScratchFolder folder_;
  inline static const EditFormat line_{"(A)"};
};

TEST_F(OsFaults, WithoutAnyTheFileIsWritten) {
  EXPECT_EQ(create_write_close(), status::ok);
  EXPECT_EQ(ScratchFolder::read("file.txt"), "new\n");
}

TEST_F(OsFaults, AFullDiskDuringTheWritesIsToldOnceAndKeepsTheOlderFile) {
  TextOutput file;
  ASSERT_EQ(file.create("file.txt"), status::ok);
  faults.write = {.passes = 1, .error = ENOSPC};
  int told = 0;
  for (int k = 0; k < 1000 && told == 0; ++k) told = file.write(line_, std::string(1000, 'x'));
  EXPECT_EQ(told, 28);
  for (int k = 0; k < 1000; ++k) EXPECT_EQ(file.write(line_, std::string(1000, 'x')), status::ok);
  EXPECT_EQ(file.close(), status::ok);
  expect_nothing_changed();
}

TEST_F(OsFaults, AFullDiskAtTheClosingIsToldByTheClosing) {
  faults.write.error = ENOSPC;
  EXPECT_EQ(create_write_close(), 28);
  expect_nothing_changed();
}

TEST_F(OsFaults, AFailedSyncIsToldByTheClosing) {
  faults.fsync.error = EIO;
  EXPECT_EQ(create_write_close(), EIO);
  expect_nothing_changed();
}

TEST_F(OsFaults, AFileSystemThatKnowsNoSyncIsGoodEnough) {
  faults.fsync.error = EINVAL;
  EXPECT_EQ(create_write_close(), status::ok);
  EXPECT_EQ(ScratchFolder::read("file.txt"), "new\n");
}

TEST_F(OsFaults, AFailedClosingIsToldAndKeepsTheOlderFile) {
  faults.close.error = EDQUOT;
  EXPECT_EQ(create_write_close(), EDQUOT);
  expect_nothing_changed();
}

TEST_F(OsFaults, AFailedRenamingIsToldByTheClosing) {
  faults.rename.error = EACCES;
  EXPECT_EQ(create_write_close(), 13);
  expect_nothing_changed();
}

TEST_F(OsFaults, PermissionsThatCannotBeKeptAreToldByTheClosing) {
  faults.chmod.error = EIO;
  EXPECT_EQ(create_write_close(), EIO);
  expect_nothing_changed();
}

TEST_F(OsFaults, AFileSystemWithoutPermissionsIsGoodEnough) {
  faults.chmod.error = EPERM;
  EXPECT_EQ(create_write_close(), status::ok);
  EXPECT_EQ(ScratchFolder::read("file.txt"), "new\n");
}

TEST_F(OsFaults, AFileThatCannotBeCopiedIsNotAppendedTo) {
  for (Fault* fault : {&faults.read, &faults.write}) {
    fault->error = EIO;
    TextOutput file;
    EXPECT_EQ(file.append("file.txt"), EIO);
    EXPECT_EQ(file.write(line_, "new"), status::ok);
    EXPECT_EQ(file.close(), status::ok);
    expect_nothing_changed();
  }
}

TEST_F(OsFaults, ShortAndInterruptedCallsAreGoneOnWith) {
  faults.most_at_once = 3;
  faults.write = {.passes = 1, .error = EINTR};
  faults.read = {.passes = 1, .error = EINTR};
  TextOutput file;
  EXPECT_EQ(file.append("file.txt"), status::ok);
  EXPECT_EQ(file.write(line_, "a longer record"), status::ok);
  faults.close.error = EINTR;
  EXPECT_EQ(file.close(), status::ok);
  EXPECT_EQ(faults.write.error, 0) << "the fault has not struck";
  EXPECT_EQ(faults.read.error, 0) << "the fault has not struck";
  EXPECT_EQ(ScratchFolder::read("file.txt"), "old\na longer record\n");

  TextInput input;
  ASSERT_EQ(input.open("file.txt"), status::ok);
  Text<20> text;
  EXPECT_EQ(input.read(line_), status::ok);
  EXPECT_EQ(input.read(line_, text), status::ok);
  EXPECT_EQ(text.trimmed(), "a longer record");
}

TEST_F(OsFaults, AFailedReadIsToldOnceAndEndsTheFile) {
  TextInput file;
  Text<20> text("#");
  ASSERT_EQ(file.open("file.txt"), status::ok);
  faults.read.error = EIO;
  EXPECT_EQ(file.read(line_, text), EIO);
  EXPECT_EQ(text.trimmed(), "#");
  EXPECT_EQ(file.read(line_, text), status::end_of_file);
  EXPECT_EQ(file.close(), status::ok);
}

TEST_F(OsFaults, RecordsBeforeAFailedReadAreReadAndTheBrokenOneIsNot) {
  ScratchFolder::write("file.txt", "one\r\ntwo\r\n");
  for (const size_t at_once : {3, 4, 5, 6}) {  // after "one", its CR, its LF, and the first letter of "two"
    TextInput file;
    Text<20> text;
    ASSERT_EQ(file.open("file.txt"), status::ok);
    faults.most_at_once = at_once;
    faults.read = {.passes = 1, .error = EIO};
    if (at_once > 3) {
      EXPECT_EQ(file.read(line_, text), status::ok);
      EXPECT_EQ(text.trimmed(), "one");
    }
    EXPECT_EQ(file.read(line_, text), EIO) << at_once;
    EXPECT_EQ(file.read(line_, text), status::end_of_file);
  }
}

TEST_F(OsFaults, AFailedClosingOfAnInputIsTold) {
  TextInput file;
  ASSERT_EQ(file.open("file.txt"), status::ok);
  faults.close.error = EIO;
  EXPECT_EQ(file.close(), EIO);
  EXPECT_EQ(file.close(), status::ok);
}

}  // namespace
}  // namespace vorn
