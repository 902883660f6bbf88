#include "study/comparison.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <sstream>
#include <string>

namespace vorn {
namespace {

// A core that can be edited; a negative width is a ring marked as missing.
struct Specimen {
  std::string name;
  std::int64_t first = 1900;
  std::vector<double> mm = {};
  double unit = 1000;
};
using Collection = std::vector<Specimen>;

// What the study is given, with what it views.
class Views {
 public:
  explicit Views(const Collection& collection) {
    for (const Specimen& core : collection) {
      const std::size_t rings = core.mm.size();
      present_.push_back(std::make_unique<bool[]>(rings));
      for (std::size_t k = 0; k < rings; ++k) present_.back()[k] = core.mm[k] >= 0;
      cores_.push_back({core.name, {core.first, core.mm, {present_.back().get(), rings}}, core.unit});
    }
  }
  std::span<const NamedCore> cores() const { return cores_; }

 private:
  std::vector<std::unique_ptr<bool[]>> present_;
  std::vector<NamedCore> cores_;
};

std::string words(const std::optional<double>& width) {
  std::ostringstream text;
  if (width) text << *width;
  return width ? text.str() : "none";
}

std::string words(const RingChange& ring) {
  static constexpr const char* kinds[] = {" +", " -", " ="};
  std::string text = kinds[static_cast<std::size_t>(ring.kind)] + std::to_string(ring.year);
  if (ring.kind != RingChange::Kind::deleted) text += ":" + words(ring.after);
  if (ring.kind != RingChange::Kind::changed) text += ring.end == KeptEnd::inner ? "(inner)" : "(outer)";
  return text;
}

// One line a core: "A: renamed B, redated 1900 1905 +1903:2.5(inner)".
std::string changes(const Collection& before, const Collection& after) {
  std::string text;
  for (const SeriesChange& change : changes_between(Views(before).cores(), Views(after).cores())) {
    text += change.before ? before[*change.before].name : after[*change.after].name;
    if (!change.before) text += " new";
    if (!change.after) text += " gone";
    if (change.renamed) text += " renamed " + after[*change.after].name;
    if (change.redated)
      text +=
          " redated " + std::to_string(change.redated->before) + " " + std::to_string(change.redated->after);
    for (const RingChange& ring : change.rings) text += words(ring);
    text += "\n";
  }
  return text;
}

const std::vector<double> oak = {1.1, 1.2, 1.3, 1.4, 1.5, 1.6, 1.7, 1.8};
const std::vector<double> elm = {2.1, 2.2, 2.3, 2.4, 2.5, 2.6, 2.7, 2.8};

std::vector<double> with(std::vector<double> rings, std::size_t place, double width) {
  rings.insert(rings.begin() + static_cast<std::ptrdiff_t>(place), width);
  return rings;
}
std::vector<double> without(std::vector<double> rings, std::size_t place) {
  rings.erase(rings.begin() + static_cast<std::ptrdiff_t>(place));
  return rings;
}

TEST(Comparison, OfACollectionWithItselfIsNothing) {
  const Collection site = {{"OAK", 1900, oak}, {"ELM", 1910, elm}, {"OAK", 1950, {}}, {"", 1, {0, -1, 2}}};
  EXPECT_EQ(changes(site, site), "");
  const Collection other_order = {site[3], site[1], site[2], site[0]};
  EXPECT_EQ(changes(site, other_order), "");
  EXPECT_EQ(changes({}, {}), "");
}

TEST(Comparison, NamesCoresThatAreGoneAndNew) {
  EXPECT_EQ(changes({{"OAK", 1900, oak}, {"ELM", 1900, elm}}, {{"ASH", 1900, {5, 6, 7}}, {"ELM", 1900, elm}}),
            "OAK gone\nASH new\n");
}

TEST(Comparison, KnowsACoreUnderAnotherNameByItsRings) {
  EXPECT_EQ(changes({{"OAK", 1900, oak}}, {{"OAK1", 1900, oak}}), "OAK renamed OAK1\n");
  EXPECT_EQ(changes({{"OAK", 1900, oak}}, {{"OAK1", 1907, oak}}), "OAK renamed OAK1 redated 1900 1907\n");
  EXPECT_EQ(changes({{"OAK", 1900, oak}, {"ELM", 1900, elm}}, {{"ELM", 1900, oak}, {"OAK", 1900, elm}}),
            "OAK renamed ELM\nELM renamed OAK\n");
  // Of two with its rings the one of its years.
  EXPECT_EQ(changes({{"OAK", 1900, oak}}, {{"A", 1800, oak}, {"B", 1900, oak}}), "OAK renamed B\nA new\n");
  EXPECT_EQ(changes({{"OAK", 1900, {}}}, {{"OAK1", 1900, {}}}), "OAK gone\nOAK1 new\n");
}

TEST(Comparison, OfCoresOfOneNameTakesThoseWithTheSameRings) {
  EXPECT_EQ(changes({{"OAK", 1900, oak}, {"OAK", 1950, elm}}, {{"OAK", 1950, elm}}), "OAK gone\n");
  EXPECT_EQ(changes({{"OAK", 1900, oak}, {"OAK", 1950, elm}}, {{"OAK", 1950, elm}, {"OAK", 1900, oak}}), "");
}

TEST(Comparison, ACoreThatIsAnotherOneNowIsGoneAndNew) {
  EXPECT_EQ(changes({{"OAK", 1900, oak}}, {{"OAK", 1900, elm}}), "OAK gone\nOAK new\n");
}

TEST(Comparison, SaysByHowMuchACoreWasRedated) {
  EXPECT_EQ(changes({{"OAK", 1900, oak}}, {{"OAK", 1893, oak}}), "OAK redated 1900 1893\n");
  EXPECT_EQ(changes({{"OAK", -5, oak}}, {{"OAK", 3, oak}}), "OAK redated -5 3\n");
}

// Midway, with either end that stays.
TEST(Comparison, ARingPutInOrLeftOutIsNoRedating) {
  const Collection before = {{"OAK", 1900, oak}};
  EXPECT_EQ(changes(before, {{"OAK", 1900, with(oak, 3, 9)}}), "OAK +1903:9(inner)\n");
  EXPECT_EQ(changes(before, {{"OAK", 1899, with(oak, 3, 9)}}), "OAK +1902:9(outer)\n");
  EXPECT_EQ(changes(before, {{"OAK", 1900, without(oak, 3)}}), "OAK -1903(inner)\n");
  EXPECT_EQ(changes(before, {{"OAK", 1901, without(oak, 3)}}), "OAK -1903(outer)\n");
}

TEST(Comparison, NorIsOneAtAnEndWhoseYearStays) {
  const Collection before = {{"OAK", 1900, oak}};
  EXPECT_EQ(changes(before, {{"OAK", 1900, with(oak, 0, 9)}}), "OAK +1900:9(inner)\n");
  EXPECT_EQ(changes(before, {{"OAK", 1899, with(oak, 0, 9)}}), "OAK +1899:9(outer)\n");
  EXPECT_EQ(changes(before, {{"OAK", 1900, with(oak, 8, 9)}}), "OAK +1908:9(inner)\n");
  EXPECT_EQ(changes(before, {{"OAK", 1899, with(oak, 8, 9)}}), "OAK +1907:9(outer)\n");
  EXPECT_EQ(changes(before, {{"OAK", 1900, without(oak, 0)}}), "OAK -1900(inner)\n");
  EXPECT_EQ(changes(before, {{"OAK", 1901, without(oak, 7)}}), "OAK -1907(outer)\n");
}

// Between neighbours of one width nobody can tell; but years that stay are likelier than years that move.
TEST(Comparison, OfNeighboursOfOneWidthNamesTheOneByWhichMostRingsKeepTheirYears) {
  const std::vector<double> ash = {6, 6, 1, 2, 3, 4, 5, 5};
  EXPECT_EQ(changes({{"ASH", 1237, ash}}, {{"ASH", 1236, with(ash, 0, 6)}}), "ASH +1236:6(outer)\n");
  EXPECT_EQ(changes({{"ASH", 1237, ash}}, {{"ASH", 1237, with(ash, 0, 6)}}), "ASH +1239:6(inner)\n");
  EXPECT_EQ(changes({{"ASH", 1237, ash}}, {{"ASH", 1237, with(ash, 8, 5)}}), "ASH +1245:5(inner)\n");
  EXPECT_EQ(changes({{"ASH", 1237, ash}}, {{"ASH", 1236, with(ash, 8, 5)}}), "ASH +1242:5(outer)\n");
  EXPECT_EQ(changes({{"ASH", 1580, ash}}, {{"ASH", 1581, without(ash, 0)}}), "ASH -1580(outer)\n");
  EXPECT_EQ(changes({{"ASH", 1580, ash}}, {{"ASH", 1580, without(ash, 0)}}), "ASH -1581(inner)\n");
  EXPECT_EQ(changes({{"ASH", 1580, ash}}, {{"ASH", 1580, without(ash, 7)}}), "ASH -1587(inner)\n");
  // At both ends, none of which has the year it had.
  EXPECT_EQ(changes({{"ASH", 1580, ash}}, {{"ASH", 1581, without(without(ash, 7), 0)}}),
            "ASH -1580(outer) -1587(inner)\n");
  EXPECT_EQ(changes({{"ASH", 1580, ash}}, {{"ASH", 1579, with(with(ash, 8, 5), 0, 6)}}),
            "ASH +1579:6(outer) +1588:5(inner)\n");
}

TEST(Comparison, ARingThatKeepsItsYearByChanceIsNoReasonNotToRedate) {
  EXPECT_EQ(changes({{"ASH", 1900, {1, 2, 3, 4, 5}}}, {{"ASH", 1901, {1, 3, 2, 4, 5}}}),
            "ASH redated 1900 1901 =1902:3 =1903:2\n");
}

TEST(Comparison, ACoreWithMoreRingsMayBeRedatedToo) {
  EXPECT_EQ(changes({{"OAK", 1900, oak}}, {{"OAK", 1950, with(oak, 2, 9)}}),
            "OAK redated 1902 1953 +1952:9(outer)\n");
  EXPECT_EQ(changes({{"OAK", 1900, oak}}, {{"OAK", 1950, with(oak, 6, 9)}}),
            "OAK redated 1900 1950 +1956:9(inner)\n");
  // Four rings moved by 50 years, four by 51: the fewer.
  EXPECT_EQ(changes({{"OAK", 1900, oak}}, {{"OAK", 1950, with(oak, 4, 9)}}),
            "OAK redated 1900 1950 +1954:9(inner)\n");
  EXPECT_EQ(changes({{"OAK", 1900, oak}}, {{"OAK", 1849, with(oak, 4, 9)}}),
            "OAK redated 1904 1854 +1853:9(outer)\n");
}

TEST(Comparison, TwoRingsMadeOneAreTheInnerChangedAndTheOuterDeleted) {
  std::vector<double> merged = without(oak, 4);
  merged[3] = 2.9;
  EXPECT_EQ(changes({{"OAK", 1900, oak}}, {{"OAK", 1900, merged}}), "OAK =1903:2.9 -1904(inner)\n");
  EXPECT_EQ(changes({{"OAK", 1900, oak}}, {{"OAK", 1901, merged}}), "OAK =1904:2.9 -1904(outer)\n");
}

TEST(Comparison, AMissingRingHasNoWidth) {
  std::vector<double> rings = oak;
  rings[2] = -1;
  EXPECT_EQ(changes({{"OAK", 1900, oak}}, {{"OAK", 1900, rings}}), "OAK =1902:none\n");
  EXPECT_EQ(changes({{"OAK", 1900, rings}}, {{"OAK", 1900, oak}}), "OAK =1902:1.3\n");
  EXPECT_EQ(changes({{"OAK", 1900, oak}}, {{"OAK", 1900, with(oak, 3, -1)}}), "OAK +1903:none(inner)\n");
  EXPECT_EQ(changes({{"OAK", 1900, oak}}, {{"OAK", 1900, with(oak, 3, 0)}}), "OAK +1903:0(inner)\n");
}

TEST(Comparison, WidthsInAnotherUnitAreTheSame) {
  Specimen coarse{"OAK", 1900, {1.23, 0.5, 0}, 100}, fine{"OAK", 1900, {1.234, 0.495, 0.004}, 1000};
  EXPECT_EQ(changes({coarse}, {fine}), "");
  EXPECT_EQ(changes({fine}, {coarse}), "");
  fine.mm[1] = 0.494;
  EXPECT_EQ(changes({coarse}, {fine}), "OAK =1901:0.494\n");
}

// --- Planted changes

class Planting {
 public:
  explicit Planting(unsigned seed) : random_(seed) {}
  std::size_t below(std::size_t limit) { return random_() % limit; }

