// What is written as text is read again as it was.
#include "batch/noaa_text.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <vector>

#include "support/imported_specimens.h"

namespace vorn {
namespace {

TEST(NoaaText, OfSeriesIsReadAsItWas) {
  const std::vector<double> one = {1.234, 0.5, 0, 2.001}, two = {0.1, 0.25};
  const std::array<bool, 4> rings = {true, false, true, true};
  const std::vector<NamedSeries> series = {{"CORE01", {-2, one, rings}}, {"CORE02", {3, two, {}}}};
  const std::string text = noaa_text("Nowhere", series);
  EXPECT_EQ(series_of(text), "CORE01 -2: 1.234 - 0 2.001\nCORE02 3: 0.1 0.25\n");
  EXPECT_EQ(doubts(taken(text)), "");
  EXPECT_NE(text.find("\nage_CE\tCORE01\tCORE02\n-2\t1.234\tNaN\n-1\tNaN\tNaN\n0\t0.000\tNaN\n"),
            std::string::npos);
}

TEST(NoaaText, OfAChronologyHasItsIndicesAndDepths) {
  const std::vector<double> indices = {0.98765, std::numeric_limits<double>::quiet_NaN(), 1.5};
  const std::vector<std::int32_t> depths = {3, 0, 4};
  const std::string text = noaa_text(ChronologyText{"Nowhere\tand\nmore", 1999, indices, depths});
  EXPECT_TRUE(text.starts_with("# Nowhere and more - Tree Ring Chronology\n"));
  EXPECT_TRUE(text.ends_with("\nage_CE\ttrsgi\tnum\n1999\t0.988\t3\n2000\tNaN\t0\n2001\t1.500\t4\n"));
  EXPECT_EQ(doubts(taken(text)), "no-copy") << "it holds no ring widths";
  EXPECT_EQ(csv_text({"", 1999, indices, depths}), "year,index,depth\n1999,0.988,3\n2000,,0\n2001,1.500,4\n");
  EXPECT_EQ(csv_text({"", 1999, indices, {}}), "year,index\n1999,0.988\n2000,\n2001,1.500\n");
}

TEST(NoaaText, OfNothingIsAHeader) {
  EXPECT_TRUE(noaa_text("Nowhere", std::vector<NamedSeries>{}).ends_with("# Data\nage_CE\n"));
  EXPECT_TRUE(noaa_text(ChronologyText{"Nowhere"}).ends_with("# Data\nage_CE\ttrsgi\n"));
}

}  // namespace
}  // namespace vorn
