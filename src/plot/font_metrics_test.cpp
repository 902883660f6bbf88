#include "plot/font_metrics.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

// Widths by hand, in 2048ths of the size: digits 1139, point 569, minus 682 in the Arial kind, whose capitals
// are 1409 high; digits 1024, capitals 1341 in the Times kind.
TEST(TextWidth, AddsTheAdvancesOfTheCharacters) {
  EXPECT_DOUBLE_EQ(text_width("-3.0", 20, Font::arial), (682 + 1139 + 569 + 1139) * 20.0 / 1409);
  EXPECT_DOUBLE_EQ(text_width("0.45", 20, Font::times), (3 * 1024 + 512) * 20.0 / 1341);
  EXPECT_EQ(text_width("", 20, Font::arial), 0);
}

TEST(TextWidth, FirstAndLastCharactersOfTheTable) {
  EXPECT_DOUBLE_EQ(text_width(" ", 1409, Font::arial), 569);
  EXPECT_DOUBLE_EQ(text_width("~", 1409, Font::arial), 1196);
  EXPECT_DOUBLE_EQ(text_width("A", 1409, Font::arial), 1366);
  EXPECT_DOUBLE_EQ(text_width("z", 1409, Font::arial), 1024);
}

TEST(TextWidth, ControlCharactersTakeNoRoom) {
  EXPECT_EQ(text_width("1\x08\x7F\x1B", 25, Font::arial), text_width("1", 25, Font::arial));
}

TEST(TextWidth, ACharacterOfSeveralBytesCountsOnce) {
  const double digit = text_width("0", 25, Font::arial);
  EXPECT_DOUBLE_EQ(text_width("\xC3\xBC", 25, Font::arial), digit);          // u with two dots in UTF-8
  EXPECT_DOUBLE_EQ(text_width("\xFC", 25, Font::arial), digit);              // the same in Latin-1
  EXPECT_DOUBLE_EQ(text_width("\xFC\xC3\xBC", 25, Font::arial), 3 * digit);  // not UTF-8: a character a byte
}

TEST(TextEncoding, TellsUtf8FromLatin1) {
  EXPECT_TRUE(is_utf8(""));
  EXPECT_TRUE(is_utf8("plain"));
  EXPECT_TRUE(is_utf8("\xC3\xBC \xE2\x82\xAC \xF0\x9F\x8C\xB2"));
  EXPECT_FALSE(is_utf8("\xFC"));
  EXPECT_FALSE(is_utf8("\xC3"));              // cut short
  EXPECT_FALSE(is_utf8("\xC0\xAF"));          // longer than need be
  EXPECT_FALSE(is_utf8("\xED\xA0\x80"));      // half of a surrogate pair
  EXPECT_FALSE(is_utf8("\xF4\x90\x80\x80"));  // beyond the last code point
  EXPECT_FALSE(is_utf8("\xE0\x80\x80"));
  EXPECT_FALSE(is_utf8("\xF0\x80\x80\x80"));
  EXPECT_FALSE(is_utf8("\x80"));
  EXPECT_FALSE(is_utf8("\xC3\x28"));  // the second byte belongs to no sequence, or the third, or the fourth
  EXPECT_FALSE(is_utf8("\xE2\x28\xAC"));
  EXPECT_FALSE(is_utf8("\xE2\x82\x28"));
  EXPECT_FALSE(is_utf8("\xF0\x28\x8C\xB2"));
  EXPECT_FALSE(is_utf8("\xF0\x9F\x28\xB2"));
  EXPECT_FALSE(is_utf8("\xF0\x9F\x8C\x28"));
  EXPECT_FALSE(is_utf8("\xFF"));
  // The first and the last of each length.
  EXPECT_TRUE(is_utf8("\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"));
  EXPECT_TRUE(is_utf8("\xED\x9F\xBF\xEE\x80\x80"));  // before and behind the surrogates
}

TEST(TextExtent, BeginsAtTheFirstLetterAndIsAsHighAsACapital) {
  const Mark mark{.kind = Mark::Kind::text, .points = {{100, 50}}, .writing = "  H", .height = 1409};
  const Box extent = text_extent(mark);
  EXPECT_DOUBLE_EQ(extent.left, 100 + 2 * 569);
  EXPECT_DOUBLE_EQ(extent.right, 100 + 2 * 569 + 1479);
  EXPECT_DOUBLE_EQ(extent.top, 50);
  EXPECT_DOUBLE_EQ(extent.bottom, 50 + 1409);
}

}  // namespace
}  // namespace vorn
