// Whatever a list may name: no reader crashes, hangs or writes where it should not, and what it leaves holds
// together.
#include <gtest/gtest.h>

#include <filesystem>

#include "support/format_bench.h"

namespace vorn {
namespace {

class HostileFiles : public FormatBench {
 protected:
  // Every reader, whatever layout the file has.
  void read_with_all(const std::string& name) {
    for (const Careful& careful : {Careful(), Careful::everything()}) {
      w.careful = careful;
      read_with_all_of(name);
    }
  }

  void read_with_all_of(const std::string& name) {
    for (int head = 0; head <= 3; ++head) {
      w.cnam(1) = name;
      find_rftyp(w);
      w.rfhead(1) = head;
      for (const LayoutRow& row : layouts()) {
        if (!row.read_cores) continue;
        expect_sound_decisions(row.read_cores(w, reading()));
        expect_sound_store();
      }
      read_ind(w);
      EXPECT_GE(w.cyr(1), 0);
      EXPECT_LE(w.cyr(1), max_years);
      EXPECT_EQ(w.cly(1), w.cfy(1) + w.cyr(1) - 1);
    }
  }

  // Entries lie end to end inside the pool and, unless a year is pending, end where their length says.
  void expect_sound_store() {
    ASSERT_GE(w.nc, 0);
    ASSERT_LE(w.nc, max_series);
    EXPECT_EQ(w.ad(1), 1);
    for (int i = 1; i <= w.nc; ++i) {
      ASSERT_GE(w.yr(i), 0) << i;
      ASSERT_EQ(w.ad(i + 1), w.ad(i) + w.yr(i)) << i;
      if (w.yr(i) > 0) {
        ASSERT_EQ(w.ly(i), w.fy(i) + w.yr(i) - 1) << i;
      }
    }
    EXPECT_LE(w.ad(w.nc + 1) - 1, max_pool);
  }

  // What was decided is bounded and names the series that are there.
  void expect_sound_decisions(const ReadDecisions& decided) {
    ASSERT_EQ(static_cast<int>(decided.series.size()), w.nc);
    EXPECT_LE(decided.not_taken.size(), static_cast<std::size_t>(max_series));
    for (std::size_t k = 0; k < decided.series.size(); ++k) {
      EXPECT_EQ(decided.series[k].rings, w.yr(static_cast<int>(k) + 1));
      EXPECT_LE(decided.series[k].first_line, decided.series[k].last_line);
    }
  }

  void read_bytes_with_all(std::string_view bytes) {
    ScratchFolder::write("hostile.dat", bytes);
    read_with_all("hostile.dat");
  }

  // Bytes without order, the same in every run.
  static std::string junk(std::size_t count, std::uint32_t seed) {
    std::string bytes;
    for (std::size_t k = 0; k < count; ++k) {
      seed = seed * 1664525u + 1013904223u;
      bytes += static_cast<char>(seed >> 24);
    }
    return bytes;
  }
};

TEST_F(HostileFiles, EmptyOrBlank) {
  for (const char* bytes : {"", "\n", "\r", "\r\n", "\n\n\n\n\n\n", "        ", "\x1a", "\n\x1a"}) {
    read_bytes_with_all(bytes);
  }
}

TEST_F(HostileFiles, FoldersAndDevices) {
  read_with_all(".");
  read_with_all("/dev/null");
  read_with_all("/dev/zero");  // would never end
  read_with_all("");
  read_with_all("gone.rwl");
}

TEST_F(HostileFiles, LinksThatLeadNowhereOrInACircle) {
  std::filesystem::create_symlink("nowhere", "dangling");
  std::filesystem::create_symlink("circle", "circle");
  read_with_all("dangling");
  read_with_all("circle");
}

TEST_F(HostileFiles, BytesWithoutOrder) {
  for (std::uint32_t seed = 1; seed <= 20; ++seed) read_bytes_with_all(junk(5'000, seed));
}

TEST_F(HostileFiles, ZerosWithoutEnd) {
  ScratchFolder::write("zeros.dat", "");
  std::filesystem::resize_file("zeros.dat", 20'000'000);
  read_with_all("zeros.dat");
}

TEST_F(HostileFiles, NumbersAtTheEndsOfTheirFields) {
  read_bytes_with_all("CORE01  9999" + std::string(10, ' ') + "999999" + std::string(40, '9') +
                      "\nCORE01  9999-99999\n");
  read_bytes_with_all("CORE01 --999-99999   999\nCORE01 --999   999\n");
  read_bytes_with_all(
      "HEADER:\nLength=9999\nDateEnd=-99999\nDATA\n     1\nHEADER:\nLength=-999\nDateBegin=999999\nDATA\n");
  const std::string format = "(19F4.0)";
  read_bytes_with_all(" 9999999=N99999999=I CORE01" + std::string(41, ' ') + "999" + format + "\n   1   2\n");
  read_bytes_with_all(" -999999=N-9999999=I CORE01" + std::string(41, ' ') + "-99" + format + "\n   1   2\n");
  read_bytes_with_all("       2=N-9999999=I CORE01" + std::string(41, ' ') + "-99" + format + "\n Nan Inf\n");
}

TEST_F(HostileFiles, CompactWithEveryFormatThatFitsItsColumns) {
  const std::string header = "       5=N    1950=I CORE01" + std::string(44, ' ');
  for (const char* format :
       {"(0F4.0)", "(9999X)", "(9(9X))", "(F0.0)", "(F99.99)", "(99F99.)", "(I0)", "(A)", "('ab')", "(SP,F4)",
        "(F4.0/)", "(-1F4.0)", "()", "(  )", "(1F1.0)", "(F4.0)))"}) {
    char columns[16];
    std::snprintf(columns, sizeof columns, "%-8s", format);
    read_bytes_with_all(header + columns + "\n 101 102 103\n");
  }
}

}  // namespace
}  // namespace vorn
