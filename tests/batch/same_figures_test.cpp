// The command line against sessions of the program: the figures are the same to the last printed digit.
#include "batch/same_figures.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <random>
#include <string>

#include "support/places.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

constexpr int every_table = 10'000;

void expect_the_same(const SameFigures& all) {
  EXPECT_TRUE(all.was_read);
  for (const std::string& words : all.differences) ADD_FAILURE() << words;
}

TEST(SameFigures, OfTheExamples) {
  SameFigures all;
  for (const char* name :
       {"nowhere.rwl", "nearby.fh", "faraway.rwm", "yonder.rwl", "adrift.rwl", "anywhere.crn"}) {
    SCOPED_TRACE(name);
    const SameFigures one = compare_figures(source_folder() / "examples" / name, {}, every_table);
    expect_the_same(one);
    all.add(one);
  }
  EXPECT_EQ(all.stats, 57);
  EXPECT_GT(all.report, 400);
  EXPECT_GT(all.lags, 8'000);
  EXPECT_GT(all.chron, 1'500);
}

TEST(SameFigures, WithEverySettingChanged) {
  Settings settings;
  settings.splineon = false;
  settings.jpr = 3;
  settings.seg = 30;
  settings.olap = 10;
  const auto file = source_folder() / "examples" / "nowhere.rwl";
  expect_the_same(compare_figures(file, settings, 3));
  settings = {};
  settings.ss = 60;
  settings.aron = settings.logon = false;
  settings.seg = 100;
  settings.olap = 1;
  const SameFigures all = compare_figures(file, settings, 3);
  expect_the_same(all);
  // A step of a year: blocks of 24, of which the second goes on where the first ends.
  EXPECT_GT(all.report, 2'000);
}

// --- Made-up collections of odd shapes.

// A number from 0 to n - 1, the same everywhere for the same seed.
class Chance {
 public:
  explicit Chance(unsigned seed) : engine_(seed) {}
  int below(int n) { return static_cast<int>(engine_() % static_cast<unsigned>(n)); }
  bool one_in(int n) { return below(n) == 0; }

 private:
  std::mt19937 engine_;
};

// What a collection has in common.
struct Shape {
  int cores = 1, shortest = 40, longest = 40;
  int first = 1700;  // the earliest year
  int spread = 0;    // the first years of the cores are so far apart
  int zeros_in = 0;  // one ring of so many is 0; never where 0
  int gaps_in = 0;   // one core of so many has a gap
  bool thousandths = false;
  bool all_alike = false;
};

// The line of a core in the Tucson layout, one field at a time: a name, years at the beginnings of lines.
class TucsonCore {
 public:
  TucsonCore(std::string name, int first) : name_(std::move(name)), year_(first) {}
  void put(int value) {
    char field[40];
    if (text_.empty() || year_ % 10 == 0) {
      std::snprintf(field, sizeof field, "%s%-8s%4d", text_.empty() ? "" : "\n", name_.c_str(), year_);
      text_ += field;
    }
    std::snprintf(field, sizeof field, "%6d", value);
    text_ += field;
    ++year_;
  }
  std::string text() const { return text_ + "\n"; }

 private:
  std::string name_, text_;
  int year_;
};

std::string core_text(const Shape& shape, int k, Chance& chance) {
  const int years = shape.shortest + chance.below(shape.longest - shape.shortest + 1);
  const int first = shape.first + chance.below(shape.spread + 1);
  const int gap = shape.gaps_in > 0 && chance.one_in(shape.gaps_in) ? years / 2 : -1;
  TucsonCore core("C" + std::to_string(k), first);
  const int unit = shape.thousandths ? 10 : 1;
  for (int j = 0; j < years; ++j) {
    // Rings that the cores of a year share, and their own.
    const int shared = (first + j + 20'000) * 7919 % 97, own = chance.below(40);
    int width = shape.all_alike ? 100 * unit : (20 + shared + own) * unit;
    if (shape.zeros_in > 0 && chance.one_in(shape.zeros_in)) width = 0;
    core.put(j >= gap && gap > 0 && j < gap + 3 ? (shape.thousandths ? 0 : -999) : width);
  }
  core.put(shape.thousandths ? -9999 : 999);
  return core.text();
}

std::string collection_text(const Shape& shape, unsigned seed) {
  Chance chance(seed);
  std::string text;
  for (int k = 1; k <= shape.cores; ++k) text += core_text(shape, k, chance);
  return text;
}

TEST(SameFigures, AgainstTheChronologyOfAnotherFile) {
  const auto examples = source_folder() / "examples";
  for (const char* reference : {"anywhere.crn", "yonder.rwl", "faraway.rwm"}) {
    SCOPED_TRACE(reference);
    for (const char* file : {"nowhere.rwl", "adrift.rwl"}) {
      const SameFigures all = compare_figures(examples / file, {}, 4, examples / reference);
      expect_the_same(all);
      if (file == std::string("nowhere.rwl") && reference != std::string("yonder.rwl")) {
        EXPECT_GT(all.lags, 300);
      }
    }
  }
  // A reference shorter than the cores, and than a segment.
  const ScratchFolder folder;
  ScratchFolder::write("cores.rwl", collection_text({.cores = 4, .shortest = 90, .longest = 150}, 1));
  for (const int years : {20, 40, 49, 50, 60}) {
    SCOPED_TRACE(years);
    const Shape shape = {.cores = 3, .shortest = years, .longest = years, .first = 1740};
    ScratchFolder::write("short.rwl", collection_text(shape, 2));
    expect_the_same(compare_figures("cores.rwl", {}, 4, std::filesystem::absolute("short.rwl")));
  }
}

struct Named {
  const char* name;
  Shape shape;
};

void PrintTo(const Named& made, std::ostream* out) {
  *out << made.name;
}

class MadeUp : public testing::TestWithParam<Named> {};

TEST_P(MadeUp, GivesTheSameFigures) {
  const ScratchFolder folder;
  SameFigures all;
  for (unsigned seed = 1; seed <= 3; ++seed) {
    SCOPED_TRACE(seed);
    ScratchFolder::write("made.rwl", collection_text(GetParam().shape, seed));
    const SameFigures one = compare_figures("made.rwl", {}, 12);
    expect_the_same(one);
    all.add(one);
  }
  EXPECT_EQ(all.stats, 3 * GetParam().shape.cores);
  EXPECT_GT(all.chron, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Collections, MadeUp,
    testing::Values(
        Named{"one_core", {.cores = 1, .shortest = 120, .longest = 120}},
        Named{"two_cores", {.cores = 2, .shortest = 90, .longest = 150, .spread = 30}},
        Named{"one_short_core", {.cores = 1, .shortest = 12, .longest = 25}},
        Named{"short_cores", {.cores = 9, .shortest = 6, .longest = 60, .spread = 40}},
        Named{"forty_years", {.cores = 6, .shortest = 40, .longest = 40}},
        Named{"thirty_nine_to_forty_one", {.cores = 8, .shortest = 39, .longest = 41, .spread = 2}},
        Named{"fifty_years", {.cores = 5, .shortest = 49, .longest = 51, .spread = 1}},
        Named{"apart", {.cores = 6, .shortest = 60, .longest = 90, .spread = 900}},
        Named{"zeros", {.cores = 7, .shortest = 80, .longest = 200, .spread = 50, .zeros_in = 6}},
        Named{"gaps", {.cores = 7, .shortest = 80, .longest = 200, .spread = 50, .gaps_in = 2}},
        Named{"before_year_0", {.cores = 5, .shortest = 100, .longest = 300, .first = -420, .spread = 90}},
        Named{"around_year_0", {.cores = 5, .shortest = 60, .longest = 140, .first = -80, .spread = 60}},
        Named{"thousandths", {.cores = 6, .shortest = 80, .longest = 160, .spread = 30, .thousandths = true}},
        Named{"all_rings_alike", {.cores = 3, .shortest = 70, .longest = 70, .all_alike = true}},
        // More segments than a block of the report, and than the lag table, has room for.
        Named{"long", {.cores = 3, .shortest = 1'000, .longest = 1'400, .first = 300, .spread = 200}},
        Named{"many_cores", {.cores = 230, .shortest = 50, .longest = 70, .spread = 20}}),
    [](const auto& made) { return std::string(made.param.name); });

}  // namespace
}  // namespace vorn
