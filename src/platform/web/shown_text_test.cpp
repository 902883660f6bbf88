#include "platform/web/shown_text.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(ShownText, KeepsWhatIsValid) {
  EXPECT_EQ(shown_text("T001 \xC3\x84sche \xE2\x86\x92 \xF0\x9F\x8C\xB2"),
            "T001 \xC3\x84sche \xE2\x86\x92 \xF0\x9F\x8C\xB2");
}

TEST(ShownText, TakesOtherBytesAsLatin1) {
  EXPECT_EQ(shown_text("\xC4sche"), "\xC3\x84sche");
  EXPECT_EQ(shown_text("\xC3\x84 \xE9"),
            "\xC3\x83 \xC3\xA9");  // one byte that is none makes all of them Latin-1
}

TEST(ShownText, LeavesOutWhatMakesNoMark) {
  EXPECT_EQ(shown_text(std::string_view("a\0b\x1B[2J\x7F\x9B!", 10)), "ab[2J!");
  EXPECT_EQ(shown_text("a\xC2\x85\xEF\xBF\xBE\xEF\xB7\x90z"),
            "az");  // a control of the second set, two that are none
}

TEST(ShownText, KeepsLinesApart) {
  EXPECT_EQ(shown_lines("one\ttwo\r\nthree\n"), "onetwo\nthree\n");
  EXPECT_EQ(shown_lines(""), "");
}

}  // namespace
}  // namespace vorn
