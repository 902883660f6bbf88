#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <set>
#include <thread>
#include <vector>

#include "records/disk_files.h"
#include "records/os_file.h"
#include "records/text_file.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

// What `work` answers when it is done by a user who is not all-powerful.
Status as_ordinary_user(const std::function<Status()>& work) {
  constexpr uid_t nobody = 65534;
  const pid_t child = fork();
  if (child == 0) {
    if (geteuid() == 0 && setuid(nobody) != 0) _exit(255);
    _exit(work().number());
  }
  int ended = 0;
  waitpid(child, &ended, 0);
  return Status(WIFEXITED(ended) ? WEXITSTATUS(ended) : -1);
}

class TextOutputs : public testing::Test {
 protected:
  // Nothing but these files may be in the folder.
  static void expect_only(const std::set<std::string>& names) {
    std::set<std::string> found;
    for (const auto& entry : fs::directory_iterator(".")) found.insert(entry.path().filename().string());
    EXPECT_EQ(found, names);
  }

  // The neighbours of files being made, or left over.
  static std::vector<std::string> neighbours() {
    std::vector<std::string> found;
    for (const auto& entry : fs::directory_iterator(".")) {
      const std::string name = entry.path().filename().string();
      if (name.ends_with(".vorn-part")) found.push_back(name);
    }
    return found;
  }
  static mode_t mode_of(const std::string& name) {
    struct stat about {};
    EXPECT_EQ(stat(name.c_str(), &about), 0) << name;
    return about.st_mode & 07777;
  }

  // Writes a file of one record from start to end.
  static void write_whole(const std::string& name, const char* record) {
    TextOutput file;
    EXPECT_EQ(file.create(disk_, name), status::ok);
    EXPECT_EQ(file.write(line_, record), status::ok);
    EXPECT_EQ(file.close(), status::ok);
  }

  static Status write_whole_quietly(const std::string& name, const char* record) {
    TextOutput file;
    const Status opened = file.create(disk_, name);
    const Status written = file.write(line_, record);
    const Status closed = file.close();
    return opened != status::ok ? opened : written != status::ok ? written : closed;
  }

  // What a file of `contents` holds after one record was added to it.
  static std::string appended(std::string_view contents) {
    ScratchFolder::write("file.txt", contents);
    TextOutput file;
    EXPECT_EQ(file.append(disk_, "file.txt"), status::ok);
    EXPECT_EQ(file.write(line_, "new"), status::ok);
    EXPECT_EQ(file.close(), status::ok);
    return ScratchFolder::read("file.txt");
  }

  ScratchFolder folder_;
  inline static DiskFiles disk_;
  inline static const EditFormat line_{"(A)"};
};

TEST_F(TextOutputs, RecordsEndWithLineFeeds) {
  TextOutput file;
  ASSERT_EQ(file.create(disk_, "new.txt"), status::ok);
  EXPECT_EQ(file.write(EditFormat("(A8,I4,3I6)"), Text<8>("KREUZ01"), 1953, 1, 2, 3), status::ok);
  EXPECT_EQ(file.write(EditFormat("(2I3)"), 1, 2, 3), status::ok);
  EXPECT_EQ(file.write(EditFormat("(I4)")), status::ok);
  EXPECT_EQ(file.close(), status::ok);
  EXPECT_EQ(ScratchFolder::read("new.txt"), "KREUZ01 1953     1     2     3\n  1  2\n  3\n\n");
  expect_only({"new.txt"});
}

TEST_F(TextOutputs, WhatWasWrittenTakesItsPlaceWhenItIsClosed) {
  ScratchFolder::write("file.txt", "old\n");
  TextOutput file;
  ASSERT_EQ(file.create(disk_, "file.txt   "), status::ok);
  EXPECT_EQ(file.write(line_, "new"), status::ok);
  EXPECT_EQ(ScratchFolder::read("file.txt"), "old\n");
  EXPECT_EQ(file.close(), status::ok);
  EXPECT_EQ(ScratchFolder::read("file.txt"), "new\n");
  expect_only({"file.txt"});
}

TEST_F(TextOutputs, AFileWithoutRecordsIsEmpty) {
  TextOutput file;
  ASSERT_EQ(file.create(disk_, "empty.txt"), status::ok);
  EXPECT_EQ(file.close(), status::ok);
  EXPECT_EQ(ScratchFolder::read("empty.txt"), "");
  EXPECT_TRUE(ScratchFolder::exists("empty.txt"));
}

