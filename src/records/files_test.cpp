// What every place of files keeps to, whether it is a folder of the disk or memory.
#include "records/files.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "records/disk_files.h"
#include "records/memory_files.h"
#include "records/text_file.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

// A place of files, and how a test puts some there.
class Place {
 public:
  virtual ~Place() = default;
  virtual Files& files() = 0;
  virtual void make_folder(const std::string& name) = 0;
};

class DiskPlace : public Place {
 public:
  Files& files() override { return files_; }
  void make_folder(const std::string& name) override { std::filesystem::create_directory(name); }

 private:
  ScratchFolder folder_;
  DiskFiles files_;
};

// One that is not the folder which the process is in.
class OtherFolder : public Place {
 public:
  OtherFolder() { std::filesystem::create_directory("other"); }
  Files& files() override { return files_; }
  void make_folder(const std::string& name) override { std::filesystem::create_directory("other/" + name); }

 private:
  ScratchFolder folder_;
  DiskFiles files_{"other"};
};

class MemoryPlace : public Place {
 public:
  Files& files() override { return files_; }
  void make_folder(const std::string& name) override { files_.make_folder(name); }

 private:
  MemoryFiles files_;
};

struct Kind {
  const char* name;
  std::unique_ptr<Place> (*make)();
};

template <class Made>
std::unique_ptr<Place> made() {
  return std::make_unique<Made>();
}

class EveryPlace : public testing::TestWithParam<Kind> {
 protected:
  void put(const std::string& name, std::string_view bytes) {
    EXPECT_EQ(write_whole(files, name, bytes), status::ok);
  }

  std::string rest_of(ByteSource& source) {
    std::string all;
    std::vector<char> piece(7);
    for (std::size_t count = 1; count > 0; all.append(piece.data(), count)) {
      EXPECT_EQ(source.read(piece, count), status::ok);
    }
    EXPECT_EQ(source.close(), status::ok);
    return all;
  }
  std::string contents(const std::string& name) {
    std::unique_ptr<ByteSource> source;
    EXPECT_EQ(files.open(name, source), status::ok) << name;
    return source ? rest_of(*source) : "cannot be opened";
  }
  FileKind kind(const std::string& name) {
    auto found = FileKind::other;
    EXPECT_EQ(files.look_at(name, found), status::ok);
    return found;
  }

  std::unique_ptr<Place> place_ = GetParam().make();
  Files& files = place_->files();
  std::unique_ptr<ByteSource> source_;
  std::unique_ptr<ByteSink> sink_;
};

TEST_P(EveryPlace, WhatIsWrittenStandsThere) {
  EXPECT_EQ(kind("a.txt"), FileKind::missing);
  put("a.txt", "one\r\ntwo");
  EXPECT_EQ(kind("a.txt"), FileKind::regular);
  EXPECT_EQ(contents("a.txt"), "one\r\ntwo");
  EXPECT_EQ(contents("./a.txt"), "one\r\ntwo");
  put("a.txt", "");
  EXPECT_EQ(contents("a.txt"), "");
}

