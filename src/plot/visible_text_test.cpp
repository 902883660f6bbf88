#include "plot/visible_text.h"

#include <gtest/gtest.h>

#include <array>

#include "plot/plot.h"
#include "support/queue_screen.h"

namespace vorn {
namespace {

using Texts = std::vector<std::string>;

struct VisibleTexts : testing::Test {
  QueueScreen screen;
  Plot plot{screen};
  Texts texts() const { return visible_texts(plot.page()); }
};

TEST_F(VisibleTexts, AMessageIsGoneWhenItsLineWasWiped) {
  plot.messag("No file - hit key to continue", 310, 1560);
  EXPECT_EQ(texts(), Texts{"No file - hit key to continue"});
  plot.setclr(colour::paper);
  plot.rectangle(300, 1550, 2100, 1760);
  EXPECT_EQ(texts(), Texts{});
}

TEST_F(VisibleTexts, WhatSticksOutOfALaterFillIsStillThere) {
  plot.messag(std::string(60, 'W'), 310, 1560);  // some 2100 units wide
  plot.rectangle(300, 1550, 2100, 1760);
  EXPECT_EQ(texts(), Texts{std::string(60, 'W')});
}

TEST_F(VisibleTexts, AnEarlierFillOrABorderCoversNothing) {
  plot.rectangle(0, 0, 500, 500);
  plot.messag("Exit", 100, 100);
  plot.shdpat(0);
  plot.rectangle(0, 0, 500, 500);
  EXPECT_EQ(texts(), Texts{"Exit"});
}

TEST_F(VisibleTexts, TwoFillsThatHideItOnlyTogetherDoNotCount) {
  plot.messag("Crossdate", 100, 100);
  plot.rectangle(0, 0, 150, 500);
  plot.rectangle(150, 0, 500, 500);
  EXPECT_EQ(texts(), Texts{"Crossdate"});
}

TEST_F(VisibleTexts, AFillThatEndsExactlyAtTheLettersCovers) {
  plot.messag("H", 100, 100);
  plot.rectangle(100, 100, 200, 125);
  EXPECT_EQ(texts(), Texts{});
}

TEST_F(VisibleTexts, ANotchedPolygonHidesOnlyWhatLiesInside) {
  plot.messag("H", 100, 100);
  plot.messag("M", 300, 100);
  // Reaches over both letters, with a notch from above that bares part of the second.
  plot.areaf(std::array{0, 305, 305, 310, 310, 500, 500, 0}, std::array{0, 0, 110, 110, 0, 0, 400, 400});
  EXPECT_EQ(texts(), Texts{"M"});
}

TEST_F(VisibleTexts, LabelsOfAxesAreNoTexts) {
  plot.name("Years", 'X');
  plot.graf(0, 10, 0, 1, 0, 1, 0, 1);
  EXPECT_EQ(texts(), Texts{});
}

}  // namespace
}  // namespace vorn
