#include "study/ring_errors.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <numeric>
#include <optional>
#include <random>
#include <vector>

#include "statistics/correlation.h"
#include "study/error_pairs.h"

namespace vorn {
namespace {

// A series with its flags; "-" in a mask is a missing ring.
struct Series {
  std::int64_t first = 0;
  std::vector<double> values;
  std::unique_ptr<bool[]> present;

  Series(std::int64_t first_year, std::vector<double> all)
      : first(first_year), values(std::move(all)), present(std::make_unique<bool[]>(values.size())) {
    std::fill_n(present.get(), values.size(), true);
  }
  Series& without(std::int64_t year) {
    present[static_cast<std::size_t>(year - first)] = false;
    return *this;
  }
  SeriesView view() const { return {first, values, {present.get(), values.size()}}; }
};

std::vector<double> noise(std::size_t n, unsigned seed) {
  std::mt19937 random(seed);
  std::normal_distribution<double> normal;
  std::vector<double> values(n);
  for (double& value : values) value = normal(random);
  return values;
}

// Values near `others`, as a core is near its site.
std::vector<double> near(const std::vector<double>& others, unsigned seed) {
  std::vector<double> values = noise(others.size(), seed);
  for (std::size_t k = 0; k < values.size(); ++k) values[k] = others[k] + 0.5 * values[k];
  return values;
}

const RingErrorSwitches plain = {.narrow_years = false, .pairs = false};

// --- The plain definition: the corrected core is made, value by value, and correlated.

struct Values {
  std::vector<double> a, b;
  int left = 0, right = 0;
};

Values corrected_plainly(const StudiedCore& core, const SeriesView& reference, Correction kind, KeptEnd end,
                         std::int64_t year) {
  Values pairs;
  const int step = kind == Correction::insert ? -1 : 1;
  for (std::int64_t y = core.compared.first - 2; y <= core.compared.years().last + 2; ++y) {
    if (y == year) continue;
    const bool moved = end == KeptEnd::inner ? y > year : y < year;
    const std::int64_t from = moved ? y + (end == KeptEnd::inner ? step : -step) : y;
    if (!core.compared.has(from) || !reference.has(y)) continue;
    pairs.a.push_back(core.compared.at(from));
    pairs.b.push_back(reference.at(y));
    ++(y < year ? pairs.left : pairs.right);
  }
  const std::int64_t inner = end == KeptEnd::inner ? year : year - 1;
  if (kind == Correction::merge && core.compared.has(inner) && core.compared.has(inner + 1) &&
      reference.has(year) && !core.merged.empty()) {
    pairs.a.push_back(core.merged[static_cast<std::size_t>(inner - core.compared.first)]);
    pairs.b.push_back(reference.at(year));
  }
  return pairs;
}

double score_plainly(const Values& pairs) {
  if (pairs.left < 3 || pairs.right < 3) return no_score;
  const double r = std::max(cov(pairs.a, pairs.b), 0.0);
  return -static_cast<double>(pairs.a.size()) / 2 * std::log(1 - r * r);
}

void expect_plain_scores(const StudiedCore& core, const SeriesView& reference) {
  const RingErrors found = ring_errors(core, reference, plain);
  ASSERT_EQ(found.evidence.size(), 4u);
  for (const Evidence& evidence : found.evidence) {
    for (std::size_t k = 0; k < evidence.scores.size(); ++k) {
      const std::int64_t year = evidence.first + static_cast<std::int64_t>(k);
      const double expected =
          score_plainly(corrected_plainly(core, reference, evidence.kind, evidence.end, year));
      if (expected == no_score) {
        EXPECT_EQ(evidence.scores[k], no_score) << year;
      } else {
        EXPECT_NEAR(evidence.scores[k], expected, 1e-8) << year;
      }
    }
  }
}

TEST(RingErrors, ScoresAreThoseOfThePlainDefinition) {
  const std::vector<double> site = noise(90, 1);
  const Series reference(1890, site);
  const Series core(1900, near({site.begin() + 10, site.begin() + 70}, 2));
  const std::vector<double> merged = noise(59, 3);
  expect_plain_scores({core.view(), merged}, reference.view());
}

TEST(RingErrors, ScoresAreThoseOfThePlainDefinitionWithMissingRingsAndPartlyCommonYears) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    std::mt19937 random(seed);
    Series reference(1900, noise(60, seed + 100)), core(1880 + static_cast<int>(seed), noise(50, seed + 200));
    for (int k = 0; k < 6; ++k) {
      reference.without(1900 + static_cast<int>(random() % 60));
      core.without(core.first + static_cast<int>(random() % 50));
    }
    expect_plain_scores({core.view(), {}}, reference.view());
  }
}

