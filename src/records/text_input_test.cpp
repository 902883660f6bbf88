#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <vector>

#include "records/disk_files.h"
#include "records/text_file.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t mebibyte = std::size_t{1} << 20;

class TextInputs : public testing::Test {
 protected:
  // All records of a file of these contents, up to 20 characters of each without trailing blanks.
  static std::vector<std::string> records_of(std::string_view contents) {
    ScratchFolder::write("records.txt", contents);
    TextInput file;
    EXPECT_EQ(file.open(disk_, "records.txt"), status::ok);
    std::vector<std::string> records;
    Text<20> text;
    Status read;
    while ((read = file.read(line_, text)) == status::ok) records.emplace_back(text.trimmed());
    EXPECT_EQ(read, status::end_of_file);
    EXPECT_EQ(file.read(line_, text), status::end_of_file);
    EXPECT_EQ(file.close(), status::ok);
    return records;
  }

  using Records = std::vector<std::string>;
  ScratchFolder folder_;
  inline static DiskFiles disk_;
  inline static const EditFormat line_{"(A20)"};
};

TEST_F(TextInputs, RecordsEndAtLineFeedAtRunsOfReturnsWithOneAndAtLoneReturns) {
  const Records two{"one", "two"};
  for (const char* contents : {"one\ntwo\n", "one\r\ntwo\r\n", "one\r\r\ntwo\r\r\r\n", "one\rtwo\r",
                               "one\rtwo\n", "one\ntwo", "one\r\ntwo", "one\rtwo"})
    EXPECT_EQ(records_of(contents), two) << testing::PrintToString(contents);
}

TEST_F(TextInputs, EmptyRecordsCount) {
  EXPECT_EQ(records_of("\n"), Records({""}));
  EXPECT_EQ(records_of("\r"), Records({""}));
  EXPECT_EQ(records_of("one\n\ntwo\n\n"), Records({"one", "", "two", ""}));
  EXPECT_EQ(records_of("one\r\n\r\ntwo"), Records({"one", "", "two"}));
  EXPECT_EQ(records_of("one\n\rtwo"), Records({"one", "", "two"}));
}

TEST_F(TextInputs, ReturnsInARowWithoutALineFeedAreAnEndEach) {
  EXPECT_EQ(records_of("one\r\rtwo\r\r\r"), Records({"one", "", "two", "", ""}));
  EXPECT_EQ(records_of("\r\r"), Records({"", ""}));
}

TEST_F(TextInputs, AnEmptyFileHasNoRecord) {
  EXPECT_EQ(records_of(""), Records());
}

TEST_F(TextInputs, ALastRecordOfNothingButCtrlZIsNone) {
  for (const char* contents : {"one\n\x1a", "one\r\n\x1a\x1a\x1a", "one\n\x1a\r\n", "one\r\x1a"})
    EXPECT_EQ(records_of(contents), Records({"one"})) << testing::PrintToString(contents);
  EXPECT_EQ(records_of("\x1a"), Records());
}

TEST_F(TextInputs, CtrlZElsewhereIsACharacter) {
  EXPECT_EQ(records_of("\x1a\none\n"), Records({"\x1a", "one"}));
  EXPECT_EQ(records_of("one\x1a"), Records({"one\x1a"}));
  EXPECT_EQ(records_of("\x1a\n\n"), Records({"\x1a", ""}));
  EXPECT_EQ(records_of("\x1a\r\r"), Records({"\x1a", ""}));
  EXPECT_EQ(records_of("\x1a x"), Records({"\x1a x"}));
}

// The same files, made so long that every kind of end falls on every place in the buffers.
TEST_F(TextInputs, RecordsAreTheSameWhereverTheBufferEnds) {
  constexpr std::size_t buffer = std::size_t{1} << 18;
  for (const std::string end : {"\n", "\r\n", "\r\r\n", "\r"}) {
    for (std::size_t before = buffer - 6; before <= buffer + 2; ++before) {
      const auto records = records_of(std::string(before, 'x') + end + "two" + end + "\x1a");
      ASSERT_EQ(records, Records({std::string(20, 'x'), "two"})) << before << testing::PrintToString(end);
    }
  }
  for (std::size_t before = buffer - 4; before <= buffer + 1; ++before)
    ASSERT_EQ(records_of(std::string(before, 'x') + "\r\r\rtwo"),
              Records({std::string(20, 'x'), "", "", "two"}));
}