TEST_F(TextOutputs, AnOutputThatGoesWithoutAClosingDropsWhatWasWritten) {
  ScratchFolder::write("file.txt", "old\n");
  {
    TextOutput file;
    ASSERT_EQ(file.create(disk_, "file.txt"), status::ok);
    EXPECT_EQ(file.write(line_, "new"), status::ok);
    EXPECT_EQ(neighbours().size(), 1u);
  }
  EXPECT_EQ(ScratchFolder::read("file.txt"), "old\n");
  expect_only({"file.txt"});
}

TEST_F(TextOutputs, ItemsThatDoNotSuitTheFormatWriteNothingAndLeaveTheFileGood) {
  TextOutput file;
  ASSERT_EQ(file.create(disk_, "file.txt"), status::ok);
  EXPECT_EQ(file.write(EditFormat("(A4,I4)"), "ABCD", 1.0), status::format_unusable);
  EXPECT_EQ(file.write(EditFormat("(A"), "ABCD"), status::format_unusable);
  EXPECT_EQ(file.write(line_, "good"), status::ok);
  EXPECT_EQ(file.close(), status::ok);
  EXPECT_EQ(ScratchFolder::read("file.txt"), "good\n");
}

TEST_F(TextOutputs, LongFilesAreWrittenWhole) {
  TextOutput file;
  ASSERT_EQ(file.create(disk_, "long.txt"), status::ok);
  std::string expected;
  for (std::int32_t k = 0; k < 50000; ++k) {
    ASSERT_EQ(file.write(EditFormat("(I8)"), k), status::ok);
    expected += edit(EditFormat("(I8)"), k) + "\n";
  }
  EXPECT_EQ(file.close(), status::ok);
  EXPECT_EQ(ScratchFolder::read("long.txt"), expected);
}

TEST_F(TextOutputs, TheOlderFilesPermissionsAreKept) {
  for (const mode_t mode : {0600u, 0640u, 0755u}) {
    ScratchFolder::write("file.txt", "old\n");
    ASSERT_EQ(chmod("file.txt", mode), 0);
    write_whole("file.txt", "new");
    EXPECT_EQ(mode_of("file.txt"), mode);
  }
}

// However open the user lets new files be.
TEST_F(TextOutputs, WhatIsMadeInThePlaceOfAFileIsNobodyElsesBeforeItIsThere) {
  ScratchFolder::write("file.txt", "old\n");
  ASSERT_EQ(chmod("file.txt", 0600), 0);
  const mode_t before = umask(0);
  TextOutput file, fresh;
  EXPECT_EQ(file.create(disk_, "file.txt"), status::ok);
  ASSERT_EQ(neighbours().size(), 1u);
  EXPECT_EQ(mode_of(neighbours().front()), 0600u);
  EXPECT_EQ(file.close(), status::ok);
  EXPECT_EQ(mode_of("file.txt"), 0600u);
  EXPECT_EQ(fresh.create(disk_, "new.txt"), status::ok);
  EXPECT_EQ(fresh.close(), status::ok);
  EXPECT_EQ(mode_of("new.txt"), 0666u);
  umask(before);
}

TEST_F(TextOutputs, TheOlderFilesOwnerIsKeptWhereThatIsAllowed) {
  if (geteuid() != 0) GTEST_SKIP() << "only the administrator may give files away";
  ScratchFolder::write("file.txt", "old\n");
  ASSERT_EQ(chown("file.txt", 1234, 4321), 0);
  ASSERT_EQ(chmod("file.txt", 04750), 0);
  write_whole("file.txt", "new");
  struct stat about {};
  ASSERT_EQ(stat("file.txt", &about), 0);
  EXPECT_EQ(about.st_uid, 1234u);
  EXPECT_EQ(about.st_gid, 4321u);
  EXPECT_EQ(about.st_mode & 07777, 04750u);
}