// A ring is taken out of a core: the years on the bark's side of it become too early by one, when the pith
// keeps its years.
TEST(RingErrors, AMissingRingIsFoundInItsYear) {
  const std::vector<double> site = noise(150, 5);
  const Series reference(1850, site);
  std::vector<double> rings = near(site, 6);
  rings.erase(rings.begin() + 70);  // 1920
  const Series core(1850, rings);
  const RingErrors found = ring_errors({core.view(), {}}, reference.view(), plain);
  const ErrorCandidate& best = found.candidates.front();
  EXPECT_EQ(best.kind, Correction::insert);
  EXPECT_EQ(best.end, KeptEnd::inner);
  EXPECT_NEAR(static_cast<double>(best.year), 1920, 1);
  EXPECT_LE(best.from, 1920);
  EXPECT_GE(best.to, 1920);
  EXPECT_GT(best.gain, gain_to_look_at);
  EXPECT_GT(best.r, found.r + 0.2);
}

TEST(RingErrors, WithTheBarkDatedTheOuterEndIsTheOneThatStays) {
  const std::vector<double> site = noise(150, 7);
  const Series reference(1850, site);
  std::vector<double> rings = near(site, 8);
  rings.erase(rings.begin() + 70);
  const Series core(1851, rings);  // the last ring stands at 1999, as it should
  const ErrorCandidate best = ring_errors({core.view(), {}}, reference.view(), plain).candidates.front();
  EXPECT_EQ(best.kind, Correction::insert);
  EXPECT_EQ(best.end, KeptEnd::outer);
  EXPECT_NEAR(static_cast<double>(best.year), 1920, 1);
}

// Any two rings make a very wide one, but for the two halves of the ring that was counted twice.
TEST(RingErrors, AFalseRingIsFoundAsTwoToBeMerged) {
  const std::vector<double> site = noise(150, 9);
  const Series reference(1850, site);
  std::vector<double> rings = near(site, 10);
  const double whole = rings[70];
  std::vector<double> merged(rings.size(), 3.0);
  rings.insert(rings.begin() + 71, 1.0);
  rings[70] = 1.2;
  merged[70] = whole;
  const Series core(1850, rings);
  const ErrorCandidate best = ring_errors({core.view(), merged}, reference.view(), plain).candidates.front();
  EXPECT_EQ(best.kind, Correction::merge);
  EXPECT_EQ(best.end, KeptEnd::inner);
  EXPECT_NEAR(static_cast<double>(best.year), 1920, 1);
}

TEST(RingErrors, OfACoreThatIsRightNoneGainsEnoughToBeLookedAt) {
  for (unsigned seed = 1; seed <= 30; ++seed) {
    const std::vector<double> site = noise(120, seed);
    const Series reference(1880, site), core(1880, near(site, seed + 500));
    const RingErrors found = ring_errors({core.view(), {}}, reference.view());
    EXPECT_LT(found.candidates.front().gain, gain_to_look_at) << seed;
    EXPECT_FALSE(found.pair) << seed;
  }
}