TEST_F(TextInputs, OnlyTheFirstMebibyteOfARecordIsKept) {
  auto contents = std::string(3 * mebibyte, '1');
  contents[mebibyte - 1] = '7';
  contents[mebibyte] = '8';
  ScratchFolder::write("long.txt", contents + "\r\n   5\n");
  TextInput file;
  ASSERT_EQ(file.open(disk_, "long.txt"), status::ok);
  std::int32_t last = -7, beyond = -7, next = -7;
  EXPECT_EQ(file.read(EditFormat("(1048575X,I1,I1)"), last, beyond), status::ok);
  EXPECT_EQ(last, 7);
  EXPECT_EQ(beyond, 0);
  EXPECT_EQ(file.read(EditFormat("(I4)"), next), status::ok);
  EXPECT_EQ(next, 5);
}

TEST_F(TextInputs, CtrlZsByTheMebibyteAreNoRecordButWithATextBehindThemAreOne) {
  EXPECT_EQ(records_of("one\n" + std::string(2 * mebibyte, '\x1a')), Records({"one"}));
  EXPECT_EQ(records_of("one\n" + std::string(2 * mebibyte, '\x1a') + "x"),
            Records({"one", std::string(20, '\x1a')}));
}

TEST_F(TextInputs, AFileOfReturnsAloneHasAsManyEmptyRecords) {
  ScratchFolder::write("returns.txt", std::string(mebibyte, '\r'));
  TextInput file;
  ASSERT_EQ(file.open(disk_, "returns.txt"), status::ok);
  std::size_t records = 0;
  while (file.read(line_) == status::ok) ++records;
  EXPECT_EQ(records, mebibyte);
}

TEST_F(TextInputs, AReadOfNoItemsUsesOneRecord) {
  ScratchFolder::write("records.txt", "one\ntwo\n");
  TextInput file;
  ASSERT_EQ(file.open(disk_, "records.txt"), status::ok);
  Text<20> text;
  EXPECT_EQ(file.read(EditFormat("(I4)")), status::ok);
  EXPECT_EQ(file.read(line_, text), status::ok);
  EXPECT_EQ(text.trimmed(), "two");
  EXPECT_EQ(file.read(EditFormat("()")), status::end_of_file);
}

TEST_F(TextInputs, ABadFieldOrItemUsesUpItsRecordAnUnusableFormatDoesNot) {
  ScratchFolder::write("records.txt", "  zz\n   1\n   2\n   3\n");
  TextInput file;
  ASSERT_EQ(file.open(disk_, "records.txt"), status::ok);
  std::int32_t number = -7;
  EXPECT_EQ(file.read(EditFormat("(I4)"), number), status::not_a_number);
  EXPECT_EQ(file.read(EditFormat("(I"), number), status::format_unusable);
  EXPECT_EQ(number, -7);
  EXPECT_EQ(file.read(EditFormat("(I4)"), number), status::ok);
  EXPECT_EQ(number, 1);
  EXPECT_EQ(file.read(EditFormat("(A4)"), number), status::format_unusable);
  EXPECT_EQ(file.read(EditFormat("(I4)"), number), status::ok);
  EXPECT_EQ(number, 3);
}

TEST_F(TextInputs, ItemsThatNoDescriptorWouldTakeUseOneRecordSoThatTheFileComesToItsEnd) {
  ScratchFolder::write("records.txt", "1\n2\n");
  TextInput file;
  ASSERT_EQ(file.open(disk_, "records.txt"), status::ok);
  std::int32_t number = -7;
  EXPECT_EQ(file.read(EditFormat("(4X)"), number), status::format_unusable);
  EXPECT_EQ(file.read(EditFormat("(4X)"), number), status::format_unusable);
  EXPECT_EQ(file.read(EditFormat("(4X)"), number), status::end_of_file);
}