TEST_F(TextOutputs, WhereTheOwnerIsNotKeptNobodyGetsMoreThanHeHad) {
  if (geteuid() != 0) GTEST_SKIP() << "only the administrator may become another user";
  ScratchFolder::write("file.txt", "old\n");
  ASSERT_EQ(chown("file.txt", 1234, 4321), 0);
  ASSERT_EQ(chmod("file.txt", 06762), 0);  // the group may read, everybody only write
  chmod(".", 0777);
  EXPECT_EQ(as_ordinary_user([] { return write_whole_quietly("./file.txt", "new"); }), status::ok);
  EXPECT_EQ(ScratchFolder::read("file.txt"), "new\n");
  EXPECT_EQ(mode_of("file.txt"), 0722u);
}

TEST_F(TextOutputs, LinksAreFollowedAndStay) {
  fs::create_directory("store");
  ScratchFolder::write("store/file.txt", "old\n");
  fs::create_symlink("store/file.txt", "first");
  fs::create_symlink(fs::absolute("first"), "second");
  write_whole("second", "new");
  EXPECT_EQ(ScratchFolder::read("store/file.txt"), "new\n");
  EXPECT_TRUE(fs::is_symlink("first"));
  EXPECT_TRUE(fs::is_symlink("second"));
  expect_only({"store", "first", "second"});
}

TEST_F(TextOutputs, ALinkToNothingMakesWhatItLeadsTo) {
  fs::create_directory("store");
  fs::create_symlink("store/file.txt", "link");
  write_whole("link", "new");
  EXPECT_EQ(ScratchFolder::read("store/file.txt"), "new\n");
  EXPECT_TRUE(fs::is_symlink("link"));
}

TEST_F(TextOutputs, LinksThatLeadRoundInACircleAreAFailedOpen) {
  fs::create_symlink("a", "b");
  fs::create_symlink("b", "a");
  TextOutput file;
  EXPECT_EQ(file.create(disk_, "a"), Status(ELOOP));
  expect_only({"a", "b"});
}

TEST_F(TextOutputs, AFullDeviceIsWrittenDirectlyAndTellsAtTheLatestAtTheClosing) {
  if (!fs::exists("/dev/full")) GTEST_SKIP() << "no /dev/full on this system";
  fs::create_symlink("/dev/full", "report.prn");
  TextOutput file;
  ASSERT_EQ(file.create(disk_, "report.prn"), status::ok);
  EXPECT_EQ(file.write(line_, "short"), status::ok);
  EXPECT_EQ(file.close(), Status(28));
  expect_only({"report.prn"});
}

TEST_F(TextOutputs, TheFirstFailedWriteIsToldOnceAndAllThatFollowsDoesNothing) {
  if (!fs::exists("/dev/full")) GTEST_SKIP() << "no /dev/full on this system";
  fs::create_symlink("/dev/full", "report.prn");
  TextOutput file;
  ASSERT_EQ(file.create(disk_, "report.prn"), status::ok);
  Status told;
  for (int k = 0; k < 1000 && !told; ++k) told = file.write(line_, std::string(1000, 'x'));
  EXPECT_EQ(told, Status(28));
  EXPECT_EQ(file.write(line_, "more"), status::ok);
  EXPECT_EQ(file.close(), status::ok);
}

TEST_F(TextOutputs, APipeWithoutAReaderIsAFailedOpen) {
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  TextOutput file;
  EXPECT_EQ(file.create(disk_, "pipe"), Status(ENXIO));
}

TEST_F(TextOutputs, APipeIsWrittenDirectly) {
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  const int reader = open("pipe", O_RDONLY | O_NONBLOCK);
  write_whole("pipe", "new");
  char read_back[10] = {};
  EXPECT_EQ(read(reader, read_back, sizeof read_back), 4);
  EXPECT_STREQ(read_back, "new\n");
  close(reader);
  expect_only({"pipe"});
}

TEST_F(TextOutputs, APipeWhoseReaderGoesAwayIsAFailureAndNotTheEndOfTheProgram) {
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  const int reader = open("pipe", O_RDONLY | O_NONBLOCK);
  TextOutput file;
  ASSERT_EQ(file.create(disk_, "pipe"), status::ok);
  close(reader);
  EXPECT_EQ(file.write(line_, "new"), status::ok);
  EXPECT_EQ(file.close(), Status(EPIPE));
}

