// Any bytes, and tables of random series that must come back as they were.
#include "import/imported.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "import/fields.h"
#include "import/series_names.h"
#include "support/imported_specimens.h"

namespace vorn {
namespace {

class Noise {
 public:
  explicit Noise(std::uint32_t seed) : state_(seed * 2654435761U + 1U) {}
  int below(int end) {
    state_ = state_ * 1664525U + 1013904223U;
    return static_cast<int>((state_ >> 8U) % static_cast<std::uint32_t>(end));
  }

 private:
  std::uint32_t state_;
};

struct RandomSeries {
  std::string name;
  int first = 0;
  std::vector<int> micrometres;  // -1 where there is no ring
};

std::vector<RandomSeries> random_series(Noise& noise) {
  std::vector<RandomSeries> all(1 + static_cast<std::size_t>(noise.below(8)));
  const int start = noise.below(4000) - 2000;
  for (std::size_t k = 0; k < all.size(); ++k) {
    all[k].name = "CORE" + std::to_string(k);
    all[k].first = start + noise.below(60);
    for (int years = 3 + noise.below(80); years > 0; --years) {
      const bool inner = years > 1 && !all[k].micrometres.empty();
      all[k].micrometres.push_back(inner && noise.below(12) == 0 ? -1
                                   : noise.below(12) == 0        ? 0
                                                                 : noise.below(3000));
    }
  }
  return all;
}

// The width of a year, as text in millimetres; nothing where there is none.
std::string width_of(const RandomSeries& series, int year) {
  const int k = year - series.first;
  if (k < 0 || k >= static_cast<int>(series.micrometres.size())) return "";
  const int width = series.micrometres[static_cast<std::size_t>(k)];
  return width < 0 ? "" : decimal(width / 1000.0, 3);
}

YearSpan years_of(const std::vector<RandomSeries>& all) {
  YearSpan years{all[0].first, all[0].first};
  for (const RandomSeries& one : all) {
    years.first = std::min<std::int64_t>(years.first, one.first);
    years.last = std::max<std::int64_t>(years.last, one.first + std::ssize(one.micrometres) - 1);
  }
  return years;
}

// Years down the side; NaN where there is no ring.
std::string table_of(const std::vector<RandomSeries>& all, const std::string& first_name, char separator) {
  std::string text = first_name;
  for (const RandomSeries& one : all) text += separator + one.name;
  const YearSpan years = years_of(all);
  for (auto year = static_cast<int>(years.first); year <= static_cast<int>(years.last); ++year) {
    text += "\n" + std::to_string(year);
    for (const RandomSeries& one : all) {
      const std::string width = width_of(one, year);
      text += separator + (width.empty() ? "NaN" : width);
    }
  }
  return text + "\n";
}

std::string noaa_of(const std::vector<RandomSeries>& all) {
  std::string text =
      "# World Data Service for Paleoclimatology\n# Missing_Values: NaN\n##age_CE\tage,,,year CE,,,,,N\n";
  for (const RandomSeries& one : all)
    text += "##" + one.name + "\ttree ring width,wood,,mm,,tree ring,raw,,N\n";
  return text + table_of(all, "age_CE", '\t');
}

std::string long_of(const std::vector<RandomSeries>& all, Noise& noise) {
  std::vector<std::string> rows;
  for (const RandomSeries& one : all) {
    for (int k = 0; k < static_cast<int>(one.micrometres.size()); ++k) {
      const std::string width = width_of(one, one.first + k);
      rows.push_back(one.name + ";" + std::to_string(one.first + k) + ";" + (width.empty() ? "NA" : width));
    }
  }
  for (std::size_t k = rows.size(); k > 1; --k)
    std::swap(rows[k - 1], rows[static_cast<std::size_t>(noise.below(static_cast<int>(k)))]);
  std::string text = "series;year;width (mm)\n";
  for (const std::string& row : rows) text += row + "\n";
  return text;
}

// What is not as it was; the copy is held by taken() to say the same as the series.
std::string difference(const std::vector<RandomSeries>& meant, const Imported& one) {
  if (one.series.size() != meant.size()) return "another number of series";
  for (const RandomSeries& series : meant) {
    const auto found = std::ranges::find(one.series, series.name, &ImportedSeries::name);
    if (found == one.series.end()) return series.name + " is not there";
    if (found->first != series.first || found->widths.size() != series.micrometres.size())
      return series.name + " has other years";
    for (std::size_t k = 0; k < found->widths.size(); ++k) {
      const int width = series.micrometres[k];
      if ((width >= 0) != (found->presence[k] == 1)) return series.name + " has other rings";
      if (width >= 0 && std::abs(found->widths[k] - width / 1000.0) > 1e-9)
        return series.name + " has other widths";
    }
  }
  return "";
}

TEST(Imported, RandomSeriesComeBackAsTheyWere) {
  for (std::uint32_t seed = 1; seed <= 150; ++seed) {
    Noise noise(seed);
    const std::vector<RandomSeries> all = random_series(noise);
    EXPECT_EQ(difference(all, taken(table_of(all, "year", ','))), "") << seed;
    EXPECT_EQ(difference(all, taken(table_of(all, "", ';'))), "") << seed;
    EXPECT_EQ(difference(all, taken(noaa_of(all))), "") << seed;
    EXPECT_EQ(difference(all, taken(long_of(all, noise))), "") << seed;
  }
}

TEST(Imported, TenThousandSeriesHaveNamesOfTheirOwn) {
  std::string text = "year";
  for (int k = 0; k < 10'001; ++k) text += ",Some long name of a site " + std::to_string(k % 5'000);
  for (int year = 1990; year < 1993; ++year) {
    text += "\n" + std::to_string(year);
    for (int k = 0; k < 10'001; ++k) text += ",1.5";
  }
  const Imported one = taken(text + "\n");
  EXPECT_EQ(one.series.size(), 10'000u);
  EXPECT_NE(doubts(one).find("series-limit"), std::string::npos);
}

TEST(Imported, MoreRingsThanThereIsRoomForAreSaid) {
  std::string text = "year";
  for (int k = 0; k < 200; ++k) text += ",S" + std::to_string(k);
  for (int year = -5'000; year < 1'100; ++year) {
    text += "\n" + std::to_string(year);
    for (int k = 0; k < 200; ++k) text += ",1";
  }
  const auto one = imported(text + "\n", {2026});
  ASSERT_TRUE(one);
  EXPECT_NE(doubts(*one).find("no-room"), std::string::npos);
}

TEST(Imported, BytesOfAnyKindEndInNothingOrInFindings) {
  const std::string table = "year,A,B\n1990,1.5,2\n1991,1.25,";
  const std::string digits(2'000'000, '7'), quotes(2'000'000, '"'), returns(2'000'000, '\r');
  for (const std::string& tail :
       {digits, quotes, returns, std::string(1000, '\0'), std::string("1e999"),
        std::string("99999999999999999999"), std::string("-"), std::string("\xff\xfe")}) {
    const auto one = imported(table + tail + "\n1992,1,1\n", {2026});
    ASSERT_EQ(one.has_value(), tail[0] != '\0') << tail.substr(0, 20);
    if (one) {
      EXPECT_EQ(lost_in_copy(*one), "");
    }
    EXPECT_FALSE(imported(tail, {2026}));
  }
  EXPECT_FALSE(imported(std::string(3'000'000, ','), {2026}));
  EXPECT_FALSE(imported("# NOAA\n" + digits, {2026}));
  EXPECT_TRUE(imported(
      "HEADER:\nKeyCode=" + digits + "\nLength=" + digits + "\nDATA:Tree\n" + digits + "\n1 2\n", {2026}));
}

TEST(Imported, NumbersAreWrittenPlainly) {
  EXPECT_EQ(number_in(" 1.25 ", false)->value, 1.25);
  EXPECT_EQ(number_in("1,25", true)->value, 1.25);
  EXPECT_EQ(number_in("1.5e-1", false)->value, 0.15);
  for (const char* none : {"", "1,25", "1.2.3", "1 2", "e5", "1e", "0x10", "inf", "nan", "+", ".", "1d5"})
    EXPECT_FALSE(number_in(none, false)) << none;
  EXPECT_EQ(whole_number_in("1990.0"), 1990);
  EXPECT_FALSE(whole_number_in("1990.5"));
}

}  // namespace
}  // namespace vorn
