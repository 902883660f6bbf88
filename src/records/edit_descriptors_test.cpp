// The table edit_descriptors.txt, row by row: what every field reads as and every item writes as.
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>

#include "records/disk_files.h"
#include "records/text_file.h"
#include "support/places.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

constexpr std::size_t rows_of_the_table = 508;

// kind  format [given] status N -> result
struct Row {
  std::string line;
  std::string kind, format, given, result;
  Status status;
};

std::string with_control_characters(std::string text) {
  const std::map<std::string, std::string> escapes{{"\\t", "\t"}, {"\\r", "\r"}, {"\\n", "\n"}};
  for (const auto& [name, character] : escapes)
    for (auto at = text.find(name); at != std::string::npos; at = text.find(name))
      text.replace(at, 2, character);
  return text;
}

Row parse_row(const std::string& line) {
  const auto open = line.find('[');
  const auto close = line.rfind("] status ");
  const auto arrow = line.find(" -> ", close);
  const auto kind = line.substr(0, line.find(' '));
  const auto format = line.substr(kind.size(), open - kind.size());
  Row row;
  row.line = line;
  row.kind = kind;
  row.format = trimmed(format);
  row.format.erase(0, std::min(row.format.find_first_not_of(' '), row.format.size()));
  row.given = with_control_characters(line.substr(open + 1, close - open - 1));
  row.status = Status(std::stoi(line.substr(close + 9, arrow - close - 9)));
  row.result = with_control_characters(line.substr(arrow + 4));
  return row;
}

std::vector<Row> rows() {
  std::ifstream file(source_folder() / "src/records/edit_descriptors.txt");
  std::vector<Row> all;
  for (std::string line; std::getline(file, line);)
    if (!line.starts_with('#')) all.push_back(parse_row(line));
  return all;
}

