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

#include "study/dates.h"
#include "study/loaded_folder.h"
#include "study/reference.h"
#include "study/ring_errors.h"
#include "study/site.h"
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

// --- Dates.

// The years of the beams' file are those of nobody: year 1 is 1652.
TEST(KnownDates, OfTheBeamsOfTheExamplesStandOut) {
  LoadedFolder examples(source_folder() / "examples");
  constexpr int beams = 5, dated = 6;
  examples.choose_file(beams);
  const Workspace& w = examples.w;
  std::vector<double> values;
  for (int k = 1; k <= w.cyr(dated); ++k) values.push_back(w.crn(k, dated));
  const SeriesToDate reference = {{w.cfy(dated), values}, values};
  ASSERT_EQ(values.size(), 414u);
  const auto cores = examples.cores();
  const StudiedCores studied(cores, w);
  ASSERT_EQ(cores.size(), 5u);
  for (std::size_t i = 0; i < cores.size(); ++i) {
    const Dates found = dates({studied.core(i).compared, cores[i].values}, {&reference, 1}).front();
    EXPECT_EQ(found.ranked.front().shift, 1651) << i;
    EXPECT_TRUE(found.stands_out) << i;
    EXPECT_LT(found.ranked.front().p, 1e-4) << i;
  }
}

TEST(KnownDates, OfRealCoresThatAreMovedStandOut) {
  if (!std::filesystem::exists(real_files_folder() / "co021.rwl"))
    GTEST_SKIP() << "no real files at " << real_files_folder();
  const LoadedFolder site(real_files_folder(), "co021.rwl");
  const auto cores = site.cores();
  const StudiedCores studied(cores, site.w);
  for (std::size_t i = 0; i < cores.size(); ++i) {
    const Reference others(studied.compared(), i);
    SeriesToDate sample = {studied.core(i).compared, cores[i].values};
    sample.compared.first += 137;
    const SeriesToDate reference = {others.view()};
    const Dates found = dates(sample, {&reference, 1}).front();
    EXPECT_EQ(found.ranked.front().shift, -137) << site.name(i);
    EXPECT_NEAR(found.ranked.front().r, 0.895, 0.055) << site.name(i);
    EXPECT_TRUE(found.stands_out) << site.name(i);
  }
}

// --- Sites.

TEST(KnownSites, OfTheExamplesNeedWhatWasPlantedAndNothingElse) {
  LoadedFolder examples(source_folder() / "examples");
  for (int f = 1; f <= examples.w.nraw; ++f) {
    examples.choose_file(f);
    const auto cores = examples.cores();
    const SiteSurvey site = survey(StudiedCores(cores, examples.w), examples.w);
    std::vector<std::string> first;  // core and remedy of those that need something, in their order
    for (const std::size_t i : site.order) {
      if (site.cores[i].remedy != Remedy::none)
        first.push_back(examples.name(i) + ": " + todo(site.cores[i], cores[i]));
    }
    const std::vector<std::string> planted = {"NOW19: Move it by -7 years, to 1808 to 2003",
                                              "NOW07: Look for a ring missing in 1866 to 1869",
                                              "NOW14: Look for a ring counted twice in 1876"};
    EXPECT_EQ(first, f == 1 ? planted : std::vector<std::string>{}) << f;
  }
}

}  // namespace
}  // namespace vorn
