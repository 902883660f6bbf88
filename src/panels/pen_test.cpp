#include "panels/pen.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace vorn {
namespace {

std::string drawn(const Panel& panel) {
  std::ostringstream out;
  panel.page.write_text(out);
  return out.str();
}

TEST(Pen, WritesNumbersAsTheyAreRead) {
  EXPECT_EQ(short_r(0.814), ".81");
  EXPECT_EQ(short_r(-0.4), "-.40");
  EXPECT_EQ(short_r(0.999), "1.00");
  EXPECT_EQ(short_r(0), ".00");
  EXPECT_EQ(short_r(std::nan("")), "");
  EXPECT_EQ(fixed(1234.56, 1), "1234.6");
  EXPECT_EQ(signed_number(7), "+7");
  EXPECT_EQ(signed_number(-7), "-7");
  EXPECT_EQ(signed_number(0), "0");
}

TEST(Pen, WritesWhatFitsAndSaysThatThereIsMore) {
  Pen pen({.width = 400, .height = 100});
  pen.fitted(0, 0, 400, "short");
  pen.fitted(0, 40, 60, "much longer than that");
  // A character of more than one byte is written as a whole, or not at all.
  pen.fitted(0, 80, 45, "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4");
  const std::string text = drawn(pen.done(100));
  EXPECT_TRUE(text.starts_with("size 400 100\n")) << text;
  EXPECT_NE(text.find("\"short\""), std::string::npos) << text;
  EXPECT_NE(text.find("\"m\xE2\x80\xA6\""), std::string::npos) << text;
  EXPECT_NE(text.find("\"\xC3\xA4\xE2\x80\xA6\""), std::string::npos) << text;
}

TEST(Pen, BreaksLinesBetweenWords) {
  Pen pen({.width = 400, .height = 200});
  const double end = pen.lines(0, 0, 150, "one two three four five six", colour::ink, 20);
  const std::string text = drawn(pen.done(100));
  EXPECT_NE(text.find("\"one two\""), std::string::npos) << text;
  EXPECT_GE(end, 3 * 32);
  EXPECT_NE(text.find("six\""), std::string::npos) << text;
}

TEST(Pen, WhatIsBelowTheHeadCannotBeClicked) {
  Pen pen({.width = 400, .height = 200});
  pen.spot({.place = {0, -30, 400, 40}, .tip = "row 1"});
  pen.spot({.place = {0, 40, 400, 110}, .tip = "row 2"});
  pen.begin_head(60);
  pen.spot({.place = {300, 10, 390, 50}, .tip = "key"});
  const Panel panel = pen.done(1000);
  EXPECT_EQ(panel.head, 60);
  EXPECT_EQ(panel.content_height, 1000);
  ASSERT_EQ(panel.spots.size(), 2u);
  EXPECT_EQ(panel.spots[0].tip, "key");
  EXPECT_EQ(panel.spots[1].tip, "row 2");
  EXPECT_EQ(panel.at(10, 50), nullptr);
  EXPECT_EQ(panel.at(310, 20)->tip, "key");
  EXPECT_EQ(panel.at(10, 60)->tip, "row 2");
  EXPECT_EQ(panel.at(10, 110), nullptr);
}

TEST(Panels, HaveNamesForScriptsAndForPeople) {
  for (const PanelName name : all_panels) {
    EXPECT_EQ(panel_named(id_of(name)), name);
    EXPECT_FALSE(title_of(name).empty());
    EXPECT_GT(usual_view(name).width, 0);
  }
  EXPECT_FALSE(panel_named("Site"));
  EXPECT_FALSE(panel_named(""));
}

}  // namespace
}  // namespace vorn
