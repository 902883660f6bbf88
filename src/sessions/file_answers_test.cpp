// Answers of files, kept and given again.
#include "sessions/file_answers.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <optional>

#include "records/memory_files.h"

namespace vorn {
namespace {

using Kind = FileAnswer::Kind;

// A port that fails wherever it is told to.
class FailingFiles : public Files {
 public:
  MemoryFiles memory;
  std::optional<std::size_t> reads_before_failure, writes_before_failure;
  Status close_status, commit_status;
  std::uint64_t expected_size = 0;
  int calls = 0;

  Status look_at(const std::string& name, FileKind& kind) override {
    ++calls;
    return memory.look_at(name, kind);
  }
  Status open(const std::string& name, std::unique_ptr<ByteSource>& source) override {
    ++calls;
    std::unique_ptr<ByteSource> real;
    const Status status = memory.open(name, real);
    if (status == status::ok) source = std::make_unique<Source>(*this, std::move(real));
    return status;
  }
  Status make(const std::string& name, std::unique_ptr<ByteSink>& sink) override {
    ++calls;
    std::unique_ptr<ByteSink> real;
    const Status status = memory.make(name, real);
    if (status == status::ok) sink = std::make_unique<Sink>(*this, std::move(real));
    return status;
  }
  Status extend(const std::string& name, std::unique_ptr<ByteSource>& older,
                std::unique_ptr<ByteSink>& sink) override {
    ++calls;
    std::unique_ptr<ByteSink> real;
    const Status status = memory.extend(name, older, real);
    if (status == status::ok) sink = std::make_unique<Sink>(*this, std::move(real));
    return status;
  }

 private:
  class Source : public ByteSource {
   public:
    Source(FailingFiles& files, std::unique_ptr<ByteSource> real) : files_(files), real_(std::move(real)) {}
    Status read(std::span<char> buffer, std::size_t& count) override {
      count = 0;
      if (files_.reads_before_failure && reads_++ == *files_.reads_before_failure) return Status(EIO);
      return real_->read(buffer.first(std::min<std::size_t>(buffer.size(), 4)), count);
    }
    std::uint64_t expected_size() const override { return files_.expected_size; }
    Status close() override { return files_.close_status; }

   private:
    FailingFiles& files_;
    std::unique_ptr<ByteSource> real_;
    std::size_t reads_ = 0;
  };
  class Sink : public ByteSink {
   public:
    Sink(FailingFiles& files, std::unique_ptr<ByteSink> real) : files_(files), real_(std::move(real)) {}
    Status write(std::string_view bytes) override {
      if (files_.writes_before_failure && writes_++ == *files_.writes_before_failure) return Status(ENOSPC);
      return real_->write(bytes);
    }
    Status commit() override { return files_.commit_status ? files_.commit_status : real_->commit(); }

   private:
    FailingFiles& files_;
    std::unique_ptr<ByteSink> real_;
    std::size_t writes_ = 0;
  };
};

class Answers : public ::testing::Test {
 protected:
  Answers() {
    disk.memory.put("oak.rwl", "rings of oaks");
    disk.memory.make_folder("folder");
    disk.memory.put("shut.rwl", "secret");
    disk.memory.refuse("shut.rwl", Status(EACCES));
    files.kept = [this](std::size_t place) { told.push_back(place); };
  }

  // --- What a program does, told in words.
  static std::string say(Status status) { return std::to_string(status.number()); }
  std::string look(const std::string& name) {
    FileKind kind = FileKind::missing;
    const Status status = files.look_at(name, kind);
    return say(status) + " " + std::to_string(static_cast<int>(kind));
  }
  static std::string read_all(ByteSource& source) {
    std::string bytes;
    std::array<char, 3> buffer{};
    for (std::size_t count = 1; count > 0;) {
      const Status status = source.read(buffer, count);
      if (status != status::ok) return bytes + " then " + say(status) + ", closed " + say(source.close());
      bytes.append(buffer.data(), count);
    }
    return bytes + ", closed " + say(source.close());
  }
  std::string read(const std::string& name) {
    std::unique_ptr<ByteSource> source;
    const Status status = files.open(name, source);
    return status == status::ok ? read_all(*source) : "not opened " + say(status);
  }
  static std::string write_all(ByteSink& sink, const std::vector<std::string>& pieces) {
    for (const std::string& piece : pieces) {
      if (const Status status = sink.write(piece)) return "refused " + say(status);
    }
    return "committed " + say(sink.commit());
  }
  std::string make(const std::string& name, const std::vector<std::string>& pieces) {
    std::unique_ptr<ByteSink> sink;
    const Status status = files.make(name, sink);
    return status == status::ok ? write_all(*sink, pieces) : "not made " + say(status);
  }
  std::string extend(const std::string& name, const std::vector<std::string>& pieces) {
    std::unique_ptr<ByteSource> older;
    std::unique_ptr<ByteSink> sink;
    if (const Status status = files.extend(name, older, sink)) return "not begun " + say(status);
    const std::string was = older ? read_all(*older) : "nothing";
    sink->write(was.substr(0, was.find(',')));
    return was + ", " + write_all(*sink, pieces);
  }

