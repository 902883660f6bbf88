#include "panels/corrected_file.h"

#include <gtest/gtest.h>

#include "desk/specimens_for_tests.h"
#include "records/memory_files.h"

namespace vorn {
namespace {

const std::string header = "A stand of oaks\r\n";
const std::string oak1 =
    "OAK1    1990   101   102   103   104   105   106   107   108   109   110\r\n"
    "OAK1    2000   111   112   999\r\n";
const std::string oak2 =
    "OAK2    1991   201   202   203   204   205   206   207   208   209\r\n"
    "OAK2    2000   211   212   999\r\n";

std::vector<double> in_mm(std::vector<int> hundredths) {
  std::vector<double> widths;
  for (const int width : hundredths) widths.push_back(width / 100.0);
  return widths;
}
const std::vector<int> rings1 = {101, 102, 103, 104, 105, 106, 107, 108, 109, 110, 111, 112};
const std::vector<int> rings2 = {201, 202, 203, 204, 205, 206, 207, 208, 209, 211, 212};

struct Corrections : testing::Test {
  Corrections() {
    files.put("oaks.rwl", header + oak1 + oak2);
    now = situation_at(Place::start);
    now.cores_file = "oaks.rwl";
    now.cores = {core("OAK1", 1990, in_mm(rings1)), core("OAK2", 1991, in_mm(rings2))};
    now.sample = now.reference = {};
  }
  // A ring of OAK1 goes, the inner ones keep their years.
  void take_a_ring() {
    std::vector<int> fewer = rings1;
    fewer.erase(fewer.begin() + 4);
    now.cores[0] = core("OAK1", 1990, in_mm(fewer));
  }
  MemoryFiles files;
  Situation now;
};

TEST_F(Corrections, WithoutAnyTheFileIsWhatItWas) {
  const CorrectedFile corrected = corrected_file(files, now);
  EXPECT_EQ(corrected.made.bytes, header + oak1 + oak2);
  EXPECT_FALSE(corrected.made.is_changed);
  EXPECT_EQ(changes_page(corrected),
            (std::vector<std::string>{"What was changed since oaks.rwl was read", "", "Nothing."}));
}

TEST_F(Corrections, OnlyTheLinesOfTheCoreAreWrittenAnew) {
  take_a_ring();
  const CorrectedFile corrected = corrected_file(files, now);
  EXPECT_EQ(corrected.made.bytes,
            header +
                "OAK1    1990   101   102   103   104   106   107   108   109   110   111\r\n"
                "OAK1    2000   112   999\r\n" +
                oak2);
  ASSERT_EQ(corrected.changes.size(), 1u);
  EXPECT_TRUE(corrected.changes[0].starts_with("OAK1: ring of 1994 deleted, 1.05 mm"))
      << corrected.changes[0];
}

TEST_F(Corrections, SavedOverTheFileLeaveItsOldestSelf) {
  take_a_ring();
  const CorrectedFile first = corrected_file(files, now);
  EXPECT_EQ(save_over_original(files, first), std::nullopt);
  EXPECT_EQ(files.contents("oaks.rwl"), first.made.bytes);
  EXPECT_EQ(files.contents("oaks.rwl.orig"), header + oak1 + oak2);
  now.cores[1] = core("OAK2", 1981, in_mm(rings2));
  const CorrectedFile second = corrected_file(files, now);
  EXPECT_EQ(second.changes.size(), 1u);
  EXPECT_EQ(second.oldest, "oaks.rwl.orig");
  EXPECT_EQ(second.changes_since.size(), 2u);
  EXPECT_EQ(save_over_original(files, second), std::nullopt);
  EXPECT_EQ(files.contents("oaks.rwl.orig"), header + oak1 + oak2);
}

TEST_F(Corrections, WhatIsNotSavedOnThePageIsSaid) {
  now.sample = {1, "OAK1", true, 1990, 2001, true};
  const CorrectedFile corrected = corrected_file(files, now);
  EXPECT_EQ(corrected.not_yet, std::vector<std::string>{"OAK1"});
  EXPECT_EQ(changes_page(corrected).back(),
            "OAK1: its change on the page is not saved yet, and not among these");
}

TEST_F(Corrections, WhatDoesNotFitIsRefusedBeforeAnythingIsWritten) {
  std::vector<double> widths = in_mm(rings1);
  widths[3] = 1.2345;
  now.cores[0] = core("OAK1", 1990, widths);
  const CorrectedFile corrected = corrected_file(files, now);
  EXPECT_FALSE(corrected.made.refused.empty());
  EXPECT_EQ(changes_page(corrected).back(), corrected.made.refused.back());
  EXPECT_TRUE(save_over_original(files, corrected));
  EXPECT_EQ(files.contents("oaks.rwl"), header + oak1 + oak2);
}

// Cores that were read carefully are held against the file read so: none of them is new.
TEST_F(Corrections, AFileThatWasReadCarefullyIsReadSoAgain) {
  const std::string blank = "   \r\n";
  files.put("oaks.rwl", header + oak1 + blank + oak2);
  now.settings.careful = Careful::everything();
  now.read_as = reading_of(now.settings.careful);
  EXPECT_TRUE(corrected_file(files, now).changes.empty());
  take_a_ring();
  const CorrectedFile corrected = corrected_file(files, now);
  EXPECT_EQ(corrected.changes.size(), 1u);
  EXPECT_TRUE(corrected.made.refused.empty());
  EXPECT_NE(corrected.made.bytes.find(blank + oak2), std::string::npos);
}

// A switch counts from the next reading on: cores that were never read are not gone.
TEST_F(Corrections, ASwitchSinceTheFileWasReadTakesNoCoreOutOfIt) {
  files.put("oaks.rwl", header + oak1 + "\r\n" + oak2);
  now.cores.pop_back();
  now.settings.careful = Careful::everything();
  EXPECT_TRUE(corrected_file(files, now).changes.empty());
  take_a_ring();
  EXPECT_FALSE(corrected_file(files, now).made.refused.empty());
}

TEST_F(Corrections, AFileThatIsGoneIsSaid) {
  now.cores_file = "elms.rwl";
  EXPECT_EQ(corrected_file(files, now).made.refused,
            std::vector<std::string>{"elms.rwl cannot be read any more"});
}

}  // namespace
}  // namespace vorn
