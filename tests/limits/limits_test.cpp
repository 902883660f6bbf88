// The whole program at each of its capacities: one below, at the limit and one above. Each case starts on
// files of that size, writes every output, goes through every screen and must come out with the counts
// expected and not a message more; what lies beyond a limit is said outside the page.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "support/whole_program.h"
#include "walk/invariants.h"
#include "workspace/capacity.h"

namespace vorn {
namespace {

// --- Files of any size.

std::string field(const char* format, int number) {
  char text[40];
  std::snprintf(text, sizeof text, format, number);
  return text;
}

// Widths, in thousandths of a millimetre, that look random.
class Widths {
 public:
  int next() {
    seed_ = seed_ * 1103515245u + 12345u;
    return 600 + static_cast<int>((seed_ >> 16) % 800);
  }

 private:
  unsigned seed_ = 1;
};

std::string compact_core(const std::string& name, int first, int years, Widths& widths) {
  std::string text = field("%8d=N", years) + field("%8d=I ", first) + name;
  text.resize(71, ' ');
  text += "(19F4.0)\n";
  for (int k = 1; k <= years; ++k) {
    text += field("%4d", widths.next());
    if (k % 19 == 0 || k == years) text += "\n";
  }
  return text;
}

std::string heidelberg_core(const std::string& name, int first, int years, Widths& widths) {
  std::string text = "HEADER:\nKeyCode=" + name + "\nUnit=1/1000 mm\nDateBegin=" + field("  %-6d", first) +
                     "\nLength=" + field("%d", years) + "\nDATA:Tree\n";
  for (int k = 1; k <= years; ++k) {
    text += field("%6d", widths.next());
    if (k % 10 == 0 || k == years) text += "\n";
  }
  return text;
}

// The first core line and `further_lines` more, from -999 on; the last line ends in the end mark.
std::string raw_core(int further_lines, Widths& widths) {
  std::string text;
  const int last = -991 + 10 * further_lines;
  for (int year = -999; year <= last; ++year) {
    if (year == -999 || year % 10 == 0) text += "LONG    " + field("%4d", year);
    text += field("%6d", year < last ? widths.next() : -9999);
    if (year % 10 == 9 || year % 10 == -1) text += "\n";
  }
  return text;
}

std::string index_file(int years) {
  std::string text;
  for (int year = 1; year <= years; ++year) {
    if (year == 1) text += "ABCDEF   1";
    if (year % 10 == 0) text += "ABCDEF" + field("%4d", year % 10'000);
    if (year == 1) text += "9990  0";
    text += field("%4d", 900 + year % 200) + field("%3d", 5);
    if (year % 10 == 9) text += "\n";
  }
  for (int year = years + 1; year % 10 != 0; ++year) text += "9990  0";
  return text + (years % 10 == 9 ? "" : "\n");
}

std::string number_of(const std::string& prefix, int k) {
  return prefix + field("%05d", k);
}

// --- The program on them.

class Limits : public WholeProgram {
 protected:
  // Starts on the files listed, goes round and quits.
  void go_round_and_quit(const std::string& list) {
    ScratchFolder::write("Vorn.fil", list);
    key(Event::escape);  // whatever is told at the start
    write_everything();
    see_everything();
    look([this] { EXPECT_EQ(broken_invariant(*w, WalkState{}), ""); });
    press(button::quit);
    EXPECT_EQ(play(), EndReason::quit);
    EXPECT_EQ(screen.steps_left(), 0u);
    EXPECT_TRUE(seen_crossdating);
    EXPECT_TRUE(last_name_seen);
  }
  // What was told, but for cores with rings too wide for the compact layout.
  std::string told_besides() {
    std::istringstream text(told());
    std::string rest;
    for (std::string line; std::getline(text, line);) {
      if (line.find("do not fit") == std::string::npos) rest += line + "\n";
    }
    return rest;
  }
  int lines_with(const std::string& file, const std::string& part) const {
    std::istringstream text(ScratchFolder::read(file));
    int count = 0;
    for (std::string line; std::getline(text, line);) count += line.find(part) != std::string::npos;
    return count;
  }
};

// A limit and a number near it.
struct Near {
  int limit, by;
  int number() const { return limit + by; }
  int kept() const { return std::min(number(), limit); }
};

std::vector<Near> around(int limit) {
  return {{limit, -1}, {limit, 0}, {limit, 1}};
}

void PrintTo(const Near& near, std::ostream* out) {
  *out << near.number();
}

std::string name_of(const ::testing::TestParamInfo<Near>& near) {
  return std::to_string(near.param.number());
}

class SeriesLimit : public Limits, public ::testing::WithParamInterface<Near> {};

TEST_P(SeriesLimit, OfACompactFile) {
  Widths widths;
  std::string text;
  for (int k = 1; k <= GetParam().number(); ++k) text += compact_core(number_of("C", k), 1900, 5, widths);
  ScratchFolder::write("many.rwm", text);
  go_round_and_quit("many.rwm\n");
  EXPECT_EQ(w->nc, GetParam().kept());
  EXPECT_EQ(told(), GetParam().by > 0 ? "many.rwm: series behind the 10,000th were not read\n" : "");
  EXPECT_EQ(lines_with("many.RWW", " 1900 "), GetParam().kept());
}

INSTANTIATE_TEST_SUITE_P(Near, SeriesLimit, ::testing::ValuesIn(around(max_series)), name_of);

class RecordLimit : public Limits, public ::testing::WithParamInterface<Near> {};

TEST_P(RecordLimit, OfAHeidelbergFile) {
  Widths widths;
  std::string text;
  for (int k = 1; k <= GetParam().number(); ++k) text += heidelberg_core(number_of("H", k), 1900, 5, widths);
  ScratchFolder::write("many.fh", text);
  go_round_and_quit("many.fh\n");
  EXPECT_EQ(w->nc, GetParam().kept());
  EXPECT_EQ(told(), GetParam().by > 0 ? "many.fh: series behind the 5,000th were not read\n" : "");
}

INSTANTIATE_TEST_SUITE_P(Near, RecordLimit, ::testing::ValuesIn(around(max_heidelberg_records)), name_of);

class PoolLimit : public Limits, public ::testing::WithParamInterface<Near> {};

// 99 cores of 12,000 years, one of 11,000 and one for the rest. The chronology finds no room and is told.
TEST_P(PoolLimit, OfRingValues) {
  constexpr int years = 12'000;
  Widths widths;
  std::string text;
  for (int k = 1; k <= 99; ++k) text += compact_core(number_of("P", k), 1, years, widths);
  text += compact_core("LAST BUT", 1, years - 1'000, widths);
  text += compact_core("LAST ONE", 1, GetParam().number() - 100 * years + 1'000, widths);
  ScratchFolder::write("pool.rwm", text);
  ScratchFolder::write("Vorn.fil", "pool.rwm\n");
  key(Event::escape);
  press(button::save_raw);
  press(button::quit);
  EXPECT_EQ(play(), EndReason::quit);
  const bool fits = GetParam().by <= 0;
  EXPECT_EQ(told(),
            fits ? "Would be too many rings\n" : "Would be too many rings\nWould be too many rings\n");
  EXPECT_EQ(w->nc, fits ? 101 : 100);
  EXPECT_EQ(w->yr(w->nd), 0);
  EXPECT_EQ(lines_with("pool.RWW", "LAST ONE"), fits ? 101 : 0);
}

INSTANTIATE_TEST_SUITE_P(Near, PoolLimit, ::testing::ValuesIn(around(max_pool)), name_of);

class FilesLimit : public Limits, public ::testing::WithParamInterface<Near> {};

TEST_P(FilesLimit, OfTheList) {
  std::string list;
  for (int k = 1; k <= GetParam().number(); ++k) {
    const std::string name = number_of("F", k) + ".rwl";
    ScratchFolder::write(name, raw_core_text(number_of("C", k), 1900, 40, static_cast<unsigned>(k)));
    list += name + "\n";
  }
  go_round_and_quit(list);
  EXPECT_EQ(told_besides(), GetParam().by > 0 ? "Vorn.fil: files behind the 100th were not read\n" : "");
  EXPECT_EQ(w->nfil, GetParam().kept());
  EXPECT_EQ(w->nd, 1 + GetParam().kept());
}

INSTANTIATE_TEST_SUITE_P(Near, FilesLimit, ::testing::ValuesIn(around(max_files)), name_of);

class YearsLimit : public Limits, public ::testing::WithParamInterface<Near> {};

// Two cores, the first and the last fifty years.
TEST_P(YearsLimit, OfAChronologyOfCores) {
  Widths widths;
  const int last = 1 + GetParam().number() - 50;
  ScratchFolder::write("two.rwm",
                       compact_core("EARLY   ", 1, 50, widths) + compact_core("LATE    ", last, 50, widths));
  if (GetParam().by <= 0) {
    go_round_and_quit("two.rwm\n");
    EXPECT_EQ(told(), "");
    EXPECT_EQ(w->cyr(1), GetParam().number());
    return;
  }
  ScratchFolder::write("Vorn.fil", "two.rwm\n");
  key(Event::escape);
  EXPECT_EQ(play(), EndReason::cannot_go_on);
  EXPECT_EQ(told(), "Chronology too long, max= 12000, age= 12001\n");
}

TEST_P(YearsLimit, OfAnIndexFile) {
  ScratchFolder::write("core.rwl", raw_core_text("CORE", 1900, 40, 1));
  ScratchFolder::write("long.crn", index_file(GetParam().number()));
  go_round_and_quit("core.rwl\nlong.crn\n");
  EXPECT_EQ(told_besides(), GetParam().by > 0 ? "long.crn: years behind the 12,000th were not read\n" : "");
  EXPECT_EQ(w->cfy(2), 1);
  EXPECT_EQ(w->cyr(2), GetParam().kept());
}

INSTANTIATE_TEST_SUITE_P(Near, YearsLimit, ::testing::ValuesIn(around(max_years)), name_of);

class LinesLimit : public Limits, public ::testing::WithParamInterface<Near> {};

// One further line more splits the core: its last line but one starts the second.
TEST_P(LinesLimit, OfATucsonRawSeries) {
  Widths widths;
  ScratchFolder::write("long.rwl",
                       raw_core(GetParam().number(), widths) + raw_core_text("CORE", 1900, 40, 1));
  go_round_and_quit("long.rwl\n");
  EXPECT_EQ(told_besides(),
            GetParam().by < 0 ? "" : "long.rwl: LONG is too long for one series and was split\n");
  EXPECT_EQ(w->nc, GetParam().by < 0 ? 2 : 3);
}

INSTANTIATE_TEST_SUITE_P(Near, LinesLimit, ::testing::ValuesIn(around(1'003)), name_of);

class NameLimit : public Limits, public ::testing::WithParamInterface<Near> {};

// The name of a file behind a path; a longer one is cut and so does not exist.
TEST_P(NameLimit, OfAFile) {
  const std::string path = "a folder with a name of some length/";
  std::filesystem::create_directory(path);
  const std::string name =
      path + std::string(static_cast<std::size_t>(GetParam().number()) - path.size() - 4, 'n') + ".rwl";
  ScratchFolder::write(name, raw_core_text("CORE", 1900, 40, 1));
  ScratchFolder::write("core.rwl", raw_core_text("CORE", 1900, 40, 1));
  go_round_and_quit(name + "\ncore.rwl\n");
  EXPECT_EQ(told_besides(), GetParam().by > 0 ? name.substr(0, 60) + ": File does not exist\n" : "");
  EXPECT_EQ(w->nfil, GetParam().by > 0 ? 1 : 2);
  const std::string output = GetParam().by > 0 ? "core.RWW" : name.substr(0, name.size() - 3) + "RWW";
  EXPECT_EQ(lines_with(output, "CORE    1900"), 1);
}

INSTANTIATE_TEST_SUITE_P(Near, NameLimit, ::testing::ValuesIn(around(60)), name_of);

}  // namespace
}  // namespace vorn