// z = -2 weighs 0.2 + 0.8 exp(3.8 - 1.8) = 6.11, its logarithm is 1.81; z = 0 weighs 0.332, -1.10.
TEST(RingErrors, InsertionsAreWeighedByHowNarrowTheReferenceIs) {
  // Mean 0, standard deviation 1 over the 65 years.
  std::vector<double> site = noise(65, 11);
  double mean = std::accumulate(site.begin(), site.end(), 0.0) / 65, squares = 0;
  for (double& value : site) squares += (value - mean) * (value - mean);
  for (double& value : site) value = (value - mean) / std::sqrt(squares / 64);
  const Series reference(1900, site), core(1900, near(site, 12));
  const RingErrors without = ring_errors({core.view(), {}}, reference.view(), plain);
  const RingErrors with =
      ring_errors({core.view(), {}}, reference.view(), {.narrow_years = true, .pairs = false});
  for (std::size_t k = 10; k < 50; ++k) {
    const double expected = std::log(0.2 + 0.8 * std::exp(-1.9 * site[k] - 1.8));
    EXPECT_NEAR(with.evidence[0].scores[k] - without.evidence[0].scores[k], expected, 1e-9) << k;
    EXPECT_EQ(with.evidence[2].scores[k], without.evidence[2].scores[k]) << "merge, " << k;
  }
}

// The set is the least one: taken from the top, it passes nine tenths with its last year and not before.
TEST(RingErrors, TheSetHoldsNineTenthsAndNoYearTooMany) {
  const std::vector<double> site = noise(150, 13);
  const Series reference(1850, site);
  std::vector<double> rings = near(site, 14);
  rings.erase(rings.begin() + 40);
  const Series core(1850, rings);
  const RingErrors found = ring_errors({core.view(), {}}, reference.view(), plain);
  const ErrorCandidate& best = found.candidates.front();
  const auto evidence = std::find_if(found.evidence.begin(), found.evidence.end(), [&](const Evidence& e) {
    return e.kind == best.kind && e.end == best.end;
  });
  ASSERT_NE(evidence, found.evidence.end());
  std::vector<std::pair<double, std::int64_t>> years;
  double all = 0;
  for (std::size_t k = 0; k < evidence->scores.size(); ++k) {
    years.emplace_back(std::exp(evidence->scores[k] - best.score),
                       evidence->first + static_cast<std::int64_t>(k));
    all += years.back().first;
  }
  std::sort(years.rbegin(), years.rend());
  double held = 0;
  std::int64_t from = best.year, to = best.year;
  for (std::size_t k = 0; held < 0.9 * all; ++k) {
    held += years[k].first;
    from = std::min(from, years[k].second);
    to = std::max(to, years[k].second);
  }
  EXPECT_EQ(best.from, from);
  EXPECT_EQ(best.to, to);
  EXPECT_NEAR(best.all, best.score + std::log(all), 1e-12);
  EXPECT_GE(best.margin, 0);
}

TEST(RingErrors, CandidatesAreRankedByAllTheirYears) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    const Series reference(1900, noise(80, seed)), core(1900, noise(80, seed + 300));
    const RingErrors found = ring_errors({core.view(), {}}, reference.view(), plain);
    ASSERT_EQ(found.candidates.size(), 4u);
    for (std::size_t k = 1; k < 4; ++k) EXPECT_GE(found.candidates[k - 1].all, found.candidates[k].all);
  }
}

TEST(RingErrors, TwoErrorsAreFoundTogether) {
  const std::vector<double> site = noise(200, 15);
  const Series reference(1800, site);
  std::vector<double> rings = near(site, 16);
  rings.erase(rings.begin() + 140);
  rings.erase(rings.begin() + 60);
  const Series core(1800, rings);
  const RingErrors found =
      ring_errors({core.view(), {}}, reference.view(), {.narrow_years = false, .pairs = true});
  ASSERT_TRUE(found.pair);
  EXPECT_EQ(found.pair->end, KeptEnd::inner);
  EXPECT_NEAR(static_cast<double>(found.pair->years[0]), 1860, 3);
  EXPECT_NEAR(static_cast<double>(found.pair->years[1]), 1940, 3);
  EXPECT_GE(found.pair->gain, found.candidates.front().gain + gain_of_a_second);
  for (const int k : {0, 1}) {
    EXPECT_LE(found.pair->sets[k].first, found.pair->years[k]);
    EXPECT_GE(found.pair->sets[k].last, found.pair->years[k]);
  }
}

// --- Two errors, plainly: each ring is put where the corrections say, from the end that stays.

struct PlainPair {
  ErrorPair kinds;
  double best = no_score;
  std::map<std::int64_t, double> scores[2];  // sums of exp(score), by the year of each error
};

