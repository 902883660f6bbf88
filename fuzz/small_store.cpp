#include "small_store.h"

#include <cstdint>
#include <cstdio>

namespace vorn::fuzz {
namespace {

constexpr const char* help_texts =
    "Help\n\n"
    " 1  94 999   1Spline\nDivides by a spline.\n"
    " 0   0   0   2What to do\nClick on a name.\nThen on \"Do it\".\n";

template <class... Values>
std::string printed(const char* edit, Values... values) {
  char text[120];
  std::snprintf(text, sizeof text, edit, values...);
  return text;
}

// A common signal with a noise of each tree's own: widths in thousandths, by year.
int width(int year, unsigned tree) {
  const auto noise = [](std::uint32_t seed) {
    seed = seed * 1664525u + 1013904223u;
    seed = (seed ^ (seed >> 15)) * 2246822519u;
    return static_cast<int>((seed >> 16) % 1000);
  };
  return 300 + noise(static_cast<std::uint32_t>(year) * 31u) +
         noise(static_cast<std::uint32_t>(year) * 131u + tree * 7919u) / 2;
}

// Tucson raw; the ring of the year `missing` is missing.
std::string raw_core(const char* name, int first, int last, unsigned tree, int missing = -9999) {
  std::string text;
  for (int year = first; year <= last + 1; ++year) {
    const bool decade = (year % 10 + 10) % 10 == 0;
    if (year == first || decade) text += (year > first ? "\n" : "") + printed("%-8s%4d", name, year);
    text += printed("%6d", year > last ? -9999 : year == missing ? -99 : width(year, tree));
  }
  return text + "\n";
}

std::string heidelberg_record(const std::string& header, int values, unsigned tree, int first = 1900) {
  std::string text = "HEADER:\n" + header + "DATA:Tree\n";
  for (int k = 1; k <= values; ++k) {
    text += printed("%6d%s", width(first + k - 1, tree), k % 10 == 0 ? "\n" : "");
  }
  return text + (values % 10 != 0 ? "\n" : "");
}

std::string compact_core(const char* name, int first, int years, unsigned tree) {
  std::string text = printed("%8d=N%8d=I %-46s%-4s%-8s\n", years, first, name, "", "(15F5.0)");
  for (int k = 0; k < years; ++k) {
    text += printed("%5d%s", width(first + k, tree), k % 15 == 14 || k == years - 1 ? "\n" : "");
  }
  return text;
}

std::string index_decades(int first, int last) {
  std::string text;
  for (int decade = first; decade <= last; decade += 10) {
    text += printed("REFER %4d", decade);
    for (int year = decade; year < decade + 10; ++year) text += printed("%4d%3d", 400 + width(year, 0), 8);
    text += "\n";
  }
  return text;
}

std::string two_column_core(int first, int years) {
  std::string text;
  for (int year = first; year < first + years; ++year) {
    text += printed("%14s%6d%7.3f\n", "", year, width(year, 40) / 1000.0);
  }
  return text;
}

}  // namespace

SmallStore mixed_store() {
  return {
      {{"Vorn.fil", "trees.rwl\nhill.fh\nfar.rwm\nnowhere.rwl\nrefer.crn\n"},
       {"trees.rwl", raw_core("TREE1", 1890, 1979, 1) + raw_core("TREE2", 1893, 1990, 2, 1921) +
                         raw_core("TREE3", 1905, 1985, 3) + raw_core("TREE4", 1900, 1915, 4)},
       {"hill.fh", heidelberg_record("KeyCode=HILL1\nDateBegin=1900\nLength=70\n", 70, 11) +
                       heidelberg_record("KeyCode=HILL2\nUnit=1/100 mm\nDateEnd=1969\nLength=60\n", 60, 12)},
       {"far.rwm", compact_core("FAR1", 1895, 64, 21) + compact_core("FAR2", 1900, 50, 22)},
       {"refer.crn", index_decades(1890, 1980)},
       {"TRW.fil", "beams.rwl\nbeam.trw\nnothere.trw\nundated.trw\n"},
       {"beam.trw", two_column_core(1901, 40)},
       {"undated.trw", two_column_core(0, 12)},
       {"Help.prn", help_texts}}};
}

SmallStore tiny_store() {
  return {{{"Vorn.fil", "one.rwl\ntwo.rwl\n"},
           {"one.rwl", raw_core("ONE", 1950, 1961, 1)},
           {"two.rwl", raw_core("TWO-A", 1940, 1965, 2) + raw_core("TWO-B  -", 20, 45, 3)},
           {"TRW.fil", "one.rwl\none.rwl\n"}}};
}

SmallStore odd_store() {
  return {{{"Vorn.fil", "odd.fh\nlate.rwm\nzero.rwl\nnone.txt\n"},
           {"odd.fh", heidelberg_record("KeyCode=NODATES\nLength=30\n", 30, 1) +
                          heidelberg_record("KeyCode=NOLENGTH\nDateBegin=1950\n", 0, 2) +
                          heidelberg_record("KeyCode=NOVALUES\nDateBegin=1900\nLength=30\n", 0, 3) +
                          heidelberg_record("KeyCode=FINE\nDateBegin=1900\nLength=60\n", 60, 4) +
                          heidelberg_record("KeyCode=SHORT\nDateEnd=1960\nLength=3\n", 3, 5)},
           {"late.rwm", compact_core("LATE", 9990, 9, 6)},
           {"zero.rwl",
            "ZERO    1900     0     0     0     0     0     0     0     0     0     0\n"
            "ZERO    1910   999\n" +
                raw_core("CONST", 1900, 1940, 7)},
           {"none.txt", "this is no file of rings\n"},
           {"TRW.fil", "odd.trw\nnone.txt\n"},
           {"Help.prn", ""}},
          true};
}

SmallStore crowded_store() {
  std::string many;
  for (int k = 1; k <= 215; ++k) {
    many += raw_core(printed("M%d", k).c_str(), 1900 + k % 7, 1911 + k % 7, static_cast<unsigned>(k));
  }
  return {{{"Vorn.fil", "many.rwl\nfew.rwl\n"},
           {"many.rwl", many},
           {"few.rwl", raw_core("FEW1", 1890, 1940, 1) + raw_core("FEW2", 1895, 1930, 2)}}};
}

}  // namespace vorn::fuzz
