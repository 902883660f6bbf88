// What happens when the operating system refuses.
#include "support/os_faults.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

#include "records/disk_files.h"
#include "records/text_file.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

class OsFaults : public testing::Test {
 protected:
  OsFaults() { ScratchFolder::write("file.txt", "old\n"); }
  ~OsFaults() override { faults = Faults(); }

  static Status create_write_close() {
    TextOutput file;
    EXPECT_EQ(file.create(disk_, "file.txt"), status::ok);
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
  inline static DiskFiles disk_;
  inline static const EditFormat line_{"(A)"};
};

TEST_F(OsFaults, WithoutAnyTheFileIsWritten) {
  EXPECT_EQ(create_write_close(), status::ok);
  EXPECT_EQ(ScratchFolder::read("file.txt"), "new\n");
}

TEST_F(OsFaults, AFullDiskDuringTheWritesIsToldOnceAndKeepsTheOlderFile) {
  TextOutput file;
  ASSERT_EQ(file.create(disk_, "file.txt"), status::ok);
  faults.write = {.passes = 1, .error = ENOSPC};
  Status told;
  for (int k = 0; k < 1000 && !told; ++k) told = file.write(line_, std::string(1000, 'x'));
  EXPECT_EQ(told, Status(28));
  for (int k = 0; k < 1000; ++k) EXPECT_EQ(file.write(line_, std::string(1000, 'x')), status::ok);
  EXPECT_EQ(file.close(), status::ok);
  expect_nothing_changed();
}

TEST_F(OsFaults, AFullDiskAtTheClosingIsToldByTheClosing) {
  faults.write.error = ENOSPC;
  EXPECT_EQ(create_write_close(), Status(28));
  expect_nothing_changed();
}

TEST_F(OsFaults, AFailedSyncIsToldByTheClosing) {
  faults.fsync.error = EIO;
  EXPECT_EQ(create_write_close(), Status(EIO));
  expect_nothing_changed();
}

TEST_F(OsFaults, AFileSystemThatKnowsNoSyncIsGoodEnough) {
  faults.fsync.error = EINVAL;
  EXPECT_EQ(create_write_close(), status::ok);
  EXPECT_EQ(ScratchFolder::read("file.txt"), "new\n");
}

TEST_F(OsFaults, AFailedClosingIsToldAndKeepsTheOlderFile) {
  faults.close.error = EDQUOT;
  EXPECT_EQ(create_write_close(), Status(EDQUOT));
  expect_nothing_changed();
}

TEST_F(OsFaults, AFailedRenamingIsToldByTheClosing) {
  faults.rename.error = EACCES;
  EXPECT_EQ(create_write_close(), Status(13));
  expect_nothing_changed();
}

TEST_F(OsFaults, PermissionsThatCannotBeKeptAreToldByTheClosing) {
  faults.fchmod.error = EIO;
  EXPECT_EQ(create_write_close(), Status(EIO));
  expect_nothing_changed();
}

TEST_F(OsFaults, AFileSystemWithoutPermissionsIsGoodEnough) {
  faults.fchmod.error = EPERM;
  EXPECT_EQ(create_write_close(), status::ok);
  EXPECT_EQ(ScratchFolder::read("file.txt"), "new\n");
}

TEST_F(OsFaults, AFileThatCannotBeCopiedIsNotAppendedTo) {
  for (Fault Faults::*call : {&Faults::read, &Faults::write, &Faults::fstat, &Faults::close}) {
    (faults.*call).error = EIO;
    TextOutput file;
    EXPECT_EQ(file.append(disk_, "file.txt"), Status(EIO));
    EXPECT_EQ(file.write(line_, "new"), status::ok);
    EXPECT_EQ(file.close(), status::ok);
    expect_nothing_changed();
  }
}

// Looking at what is there may fail as well; what cannot be looked at is not replaced.
TEST_F(OsFaults, AFileThatCannotBeLookedAtIsAFailedOpen) {
  for (Fault Faults::*call : {&Faults::stat, &Faults::access}) {
    (faults.*call).error = EIO;
    EXPECT_EQ(TextOutput().create(disk_, "file.txt"), Status(EIO));
    expect_nothing_changed();
  }
  faults.stat.error = EIO;
  EXPECT_EQ(TextInput().open(disk_, "file.txt"), Status(EIO));
  faults.fstat.error = EIO;
  EXPECT_EQ(TextInput().open(disk_, "file.txt"), Status(EIO));
}

TEST_F(OsFaults, AFileThatCannotBeLookedAtIsNotSaidToBeMissing) {
  for (const int error : {EACCES, EIO}) {
    faults.stat = {.error = error};
    EXPECT_TRUE(file_exists(disk_, "file.txt"));
  }
  for (const int error : {ENOENT, ENOTDIR}) {
    faults.stat = {.error = error};
    EXPECT_FALSE(file_exists(disk_, "file.txt"));
  }
}

TEST_F(OsFaults, WhatFailsWhenTheFileIsToBeReplacedIsToldByTheClosing) {
  for (Fault Faults::*call :
       {&Faults::open, &Faults::flock, &Faults::lstat, &Faults::fstat, &Faults::fchown}) {
    int told = 0;
    for (int passes = 0;; ++passes) {
      TextOutput file;
      ASSERT_EQ(file.create(disk_, "file.txt"), status::ok);
      EXPECT_EQ(file.write(line_, "new"), status::ok);
      (faults.*call) = {.passes = passes, .error = EIO};
      const Status closed = file.close();
      if (!(faults.*call).struck) break;
      EXPECT_EQ(closed, Status(EIO));
      ++told;
      expect_nothing_changed();
    }
    EXPECT_GE(told, 1);
    faults = Faults();
    ScratchFolder::write("file.txt", "old\n");
  }
}

TEST_F(OsFaults, AFileSystemWithoutLocksIsGoodEnough) {
  for (const int error : {ENOLCK, ENOTSUP}) {
    faults.flock = {.error = error, .for_good = true};
    EXPECT_EQ(create_write_close(), status::ok);
    EXPECT_EQ(ScratchFolder::read("file.txt"), "new\n");
  }
}

// There nobody knows whether the program that made it still goes on with it.
TEST_F(OsFaults, WithoutLocksWhatMayBeLeftOverStays) {
  const std::string left = "file.txt.0123456789abcdef.vorn-part";
  ScratchFolder::write(left, "another program's");
  faults.flock = {.error = ENOLCK, .for_good = true};
  EXPECT_EQ(create_write_close(), status::ok);
  EXPECT_EQ(ScratchFolder::read(left), "another program's");
}

// Nobody's signals keep the program for ever, and no disk that takes nothing does.
TEST_F(OsFaults, CallsThatNeverComeToAnythingAreGivenUp) {
  for (Fault Faults::*call : {&Faults::open, &Faults::write, &Faults::fsync, &Faults::rename}) {
    faults.*call = {.error = EINTR, .for_good = true};
    TextOutput file;
    const Status opened = file.create(disk_, "file.txt");
    EXPECT_EQ(file.write(line_, "new"), status::ok);
    EXPECT_EQ(opened ? opened : file.close(), Status(EINTR));
    expect_nothing_changed();
  }
  faults.read = {.error = EINTR, .for_good = true};
  TextInput input;
  ASSERT_EQ(input.open(disk_, "file.txt"), status::ok);
  EXPECT_EQ(input.read(line_), Status(EINTR));

  faults.most_at_once = 0;
  EXPECT_EQ(create_write_close(), Status(ENOSPC));
  expect_nothing_changed();
}

TEST_F(OsFaults, AnOpeningOrRenamingThatIsInterruptedIsMadeAgain) {
  faults.open.error = faults.fsync.error = faults.rename.error = EINTR;
  EXPECT_EQ(create_write_close(), status::ok);
  EXPECT_TRUE(faults.open.struck && faults.fsync.struck && faults.rename.struck);
  EXPECT_EQ(ScratchFolder::read("file.txt"), "new\n");
}

TEST_F(OsFaults, WhatWasLeftOverAndCannotBeRemovedIsPassedBy) {
  ScratchFolder::write("file.txt.0123456789abcdef.vorn-part", "left over\n");
  faults.remove.error = EACCES;
  EXPECT_EQ(create_write_close(), status::ok);
  EXPECT_TRUE(faults.remove.struck);
  EXPECT_EQ(ScratchFolder::read("file.txt"), "new\n");
  EXPECT_EQ(create_write_close(), status::ok);
  EXPECT_FALSE(ScratchFolder::exists("file.txt.0123456789abcdef.vorn-part"));
}

// A name that another program has at the same moment is not taken.
TEST_F(OsFaults, ANameThatIsTakenIsLeftForAnotherOne) {
  faults.open.error = EEXIST;
  EXPECT_EQ(create_write_close(), status::ok);
  EXPECT_TRUE(faults.open.struck);
  EXPECT_EQ(ScratchFolder::read("file.txt"), "new\n");
}

TEST_F(OsFaults, WholeFilesOfBytesGoTheSameWay) {
  for (Fault Faults::*call :
       {&Faults::open, &Faults::write, &Faults::fsync, &Faults::close, &Faults::rename}) {
    (faults.*call).error = EIO;
    EXPECT_EQ(write_whole(disk_, "file.txt", "new\n"), Status(EIO));
    expect_nothing_changed();
  }
  EXPECT_EQ(write_whole(disk_, "file.txt", "new\n"), status::ok);
  EXPECT_EQ(ScratchFolder::read("file.txt"), "new\n");
}

TEST_F(OsFaults, ShortAndInterruptedCallsAreGoneOnWith) {
  faults.most_at_once = 3;
  faults.write = {.passes = 1, .error = EINTR};
  faults.read = {.passes = 1, .error = EINTR};
  TextOutput file;
  EXPECT_EQ(file.append(disk_, "file.txt"), status::ok);
  EXPECT_EQ(file.write(line_, "a longer record"), status::ok);
  faults.close.error = EINTR;
  EXPECT_EQ(file.close(), status::ok);
  EXPECT_TRUE(faults.write.struck);
  EXPECT_TRUE(faults.read.struck);
  EXPECT_EQ(ScratchFolder::read("file.txt"), "old\na longer record\n");

  TextInput input;
  ASSERT_EQ(input.open(disk_, "file.txt"), status::ok);
  Text<20> text;
  EXPECT_EQ(input.read(line_), status::ok);
  EXPECT_EQ(input.read(line_, text), status::ok);
  EXPECT_EQ(text.trimmed(), "a longer record");
}

TEST_F(OsFaults, AFailedReadIsToldOnceAndEndsTheFile) {
  TextInput file;
  Text<20> text("#");
  ASSERT_EQ(file.open(disk_, "file.txt"), status::ok);
  faults.read.error = EIO;
  EXPECT_EQ(file.read(line_, text), Status(EIO));
  EXPECT_EQ(text.trimmed(), "#");
  EXPECT_EQ(file.read(line_, text), status::end_of_file);
  EXPECT_EQ(file.close(), status::ok);
}

TEST_F(OsFaults, RecordsBeforeAFailedReadAreReadAndTheBrokenOneIsNot) {
  ScratchFolder::write("file.txt", "one\r\ntwo\r\n");
  for (const size_t at_once : {3, 4, 5, 6}) {  // after "one", its CR, its LF, and the first letter of "two"
    TextInput file;
    Text<20> text;
    ASSERT_EQ(file.open(disk_, "file.txt"), status::ok);
    faults.most_at_once = at_once;
    faults.read = {.passes = 1, .error = EIO};
    if (at_once > 3) {
      EXPECT_EQ(file.read(line_, text), status::ok);
      EXPECT_EQ(text.trimmed(), "one");
    }
    EXPECT_EQ(file.read(line_, text), Status(EIO)) << at_once;
    EXPECT_EQ(file.read(line_, text), status::end_of_file);
  }
}

TEST_F(OsFaults, AFailedClosingOfAnInputIsTold) {
  TextInput file;
  ASSERT_EQ(file.open(disk_, "file.txt"), status::ok);
  faults.close.error = EIO;
  EXPECT_EQ(file.close(), Status(EIO));
  EXPECT_EQ(file.close(), status::ok);
}

}  // namespace
}  // namespace vorn