TEST_F(TextInputs, ACommaEndsANumberInAFileButIsNoDigitInAText) {
  ScratchFolder::write("records.txt", "1,23,4\n");
  TextInput file;
  ASSERT_EQ(file.open(disk_, "records.txt"), status::ok);
  std::array<std::int32_t, 3> numbers{};
  EXPECT_EQ(file.read(EditFormat("(3I4)"), std::span(numbers)), status::ok);
  EXPECT_EQ(numbers, (std::array<std::int32_t, 3>{1, 23, 4}));
  EXPECT_EQ(edit_read("1,23,4", EditFormat("(3I4)"), std::span(numbers)), status::not_a_number);
}

TEST_F(TextInputs, AfterAFailedOpenEveryReadIsPastTheEnd) {
  TextInput file;
  std::int32_t number = -7;
  EXPECT_EQ(file.open(disk_, "missing.txt"), Status(2));
  EXPECT_EQ(file.read(EditFormat("(I4)"), number), status::end_of_file);
  EXPECT_EQ(file.read(EditFormat("(I"), number), status::end_of_file);
  EXPECT_EQ(file.close(), status::ok);
  EXPECT_EQ(number, -7);
}

TEST_F(TextInputs, AFolderGives21AtTheOpenAndNoRecords) {
  fs::create_directory("folder");
  TextInput file;
  EXPECT_EQ(file.open(disk_, "folder"), Status(21));
  EXPECT_EQ(file.read(line_), status::end_of_file);
  EXPECT_EQ(file.open(disk_, "folder/"), Status(21));
}

TEST_F(TextInputs, ABlankNameOrOneWithAZeroByteNamesNothing) {
  TextInput file;
  EXPECT_EQ(file.open(disk_, ""), Status(2));
  EXPECT_EQ(file.open(disk_, Text<60>().view()), Status(2));
  ScratchFolder::write("a", "1\n");
  EXPECT_EQ(file.open(disk_, std::string_view("a\0b", 3)), Status(2));
  EXPECT_FALSE(file_exists(disk_, std::string_view("a\0b", 3)));
}

TEST_F(TextInputs, TrailingBlanksAreNoPartOfANameLeadingOnesAre) {
  ScratchFolder::write("a.rwl", "1\n");
  TextInput file;
  EXPECT_EQ(file.open(disk_, Text<60>("a.rwl").view()), status::ok);
  EXPECT_EQ(file.open(disk_, " a.rwl"), Status(2));
  EXPECT_TRUE(file_exists(disk_, Text<60>("a.rwl").view()));
  EXPECT_FALSE(file_exists(disk_, " a.rwl"));
}

TEST_F(TextInputs, AFileOpenedAgainIsReadFromItsStart) {
  ScratchFolder::write("records.txt", "one\ntwo\n");
  TextInput file;
  Text<20> text;
  for (int time = 0; time < 2; ++time) {
    ASSERT_EQ(file.open(disk_, "records.txt"), status::ok);
    EXPECT_EQ(file.read(line_, text), status::ok);
    EXPECT_EQ(text.trimmed(), "one");
  }
  EXPECT_EQ(file.close(), status::ok);
  EXPECT_EQ(file.close(), status::ok);
  EXPECT_EQ(file.read(line_, text), status::end_of_file);
}

TEST_F(TextInputs, AMovedFileGoesOnWhereItWas) {
  ScratchFolder::write("records.txt", "one\ntwo\n");
  TextInput first;
  Text<20> text;
  ASSERT_EQ(first.open(disk_, "records.txt"), status::ok);
  EXPECT_EQ(first.read(line_, text), status::ok);
  TextInput second(std::move(first));
  EXPECT_EQ(second.read(line_, text), status::ok);
  EXPECT_EQ(text.trimmed(), "two");
}

// Whoever holds the other end of a pipe may never write a line, nor close it; neither may let the program
// wait.
TEST_F(TextInputs, PipesAndDevicesAreNotRead) {
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  fs::create_symlink("pipe", "link");
  EXPECT_EQ(TextInput().open(disk_, "pipe"), Status(ENODEV));
  const int writer = open("pipe", O_RDWR);
  EXPECT_EQ(TextInput().open(disk_, "pipe"), Status(ENODEV));
  EXPECT_EQ(TextInput().open(disk_, "link"), Status(ENODEV));
  close(writer);
  for (const char* device : {"/dev/null", "/dev/zero", "/dev/tty"}) {
    if (!fs::exists(device)) continue;
    EXPECT_EQ(TextInput().open(disk_, device), Status(ENODEV)) << device;
  }
}

