#include "platform/web/page_bytes.h"

#include <gtest/gtest.h>

#include "platform/web/byte_stream.h"

namespace vorn {
namespace {

TEST(PageBytes, HoldsEveryMarkInItsOrder) {
  Page page(600, 400);
  page.add({.kind = Mark::Kind::fill, .colour = colour::yellow, .points = {{1, 2}, {3, 4.5}, {-1, 0}}});
  page.add({.kind = Mark::Kind::label,
            .colour = colour::ink,
            .points = {{10, 20}},
            .writing = "T\xC4",
            .height = 33.5,
            .font = Font::times,
            .align = Align::right,
            .angle = 90});
  const std::string bytes = bytes_of(page);
  ByteReader in(bytes);
  EXPECT_EQ(in.whole(), 600);
  EXPECT_EQ(in.whole(), 400);
  EXPECT_EQ(in.count(), 2u);

  EXPECT_EQ(in.whole(), 0);
  EXPECT_EQ(in.whole(), number_of(colour::yellow));
  EXPECT_EQ(in.count(), 3u);
  for (const double expected : {1.0, 2.0, 3.0, 4.5, -1.0, 0.0}) EXPECT_EQ(in.number(), expected);

  EXPECT_EQ(in.whole(), 4);
  EXPECT_EQ(in.whole(), number_of(colour::ink));
  EXPECT_EQ(in.count(), 1u);
  EXPECT_EQ(in.number(), 10);
  EXPECT_EQ(in.number(), 20);
  EXPECT_EQ(in.number(), 33.5);
  EXPECT_EQ(in.whole(), 1);
  EXPECT_EQ(in.whole(), 2);
  EXPECT_EQ(in.whole(), 90);
  EXPECT_EQ(in.text(), "T\xC3\x84");
  EXPECT_TRUE(in.at_end());
}

TEST(PageBytes, TheSystemsPageHasItsSize) {
  const std::string bytes = bytes_of(Page());
  ByteReader in(bytes);
  EXPECT_EQ(in.whole(), Page::width);
  EXPECT_EQ(in.whole(), Page::height);
  EXPECT_EQ(in.count(), 0u);
  EXPECT_TRUE(in.at_end());
}

}  // namespace
}  // namespace vorn