// Where in the core, as it is dated, the ring of `year` lies; 0 before, 1 between, 2 behind both errors.
std::int64_t dated_as(const ErrorPair& pair, std::int64_t year, int part) {
  const auto step = [&](int k) { return pair.kinds[k] == Correction::insert ? -1 : 1; };
  if (pair.end == KeptEnd::inner) return year + (part > 0 ? step(0) : 0) + (part > 1 ? step(1) : 0);
  return year - (part < 1 ? step(0) : 0) - (part < 2 ? step(1) : 0);
}

double score_plainly(const StudiedCore& core, const SeriesView& reference, const ErrorPair& pair) {
  Values pairs;
  int parts[3] = {0, 0, 0};
  for (std::int64_t y = core.compared.first - 2; y <= core.compared.years().last + 2; ++y) {
    if (!reference.has(y)) continue;
    const int part = (y > pair.years[0]) + (y > pair.years[1]);
    const bool error = y == pair.years[0] || y == pair.years[1];
    if (error && pair.kinds[part] == Correction::insert) continue;
    const std::int64_t from = dated_as(pair, y, part);
    if (!core.compared.has(from) || (error && !core.compared.has(from + 1))) continue;
    pairs.a.push_back(error ? core.merged[static_cast<std::size_t>(from - core.compared.first)]
                            : core.compared.at(from));
    pairs.b.push_back(reference.at(y));
    if (!error) ++parts[part];
  }
  if (parts[0] < 5 || parts[1] < 15 || parts[2] < 5) return no_score;
  const double r = std::max(cov(pairs.a, pairs.b), 0.0);
  return -static_cast<double>(pairs.a.size()) / 2 * std::log(1 - r * r);
}

PlainPair best_pair_plainly(const StudiedCore& core, const SeriesView& reference) {
  PlainPair best;
  for (int kinds = 0; kinds < 8; ++kinds) {
    PlainPair here;
    here.kinds.kinds[0] = kinds & 1 ? Correction::merge : Correction::insert;
    here.kinds.kinds[1] = kinds & 2 ? Correction::merge : Correction::insert;
    here.kinds.end = kinds & 4 ? KeptEnd::outer : KeptEnd::inner;
    const YearSpan years = core.compared.years();
    for (std::int64_t y = years.first; y <= years.last; ++y) {
      for (std::int64_t z = y + 1; z <= years.last; ++z) {
        here.kinds.years[0] = y;
        here.kinds.years[1] = z;
        const double score = score_plainly(core, reference, here.kinds);
        if (score == no_score) continue;
        here.best = std::max(here.best, score);
        here.scores[0][y] += std::exp(score);
        here.scores[1][z] += std::exp(score);
      }
    }
    if (here.best > best.best) best = here;
  }
  return best;
}

void expect_plain_pair(const StudiedCore& core, const SeriesView& reference) {
  const std::optional<ErrorPair> fast = best_pair(LaggedSums(core, reference), core.compared.years());
  const PlainPair slow = best_pair_plainly(core, reference);
  ASSERT_TRUE(fast);
  EXPECT_NEAR(fast->gain, slow.best, 1e-8);
  EXPECT_EQ(fast->kinds[0], slow.kinds.kinds[0]);
  EXPECT_EQ(fast->kinds[1], slow.kinds.kinds[1]);
  for (const int k : {0, 1}) {
    std::int64_t year = 0;
    double most = 0;
    for (const auto& [y, unused] : slow.scores[k]) {
      double around = 0;
      for (const auto& [z, score] : slow.scores[k])
        around += score * static_cast<double>(std::max<std::int64_t>(6 - std::abs(y - z), 0));
      if (around > most * (1 + 1e-9)) {
        most = around;
        year = y;
      }
    }
    EXPECT_EQ(fast->years[k], year) << k;
  }
}

