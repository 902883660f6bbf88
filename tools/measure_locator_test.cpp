// How errors are planted, and that they are found: in real files, where they are at hand.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "locator_measures.h"
#include "support/places.h"
#include "support/scratch_folder.h"

namespace vorn::measures {
namespace {

Core core_of(std::int64_t first, std::vector<double> widths, std::vector<bool> presence) {
  const auto present = std::make_shared<bool[]>(presence.size());
  std::copy(presence.begin(), presence.end(), present.get());
  return {"A", first, std::move(widths), present};
}
std::vector<bool> presence_of(const Core& core) {
  const bool* const first = core.present.get();
  return std::vector<bool>(first, first + core.widths.size());
}

// 1900 to 1903; the ring of 1902 is taken out.
TEST(PlantedRingErrors, AMissingRingMovesTheEndThatIsNotKept) {
  const Core core = core_of(1900, {1, 2, 3, 4}, {true, false, true, true});
  const Core inner = without_ring(core, 2, KeptEnd::inner), outer = without_ring(core, 2, KeptEnd::outer);
  EXPECT_EQ(inner.first, 1900);
  EXPECT_EQ(outer.first, 1901);
  EXPECT_EQ(inner.widths, (std::vector<double>{1, 2, 4}));
  EXPECT_EQ(outer.widths, inner.widths);
  EXPECT_EQ(presence_of(inner), (std::vector<bool>{true, false, true}));
}

TEST(PlantedRingErrors, ASplitRingIsTwoThatAddUpToIt) {
  const Core core = core_of(1900, {1, 2, 4}, {true, true, false});
  const Core inner = with_split_ring(core, 1, 0.25, KeptEnd::inner);
  EXPECT_EQ(inner.first, 1900);
  EXPECT_EQ(inner.widths, (std::vector<double>{1, 0.5, 1.5, 4}));
  EXPECT_EQ(presence_of(inner), (std::vector<bool>{true, true, true, false}));
  EXPECT_EQ(with_split_ring(core, 1, 0.25, KeptEnd::outer).first, 1899);
}

TEST(LocatorMeasures, OfAFileThatHoldsNoRingWidthsAreNone) {
  EXPECT_THROW(read_site((source_folder() / "README.md").string()), std::runtime_error);
  EXPECT_THROW(read_site((source_folder() / "examples" / "anywhere.crn").string()), std::runtime_error);
}

TEST(LocatorMeasures, OfASiteReadItsCores) {
  const Site site = read_site((source_folder() / "examples" / "nowhere.rwl").string());
  ASSERT_EQ(site.cores.size(), 25u);
  EXPECT_EQ(site.cores[6].name, "NOW07");
  EXPECT_EQ(site.cores[6].first, 1740);
}

TEST(LocatorMeasures, OfTheExamplesAreGood) {
  const Site site = read_site((source_folder() / "examples" / "nowhere.rwl").string());
  const Measures found = measure(site, {.seed = 1, .plants = 2});
  EXPECT_GT(found.cores, 20);
  EXPECT_EQ(found.absent.errors, 0);  // none of the examples' rings is 0
  EXPECT_GT(found.missing.errors, 30);
  EXPECT_GT(found.missing.within[2] * 10, found.missing.errors * 6);
  EXPECT_EQ(found.timed, 25);
  std::ostringstream out;
  write_tables(found, out);
  EXPECT_NE(out.str().find("two errors"), std::string::npos);
}

TEST(MeasureLocator, PrintsItsTablesAndRefusesWhatItDoesNotKnow) {
  const ScratchFolder scratch;
  const std::string site = "\"" + (source_folder() / "examples" / "nowhere.rwl").string() + "\"";
  const std::string program = "\"" MEASURE_LOCATOR "\" ";
  ASSERT_EQ(std::system((program + "--seed=3 --plants=1 " + site + " > tables").c_str()), 0);
  EXPECT_NE(ScratchFolder::read("tables").find("alarms on cores as they are"), std::string::npos);
  EXPECT_NE(std::system((program + "2> words").c_str()), 0);
  EXPECT_EQ(ScratchFolder::read("words"), "use: measure_locator [--seed=N] [--plants=N] FILE...\n");
  EXPECT_NE(std::system((program + "--plants=many " + site + " 2> words").c_str()), 0);
  EXPECT_NE(std::system((program + "nothing.rwl 2> words > tables").c_str()), 0);
  EXPECT_EQ(ScratchFolder::read("words"), "nothing.rwl: no file of ring widths\n");
}

// Which figures hold is told by what measure_locator prints for all files at hand, four errors of each kind
// in a core; the bounds leave room for the chance of fewer.
TEST(LocatorMeasures, OfRealFilesAreWhatIsPromised) {
  Measures all;
  std::error_code none;
  for (const auto& entry : std::filesystem::directory_iterator(real_files_folder(), none)) {
    try {
      all += measure(read_site(entry.path().string()), {.seed = 7, .plants = 2});
    } catch (const std::runtime_error&) {  // holds no ring widths
    }
  }
  if (all.cores == 0) GTEST_SKIP() << "no real files at " << real_files_folder();
  const auto percent = [](int part, int whole) { return 100.0 * part / whole; };
  const auto within = [&](const Planted& planted, std::size_t k) {
    return percent(planted.within[k], planted.errors);
  };
  ASSERT_GT(all.cores, 200);
  EXPECT_GT(within(all.missing, 0), 23);
  EXPECT_GT(within(all.missing, 1), 47);
  EXPECT_GT(within(all.missing, 2), 60);
  EXPECT_GT(within(all.missing, 3), 76);
  EXPECT_GT(within(all.absent, 0), 60);
  EXPECT_GT(within(all.absent, 1), 72);
  EXPECT_GT(within(all.false_rings, 0), 55);
  EXPECT_GT(within(all.false_rings, 1), 71);
  EXPECT_GT(within(all.false_rings, 2), 75);
  EXPECT_GT(within(all.false_rings, 3), 83);
  EXPECT_LE(percent(all.alarms[1], all.cores), 6);
  EXPECT_LE(percent(all.pair_alarms, all.cores), 5);
  EXPECT_GE(percent(all.missing.found[1], all.missing.errors), 90);
  EXPECT_GE(percent(all.false_rings.found[1], all.false_rings.errors), 90);
  EXPECT_GE(percent(all.missing.in_set, all.missing.kind_right), 87);
  EXPECT_GE(percent(all.false_rings.in_set, all.false_rings.kind_right), 87);
  EXPECT_GE(percent(all.pairs_found, all.pairs), 65);
}

}  // namespace
}  // namespace vorn::measures
