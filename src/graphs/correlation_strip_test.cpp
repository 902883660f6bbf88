#include "graphs/correlation_strip.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

#include "plot/font_metrics.h"
#include "support/graph_page.h"

namespace vorn {
namespace {

// Years 1900 to 1999 are in view: the bar stands at the year (1900 + 1999) div 2 = 1949, at x = 200 + 49 * 25
// = 1425, 25 wide; figures stand at 1225 and 1465, those of lag L at y = 1470 + 36 L.
class CorrelationStrip : public testing::Test {
 protected:
  static constexpr int bar_year = 1949, first_year = 1850, years = 200;

  void draw() {
    w.plot.erase();
    cor_graph(w);
  }
  void draw(int sample_first, const std::vector<double>& sample, int reference_first,
            const std::vector<double>& reference) {
    bench.set_pair(sample_first, sample, reference_first, reference);
    draw();
  }
  bool nothing_drawn() const { return bench.page().marks().empty(); }
  Lines bars() const { return bench.marks("fill 15"); }
  Lines left() const { return bench.marks("text 15 25 1225"); }
  Lines right() const { return bench.marks("text 15 25 1465"); }

  GraphBench bench;
  Workspace& w = bench.w;
};

TEST_F(CorrelationStrip, HasABarFiguresOnBothSidesAndTheirCaptions) {
  const auto tree = noise(years, 1);
  draw(first_year, tree, first_year, tree);
  EXPECT_EQ(bars(), (Lines{"fill 15 1425 1400 1450 1400 1450 1580 1425 1580"}));
  ASSERT_EQ(left().size(), 5u);
  ASSERT_EQ(right().size(), 5u);
  EXPECT_EQ(left()[2], "text 15 25 1225 1470 \" 1.00 <  0\"");
  EXPECT_EQ(right()[2], "text 15 25 1465 1470 \" 0 >  1.00\"");
  EXPECT_TRUE(bench.has("text 15 25 660 1480 \"Correlation to\""));
  EXPECT_TRUE(bench.has("text 15 25 660 1520 \"  left of bar\""));
  EXPECT_TRUE(bench.has("text 15 25 2000 1480 \"Correlation to\""));
  EXPECT_TRUE(bench.has("text 15 25 2000 1520 \" right of bar\""));
  EXPECT_EQ(bench.page().marks().size(), 15u);
}

TEST_F(CorrelationStrip, SetsFiguresInTimesAndCaptionsInArial) {
  draw(first_year, noise(years, 1), first_year, noise(years, 2));
  const auto& marks = bench.page().marks();
  for (std::size_t i = 1; i < marks.size(); ++i) {
    EXPECT_EQ(marks[i].font, i <= 10 ? Font::times : Font::arial) << marks[i].writing;
  }
  w.plot.messag("after", 10, 20);
  EXPECT_EQ(bench.page().marks().back().font, Font::arial);
}

// A sample dated two years too late matches when it is read two years later, and so on.
TEST_F(CorrelationStrip, ShowsASampleDatedTooLateAtAPositiveLag) {
  const auto tree = noise(years, 1);
  for (int lag = -2; lag <= 2; ++lag) {
    draw(first_year + lag, tree, first_year, tree);
    const std::string label = std::string("-2-1 0+1+2").substr(static_cast<std::size_t>(lag + 2) * 2, 2);
    const std::string y = std::to_string(1470 + 36 * lag);
    EXPECT_TRUE(bench.has("text 15 25 1225 " + y + " \" 1.00 < " + label + "\"")) << lag;
    EXPECT_TRUE(bench.has("text 15 25 1465 " + y + " \"" + label + " >  1.00\"")) << lag;
  }
}

// Two series of +1 and -1 in turn, one of them with single values turned: of n values, u turned, and with all
// sums of equal size, r = 1 - 2u/n. Left of the bar, from 1900 on (seg = 49), n = 50 and u = 10: r = 0.60;
// right of it, to 1997, n = 49.
TEST_F(CorrelationStrip, ShowsTheCorrelationThatTheHandFinds) {
  std::vector<double> reference, sample;
  for (int i = 0; i < years; ++i) {
    reference.push_back(i % 2 == 0 ? 1 : -1);
    const int year = first_year + i;
    const bool turned = year >= 1910 && year < 1920;  // five of each sign
    sample.push_back(turned ? -reference.back() : reference.back());
  }
  w.seg = 49;
  draw(first_year, sample, first_year, reference);
  EXPECT_EQ(left()[2], "text 15 25 1225 1470 \" 0.60 <  0\"");
  EXPECT_EQ(right()[2], "text 15 25 1465 1470 \" 0 >  1.00\"");
  EXPECT_EQ(right()[1], "text 15 25 1465 1434 \"-1 > -1.00\"");
}

// --- How far the stretches reach. A year in which both series are a thousand times larger than else decides
// the correlation wherever it belongs to the stretch.

class CorrelationStripReach : public CorrelationStrip {
 protected:
  // The figure of lag 0 on either side, with such a year.
  std::pair<std::string, std::string> figures(int large_year) {
    auto sample = noise(years, 11), reference = noise(years, 12);
    sample[static_cast<std::size_t>(large_year - first_year)] = 1000;
    reference[static_cast<std::size_t>(large_year - first_year)] = 1000;
    draw(first_year, sample, first_year, reference);
    return {left()[2], right()[2]};
  }
  static bool is_one(const std::string& figure) { return figure.find(" 1.00") != std::string::npos; }
};

TEST_F(CorrelationStripReach, WithASegmentOf50LeftIs51YearsLongAndRight50) {
  ASSERT_EQ(w.seg, 50);
  EXPECT_TRUE(is_one(figures(bar_year - 50).first));
  EXPECT_FALSE(is_one(figures(bar_year - 51).first));
  EXPECT_TRUE(is_one(figures(bar_year + 49).second));
  EXPECT_FALSE(is_one(figures(bar_year + 50).second));
}

TEST_F(CorrelationStripReach, TheYearOfTheBarBelongsToBothSides) {
  EXPECT_TRUE(is_one(figures(bar_year).first));
  EXPECT_TRUE(is_one(figures(bar_year).second));
  EXPECT_FALSE(is_one(figures(bar_year + 1).first));
  EXPECT_FALSE(is_one(figures(bar_year - 1).second));
}

TEST_F(CorrelationStripReach, TwoYearsAreKeptAtTheEndsOfTheSample) {
  w.seg = 1000;
  EXPECT_TRUE(is_one(figures(first_year + 2).first));
  EXPECT_FALSE(is_one(figures(first_year + 1).first));
  EXPECT_TRUE(is_one(figures(first_year + years - 3).second));
  EXPECT_FALSE(is_one(figures(first_year + years - 2).second));
}

// --- What is left out.

TEST_F(CorrelationStrip, ACommonSpanOf19YearsDrawsNothingNotEvenTheBar) {
  for (const auto& [sample_years, drawn] : {std::pair{20, false}, {21, true}}) {
    draw(1940, noise(sample_years, 1), first_year, noise(years, 2));
    EXPECT_EQ(w.ly(w.nd + 1) - 1940, sample_years - 1);
    EXPECT_EQ(!nothing_drawn(), drawn) << sample_years;
    EXPECT_EQ(bars().size(), drawn ? 1u : 0u);
  }
}

TEST_F(CorrelationStrip, WithTheBarAtTheFirstCommonYearLeftTextsAreMissingAndRightOnesPresent) {
  draw(bar_year, noise(100, 1), first_year, noise(years, 2));
  EXPECT_EQ(bars().size(), 1u);
  EXPECT_TRUE(left().empty());
  EXPECT_EQ(right().size(), 5u);
  EXPECT_TRUE(bench.has("text 15 25 660 1520 \"  left of bar\""));
}

TEST_F(CorrelationStrip, WithTheBarAtTheLastCommonYearRightTextsAreMissing) {
  draw(first_year, noise(bar_year - first_year + 1, 1), first_year, noise(years, 2));
  EXPECT_EQ(left().size(), 5u);
  EXPECT_TRUE(right().empty());
}

TEST_F(CorrelationStrip, ABarMoreThanTwoYearsOffTheCommonYearsIsNotDrawn) {
  for (const auto& [first, drawn] : {std::pair{bar_year + 2, true}, {bar_year + 3, false}}) {
    draw(first, noise(60, 1), first_year, noise(years, 2));
    EXPECT_EQ(!nothing_drawn(), drawn) << first;
  }
  for (const auto& [last, drawn] : {std::pair{bar_year - 2, true}, {bar_year - 3, false}}) {
    draw(last - 59, noise(60, 1), first_year, noise(years, 2));
    EXPECT_EQ(!nothing_drawn(), drawn) << last;
  }
}

TEST_F(CorrelationStrip, AStretchOfTenYearsIsNotComputed) {
  // Left from the third year of the sample to the bar, right from the bar to the third from its end.
  for (const auto& [span, drawn] : {std::pair{10, false}, {11, true}}) {
    draw(bar_year - span - 1, noise(80, 1), first_year, noise(years, 2));
    EXPECT_EQ(left().size(), drawn ? 5u : 0u) << span;
    const int last = bar_year + span + 1;
    draw(last - 79, noise(80, 1), first_year, noise(years, 2));
    EXPECT_EQ(right().size(), drawn ? 5u : 0u) << span;
  }
}

TEST_F(CorrelationStrip, FewerThanThreePairsReadNone) {
  // Up to the bar the reference, which is not shifted, has the rings of 1948 and 1949 alone.
  std::string mask(years, '+');
  const auto year = [](int y) { return static_cast<std::size_t>(y - first_year); };
  std::fill(mask.begin(), mask.begin() + static_cast<std::ptrdiff_t>(year(1948)), '-');
  bench.set_pair(first_year, noise(years, 1), first_year, noise(years, 2), "", mask);
  draw();
  EXPECT_EQ(left(), (Lines{"text 15 25 1225 1398 \" None < -2\"", "text 15 25 1225 1434 \" None < -1\"",
                           "text 15 25 1225 1470 \" None <  0\"", "text 15 25 1225 1506 \" None < +1\"",
                           "text 15 25 1225 1542 \" None < +2\""}));
  mask[year(1947)] = '+';
  bench.set_pair(first_year, noise(years, 1), first_year, noise(years, 2), "", mask);
  draw();
  for (const std::string& text : left()) EXPECT_EQ(text.find("None"), std::string::npos);

  std::fill(mask.begin(), mask.end(), '-');
  bench.set_pair(first_year, noise(years, 1), first_year, noise(years, 2), mask, "");
  draw();
  EXPECT_EQ(right()[0], "text 15 25 1465 1398 \"-2 >  None\"");
}

// --- Where the bar stands.

TEST_F(CorrelationStrip, TheBarIsAsWideAsAYearRounded) {
  const auto tree = noise(12'000, 1);
  for (const auto& [years_shown, bar] :
       {std::pair{21, "fill 15 1390 1400 1509 1400 1509 1580 1390 1580"},  // 200 + 10 * 119.05, 119.05
        {300, "fill 15 1442 1400 1450 1400 1450 1580 1442 1580"},          // 200 + 149 * 8.33, 8.33
        {12'000, "fill 15 1450 1400 1450 1400 1450 1580 1450 1580"}}) {    // 200 + 5999 * 0.208, 0.208
    bench.view(1900, years_shown);
    draw(1850, tree, 1850, tree);
    EXPECT_EQ(bars(), (Lines{bar})) << years_shown;
  }
}

TEST_F(CorrelationStrip, BeforeYear0TheMiddleIsRoundedTowardsIt) {
  bench.view(-150, 100);  // -150 to -51: -201 div 2 = -100
  const auto tree = noise(200, 1);
  draw(-200, tree, -200, tree);
  EXPECT_EQ(bars(), (Lines{"fill 15 1450 1400 1475 1400 1475 1580 1450 1580"}));
  EXPECT_TRUE(bench.has("text 15 25 1250 1470 \" 1.00 <  0\""));
}

// --- Whatever files and clicks may bring.

TEST_F(CorrelationStrip, AnySegmentLengthIsTaken) {
  const auto tree = noise(years, 1);
  bench.set_pair(first_year, tree, first_year, tree);
  for (const int seg : {std::numeric_limits<int>::min(), -50, 0, 1, 9}) {
    w.seg = seg;
    draw();
    EXPECT_TRUE(left().empty()) << seg;
    EXPECT_TRUE(right().empty()) << seg;
  }
  for (const int seg : {11, 12'000, std::numeric_limits<int>::max()}) {
    w.seg = seg;
    draw();
    EXPECT_EQ(left()[2], "text 15 25 1225 1470 \" 1.00 <  0\"") << seg;
    EXPECT_EQ(right()[2], "text 15 25 1465 1470 \" 0 >  1.00\"") << seg;
  }
}

TEST_F(CorrelationStrip, StretchesThatLeadOutOfThePoolFindNoRingsThere) {
  const auto tree = noise(years, 1);
  bench.set_pair(first_year, tree, first_year, tree);
  w.ad(w.nd + 1) = -1'000'000'000;
  draw();
  EXPECT_EQ(left()[2], "text 15 25 1225 1470 \" None <  0\"");
  w.ad(w.nd + 1) = 1;
  w.ad(w.nd + 2) = std::numeric_limits<int>::max();
  draw();
  EXPECT_EQ(right()[2], "text 15 25 1465 1470 \" 0 >  None\"");
}

TEST_F(CorrelationStrip, ABarJustBehindTheSampleReadsWhatFollowsIt) {
  // The sample ends two years before the bar; its later years are the first ones of the reference's slot.
  draw(bar_year - 61, noise(60, 1), first_year, noise(years, 2));
  EXPECT_EQ(left().size(), 5u);
}

TEST_F(CorrelationStrip, YearsAtTheEndsOfTheirRangeDoNotOverflow) {
  const auto tree = noise(100, 1);
  bench.set_pair(0, tree, 0, tree);
  for (const int first : {std::numeric_limits<int>::max() - 99, std::numeric_limits<int>::min()}) {
    bench.view(first, 100);
    for (const int slot : {1, 2}) w.fy(w.nd + slot) = first, w.ly(w.nd + slot) = first + 99;
    w.seg = std::numeric_limits<int>::max();
    draw();
    EXPECT_EQ(bars().size(), 1u);
    EXPECT_EQ(right().size() + bench.marks("text 15 25 1490").size(), 5u);
  }
  // Slots that have nothing in common, as far apart as they can be.
  w.fy(w.nd + 1) = std::numeric_limits<int>::max() - 99, w.ly(w.nd + 1) = std::numeric_limits<int>::max();
  draw();
  EXPECT_TRUE(nothing_drawn());
}

TEST_F(CorrelationStrip, ValuesThatAreNotFiniteAreWrittenAsTheyComeOut) {
  auto tree = noise(years, 1);
  for (const double value : {std::nan(""), std::numeric_limits<double>::infinity(), 1e300}) {
    tree[90] = value;
    draw(first_year, tree, first_year, noise(years, 2));
    EXPECT_EQ(left().size(), 5u);
    EXPECT_EQ(right().size(), 5u);
  }
}

// Its middle is at 1437.5; four digits of height 25 are 72 units wide.
TEST_F(CorrelationStrip, CarefullyTheBarSaysItsYearBelowIt) {
  w.careful.set(Mend::bar_year, true);
  draw(first_year, noise(years, 1), first_year, noise(years, 2));
  EXPECT_EQ(bench.page().marks().size(), 16u);
  const Mark& year = bench.page().marks()[1];
  EXPECT_EQ(year.writing, "1949");
  EXPECT_EQ(year.font, Font::arial);
  const Box extent = text_extent(year);
  EXPECT_NEAR((extent.left + extent.right) / 2, 1437, 2);
  for (const Mark& mark : bench.page().marks()) {
    if (&mark == &year || mark.kind != Mark::Kind::text) continue;
    const Box other = text_extent(mark);
    EXPECT_TRUE(other.right < extent.left || other.left > extent.right || other.bottom < extent.top)
        << mark.writing;
  }
  EXPECT_GT(extent.top, 1580);  // below the bar
  EXPECT_EQ(bench.page().marks()[2].font, Font::times);
}

TEST_F(CorrelationStrip, CarefullyNoYearIsSaidWhereThereIsNoBar) {
  w.careful.set(Mend::bar_year, true);
  draw(1000, noise(years, 1), 1000, noise(years, 2));
  EXPECT_TRUE(nothing_drawn());
}

}  // namespace
}  // namespace vorn