bool is_same(double a, double b) {
  return (std::isnan(a) && std::isnan(b)) ||
         std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

double as_double(const std::string& text) {
  return std::strtod(text.c_str(), nullptr);
}

class EditDescriptors : public testing::Test {
 protected:
  void check(const Row& row) {
    static const std::map<std::string, void (EditDescriptors::*)(const Row&)> checks{
        {"read", &EditDescriptors::check_integer},  {"iread", &EditDescriptors::check_text_integer},
        {"readF", &EditDescriptors::check_real},    {"readA", &EditDescriptors::check_text},
        {"seq", &EditDescriptors::check_sequence},  {"seqF", &EditDescriptors::check_reals},
        {"write", &EditDescriptors::check_written}, {"nint", &EditDescriptors::check_thousandths},
        {"state", &EditDescriptors::check_state}};
    SCOPED_TRACE(row.line);
    const auto found = checks.find(row.kind);
    ASSERT_NE(found, checks.end());
    (this->*found->second)(row);
    before_ = row.kind + row.format + row.given;
  }

 private:
  TextInput file_of(const std::string& contents) {
    ScratchFolder::write("records.txt", contents);
    TextInput file;
    EXPECT_EQ(file.open(disk_, "records.txt"), status::ok);
    return file;
  }

  void check_integer(const Row& row) {
    std::int32_t number = -77777;
    EXPECT_EQ(file_of(row.given + "\n").read(EditFormat(row.format), number), row.status);
    EXPECT_EQ(number, std::stoi(row.result));
  }

  void check_text_integer(const Row& row) {
    std::int32_t number = -77777;
    EXPECT_EQ(edit_read(row.given, EditFormat(row.format), number), row.status);
    EXPECT_EQ(number, std::stoi(row.result));
  }

  void check_real(const Row& row) {
    double number = -77777.0;
    EXPECT_EQ(file_of(row.given + "\n").read(EditFormat(row.format), number), row.status);
    EXPECT_TRUE(is_same(number, as_double(row.result))) << number;
  }

  void check_text(const Row& row) {
    Text<8> text("########");
    EXPECT_EQ(file_of(row.given + "\n").read(EditFormat(row.format), text), row.status);
    EXPECT_EQ("[" + std::string(text.view()) + "]", row.result);
  }

  // Rows of the same file read on where the row before stopped.
  bool first_of_file(const Row& row) const { return before_ != row.kind + row.format + row.given; }

  void check_sequence(const Row& row) {
    if (first_of_file(row)) {
      file_ = file_of(row.given);
      name_ = "########";
      integers_.fill(-77777);
    }
    EXPECT_EQ(file_.read(EditFormat(row.format), name_, std::span(integers_)), row.status);
    std::ostringstream held;
    held << '[' << name_.view() << ']';
    for (const auto integer : integers_) held << ' ' << integer;
    EXPECT_EQ(held.str(), row.result);
  }

  void check_reals(const Row& row) {
    if (first_of_file(row)) {
      file_ = file_of(row.given);
      reals_.fill(-7.0);
    }
    std::istringstream shown(row.result);
    std::vector<double> expected;
    for (double real; shown >> real;) expected.push_back(real);
    ASSERT_LE(expected.size(), reals_.size());
    EXPECT_EQ(file_.read(EditFormat(row.format), std::span(reals_).first(expected.size())), row.status);
    for (std::size_t k = 0; k < expected.size(); ++k)
      EXPECT_TRUE(is_same(reals_[k], expected[k])) << reals_[k];
  }

  void check_written(const Row& row) {
    const EditFormat format(row.format);
    std::string record;
    const auto write = [&](auto... items) {
      return write_items(record, format, std::array<WriteItem, sizeof...(items)>{as_write_item(items)...});
    };
    Status written;
    if (row.format == "(A8,42X,A8)")
      written = write(row.given, "(19F4.0)");
    else if (row.format.find('A') != std::string::npos)
      written = write(row.given);
    else if (row.format.find('F') != std::string::npos)
      written = write(as_double(row.given));
    else
      written = write(static_cast<std::int32_t>(std::stoi(row.given)));
    EXPECT_EQ(written, row.status);
    if (written != status::ok) {
      EXPECT_EQ(record, "");
      record.assign(80, '~');
    }
    EXPECT_EQ("|" + std::string(trimmed(record)) + "|", row.result);
  }

  void check_thousandths(const Row& row) {
    const auto rounded = thousandths(as_double(row.given));
    ASSERT_TRUE(rounded);
    EXPECT_EQ(*rounded, std::stoi(row.result));
    EXPECT_EQ(row.status, status::ok);
  }

  void check_state(const Row& row) {
    std::filesystem::create_directory("folder");
    ScratchFolder::write("good.txt", "one line\n");
    if (!line_file_) {
      line_file_.emplace();
      EXPECT_EQ(line_file_->open(disk_, "good.txt"), status::ok);
    }
    Text<8> text;
    const EditFormat a8{"(A8)"};
    const std::map<std::string, std::function<Status()>> operations{
        {"open a missing file", [] { return TextInput().open(disk_, "missing.txt"); }},
        {"create in a missing folder", [] { return TextOutput().create(disk_, "missing/file.txt"); }},
        {"open a folder", [] { return TextInput().open(disk_, "folder"); }},
        {"open a blank name", [] { return TextInput().open(disk_, "    "); }},
        {"exists a blank name (0 no, 1 yes)", [] { return Status(file_exists(disk_, "    ")); }},
        {"exists a folder (0 no, 1 yes)", [] { return Status(file_exists(disk_, "folder")); }},
        {"exists a name with trailing blanks (0 no, 1 yes)",
         [] { return Status(file_exists(disk_, "good.txt   ")); }},
        {"exists a name with leading blanks (0 no, 1 yes)",
         [] { return Status(file_exists(disk_, "  good.txt")); }},
        {"open a good file", [] { return TextInput().open(disk_, "good.txt"); }},
        {"read (A8) of a file of one line, for the first time", [&] { return line_file_->read(a8, text); }},
        {"read (A8) of a file of one line, for the second time", [&] { return line_file_->read(a8, text); }},
        {"read without a file", [&] { return TextInput().read(a8, text); }}};
    const auto operation = operations.find(row.given);
    ASSERT_NE(operation, operations.end());
    EXPECT_EQ(operation->second(), row.status);
  }

  ScratchFolder folder_;
  inline static DiskFiles disk_;
  std::string before_;  // kind, format and contents of the row before
  TextInput file_;
  Text<8> name_;
  std::array<std::int32_t, 3> integers_{};
  std::array<double, 5> reals_{};
  std::optional<TextInput> line_file_;
};

TEST_F(EditDescriptors, EveryRowOfTheTableComesOut) {
  std::size_t run = 0;
  for (const Row& row : rows()) {
    check(row);
    ++run;
  }
  EXPECT_EQ(run, rows_of_the_table);
}

}  // namespace
}  // namespace vorn