  // Of few widths, so that neighbours are often alike.
  Collection site() {
    Collection all;
    for (std::size_t k = 0; k < 12; ++k) {
      all.push_back({"C" + std::to_string(k), 1700 + static_cast<std::int64_t>(below(100)), {}});
      const std::size_t rings = 30 + below(200);
      for (std::size_t ring = 0; ring < rings; ++ring) all.back().mm.push_back(width());
    }
    return all;
  }
  double width() { return static_cast<double>(below(40)) / 1000 - (below(30) == 0 ? 1 : 0); }

  // Changes one core and says what must come out.
  std::string plant(Specimen& core) {
    switch (below(5)) {
      case 0:
        return core.name + insert(core);
      case 1:
        return core.name + erase(core);
      case 2:
        return core.name + change(core);
      case 3:
        return core.name + redate(core);
      default:
        return rename(core);
    }
  }

 private:
  static bool alike(double a, double b) { return a < 0 || b < 0 ? (a < 0) == (b < 0) : a == b; }
  static std::string shown(double width) {
    return words(width < 0 ? std::nullopt : std::optional<double>(width));
  }
  // Of the neighbours like the ring at `place` the one nearest to the side whose years move.
  static std::size_t named(const Specimen& core, std::size_t place, bool outer_stays) {
    const auto& mm = core.mm;
    while (outer_stays && place > 0 && alike(mm[place - 1], mm[place])) --place;
    while (!outer_stays && place + 1 < mm.size() && alike(mm[place + 1], mm[place])) ++place;
    return place;
  }
  static std::string year(const Specimen& core, std::size_t place) {
    return std::to_string(core.first + static_cast<std::int64_t>(place));
  }
  std::string insert(Specimen& core) {
    const std::size_t place = below(core.mm.size() + 1);
    const bool outer = below(2) == 0;
    core.mm = with(core.mm, place, width());
    if (outer) --core.first;
    const std::size_t ring = named(core, place, outer);
    return " +" + year(core, ring) + ":" + shown(core.mm[ring]) + (outer ? "(outer)\n" : "(inner)\n");
  }
  std::string erase(Specimen& core) {
    const std::size_t place = below(core.mm.size());
    const bool outer = below(2) == 0;
    const std::string its_year = year(core, named(core, place, outer));
    core.mm = without(core.mm, place);
    if (outer) ++core.first;
    return " -" + its_year + (outer ? "(outer)\n" : "(inner)\n");
  }
  std::string change(Specimen& core) {
    const std::size_t place = below(core.mm.size());
    core.mm[place] = core.mm[place] < 0 ? 0.5 : core.mm[place] + 0.001;
    return " =" + year(core, place) + ":" + shown(core.mm[place]) + "\n";
  }
  std::string redate(Specimen& core) {
    const std::int64_t before = core.first;
    core.first += static_cast<std::int64_t>(1 + below(300)) * (below(2) == 0 ? 1 : -1);
    return " redated " + std::to_string(before) + " " + std::to_string(core.first) + "\n";
  }
  static std::string rename(Specimen& core) {
    const std::string before = core.name;
    core.name += "X";
    return before + " renamed " + core.name + "\n";
  }
  std::mt19937 random_;
};

TEST(Comparison, FindsEachPlantedChangeAndNothingElse) {
  Planting random(3);
  for (int trial = 0; trial < 1'000; ++trial) {
    const Collection before = random.site();
    Collection after = before;
    const std::string expected = random.plant(after[random.below(after.size())]);
    ASSERT_EQ(changes(before, after), expected) << trial;
  }
}

}  // namespace
}  // namespace vorn
