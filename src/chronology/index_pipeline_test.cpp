#include "chronology/index_pipeline.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "chronology/burg_model.h"
#include "chronology/spline.h"
#include "support/specimen_store.h"

namespace vorn {
namespace {

using Values = std::vector<double>;

class IndexPipeline : public SpecimenStore {
 protected:
  IndexPipeline() { switches(false, false, false); }
  void switches(bool spline_on, bool ar_on, bool log_on) {
    w.splineon = spline_on;
    w.aron = ar_on;
    w.logon = log_on;
  }
};

// Widths that shrink with age and waver with a memory of the year before.
Values grown(std::size_t years) {
  Values widths(years);
  double wavering = 0;
  for (std::size_t k = 0; k < years; ++k) {
    const double age = static_cast<double>(k);
    wavering = 0.5 * wavering + 0.2 * std::sin(age * age);
    widths[k] = (0.6 + 1.5 * std::exp(-age / 40)) * (1 + wavering);
  }
  return widths;
}

TEST_F(IndexPipeline, WithAllSwitchesOffIsTheWidthsThroughout) {
  const Values widths = {1.25, 0.003, 0, -0.5, 2};
  add_core(1900, widths);
  w.tx.fill(9);
  w.ax.fill(9);
  data_man(w, w, w, 1);
  EXPECT_EQ(values(w.x, 1), widths);
  EXPECT_EQ(values(w.tx, 1), widths);
  EXPECT_EQ(values(w.ax, 1), widths);
}

TEST_F(IndexPipeline, OfOneOrTwoValuesIsOneOrTheWidthByATenth) {
  switches(true, false, false);
  add_core(1900, {1.7});
  add_core(1900, {0.05});
  add_core(1900, {3.5, 0.02});
  for (int i = 1; i <= 3; ++i) data_man(w, w, w, i);
  EXPECT_EQ(values(w.tx, 1), Values{1.0});
  EXPECT_EQ(values(w.tx, 2), Values{0.05 / 0.1});
  EXPECT_EQ(values(w.tx, 3), (Values{1.0, 0.02 / 0.1}));
}

// A dip to -3 pulls the curve below 0.1, where it is raised; the ratio keeps the sign of the width.
TEST_F(IndexPipeline, OfAZeroOrNegativeWidthIsDividedByARaisedCurve) {
  switches(true, false, false);
  w.ss = 5;
  const Values widths = {0.4, 0.3, 0.2, 0.1, 0, -3, 0, 0.1, 0.2, 0.3, 0.4};
  add_core(1900, widths);
  Values curve(widths.size());
  spline(widths, 5, curve);
  ASSERT_LT(curve[5], 0.1);
  data_man(w, w, w, 1);
  EXPECT_EQ(w.tx(6), -3 / 0.1);
  EXPECT_EQ(w.tx(5), 0);
  for (int k = 0; k < 11; ++k) {
    const double width = widths[static_cast<std::size_t>(k)], s = curve[static_cast<std::size_t>(k)];
    EXPECT_EQ(w.tx(k + 1), width / (s < 0.1 ? 0.1 : s)) << k;
  }
}

TEST_F(IndexPipeline, TakesTheStiffnessThatIsSet) {
  switches(true, false, false);
  const Values widths = grown(100);
  add_core(1900, widths);
  for (const int ss : {3, 32, 999}) {
    w.ss = ss;
    data_man(w, w, w, 1);
    Values curve(widths.size());
    spline(widths, ss, curve);
    for (int k = 0; k < 100; ++k) {
      EXPECT_EQ(w.tx(k + 1), widths[static_cast<std::size_t>(k)] / curve[static_cast<std::size_t>(k)]);
    }
  }
}

// 1 2 3 have the mean 2; a sixth of it is 1/3.
TEST_F(IndexPipeline, WithTheLogarithmAloneIsOffsetByASixthOfTheMean) {
  switches(false, false, true);
  add_core(1900, {1, 2, 3});
  data_man(w, w, w, 1);
  EXPECT_EQ(values(w.tx, 1), (Values{1, 2, 3}));
  EXPECT_NEAR(w.ax(1), std::log(4 / 3.), 1e-15);
  EXPECT_NEAR(w.ax(2), std::log(7 / 3.), 1e-15);
  EXPECT_NEAR(w.ax(3), std::log(10 / 3.), 1e-15);
}

TEST_F(IndexPipeline, StoresWhatTheLogarithmMakesOfBadValues) {
  switches(false, false, true);
  add_core(1900, {0, 0, 0});    // ln 0
  add_core(1900, {6, 6, -12});  // an offset of 0: ln 6, and that of a negative number
  data_man(w, w, w, 1);
  data_man(w, w, w, 2);
  EXPECT_EQ(w.ax(1), -std::numeric_limits<double>::infinity());
  EXPECT_EQ(w.ax(4), std::log(6.0));
  EXPECT_TRUE(std::isnan(w.ax(6)));
}

// A series that is not of numbers is divided by 0.1 throughout, prewhitened to 0, and its logarithm is
// infinite.
TEST_F(IndexPipeline, LetsAWidthThatIsNotANumberPropagate) {
  switches(true, true, true);
  Values widths = grown(30);
  widths[10] = std::numeric_limits<double>::quiet_NaN();
  add_core(1900, widths);
  data_man(w, w, w, 1);
  EXPECT_EQ(w.tx(1), widths[0] / 0.1);
  EXPECT_TRUE(std::isnan(w.tx(11)));
  EXPECT_EQ(w.ax(1), -std::numeric_limits<double>::infinity());
}

TEST_F(IndexPipeline, RunsSplineThenModelThenLogarithm) {
  switches(true, true, true);
  const Values widths = grown(150);
  add_core(1900, widths);
  data_man(w, w, w, 1);

  Values index(150), white(150), column(12);
  spline(widths, 32, index);
  for (std::size_t k = 0; k < 150; ++k) index[k] = widths[k] / index[k];
  const int order = armod2(index, white, column, 11);
  ASSERT_GE(order, 1);
  double mean = 0;
  for (const double value : white) mean += value / 150;
  EXPECT_EQ(values(w.tx, 1), index);
  for (int k = 0; k < 150; ++k) {
    EXPECT_NEAR(w.ax(k + 1), std::log(white[static_cast<std::size_t>(k)] + mean / 6), 1e-14) << k;
  }
  EXPECT_EQ(w.ar_coefficients(1, 1), column[0]);
}

// With a highest order of 1 there is never a model.
TEST_F(IndexPipeline, TakesTheHighestOrderThatIsSet) {
  switches(false, true, false);
  add_core(1900, {1.0, 0.5, 2.25, -0.75, -1.5, 1.25, 0.75});
  w.jpr = 1;
  data_man(w, w, w, 1);
  EXPECT_EQ(values(w.ax, 1), (Values{2.0, 1.5, 3.25, 0.25, 0.0, 2.25, 1.75}));
}

TEST_F(IndexPipeline, KeepsAModelForEachEntry) {
  switches(false, true, false);
  add_core(1900, grown(200));
  add_core(1900, grown(80));
  data_man(w, w, w, 2);
  EXPECT_EQ(w.ar_coefficients(1, 1), 0);
  EXPECT_NE(w.ar_coefficients(1, 2), 0);
}

TEST_F(IndexPipeline, DoesNotLookAtThePresenceOfARing) {
  switches(true, true, true);
  add_core(1900, grown(60));
  data_man(w, w, w, 1);
  const Values before = values(w.ax, 1);
  w.xok(20) = false;
  data_man(w, w, w, 1);
  EXPECT_EQ(values(w.ax, 1), before);
}

TEST_F(IndexPipeline, WritesItsOwnEntryAlone) {
  switches(true, true, true);
  add_core(1900, {5, 5});
  add_core(1900, grown(20));
  add_core(1900, {6, 6});
  data_man(w, w, w, 2);
  for (const int p : {1, 2, 23, 24}) {
    EXPECT_EQ(w.tx(p), w.x(p));
    EXPECT_EQ(w.ax(p), w.x(p));
  }
}

TEST_F(IndexPipeline, OfAnEntryOfNoYearsIsNothing) {
  switches(true, true, true);
  add_core(1900, {});
  data_man(w, w, w, 1);
  EXPECT_EQ(w.ax(1), 0);
}

// A series of any length may stand in the store before its chronology is refused.
TEST_F(IndexPipeline, OfASeriesLongerThanAnyChronologyIsSafe) {
  switches(true, true, true);
  add_core(1, grown(15000));
  data_man(w, w, w, 1);
  EXPECT_TRUE(std::isfinite(w.ax(15000)));
}

TEST_F(IndexPipeline, OfShortAndConstantSeriesIsSafe) {
  switches(true, true, true);
  for (std::size_t years = 0; years <= 14; ++years) {
    add_core(1900, grown(years));
    add_core(1900, Values(years, 1.0));
  }
  for (w.jpr = 1; w.jpr <= 11; ++w.jpr) {
    for (int i = 1; i <= w.nc; ++i) data_man(w, w, w, i);
    EXPECT_EQ(w.tx(w.ad(w.nc)), 1.0);
  }
}

// The copy of a sample stands behind the last entry, and overlaps it by one value.
TEST_F(IndexPipeline, ServesAWorkingEntry) {
  add_core(1900, {1, 2, 3});
  w.yr(2) = 2;
  w.ad(2) = 3;
  w.x(4) = 8;
  data_man(w, w, w, 2);
  EXPECT_EQ(w.ax(3), 3);
  EXPECT_EQ(w.ax(4), 8);
}

// Behind an entry of no years, at the start of the pool, that is before it: the place reads as 0 and takes
// nothing.
TEST_F(IndexPipeline, ServesAWorkingEntryThatBeginsBeforeThePool) {
  switches(true, false, true);
  add_core(1900, {});
  w.yr(2) = 2;
  w.ad(2) = 0;
  w.x(1) = 3;
  data_man(w, w, w, 2);
  EXPECT_EQ(w.tx(1), 1);  // two values are their own curve
  EXPECT_EQ(w.ax(1), std::log(1 + 1 / 12.));
}

// What lies behind the pool reads as 0, and whatever the model makes of it is nothing to the logarithm.
TEST_F(IndexPipeline, ServesAWorkingEntryThatEndsBehindThePool) {
  switches(false, true, true);
  w.jpr = 1;
  const int end = w.x.size();
  add_core(1900, {});
  w.yr(2) = 3;
  w.ad(2) = end - 1;
  w.x(end - 1) = 3;
  w.x(end) = 6;
  data_man(w, w, w, 2);
  EXPECT_EQ(w.tx(end), 6);
  EXPECT_NEAR(w.ax(end), std::log(7 + (4 + 7 + 0) / 3. / 6), 1e-14);  // without a model each value and 1
}

TEST_F(IndexPipeline, OfManyCoresTellsHowManyAreDone) {
  for (int i = 1; i <= 128; ++i) add_core(1900, {1, 2});
  data_man_cores(w);
  EXPECT_EQ(screen.told, (std::vector<std::pair<std::string, double>>{{"Indices", 0.5}, {"Indices", 1}}));
}

// 400 cores of 0 to 79 years, some with missing rings; the spline's factor grows from core to core.
TEST_F(IndexPipeline, OfManyCoresHaveTheBitsOfEachAloneForAnyNumberOfThreads) {
  switches(true, true, true);
  for (std::size_t i = 0; i < 400; ++i) {
    Values widths = grown(i * 37 % 80);
    if (i % 5 == 1 && widths.size() > 10) widths[7] = -0.3;
    add_core(1900, widths);
  }
  const int end = w.ad(400) + w.yr(400) - 1, places = w.ar_coefficients.rows();
  const auto bytes_of = [&](const auto& derive) {
    w.tx.fill(0);
    w.ax.fill(0);
    w.ar_coefficients.fill(0);
    derive();
    const auto tx = w.tx.range(1, end), ax = w.ax.range(1, end);
    std::string all(reinterpret_cast<const char*>(tx.data()), tx.size_bytes());
    all.append(reinterpret_cast<const char*>(ax.data()), ax.size_bytes());
    for (int i = 1; i <= 400; ++i) {
      const auto column = w.ar_coefficients.column(i, places);
      all.append(reinterpret_cast<const char*>(column.data()), column.size_bytes());
    }
    return all;
  };
  const std::string one_by_one = bytes_of([&] {
    for (int i = 1; i <= 400; ++i) data_man(w, w, w, i);
  });
  for (const std::size_t threads : {0u, 1u, 2u, 3u, 4u, 7u})
    EXPECT_TRUE(bytes_of([&] { data_man_cores(w, threads); }) == one_by_one) << threads;
}

// Two cores share places of the pool: the later one has them.
TEST_F(IndexPipeline, OfCoresThatShareTheirPlacesAreHadInTheirOrder) {
  switches(true, false, false);
  for (int i = 0; i < 200; ++i) add_core(1900, grown(30));
  for (int i = 2; i <= 200; ++i) w.ad(i) = 1 + (i * 7) % 40;
  w.tx.fill(0);
  for (int i = 1; i <= 200; ++i) data_man(w, w, w, i);
  const auto pool = w.tx.range(1, 100);
  const Values expected(pool.begin(), pool.end());
  for (int time = 0; time < 5; ++time) {
    w.tx.fill(0);
    data_man_cores(w, 4);
    EXPECT_TRUE(std::ranges::equal(pool, expected));
  }
}

TEST_F(IndexPipeline, OfManyCoresTellsOnSeveralThreadsToo) {
  for (int i = 1; i <= 640; ++i) add_core(1900, grown(40));
  data_man_cores(w, 2);
  EXPECT_TRUE(std::ranges::is_sorted(screen.told));
  for (const auto& [what, share] : screen.told) EXPECT_EQ(what, "Indices");
}

TEST_F(IndexPipeline, OfAllCoresEndsWithTheChronology) {
  add_core(1900, {2, 4});
  add_core(1900, {6, 4});
  add_core(1900, {9, 9});  // to stand for the chronology's entry
  w.nc = 2;
  w.tx.fill(0);
  w.ax.fill(0);
  data_man2(w);
  EXPECT_EQ(values(w.tx, 2), (Values{6, 4}));
  EXPECT_EQ(values(w.ax, 2), (Values{1.5, 1}));  // scaled by the grand mean, 4
  EXPECT_EQ(w.crn(1, 1), 4);
  EXPECT_EQ(w.num(2, 1), 2);
  EXPECT_EQ(values(w.tx, 3), (Values{0, 0}));
  EXPECT_EQ(values(w.ax, 3), (Values{0, 0}));
}

}  // namespace
}  // namespace vorn