TEST_F(TextOutputs, APipeThatIsNotReadFromDoesNotKeepTheProgramForEver) {
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  const int reader = open("pipe", O_RDONLY | O_NONBLOCK);
  TextOutput file;
  ASSERT_EQ(file.create(disk_, "pipe"), status::ok);
  Status told;
  for (int k = 0; k < 1000 && !told; ++k) told = file.write(line_, std::string(1000, 'x'));
  EXPECT_EQ(told, Status(ETIMEDOUT));
  close(reader);
}

TEST_F(TextOutputs, APipeThatIsReadSlowlyIsWaitedFor) {
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  const int reader = open("pipe", O_RDONLY | O_NONBLOCK);
  std::size_t came = 0;
  std::thread slow([&] {
    std::vector<char> bytes(10'000);
    for (int empty = 0; came < 200'200 && empty < 10'000; ++empty) {
      const auto count = read(reader, bytes.data(), bytes.size());
      if (count > 0) came += static_cast<std::size_t>(count);
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  });
  TextOutput file;
  EXPECT_EQ(file.create(disk_, "pipe"), status::ok);
  for (int k = 0; k < 200; ++k) EXPECT_EQ(file.write(line_, std::string(1000, 'x')), status::ok);
  EXPECT_EQ(file.close(), status::ok);
  slow.join();
  close(reader);
  EXPECT_EQ(came, 200'200u);
}

// Where a user may write so much and no more, the system would end a program that writes on.
TEST_F(TextOutputs, AFileThatMayNotGrowFurtherIsAFailureAndNotTheEndOfTheProgram) {
  ScratchFolder::write("file.txt", "old\n");
  chmod(".", 0777);
  EXPECT_EQ(as_ordinary_user([] {
              const rlimit little{1000, 1000};
              setrlimit(RLIMIT_FSIZE, &little);
              TextOutput file;
              if (file.create(disk_, "./new.txt") != status::ok) return Status(1);
              if (file.write(line_, std::string(2000, 'x')) != status::ok) return Status(2);
              return file.close();
            }),
            Status(EFBIG));
  EXPECT_EQ(ScratchFolder::read("file.txt"), "old\n");
  expect_only({"file.txt"});
}

TEST_F(TextOutputs, FoldersBlankNamesAndMissingFoldersAreFailedOpens) {
  fs::create_directory("folder");
  TextOutput file;
  EXPECT_EQ(file.create(disk_, "folder"), Status(21));
  EXPECT_EQ(file.append(disk_, "folder"), Status(21));
  EXPECT_EQ(file.create(disk_, "   "), Status(2));
  EXPECT_EQ(file.append(disk_, ""), Status(2));
  EXPECT_EQ(file.create(disk_, "missing/file.txt"), Status(2));
  EXPECT_EQ(file.append(disk_, "missing.txt"), Status(2));
  expect_only({"folder"});
}

TEST_F(TextOutputs, AfterAFailedOpenWritesAndClosingDoNothing) {
  TextOutput file;
  EXPECT_EQ(file.create(disk_, "missing/file.txt"), Status(2));
  EXPECT_EQ(file.write(line_, "new"), status::ok);
  EXPECT_EQ(file.close(), status::ok);
  expect_only({});
}

TEST_F(TextOutputs, AFileThatMayNotBeWrittenGives13AndStays) {
  ScratchFolder::write("file.txt", "old\n");
  chmod("file.txt", 0444);
  chmod(".", 0777);
  EXPECT_EQ(as_ordinary_user([] { return TextOutput().create(disk_, "file.txt"); }), Status(13));
  EXPECT_EQ(as_ordinary_user([] { return TextOutput().append(disk_, "file.txt"); }), Status(13));
  EXPECT_EQ(ScratchFolder::read("file.txt"), "old\n");
  expect_only({"file.txt"});
}

TEST_F(TextOutputs, AFolderThatMayNotBeWrittenGivesTheNumberOfMakingTheNeighbour) {
  ScratchFolder::write("file.txt", "old\n");
  chmod("file.txt", 0666);
  chmod(".", 0555);
  EXPECT_EQ(as_ordinary_user([] { return TextOutput().create(disk_, "file.txt"); }), Status(13));
  EXPECT_EQ(as_ordinary_user([] { return TextOutput().create(disk_, "new.txt"); }), Status(13));
  chmod(".", 0755);
  EXPECT_EQ(ScratchFolder::read("file.txt"), "old\n");
  expect_only({"file.txt"});
}

TEST_F(TextOutputs, AKilledWriterCostsNothingAndWhatItLeavesDoesNotBlock) {
  ScratchFolder::write("file.txt", "old\n");
  const pid_t child = fork();
  if (child == 0) {
    TextOutput file;
    file.create(disk_, "file.txt");
    for (int k = 0; k < 1000; ++k) file.write(line_, std::string(1000, 'x'));
    raise(SIGKILL);
  }
  int ended = 0;
  ASSERT_EQ(waitpid(child, &ended, 0), child);
  ASSERT_TRUE(WIFSIGNALED(ended));
  EXPECT_EQ(ScratchFolder::read("file.txt"), "old\n");
  ASSERT_EQ(neighbours().size(), 1u);
  EXPECT_GT(fs::file_size(neighbours().front()), 0u);

  write_whole("file.txt", "new");
  EXPECT_EQ(ScratchFolder::read("file.txt"), "new\n");
  expect_only({"file.txt"});
}

// Others who may write in the folder cannot have something waiting where the file will be made, and a link
// that looks as if it had been left over leads nowhere.
TEST_F(TextOutputs, PlantedLinksAreNeitherFollowedNorMinded) {
  ScratchFolder::write("precious.txt", "precious\n");
  for (const char* link : {"file.txt.vorn-part", "file.txt.0123456789abcdef.vorn-part"}) {
    fs::create_symlink("precious.txt", link);
  }
  write_whole("file.txt", "new");
  EXPECT_EQ(ScratchFolder::read("precious.txt"), "precious\n");
  EXPECT_EQ(ScratchFolder::read("file.txt"), "new\n");
  EXPECT_FALSE(fs::is_symlink("file.txt"));
  EXPECT_EQ(os::File().make("file.txt.vorn-part", true), EEXIST);
}

TEST_F(TextOutputs, NoNeighbourHasANameThatOneHadBefore) {
  std::set<std::string> names;
  for (int k = 0; k < 20; ++k) {
    TextOutput file;
    ASSERT_EQ(file.create(disk_, "file.txt"), status::ok);
    ASSERT_EQ(neighbours().size(), 1u);
    names.insert(neighbours().front());
  }
  EXPECT_EQ(names.size(), 20u);
}

TEST_F(TextOutputs, WhatOtherFilesHaveBesideThemStays) {
  const std::set<std::string> others = {"file.txt.bak.0123456789abcdef.vorn-part", "file.txt.short.vorn-part",
                                        "my file.txt.0123456789abcdef.vorn-part"};
  for (const std::string& name : others) ScratchFolder::write(name, "other\n");
  write_whole("file.txt", "new");
  fs::remove("file.txt");
  expect_only(others);
}

TEST_F(TextOutputs, OfTwoThatWriteTheSameFileEachIsWholeAndTheLaterOneStands) {
  TextOutput first, second;
  ASSERT_EQ(first.create(disk_, "file.txt"), status::ok);
  EXPECT_EQ(first.write(line_, "first"), status::ok);
  ASSERT_EQ(second.create(disk_, "file.txt"), status::ok);
  EXPECT_EQ(second.write(line_, "second"), status::ok);
  EXPECT_EQ(first.close(), status::ok);
  EXPECT_EQ(ScratchFolder::read("file.txt"), "first\n");
  EXPECT_EQ(second.close(), status::ok);
  EXPECT_EQ(ScratchFolder::read("file.txt"), "second\n");
  expect_only({"file.txt"});
}

TEST_F(TextOutputs, AFileThatAnotherProgramHasLockedForGoodIsNotReplaced) {
  ScratchFolder::write("file.txt", "old\n");
  const int locked = open("file.txt", O_RDWR);
  ASSERT_EQ(flock(locked, LOCK_EX), 0);
  EXPECT_EQ(write_whole_quietly("file.txt", "new"), status::busy);
  close(locked);
  EXPECT_EQ(ScratchFolder::read("file.txt"), "old\n");
  expect_only({"file.txt"});
}

// Two programs that begin at the same microsecond, again and again.
class TwoPrograms : public TextOutputs {
 protected:
  static constexpr int times = 100;

  // Does `work` in two processes at once, each knowing its letter. Answers what they answer together, -1
  // where one of them does not come to its end.
  static int together(const std::function<int(char letter)>& work) {
    pid_t children[2] = {};
    for (int k = 0; k < 2; ++k) {
      children[k] = fork();
      if (children[k] == 0) _exit(work("ab"[k]));
    }
    int sum = 0;
    for (const pid_t child : children) {
      int ended = 0;
      waitpid(child, &ended, 0);
      if (!WIFEXITED(ended)) return -1;
      sum += WEXITSTATUS(ended);
    }
    return sum;
  }
};

TEST_F(TwoPrograms, SavingOneFileAlwaysLeaveAWholeOne) {
  constexpr std::size_t lines = 100, length = 1000;
  const auto is_whole = [](const std::string& text) {
    std::string whole;
    for (std::size_t k = 0; !text.empty() && k < lines; ++k) whole += std::string(length, text[0]) + "\n";
    return text == whole;
  };
  const int failures = together([&](char letter) {
    int failed = 0;
    for (int k = 0; k < times && failed < 100; ++k) {
      TextOutput file;
      failed += file.create(disk_, "file.txt") != status::ok;
      for (std::size_t line = 0; line < lines; ++line) {
        failed += file.write(line_, std::string(length, letter)) != status::ok;
      }
      failed += file.close() != status::ok;
      failed += !is_whole(ScratchFolder::read("file.txt"));
    }
    return failed;
  });
  EXPECT_EQ(failures, 0);
  expect_only({"file.txt"});
}

// Of what was said to be written nothing is lost; the others are told that it was not.
TEST_F(TwoPrograms, AddingToOneFileLoseNothingThatTheySaidWasAdded) {
  ScratchFolder::write("file.txt", "");
  const int refused = together([&](char letter) {
    int busy = 0;
    for (int k = 0; k < 100; ++k) {
      TextOutput file;
      Status answer = file.append(disk_, "file.txt");
      if (answer == status::ok) answer = file.write(line_, std::string(1, letter));
      if (answer == status::ok) answer = file.close();
      if (answer != status::ok && answer != status::busy) return 250;
      busy += answer == status::busy;
    }
    return busy;
  });
  ASSERT_LE(refused, 200);
  const std::string all = ScratchFolder::read("file.txt");
  EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 200 - refused);
  expect_only({"file.txt"});
}

TEST_F(TextOutputs, AppendedRecordsFollowTheOlderOnes) {
  EXPECT_EQ(appended("one\ntwo\n"), "one\ntwo\nnew\n");
  EXPECT_EQ(appended("one\r\ntwo\r\n"), "one\r\ntwo\r\nnew\n");
  EXPECT_EQ(appended("one\rtwo\r"), "one\rtwo\rnew\n");
  EXPECT_EQ(appended(""), "new\n");
  EXPECT_EQ(appended("\n\n"), "\n\nnew\n");
  expect_only({"file.txt"});
}

TEST_F(TextOutputs, ALastLineWithoutAnEndIsGivenOneBeforeRecordsAreAppended) {
  EXPECT_EQ(appended("one\ntwo"), "one\ntwo\nnew\n");
  EXPECT_EQ(appended("one\n "), "one\n \nnew\n");
}

TEST_F(TextOutputs, ATrailingCtrlZIsTakenAwayBeforeRecordsAreAppended) {
  EXPECT_EQ(appended("one\n\x1a"), "one\nnew\n");
  EXPECT_EQ(appended("one\r\n\x1a\x1a\x1a"), "one\r\nnew\n");
  EXPECT_EQ(appended("one\x1a"), "one\nnew\n");
  EXPECT_EQ(appended("one\n\x1a\r\n"), "one\nnew\n");
  EXPECT_EQ(appended("\x1a"), "new\n");
  EXPECT_EQ(appended("\x1a\n"), "new\n");
}

TEST_F(TextOutputs, CtrlZElsewhereStaysWhenRecordsAreAppended) {
  EXPECT_EQ(appended("\x1a\none\n"), "\x1a\none\nnew\n");
  EXPECT_EQ(appended("one\x1a\n"), "one\x1a\nnew\n");
  EXPECT_EQ(appended("\x1a\n\n"), "\x1a\n\nnew\n");
}

// The end of the file falls on every place around the end of a block.
TEST_F(TextOutputs, FilesOfEveryLengthAreCopiedWholeBeforeRecordsAreAppended) {
  for (std::size_t length = 65530; length <= 65540; ++length) {
    const std::string text(length, 'x');
    ASSERT_EQ(appended(text + "\r\n\x1a\x1a"), text + "\r\nnew\n") << length;
    ASSERT_EQ(appended(text), text + "\nnew\n") << length;
  }
}

// More empty lines than an end of a text is held back for.
TEST_F(TextOutputs, MillionsOfEmptyLinesAreCopiedWholeBeforeRecordsAreAppended) {
  const std::string empty_lines(std::size_t{3} << 20, '\n');
  EXPECT_TRUE(appended("one" + empty_lines + "\x1a") == "one" + empty_lines + "new\n");
  EXPECT_TRUE(appended(empty_lines + "one") == empty_lines + "one\nnew\n");
}

TEST_F(TextOutputs, AnAppendThatIsNotClosedLeavesTheOlderFileAsItWas) {
  ScratchFolder::write("file.txt", "old\x1a");
  {
    TextOutput file;
    ASSERT_EQ(file.append(disk_, "file.txt"), status::ok);
    EXPECT_EQ(file.write(line_, "new"), status::ok);
  }
  EXPECT_EQ(ScratchFolder::read("file.txt"), "old\x1a");
  expect_only({"file.txt"});
}

TEST_F(TextOutputs, WhatIsPutInThePlaceOfAFileBeingMadeDoesNotBecomeThatFile) {
  ScratchFolder::write("file.txt", "old\n");
  TextOutput file;
  ASSERT_EQ(file.create(disk_, "file.txt"), status::ok);
  EXPECT_EQ(file.write(line_, "mine"), status::ok);
  ASSERT_EQ(neighbours().size(), 1u);
  const std::string neighbour = neighbours().front();
  ScratchFolder::write("other", "theirs\n");
  fs::rename("other", neighbour);
  EXPECT_EQ(file.close(), status::busy);
  EXPECT_EQ(ScratchFolder::read("file.txt"), "old\n");
  EXPECT_EQ(ScratchFolder::read(neighbour), "theirs\n");
}

// Two programs may work in one folder: what the other one has added must not be lost.
TEST_F(TextOutputs, AFileThatSomebodyElseChangesMeanwhileIsNotReplacedByWhatWasAdded) {
  const std::function<void()> changes[] = {[] { ScratchFolder::write("file.txt", "old\ntheirs\n"); },
                                           [] {
                                             ScratchFolder::write("other", "theirs\n");
                                             fs::rename("other", "file.txt");
                                           }};
  for (const auto& change : changes) {
    ScratchFolder::write("file.txt", "old\n");
    TextOutput file;
    ASSERT_EQ(file.append(disk_, "file.txt"), status::ok);
    EXPECT_EQ(file.write(line_, "mine"), status::ok);
    change();
    const std::string theirs = ScratchFolder::read("file.txt");
    EXPECT_EQ(file.close(), status::busy);
    EXPECT_EQ(ScratchFolder::read("file.txt"), theirs);
    expect_only({"file.txt"});
  }
  TextOutput file;
  ASSERT_EQ(file.append(disk_, "file.txt"), status::ok);
  fs::remove("file.txt");
  EXPECT_EQ(file.close(), status::no_such_file);
  expect_only({});
}

TEST_F(TextOutputs, AFolderThatComesInThePlaceOfTheFileMeanwhileIsToldByTheClosing) {
  TextOutput file;
  ASSERT_EQ(file.create(disk_, "file.txt"), status::ok);
  fs::create_directory("file.txt");
  EXPECT_EQ(file.close(), status::a_folder);
  expect_only({"file.txt"});
}

TEST_F(TextOutputs, AMovedOutputGoesOn) {
  TextOutput first;
  ASSERT_EQ(first.create(disk_, "file.txt"), status::ok);
  EXPECT_EQ(first.write(line_, "one"), status::ok);
  TextOutput second(std::move(first));
  EXPECT_EQ(second.write(line_, "two"), status::ok);
  EXPECT_EQ(second.close(), status::ok);
  EXPECT_EQ(first.close(), status::ok);  // NOLINT: what was moved from is empty
  EXPECT_EQ(ScratchFolder::read("file.txt"), "one\ntwo\n");
}

}  // namespace
}  // namespace vorn