TEST(RingErrors, PairsAreThoseOfThePlainDefinition) {
  for (unsigned seed = 1; seed <= 6; ++seed) {
    const std::vector<double> site = noise(70, seed);
    Series reference(1880, site);
    std::vector<double> rings = near({site.begin() + 5, site.end()}, seed + 50);
    if (seed % 2 == 0) {
      rings.erase(rings.begin() + 40);
    } else {
      rings.insert(rings.begin() + 40, 0.3);
    }
    if (seed % 3 == 0) {
      rings.erase(rings.begin() + 18);
    } else {
      rings.insert(rings.begin() + 18, 0.3);
    }
    Series core(1885, rings);
    if (seed > 3) {
      reference.without(1900);
      core.without(1930);
    }
    const std::vector<double> merged = noise(rings.size() - 1, seed + 90);
    expect_plain_pair({core.view(), merged}, reference.view());
  }
}

TEST(RingErrors, OfACoreThatIsTooShortThereIsNoPair) {
  const Series reference(1900, noise(26, 1)), core(1900, noise(26, 2));
  EXPECT_FALSE(best_pair(LaggedSums({core.view()}, reference.view()), core.view().years()));
  const Series longer(1900, noise(27, 2)), others(1900, noise(27, 1));
  EXPECT_TRUE(best_pair(LaggedSums({longer.view()}, others.view()), longer.view().years()));
}

// A value that is not a number is as if it were not there.
TEST(RingErrors, ValuesThatAreNoNumbersDoNotCount) {
  Series reference(1900, noise(80, 1)), core(1900, near(noise(80, 1), 2));
  Series holed(1900, core.values), bad(1900, core.values);
  holed.without(1930);
  bad.values[30] = std::numeric_limits<double>::quiet_NaN();
  const RingErrors one = ring_errors({holed.view(), {}}, reference.view());
  const RingErrors other = ring_errors({bad.view(), {}}, reference.view());
  EXPECT_EQ(one.r, other.r);
  EXPECT_EQ(one.years, 79);
  EXPECT_EQ(one.candidates.front().gain, other.candidates.front().gain);
}

TEST(RingErrors, TwoErrorsOfAnOldTreeAreFoundThoughNotEveryPairIsTried) {
  const std::vector<double> site = noise(2500, 17);
  const Series reference(0, site);
  std::vector<double> rings = near(site, 18);
  rings.erase(rings.begin() + 1703);
  rings.erase(rings.begin() + 401);
  const Series core(0, rings);
  const RingErrors found =
      ring_errors({core.view(), {}}, reference.view(), {.narrow_years = false, .pairs = true});
  ASSERT_TRUE(found.pair);
  EXPECT_NEAR(static_cast<double>(found.pair->years[0]), 401, 5);
  EXPECT_NEAR(static_cast<double>(found.pair->years[1]), 1703, 5);
}

TEST(RingErrors, WithoutCommonYearsThereAreNone) {
  const Series reference(1900, noise(50, 1)), core(1700, noise(50, 2)), empty(1900, {});
  EXPECT_TRUE(ring_errors({core.view(), {}}, reference.view()).candidates.empty());
  EXPECT_TRUE(ring_errors({empty.view(), {}}, reference.view()).candidates.empty());
  EXPECT_TRUE(ring_errors({core.view(), {}}, empty.view()).candidates.empty());
  EXPECT_EQ(ring_errors({core.view(), {}}, reference.view()).years, 0);
}

TEST(RingErrors, AConstantSeriesHasScoresOfZeroAndNothingThatIsNoNumber) {
  const Series reference(1900, noise(50, 1)), core(1900, std::vector<double>(50, 0.7));
  const RingErrors found = ring_errors({core.view(), {}}, reference.view(), plain);
  EXPECT_EQ(found.r, 0);
  for (const ErrorCandidate& candidate : found.candidates) {
    EXPECT_EQ(candidate.gain, 0);
    EXPECT_EQ(candidate.r, 0);
  }
}

TEST(RingErrors, TooFewYearsOnOneSideTellNothing) {
  const Series reference(1900, noise(20, 3)), core(1900, noise(20, 4));
  for (const Evidence& evidence : ring_errors({core.view(), {}}, reference.view(), plain).evidence) {
    EXPECT_EQ(evidence.scores[0], no_score);
    EXPECT_EQ(evidence.scores[1], no_score);
    EXPECT_EQ(evidence.scores[19], no_score);
    EXPECT_NE(evidence.scores[10], no_score);
  }
}

}  // namespace
}  // namespace vorn