TEST_P(EveryPlace, AFileTellsItsSizeBeforehand) {
  put("a.txt", std::string(100'000, 'x'));
  ASSERT_EQ(files.open("a.txt", source_), status::ok);
  EXPECT_EQ(source_->expected_size(), 100'000u);
  EXPECT_EQ(rest_of(*source_).size(), 100'000u);
  put("a.txt", "");
  ASSERT_EQ(files.open("a.txt", source_), status::ok);
  EXPECT_EQ(source_->expected_size(), 0u);
}

TEST_P(EveryPlace, InAMissingFolderAndInAFileNothingIsThere) {
  put("a.txt", "");
  EXPECT_EQ(kind("folder/b.txt"), FileKind::missing);
  EXPECT_EQ(kind("a.txt/b.txt"), FileKind::missing);
}

TEST_P(EveryPlace, AFileTakesItsPlaceWhenItIsCommittedAndNotBefore) {
  put("a.txt", "old");
  ASSERT_EQ(files.make("a.txt", sink_), status::ok);
  EXPECT_EQ(sink_->write("new, "), status::ok);
  EXPECT_EQ(sink_->write("in two pieces"), status::ok);
  EXPECT_EQ(contents("a.txt"), "old");
  EXPECT_EQ(sink_->commit(), status::ok);
  sink_.reset();
  EXPECT_EQ(contents("a.txt"), "new, in two pieces");
}

TEST_P(EveryPlace, AFileThatIsNotCommittedLeavesTheOlderOneOrNone) {
  put("a.txt", "old");
  for (const char* name : {"a.txt", "b.txt"}) {
    ASSERT_EQ(files.make(name, sink_), status::ok);
    EXPECT_EQ(sink_->write("new"), status::ok);
    sink_.reset();
  }
  EXPECT_EQ(contents("a.txt"), "old");
  EXPECT_EQ(kind("b.txt"), FileKind::missing);
}

TEST_P(EveryPlace, AFileBeingReadStaysAsItWasWhenItWasOpened) {
  put("a.txt", "the old one");
  ASSERT_EQ(files.open("a.txt", source_), status::ok);
  put("a.txt", "the new one");
  EXPECT_EQ(rest_of(*source_), "the old one");
  EXPECT_EQ(contents("a.txt"), "the new one");
}

TEST_P(EveryPlace, AFileCanBeExtended) {
  put("a.txt", "old");
  ASSERT_EQ(files.extend("a.txt", source_, sink_), status::ok);
  EXPECT_EQ(sink_->write(rest_of(*source_) + " and new"), status::ok);
  EXPECT_EQ(contents("a.txt"), "old");
  EXPECT_EQ(sink_->commit(), status::ok);
  EXPECT_EQ(contents("a.txt"), "old and new");
}

TEST_P(EveryPlace, WhatSomebodyElseAddedMeanwhileIsNotLost) {
  put("a.txt", "old");
  ASSERT_EQ(files.extend("a.txt", source_, sink_), status::ok);
  put("a.txt", "theirs");
  EXPECT_EQ(sink_->write("mine"), status::ok);
  EXPECT_EQ(sink_->commit(), status::busy);
  EXPECT_EQ(contents("a.txt"), "theirs");
}

TEST_P(EveryPlace, AFileThatIsNotThereIsNeitherOpenedNorExtended) {
  EXPECT_EQ(files.open("a.txt", source_), status::no_such_file);
  EXPECT_EQ(files.extend("a.txt", source_, sink_), status::no_such_file);
  EXPECT_EQ(source_, nullptr);
  EXPECT_EQ(sink_, nullptr);
}

TEST_P(EveryPlace, AFolderIsNoFile) {
  place_->make_folder("folder");
  EXPECT_EQ(kind("folder"), FileKind::folder);
  EXPECT_EQ(kind("."), FileKind::folder);
  EXPECT_EQ(files.open("folder", source_), status::a_folder);
  EXPECT_EQ(files.make("folder", sink_), status::a_folder);
  EXPECT_EQ(files.extend("folder", source_, sink_), status::a_folder);
  ASSERT_EQ(files.make("later", sink_), status::ok);
  place_->make_folder("later");
  EXPECT_EQ(sink_->commit(), status::a_folder);
}

TEST_P(EveryPlace, FilesLieInFoldersThatAreThere) {
  EXPECT_EQ(files.make("folder/a.txt", sink_), status::no_such_file);
  place_->make_folder("folder");
  put("folder/a.txt", "new");
  EXPECT_EQ(contents("folder/a.txt"), "new");
  EXPECT_EQ(contents("folder/../folder/a.txt"), "new");
  EXPECT_EQ(kind("a.txt"), FileKind::missing);
  EXPECT_NE(files.make("folder/a.txt/b.txt", sink_), status::ok);
}

TEST_P(EveryPlace, TextFilesAreReadWrittenAndAddedTo) {
  const EditFormat line("(A4,I4)");
  TextOutput out;
  ASSERT_EQ(out.create(files, "a.txt   "), status::ok);
  EXPECT_EQ(out.write(line, "CORE", 1), status::ok);
  EXPECT_EQ(out.close(), status::ok);
  EXPECT_TRUE(file_exists(files, "a.txt   "));
  EXPECT_FALSE(file_exists(files, "b.txt"));
  ASSERT_EQ(out.append(files, "a.txt"), status::ok);
  EXPECT_EQ(out.write(line, "TREE", 2), status::ok);
  EXPECT_EQ(out.close(), status::ok);
  EXPECT_EQ(contents("a.txt"), "CORE   1\nTREE   2\n");

  TextInput in;
  Text<4> name;
  std::int32_t number = 0;
  ASSERT_EQ(in.open(files, "a.txt"), status::ok);
  EXPECT_EQ(in.read(line, name, number), status::ok);
  EXPECT_EQ(in.read(line, name, number), status::ok);
  EXPECT_EQ(name.trimmed(), "TREE");
  EXPECT_EQ(number, 2);
  EXPECT_EQ(in.read(line, name, number), status::end_of_file);
}

TEST_P(EveryPlace, NothingIsWrittenUnderNoName) {
  EXPECT_EQ(write_whole(files, "", "new"), status::no_such_file);
  EXPECT_EQ(write_whole(files, std::string_view("a\0b", 3), "new"), status::no_such_file);
  EXPECT_EQ(kind("a"), FileKind::missing);
}

INSTANTIATE_TEST_SUITE_P(Files, EveryPlace,
                         testing::Values(Kind{"Disk", made<DiskPlace>},
                                         Kind{"OtherFolder", made<OtherFolder>},
                                         Kind{"Memory", made<MemoryPlace>}),
                         [](const auto& place) { return std::string(place.param.name); });

// What cannot be looked at is not said to be missing: its opening tells why.
TEST(FileExists, SaysNoOnlyOfWhatIsMissing) {
  MemoryFiles files;
  files.put("site/a.rwl", "rings");
  files.refuse("site/c.rwl", Status(EACCES));
  files.refuse("site/d.rwl", Status(EIO));
  EXPECT_TRUE(file_exists(files, "site/a.rwl"));
  EXPECT_TRUE(file_exists(files, "site"));
  EXPECT_FALSE(file_exists(files, "site/b.rwl"));
  EXPECT_FALSE(file_exists(files, "other/b.rwl"));
  EXPECT_FALSE(file_exists(files, "   "));
  EXPECT_TRUE(file_exists(files, "site/c.rwl"));
  EXPECT_TRUE(file_exists(files, "site/d.rwl"));
  EXPECT_EQ(TextInput().open(files, "site/d.rwl"), Status(EIO));
}

TEST(MemoryFiles, TellWhatTheyHold) {
  MemoryFiles files;
  files.put("site/a.rwl", "rings");
  EXPECT_EQ(files.contents("./site/a.rwl"), "rings");
  EXPECT_EQ(files.contents("a.rwl"), std::nullopt);
  EXPECT_EQ(write_whole(files, "site/b.rwl", "more"), status::ok);
  EXPECT_EQ(files.contents("site/b.rwl"), "more");
}

TEST(MemoryFiles, RefuseWhatTheyAreToldTo) {
  MemoryFiles files;
  files.put("a.rwl", "rings");
  files.refuse("a.rwl", Status(EACCES));
  std::unique_ptr<ByteSource> source;
  std::unique_ptr<ByteSink> sink;
  EXPECT_EQ(files.open("a.rwl", source), Status(EACCES));
  EXPECT_EQ(files.make("a.rwl", sink), Status(EACCES));
  EXPECT_EQ(files.extend("a.rwl", source, sink), Status(EACCES));
  EXPECT_EQ(files.contents("a.rwl"), "rings");
}

TEST(DiskFiles, AbsolutePathsLeadOutOfTheFolder) {
  const ScratchFolder scratch;
  std::filesystem::create_directory("folder");
  DiskFiles files("folder");
  const std::string path = (scratch.path() / "outside.txt").string();
  EXPECT_EQ(write_whole(files, path, "new"), status::ok);
  EXPECT_EQ(ScratchFolder::read("outside.txt"), "new");
}

}  // namespace
}  // namespace vorn
