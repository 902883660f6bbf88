#include "study/ring_alignment.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <random>
#include <string>

namespace vorn {
namespace {

// A core that owns its rings; a negative width is a ring marked as missing.
struct Rings {
  explicit Rings(std::vector<double> widths, double values_a_mm = 1000)
      : mm(std::move(widths)), present(std::make_unique<bool[]>(mm.size())), unit(values_a_mm) {
    for (std::size_t k = 0; k < mm.size(); ++k) present[k] = mm[k] >= 0;
  }
  RingWidths view() const { return {mm, {present.get(), mm.size()}, unit}; }
  std::vector<double> mm;
  std::unique_ptr<bool[]> present;
  double unit;
};

// k kept, c changed, d deleted, i inserted; "unlike" where they are not the same core.
std::string steps(const Rings& before, const Rings& after, std::optional<std::int64_t> same_year = {}) {
  const auto found = aligned_rings(before.view(), after.view(), same_year);
  if (!found) return "unlike";
  std::string text;
  for (const RingStep& step : *found) text += "kcdi"[static_cast<std::size_t>(step.kind)];
  return text;
}

TEST(RingAlignment, NamesTheOneRingThatWasPutInLeftOutOrChanged) {
  const Rings core({1, 2, 3, 4, 5, 6});
  EXPECT_EQ(steps(core, core), "kkkkkk");
  EXPECT_EQ(steps(core, Rings({1, 2, 9, 3, 4, 5, 6})), "kkikkkk");
  EXPECT_EQ(steps(core, Rings({1, 2, 4, 5, 6})), "kkdkkk");
  EXPECT_EQ(steps(core, Rings({1, 2, 3, 4, 9, 6})), "kkkkck");
  EXPECT_EQ(steps(core, Rings({9, 1, 2, 3, 4, 5, 6})), "ikkkkkk");
  EXPECT_EQ(steps(core, Rings({1, 2, 3, 4, 5})), "kkkkkd");
}

TEST(RingAlignment, GivesThePlacesOfBoth) {
  const auto found = aligned_rings(Rings({1, 2, 3}).view(), Rings({1, 9, 2, 3}).view());
  using enum RingStep::Kind;
  EXPECT_EQ(found.value(),
            (std::vector<RingStep>{{kept, 0, 0}, {inserted, 1, 1}, {kept, 1, 2}, {kept, 2, 3}}));
}

TEST(RingAlignment, OfNeighboursOfOneWidthNamesTheOutermost) {
  EXPECT_EQ(steps(Rings({1, 2, 2, 3}), Rings({1, 2, 2, 2, 3})), "kkkik");
  EXPECT_EQ(steps(Rings({1, 2, 2, 2, 3}), Rings({1, 2, 2, 3})), "kkkdk");
}

TEST(RingAlignment, OfNeighboursOfOneWidthNamesTheOneByWhichMostRingsKeepTheirYears) {
  const Rings fewer({1, 2, 2, 3}), more({1, 2, 2, 2, 3});
  EXPECT_EQ(steps(fewer, more, 0), "kkkik");
  EXPECT_EQ(steps(fewer, more, 1), "kikkk");
  EXPECT_EQ(steps(more, fewer, 0), "kkkdk");
  EXPECT_EQ(steps(more, fewer, -1), "kdkkk");
  // No way keeps a year.
  EXPECT_EQ(steps(fewer, more, 7), "kkkik");
  // With more changes more would.
  EXPECT_EQ(steps(Rings({1, 2, 3, 4}), Rings({1, 2, 3, 4}), 1), "kkkk");
}

TEST(RingAlignment, OfTwoRingsMadeOneChangesTheInnerAndLeavesOutTheOuter) {
  EXPECT_EQ(steps(Rings({1, 2, 3, 4, 5}), Rings({1, 2, 7, 5})), "kkcdk");
  EXPECT_EQ(steps(Rings({1, 2, 7, 5}), Rings({1, 2, 3, 4, 5})), "kkcik");
}

TEST(RingAlignment, TakesTwoOtherWidthsForChangesNotForARingMoved) {
  EXPECT_EQ(steps(Rings({1, 2, 3, 4, 5}), Rings({1, 3, 2, 4, 5})), "kcckk");
}

TEST(RingAlignment, TellsTheMissingRingFromTheAbsentOne) {
  EXPECT_EQ(steps(Rings({1, -9, 3, 4}), Rings({1, -1, 3, 4})), "kkkk");
  EXPECT_EQ(steps(Rings({1, 0, 3, 4}), Rings({1, -1, 3, 4})), "kckk");
  EXPECT_EQ(steps(Rings({1, 0, 0, 4, 5}), Rings({1, 0, 4, 5})), "kkdkk");
}

// 1.225 is 1.22 or 1.23, as one rounds; 1.226 is no 1.22.
TEST(RingAlignment, KnowsAWidthInTheCoarserOfBothUnits) {
  EXPECT_EQ(steps(Rings({1.224, 1.225, 1.225, 1}), Rings({1.22, 1.22, 1.23, 1}, 100)), "kkkk");
  EXPECT_EQ(steps(Rings({1.22, 1.23, 1.24}, 100), Rings({1.226, 1.23, 1.24})), "ckk");
  EXPECT_EQ(steps(Rings({1.22, 1.23, 1.24}), Rings({1.221, 1.23, 1.24})), "ckk");
  EXPECT_EQ(steps(Rings({1.22, 1.23, 1.24}, 100), Rings({1.23, 1.23, 1.24}, 100)), "ckk");
}

TEST(RingAlignment, IsNoneOfCoresThatHaveLessThanHalfInCommon) {
  EXPECT_EQ(steps(Rings({1, 2, 3, 4}), Rings({1, 2, 8, 9})), "kkcc");
  EXPECT_EQ(steps(Rings({1, 2, 3, 4}), Rings({1, 7, 8, 9})), "unlike");
  EXPECT_EQ(steps(Rings({1, 2}), Rings({1, 2, 3, 4, 5, 6, 7, 8})), "kkiiiiii");
  EXPECT_EQ(steps(Rings({1}), Rings({2})), "c");
  EXPECT_EQ(steps(Rings({}), Rings({})), "");
  EXPECT_EQ(steps(Rings({}), Rings({1, 2})), "ii");
}

// --- Against the definition

// What is best from ring i of BEFORE and j of AFTER on: few changes, then many rings that keep their years.
struct Way {
  int changes = 0, moved = 0;  // moved: the fewer, the more keep their years
  std::string steps = {};      // and then the first of them in this order: k, c, d, i
};

bool is_better(const Way& a, const Way& b) {
  if (a.changes != b.changes) return a.changes < b.changes;
  return a.moved < b.moved;
}

std::string slow_steps(const Rings& before, const Rings& after, std::optional<std::int64_t> same_year) {
  const auto n = static_cast<int>(before.mm.size()), m = static_cast<int>(after.mm.size());
  std::vector<std::vector<Way>> ways(static_cast<std::size_t>(n) + 1,
                                     std::vector<Way>(static_cast<std::size_t>(m) + 1));
  const auto at = [&](int i, int j) -> Way& {
    return ways[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)];
  };
  for (int i = n; i >= 0; --i) {
    for (int j = m; j >= 0; --j) {
      std::vector<Way> all;  // in their order
      const auto take = [&](const Way& rest, char step, int changes, int kept) {
        all.push_back({rest.changes + changes, rest.moved - kept, step + rest.steps});
      };
      if (i < n && j < m) {
        const bool same =
            same_ring(before.view(), static_cast<std::size_t>(i), after.view(), static_cast<std::size_t>(j));
        take(at(i + 1, j + 1), same ? 'k' : 'c', same ? 0 : 1,
             same && same_year && j - i == *same_year ? 1 : 0);
      }
      if (i < n) take(at(i + 1, j), 'd', 1, 0);
      if (j < m) take(at(i, j + 1), 'i', 1, 0);
      if (!all.empty()) at(i, j) = *std::ranges::min_element(all, is_better);
    }
  }
  const int shorter = std::min(n, m), most = std::max(n, m) - shorter + std::max(shorter / 2, 1);
  return at(0, 0).changes > most ? "unlike" : at(0, 0).steps;
}

class RandomRings {
 public:
  explicit RandomRings(unsigned seed) : random_(seed) {}
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  // Widths out of so few that neighbours are often alike.
  std::vector<double> core(int rings, int widths) {
    std::vector<double> all;
    for (int k = 0; k < rings; ++k) all.push_back(below(widths) / 1000.0);
    return all;
  }
  std::vector<double> edited(std::vector<double> core, int edits) {
    for (int k = 0; k < edits; ++k) {
      const auto at = core.begin() + below(static_cast<int>(core.size()) + 1);
      const int kind = at == core.end() ? 0 : below(3);
      if (kind == 0) core.insert(at, below(5'000) / 1000.0 - 0.5);
      if (kind == 1) core.erase(at);
      if (kind == 2) *at = below(5'000) / 1000.0;
    }
    return core;
  }

 private:
  std::mt19937 random_;
};

TEST(RingAlignment, IsTheOneThatItsDefinitionGives) {
  RandomRings random(1);
  int unlike = 0, changed = 0, by_years = 0;
  for (int trial = 0; trial < 3'000; ++trial) {
    const auto core = random.core(random.below(40), trial % 2 == 0 ? 4 : 3'000);
    const Rings before(core, trial % 5 == 0 ? 100 : 1000);
    const Rings after(random.edited(core, random.below(12)));
    std::optional<std::int64_t> same_year;
    if (trial % 3 != 0) same_year = random.below(9) - 4;
    const std::string expected = slow_steps(before, after, same_year);
    ASSERT_EQ(steps(before, after, same_year), expected) << trial;
    by_years += expected != slow_steps(before, after, {});
    unlike += expected == "unlike";
    changed += expected != "unlike" && expected.find_first_not_of('k') != std::string::npos;
  }
  EXPECT_GT(unlike, 50);
  EXPECT_GT(changed, 1'000);
  EXPECT_GT(by_years, 50);
}

// Whoever compares each ring of one with each of the other looks at 144 million pairs here, a hundred times.
TEST(RingAlignment, IsFoundAtOnceInLongSeriesThatAreNearlyAlike) {
  RandomRings random(2);
  const auto core = random.core(12'000, 3'000);
  const Rings before(core), after(random.edited(core, 10));
  const auto start = std::chrono::steady_clock::now();
  std::string found;
  for (int k = 0; k < 100; ++k) found = steps(before, after);
  EXPECT_EQ(std::ranges::count_if(found, [](char c) { return c != 'k'; }), 10);
#ifdef NDEBUG
  constexpr std::chrono::seconds at_once(10);
#else
  constexpr std::chrono::seconds at_once(120);  // under the sanitizers
#endif
  EXPECT_LT(std::chrono::steady_clock::now() - start, at_once);
}

}  // namespace
}  // namespace vorn
