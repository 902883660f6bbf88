#include "study/file_lines.h"

#include <gtest/gtest.h>

#include <string>

#include "records/memory_files.h"
#include "records/text_file.h"

namespace vorn {
namespace {

using Texts = std::vector<std::string>;

Texts texts_of(std::string_view bytes) {
  Texts all;
  for (const FileLine& line : lines_of(bytes)) all.emplace_back(line.text);
  return all;
}

// What the readers are given of the same bytes, 20 characters of each line.
Texts records_of(std::string_view bytes) {
  MemoryFiles files;
  files.put("a file", std::string(bytes));
  TextInput input;
  EXPECT_EQ(input.open(files, "a file"), status::ok);
  const EditFormat line_edit("(A20)");
  Texts all;
  for (Text<20> line; input.read(line_edit, line) != status::end_of_file;) all.emplace_back(line.trimmed());
  return all;
}

TEST(FileLines, AreCutAtEveryKindOfEnd) {
  const auto lines = lines_of("one\ntwo\r\nthree\r\r\nfour\rfive");
  ASSERT_EQ(lines.size(), 5u);
  EXPECT_EQ(lines[0].end, LineEnd::lf);
  EXPECT_EQ(lines[1].end, LineEnd::cr_lf);
  EXPECT_EQ(lines[2].end, LineEnd::cr_cr_lf);
  EXPECT_EQ(lines[3].end, LineEnd::cr);
  EXPECT_EQ(lines[4].end, LineEnd::none);
  EXPECT_EQ(lines[2].text, "three");
}

// Line numbers are of use only where they are those of the readers.
TEST(FileLines, AreThoseOfTheReaders) {
  for (const std::string_view bytes :
       {"", "a", "a\n", "a\n\nb", "\n\n", "a\r\rb\r", "a\r\r\r\nb\r\r", "a\n\x1a", "a\n\x1a\x1a\n", "\x1a",
        "a\x1a\nb\x1a", "\r", "\r\n\r", "a\n\x1a\r\rb", "a\n\x1a\r\r"})
    EXPECT_EQ(texts_of(bytes), records_of(bytes)) << testing::PrintToString(bytes);
}

TEST(FileLines, AreNoMoreThanAnyTableCouldTake) {
  EXPECT_EQ(lines_of(std::string(most_lines_examined + 10, '\n')).size(), most_lines_examined);
  EXPECT_EQ(lines_of(std::string(3 * most_lines_examined, '\r')).size(), most_lines_examined);
}

}  // namespace
}  // namespace vorn