  // Goes through `deeds` for real, then on its answers while the disk holds nothing any more; both must be
  // told alike.
  template <class Deeds>
  std::string twice(Deeds deeds) {
    const std::string really = deeds();
    disk.memory = MemoryFiles();
    disk.reads_before_failure = disk.writes_before_failure = {};
    disk.close_status = disk.commit_status = {};
    const int calls = disk.calls;
    told.clear();
    files.begin_again(files.answers(), &replayed);
    EXPECT_EQ(deeds(), really);
    EXPECT_EQ(disk.calls, calls) << "nothing is touched";
    EXPECT_TRUE(told.empty()) << "nothing is new";
    EXPECT_FALSE(files.is_replaying());
    EXPECT_FALSE(files.is_astray());
    return really;
  }

  FailingFiles disk;
  AnsweredFiles files{disk};
  MemoryFiles replayed;
  std::vector<std::size_t> told;
};

TEST_F(Answers, AreGivenAgainForWhatWasLookedAt) {
  EXPECT_EQ(twice([this] { return look("oak.rwl") + ", " + look("gone") + ", " + look("folder"); }),
            "0 1, 0 0, 0 2");
}

TEST_F(Answers, AreGivenAgainForALookThatFailed) {
  EXPECT_EQ(twice([this] { return look("shut.rwl"); }), "13 0");
}

TEST_F(Answers, AreGivenAgainForFilesThatWereRead) {
  EXPECT_EQ(twice([this] { return read("oak.rwl"); }), "rings of oaks, closed 0");
}

TEST_F(Answers, AreGivenAgainForFilesThatCouldNotBeOpened) {
  EXPECT_EQ(twice([this] { return read("gone") + ", " + read("folder") + ", " + read("shut.rwl"); }),
            "not opened 2, not opened 21, not opened 13");
}

TEST_F(Answers, AreGivenAgainForAFailureInTheMiddleOfReading) {
  disk.reads_before_failure = 2;
  EXPECT_EQ(twice([this] { return read("oak.rwl"); }), "rings of then 5, closed 0");
}

TEST_F(Answers, AreGivenAgainForAFailureAtTheClosing) {
  disk.close_status = Status(EIO);
  EXPECT_EQ(twice([this] { return read("oak.rwl"); }), "rings of oaks, closed 5");
}

TEST_F(Answers, AreGivenAgainForFilesThatWereMade) {
  EXPECT_EQ(twice([this] { return make("new.rwl", {"a", "b", "c"}); }), "committed 0");
  EXPECT_EQ(replayed.contents("new.rwl"), "abc") << "the replay's own copy";
  ASSERT_EQ(files.answers().size(), 1u);
  EXPECT_EQ(files.answers()[0].pieces, 3u);
  EXPECT_TRUE(files.answers()[0].is_committed);
}

TEST_F(Answers, AreGivenAgainForFilesThatCouldNotBeMade) {
  EXPECT_EQ(twice([this] { return make("folder", {}) + ", " + make("no/where", {}); }),
            "not made 21, not made 2");
}

TEST_F(Answers, AreGivenAgainForAPieceThatWasRefused) {
  disk.writes_before_failure = 2;
  EXPECT_EQ(twice([this] { return make("new.rwl", {"a", "b", "c"}); }), "refused 28");
  EXPECT_FALSE(replayed.contents("new.rwl"));
  EXPECT_EQ(files.answers()[0].pieces, 2u);
  EXPECT_FALSE(files.answers()[0].is_committed);
}

TEST_F(Answers, AreGivenAgainForACommitThatFailed) {
  disk.commit_status = Status(EBUSY);
  EXPECT_EQ(twice([this] { return make("new.rwl", {"a"}); }), "committed 16");
  EXPECT_FALSE(replayed.contents("new.rwl"));
}

TEST_F(Answers, AreGivenAgainForFilesThatWereAddedTo) {
  EXPECT_EQ(twice([this] { return extend("oak.rwl", {" and elms"}); }),
            "rings of oaks, closed 0, committed 0");
  EXPECT_EQ(replayed.contents("oak.rwl"), "rings of oaks and elms");
}

TEST_F(Answers, AreGivenAgainForFilesThatCouldNotBeAddedTo) {
  EXPECT_EQ(twice([this] { return extend("gone", {}) + ", " + extend("shut.rwl", {}); }),
            "not begun 2, not begun 13");
}

TEST_F(Answers, AreToldWhenTheyAreNewAndWhenTheirEndIsKnown) {
  make("new.rwl", {"a"});
  EXPECT_EQ(told, (std::vector<std::size_t>{0, 0}));
  disk.writes_before_failure = 0;
  make("other.rwl", {"a"});
  EXPECT_EQ(told, (std::vector<std::size_t>{0, 0, 1, 1}));
}

TEST_F(Answers, KeepTheSameContentsOnce) {
  read("oak.rwl");
  read("oak.rwl");
  EXPECT_EQ(files.answers()[0].contents, files.answers()[1].contents);
  disk.memory.put("oak.rwl", "other rings");
  read("oak.rwl");
  EXPECT_NE(files.answers()[0].contents, files.answers()[2].contents);
}

// However the contents begin, and wherever they part from those before.
TEST_F(Answers, KeepWhatEachReadingFound) {
  const std::vector<std::string> contents = {"rings of oaks",
                                             "rings of oak",
                                             "rings of oaks and elms",
                                             "rings on oaks",
                                             "",
                                             "",
                                             "Rings of oaks",
                                             "rings of oaks",
                                             "r",
                                             "rings of oaks",
                                             "rings of oakS"};
  for (std::size_t k = 0; k < contents.size(); ++k) {
    disk.memory.put("oak.rwl", contents[k]);
    EXPECT_EQ(read("oak.rwl"), contents[k] + ", closed 0");
    EXPECT_EQ(*files.answers().back().contents, contents[k]);
    const auto before =
        std::find(contents.begin(), contents.begin() + static_cast<std::ptrdiff_t>(k), contents[k]);
    const auto first = static_cast<std::size_t>(before - contents.begin());
    EXPECT_EQ(files.answers().back().contents, files.answers()[first].contents) << "kept once";
  }
}

TEST_F(Answers, KeepAsMuchAsWasReadOfWhatIsKnown) {
  read("oak.rwl");
  disk.reads_before_failure = 2;
  EXPECT_EQ(read("oak.rwl"), "rings of then 5, closed 0");
  EXPECT_EQ(*files.answers().back().contents, "rings of");
  disk.reads_before_failure = 4;  // behind its last byte
  EXPECT_EQ(read("oak.rwl"), "rings of oaks then 5, closed 0");
  EXPECT_EQ(files.answers().back().contents, files.answers().front().contents);
}

// --- Replays that do not fit.

// A file may grow or shrink while it is read.
TEST_F(Answers, KeepAllThatIsReadWhateverSizeWasExpected) {
  for (const std::uint64_t expected : {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{3},
                                       std::uint64_t{15}, std::uint64_t{1000}, std::uint64_t{1} << 60}) {
    const std::string rings = "rings of oaks " + std::to_string(expected);
    disk.expected_size = expected;
    disk.memory.put("oak.rwl", rings);
    EXPECT_EQ(read("oak.rwl"), rings + ", closed 0");
    disk.memory.put("oak.rwl", rings.substr(0, 8) + "elms");
    EXPECT_EQ(read("oak.rwl"), rings.substr(0, 8) + "elms, closed 0");
  }
}

TEST_F(Answers, GoAstrayAtAnotherNameOrKind) {
  look("oak.rwl");
  read("oak.rwl");
  const auto before = files.answers();
  for (const bool another_name : {true, false}) {
    files.begin_again(before);
    EXPECT_EQ(look("oak.rwl"), "0 1");
    EXPECT_EQ(another_name ? read("elm.rwl") : look("oak.rwl"), another_name ? "not opened 5" : "5 0");
    EXPECT_TRUE(files.is_astray());
    EXPECT_EQ(read("oak.rwl"), "not opened 5") << "it does not find back";
    EXPECT_EQ(make("new.rwl", {}), "not made 5");
    EXPECT_EQ(extend("oak.rwl", {}), "not begun 5");
    EXPECT_EQ(files.given(), 1u);
  }
}

TEST_F(Answers, ReadOnButDoNotWriteWhereTheyEndBeforeTheReplay) {
  look("oak.rwl");
  files.begin_again(files.answers());
  look("oak.rwl");
  told.clear();
  EXPECT_EQ(read("oak.rwl"), "rings of oaks, closed 0");
  EXPECT_EQ(told, std::vector<std::size_t>{1}) << "it is kept as well";
  EXPECT_FALSE(files.is_astray());
  EXPECT_EQ(make("new.rwl", {"a"}), "not made 5");
  EXPECT_TRUE(files.is_astray());
  EXPECT_FALSE(disk.memory.contents("new.rwl"));
  files.begin_again(files.answers());
  EXPECT_EQ(look("oak.rwl"), "0 1");
  EXPECT_EQ(read("oak.rwl"), "rings of oaks, closed 0");
  EXPECT_EQ(extend("oak.rwl", {" and elms"}), "not begun 5");
  EXPECT_EQ(disk.memory.contents("oak.rwl"), "rings of oaks");
}

TEST_F(Answers, GoToTheRealFilesWhenAllHasBeenGoneThrough) {
  look("oak.rwl");
  read("oak.rwl");
  files.begin_again(files.answers(), &replayed);
  look("oak.rwl");
  files.go_live();
  EXPECT_EQ(files.answers().size(), 1u) << "what was not asked for is dropped";
  EXPECT_EQ(make("new.rwl", {"a"}), "committed 0");
  EXPECT_EQ(disk.memory.contents("new.rwl"), "a");
  EXPECT_FALSE(replayed.contents("new.rwl"));
}

}  // namespace
}  // namespace vorn
