// What the studies find where it is known what is wrong: in the examples, whose errors were planted
// (examples/PLANTED.md), and in real files, where they are at hand.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "study/loaded_folder.h"
#include "study/reference.h"
#include "study/ring_errors.h"
#include "study/studied_cores.h"
#include "support/places.h"

namespace vorn {
namespace {

RingErrors errors_of(const std::vector<SeriesView>& cores, std::size_t i, const Settings& settings,
                     const RingErrorSwitches& switches = {}) {
  const StudiedCores studied(cores, settings);
  const Reference others(studied.compared(), i);
  return ring_errors(studied.core(i), others.view(), switches);
}

TEST(KnownErrors, OfTheExamplesAreFoundInTheirYearsAndNoneElsewhere) {
  const LoadedFolder examples(source_folder() / "examples");
  const auto cores = examples.cores();
  ASSERT_EQ(cores.size(), 25u);
  for (std::size_t i = 0; i < cores.size(); ++i) {
    const RingErrors found = errors_of(cores, i, examples.w);
    const ErrorCandidate& best = found.candidates.front();
    const std::string name = examples.name(i);
    EXPECT_FALSE(found.pair) << name;
    if (name == "NOW07" || name == "NOW14") {
      const bool lost = name == "NOW07";
      EXPECT_EQ(best.kind, lost ? Correction::insert : Correction::merge) << name;
      EXPECT_EQ(best.end, KeptEnd::inner) << name;
      const std::int64_t planted = lost ? 1868 : 1876;
      EXPECT_LE(best.from, planted) << name;
      EXPECT_GE(best.to, planted) << name;
      EXPECT_LE(best.to - best.from, 3) << name;
      EXPECT_GT(best.gain, gain_to_look_at) << name;
    } else {
      EXPECT_LT(best.gain, 5) << name;
    }
  }
}

// A ring planted as missing need not be a narrow one: here the others have a narrower year next to it.
TEST(KnownErrors, OfTheExamplesHaveTheirYearsByTheWidthsAlone) {
  const LoadedFolder examples(source_folder() / "examples");
  const RingErrorSwitches by_widths = {.narrow_years = false};
  const auto year_of = [&](const char* core) {
    return errors_of(examples.cores(), examples.number_of(core), examples.w, by_widths)
        .candidates.front()
        .year;
  };
  EXPECT_EQ(year_of("NOW07"), 1868);
  EXPECT_EQ(year_of("NOW14"), 1876);
}

// Widths of which one ring is deleted; the others are those of the file.
struct WithoutARing {
  WithoutARing(std::vector<SeriesView> all, std::size_t i, std::int64_t year) : cores(std::move(all)) {
    SeriesView& core = cores[i];
    widths.assign(core.values.begin(), core.values.end());
    present = std::make_unique<bool[]>(widths.size() - 1);
    const auto k = year - core.first;
    std::copy_n(core.present.begin(), k, present.get());
    std::copy(core.present.begin() + k + 1, core.present.end(), present.get() + k);
    widths.erase(widths.begin() + k);
    core = {core.first, widths, {present.get(), widths.size()}};
  }

  std::vector<SeriesView> cores;
  std::vector<double> widths;
  std::unique_ptr<bool[]> present;
};

TEST(KnownErrors, OfARealCoreWithARingTakenOutIsItsYearAlone) {
  if (!std::filesystem::exists(real_files_folder() / "co021.rwl"))
    GTEST_SKIP() << "no real files at " << real_files_folder();
  const LoadedFolder site(real_files_folder(), "co021.rwl");
  const std::size_t i = site.number_of("641143");
  ASSERT_LT(i, 35u);
  const WithoutARing wrong(site.cores(), i, 1500);
  const ErrorCandidate best = errors_of(wrong.cores, i, site.w).candidates.front();
  EXPECT_EQ(best.kind, Correction::insert);
  EXPECT_EQ(best.year, 1500);
  EXPECT_EQ(best.from, 1500);
  EXPECT_EQ(best.to, 1500);
  EXPECT_GT(best.gain, gain_to_look_at);
}

}  // namespace
}  // namespace vorn
