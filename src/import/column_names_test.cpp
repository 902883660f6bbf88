#include "import/column_names.h"

#include <gtest/gtest.h>

#include "support/imported_specimens.h"

namespace vorn {
namespace {

using Names = std::vector<std::string>;

TEST(ColumnNames, PartsOfARingAreKnownByTheirEnds) {
  for (const char* name : {"A_EW", "A.ew", "A earlywood", "A-EWW"}) {
    ASSERT_TRUE(part_of_ring(name)) << name;
    EXPECT_EQ(part_of_ring(name)->core, "a") << name;
    EXPECT_TRUE(part_of_ring(name)->early) << name;
  }
  EXPECT_FALSE(part_of_ring("A_LW")->early);
  for (const char* name : {"", "EW", "_EW", "VIEW", "NEW1", "A_RW"}) EXPECT_FALSE(part_of_ring(name)) << name;
}

TEST(ColumnNames, PartsStandBesideAWholeOrNot) {
  const auto parts = ring_parts_among(Names{"B", "A_LW", "A_EW", "A_RW"});
  ASSERT_TRUE(parts);
  EXPECT_EQ(parts->early, 2u);
  EXPECT_EQ(parts->late, 1u);
  EXPECT_EQ(parts->whole, 3u);
  EXPECT_EQ(ring_parts_among(Names{"a", "A_EW", "A_LW"})->whole, 0u);
  EXPECT_FALSE(ring_parts_among(Names{"A_EW", "A_LW"})->whole);
  EXPECT_EQ(ring_parts_among(Names{"B_EW", "A_EW", "A_LW", "B_LW"})->early, 0u) << "the first of them";
  EXPECT_FALSE(ring_parts_among(Names{"A_EW", "A_RW", "B_LW"})) << "may be names";
}

TEST(ColumnNames, IndicesAreThoseOfChronologies) {
  EXPECT_EQ(indices_among(Names{"xxxstd", "xxxres"}), (std::vector<bool>{true, true}));
  EXPECT_EQ(indices_among(Names{"oakstd", "samp.depth"}), (std::vector<bool>{true, false}));
  EXPECT_EQ(indices_among(Names{"oakstd", "FOREST"}), (std::vector<bool>{false, false}));
}

TEST(WideTable, DoubtsPartsOfRings) {
  const Imported one = taken("year,T1_EW,T1_LW,T1_RW\n1990,1,0.25,1.25\n1991,1,0.5,1.5\n1992,0.75,0.25,1\n");
  EXPECT_EQ(one.series.size(), 3u);
  EXPECT_EQ(doubts(one), "parts-of-rings:1 unit-guessed:1");
}

TEST(WideTable, HasNoWidthsInChronologiesOfR) {
  const Imported one = taken(
      "\"\",\"xxxstd\",\"xxxres\",\"samp.depth\"\n\"1990\",1.1,0.9,3\n\"1991\",0.9,1,3\n\"1992\",1,1.1,4\n");
  EXPECT_EQ(one.series.size(), 0u);
  EXPECT_EQ(doubts(one), "no-copy");
  EXPECT_NE(one.findings[2].words.find("indices of a chronology"), std::string::npos)
      << one.findings[2].words;
}

}  // namespace
}  // namespace vorn
