#include <gtest/gtest.h>

#include <limits>

#include "formats/tucson_raw.h"
#include "support/format_bench.h"

namespace vorn {
namespace {

class TucsonRawWriter : public FormatBench {
 protected:
  // What entry i looks like as a file.
  std::string written(int i) {
    TextOutput out;
    EXPECT_EQ(out.create(disk, "out.rwl"), status::ok);
    EXPECT_TRUE(write_rrec(w, writing(out), i));
    EXPECT_EQ(out.close(), status::ok);
    return ScratchFolder::read("out.rwl");
  }

  static std::vector<double> widths_up_to(int count) {
    std::vector<double> widths;
    for (int k = 1; k <= count; ++k) widths.push_back((100 + k) / 1000.0);
    return widths;
  }
};

TEST_F(TucsonRawWriter, Series1953To1990HasSevenValuesFirstAndOneWithTheMarkLast) {
  add_core(1953, widths_up_to(38));
  w.nam(1) = "CORE01";
  EXPECT_EQ(written(1), raw_line("CORE01", 1953, {101, 102, 103, 104, 105, 106, 107}) +
                            raw_line("CORE01", 1960, {108, 109, 110, 111, 112, 113, 114, 115, 116, 117}) +
                            raw_line("CORE01", 1970, {118, 119, 120, 121, 122, 123, 124, 125, 126, 127}) +
                            raw_line("CORE01", 1980, {128, 129, 130, 131, 132, 133, 134, 135, 136, 137}) +
                            raw_line("CORE01", 1990, {138, -9999}));
}

TEST_F(TucsonRawWriter, SeriesWhoseLastYearEndsIn9GetsAFinalLineOfTheMarkAlone) {
  add_core(1957, widths_up_to(3));
  w.nam(1) = "CORE01";
  EXPECT_EQ(written(1), raw_line("CORE01", 1957, {101, 102, 103}) + raw_line("CORE01", 1960, {-9999}));
}

TEST_F(TucsonRawWriter, MissingRingIsMinus9990WhateverItsEstimate) {
  add_core(1950, {0.5, 0.7, 0.0});
  w.xok(2) = false;
  w.nam(1) = "CORE01";
  EXPECT_EQ(written(1), raw_line("CORE01", 1950, {500, -9990, 0, -9999}));
}

TEST_F(TucsonRawWriter, RoundsHalvesAwayFromZero) {
  add_core(1950, {1.0005, 0.0025, 0.9995, 1.2344});
  w.nam(1) = "CORE01";
  EXPECT_EQ(written(1), raw_line("CORE01", 1950, {1001, 3, 1000, 1234, -9999}));
}

TEST_F(TucsonRawWriter, WidthThatDoesNotFitIsAsterisks) {
  add_core(1950, {1000.0, 999.999});  // 1,000,000 has seven digits
  w.x(2) = std::numeric_limits<double>::quiet_NaN();
  w.nam(1) = "CORE01";
  EXPECT_EQ(written(1), "CORE01  1950************ -9999\n");
}

// Years below -999 take five columns, so that the minus sign stands in column 8; -1003 leaves three for its
// decade.
TEST_F(TucsonRawWriter, YearBelowMinus999PutsItsMinusSignIntoColumn8) {
  add_core(-1003, widths_up_to(5));
  w.nam(1) = "CORE0123";
  EXPECT_EQ(written(1), "CORE012-1003   101   102   103\nCORE012-1000   104   105 -9999\n");
}

TEST_F(TucsonRawWriter, YearMinus999KeepsAllEightCharactersOfTheName) {
  add_core(-999, widths_up_to(2));
  w.nam(1) = "CORE0123";
  EXPECT_EQ(written(1), "CORE0123-999   101   102 -9999\n");
}

// A name that ends in "-" keeps it where the year has a sign of its own: both are seen.
TEST_F(TucsonRawWriter, NameEndingInMinusShowsBothMinusSignsAboveYearMinus1000) {
  add_core(-1001, widths_up_to(13));
  w.nam(1) = "CORE01 -";
  EXPECT_EQ(written(1),
            "CORE01 -1001   101\n"
            "CORE01 -1000   102   103   104   105   106   107   108   109   110   111\n"
            "CORE01 --990   112   113 -9999\n");
}

TEST_F(TucsonRawWriter, NegativeYearsRunToTheEndsOfTheirDecades) {
  add_core(-13, widths_up_to(14));  // -13 to 0
  w.nam(1) = "CORE01";
  EXPECT_EQ(written(1), raw_line("CORE01", -13, {101, 102, 103}) +
                            raw_line("CORE01", -10, {104, 105, 106, 107, 108, 109, 110, 111, 112, 113}) +
                            raw_line("CORE01", 0, {114, -9999}));
}

TEST_F(TucsonRawWriter, SeriesThatBeginsADecadeBefore0HasAFullFirstLine) {
  add_core(-20, widths_up_to(11));
  w.nam(1) = "CORE01";
  EXPECT_EQ(written(1), raw_line("CORE01", -20, {101, 102, 103, 104, 105, 106, 107, 108, 109, 110}) +
                            raw_line("CORE01", -10, {111, -9999}));
}

TEST_F(TucsonRawWriter, SeriesWithoutYearsIsTheMarkAlone) {
  add_core(1953, {});
  w.nam(1) = "CORE01";
  EXPECT_EQ(written(1), raw_line("CORE01", 1953, {-9999}));
}

TEST_F(TucsonRawWriter, WhatItWritesReadsBack) {
  add_core(-1003, widths_up_to(40));
  add_core(-3, widths_up_to(25));
  add_core(1950, widths_up_to(10));
  w.nam(1) = "CORE01";
  w.nam(2) = "CORE02";
  w.nam(3) = "CORE03";
  const std::string file = written(1) + written(2) + written(3);
  current_file("back.rwl", file);
  read_raw(w);
  ASSERT_EQ(w.nc, 3);
  EXPECT_EQ(w.nam(1).view(), "CORE01  ");
  EXPECT_EQ(w.fy(1), -1003);
  EXPECT_EQ(w.fy(2), -3);
  EXPECT_EQ(w.fy(3), 1950);
  EXPECT_EQ(values(w.x, 1), widths_up_to(40));
  EXPECT_EQ(values(w.x, 2), widths_up_to(25));
  EXPECT_EQ(values(w.x, 3), widths_up_to(10));
  EXPECT_EQ(messages(), Messages{});
}

TEST_F(TucsonRawWriter, FailureIsToldOnceAsWriteWithTheNameOfTheSeries) {
  add_core(1950, widths_up_to(50'000));
  w.nam(1) = "CORE01";
  TextOutput out;
  ASSERT_EQ(out.create(disk, "/dev/full"), status::ok);
  EXPECT_FALSE(write_rrec(w, writing(out), 1));
  EXPECT_EQ(messages(), Messages{"WriteCORE01 fail err =    28"});
}

}  // namespace
}  // namespace vorn
