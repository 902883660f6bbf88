// Files as archives and laboratories have them, held against figures that were worked out independently.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <ostream>

#include "support/format_bench.h"
#include "support/places.h"

namespace vorn {
namespace {

// What a file gives when it is loaded alone. Cores and missing rings of an index file are 0.
struct RealFile {
  const char* name;
  Layout layout;
  int header_lines;
  int cores, first_year, last_year, missing_rings, messages;
};

void PrintTo(const RealFile& file, std::ostream* out) {
  *out << file.name;
}

using enum Layout;

const RealFile real_files[] = {
    {"alge001.rwl", tucson_raw, 3, 33, 1697, 2005, 0, 0},
    {"bababa.fh", heidelberg, 0, 1, 1001, 1022, 0, 0},
    {"bcdates.rwl", tucson_raw, 3, 1, -384, -305, 0, 0},
    {"brit038.rwl", tucson_raw, 3, 35, -2228, -1889, 0, 0},
    {"ca051.rwl", tucson_raw, 3, 26, -42, 1970, 0, 0},
    {"ca533.rwl", tucson_raw, 0, 34, 626, 1983, 0, 0},
    {"cana209.rwl", tucson_raw, 0, 22, 713, 2001, 0, 0},
    {"chil007a.crn", tucson_index, 3, 0, 1132, 1975, 0, 0},
    {"chil017.crn", tucson_index, 3, 0, 1489, 1996, 0, 1},  // its last line is a line of statistics
    {"co021.rwl", tucson_raw, 0, 35, 1176, 1963, 0, 0},
    {"doel1.fh", heidelberg, 0, 10, 1150, 1324, 0, 0},
    {"keny002.rwl", tucson_raw, 3, 13, 1935, 1994, 0, 0},
    {"melolontha_4yr.fh", heidelberg, 0, 5, -19, 124, 0, 0},
    {"mixedunits.rwl", tucson_raw, 3, 5, 1386, 1978, 0, 0},
    {"neth012.rwl", tucson_raw, 1, 7, -87, 21, 0, 0},
    {"ngxp_bugged.rwl", tucson_raw, 0, 1, 1962, 2003, 0, 0},  // its lines end CR CR LF
    {"ok041.rwl", tucson_raw, 3, 30, 1939, 2013, 39, 0},
    {"russ020e.rwl", tucson_raw, 3, 12, 1890, 1978, 0, 0},  // its lines end with a lone CR
    {"set01.fh", heidelberg, 0, 16, -177, -20, 0, 0},
    {"tucson2.crn", tucson_index, 3, 0, 1814, 1995, 0, 0},
    {"tucsoncompact.rwm", not_recognised, 0, 0, 0, 0, 0, 0},  // two empty lines stand before its header
    {"uakk0530.fh", heidelberg, 0, 1, 987, 1091, 0, 1},       // ends in what is taken for a header
    {"wa082.rwl", tucson_raw, 3, 23, 1698, 1983, 1, 0},
    {"wwr.rwl", tucson_raw, 0, 20, 946, 1186, 0, 0},
};

class RealFiles : public FormatBench, public ::testing::WithParamInterface<RealFile> {
 protected:
  void load(const std::string& path) {
    w.cnam(1) = path;
    find_rftyp(w);
    if (row_of(w.rftype(1))) read_as(w.rftype(1));
  }
  std::span<const std::int32_t> of_cores(const Table<std::int32_t>& table) { return table.range(1, w.nc); }
};

TEST_P(RealFiles, LoadAsTheirFiguresSay) {
  const RealFile expected = GetParam();
  const std::filesystem::path real = real_files_folder();
  if (!std::filesystem::exists(real / expected.name)) GTEST_SKIP() << expected.name << " is not at " << real;
  // Its own path may be longer than the 60 characters of a file name.
  std::filesystem::copy_file(real / expected.name, expected.name);
  load(expected.name);

  EXPECT_EQ(w.rftype(1), expected.layout);
  EXPECT_EQ(w.rfhead(1), expected.header_lines);
  EXPECT_EQ(w.nc, expected.cores);
  if (w.nc > 0) {
    EXPECT_EQ(std::ranges::min(of_cores(w.fy)), expected.first_year);
    EXPECT_EQ(std::ranges::max(of_cores(w.ly)), expected.last_year);
  } else if (w.rftype(1) == tucson_index) {
    EXPECT_EQ(w.cfy(1), expected.first_year);
    EXPECT_EQ(w.cly(1), expected.last_year);
  }
  EXPECT_EQ(std::ranges::count(w.xok.range(1, w.ad(w.nc + 1) - 1), false), expected.missing_rings);
  const std::string told = log.str();
  EXPECT_EQ(std::ranges::count(told, '\n'), expected.messages) << told;
}

INSTANTIATE_TEST_SUITE_P(All, RealFiles, ::testing::ValuesIn(real_files), [](const auto& file) {
  std::string name = file.param.name;
  std::ranges::replace_if(
      name, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
  return name;
});

}  // namespace
}  // namespace vorn