// Many times what fills every table of the program.
TEST_F(TextInputs, FilesOfMoreThanAQuarterOfAGibibyteAreNotRead) {
  ScratchFolder::write("large.txt", "");
  fs::resize_file("large.txt", 256 * mebibyte);
  EXPECT_EQ(TextInput().open(disk_, "large.txt"), status::ok);
  fs::resize_file("large.txt", 256 * mebibyte + 1);
  EXPECT_EQ(TextInput().open(disk_, "large.txt"), Status(EFBIG));
  EXPECT_EQ(TextOutput().append(disk_, "large.txt"), Status(EFBIG));
}

// The system says of some files that they are empty and gives bytes for as long as anybody reads.
TEST_F(TextInputs, FilesThatTheSystemMakesUpAsTheyAreReadComeToAnEnd) {
  const std::string endless = "/proc/self/pagemap";
  TextInput file;
  if (file.open(disk_, endless) != status::ok) GTEST_SKIP() << "no " << endless << " here";
  Status answer;
  while (answer == status::ok) answer = file.read(line_);
  EXPECT_EQ(answer, Status(EFBIG));
  EXPECT_EQ(file.read(line_), status::end_of_file);
}

TEST_F(TextInputs, NoFileLetsWaitForItsNextByte) {
  const std::string log = "/proc/kmsg";  // gives what there is, and the rest when it happens
  TextInput file;
  if (file.open(disk_, log) != status::ok) GTEST_SKIP() << log << " may not be read here";
  Status answer;
  while (answer == status::ok) answer = file.read(line_);
  EXPECT_TRUE(answer == Status(EAGAIN) || answer == status::end_of_file) << answer;
}

TEST_F(TextInputs, SocketsAreNotRead) {
  const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un name{};
  name.sun_family = AF_UNIX;
  std::snprintf(name.sun_path, sizeof name.sun_path, "socket");
  ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&name), sizeof name), 0);
  EXPECT_EQ(TextInput().open(disk_, "socket"), Status(ENODEV));
  close(listener);
}

TEST_F(TextInputs, LinksThatLeadRoundInACircleAreAFailedOpen) {
  fs::create_symlink("a", "b");
  fs::create_symlink("b", "a");
  EXPECT_TRUE(file_exists(disk_, "a"));
  EXPECT_EQ(TextInput().open(disk_, "a"), Status(ELOOP));
}

TEST_F(TextInputs, SayWhichLineWasReadLastAndWhereItsBadFieldBegins) {
  ScratchFolder::write("widths", "CORE01  1950   101   102\r\n\nCORE01  1960   101   1x2   103\n");
  TextInput file;
  EXPECT_EQ(file.line(), 0);
  ASSERT_EQ(file.open(disk_, "widths"), status::ok);
  const EditFormat line("(A8,I4,3I6)");
  Text<8> name;
  std::int32_t year = 0;
  std::array<std::int32_t, 3> values{};
  EXPECT_EQ(file.read(line, name, year, std::span(values)), status::ok);
  EXPECT_EQ(file.line(), 1);
  EXPECT_EQ(file.bad_column(), 0);
  file.read(line, name, year, std::span(values));  // the empty line is one, too
  EXPECT_EQ(file.line(), 2);
  EXPECT_EQ(file.read(line, name, year, std::span(values)), status::not_a_number);
  EXPECT_EQ(file.line(), 3);
  EXPECT_EQ(file.bad_column(), 19);  // name 1-8, year 9-12, the second value 19-24
  EXPECT_EQ(file.read(line, name, year, std::span(values)), status::end_of_file);
  EXPECT_EQ(file.line(), 3);
  EXPECT_EQ(file.bad_column(), 0);
}

TEST_F(TextInputs, CountEachRecordOfARead) {
  ScratchFolder::write("block", "     1     2\n     3    x4\n");
  TextInput file;
  ASSERT_EQ(file.open(disk_, "block"), status::ok);
  std::array<double, 4> values{};
  EXPECT_EQ(file.read(EditFormat("(2F6.0)"), std::span(values)), status::not_a_number);
  EXPECT_EQ(file.line(), 2);
  EXPECT_EQ(file.bad_column(), 7);
}

}  // namespace
}  // namespace vorn
