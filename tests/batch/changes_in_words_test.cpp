// "What did I change?": sentences of a file and of its cores as they are now.
#include "batch/changes_in_words.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "batch/difference.h"
#include "batch/held_cores.h"
#include "batch/specimens.h"
#include "records/memory_files.h"
#include "support/raw_text.h"

namespace vorn {
namespace {

using Sentences = std::vector<std::string>;

class ChangesInWords : public testing::Test {
 protected:
  explicit ChangesInWords() { files_.put("original", text_); }

  // A core of hundredths, as a store holds it; a ring of -1 is marked as missing.
  void hold(const std::string& name, int first, const std::vector<int>& hundredths) {
    std::vector<double> mm;
    std::vector<std::uint8_t> present;
    for (const int value : hundredths) {
      mm.push_back(value < 0 ? 0.77 : value / 100.0);
      present.push_back(value < 0 ? 0 : 1);
    }
    held_.add(name, first, mm, present);
  }
  Sentences told() {
    Sentences all;
    for (const ChangeInWords& change :
         changes_in_words(Collection(files_, "original", untreated()), held_.cores()))
      all.push_back(change.sentence());
    return all;
  }

  const std::vector<int> oak1_ = widths(30), oak2_ = widths(40, 70);

 private:
  const std::string text_ = raw_text("OAK1", 1900, oak1_, 999) + raw_text("OAK2", 1910, oak2_, 999);
  MemoryFiles files_;
  HeldCores held_;
};

std::vector<int> with_ring(std::vector<int> all, std::ptrdiff_t at, int width) {
  all.insert(all.begin() + at, width);
  return all;
}

std::vector<int> without_ring(std::vector<int> all, std::ptrdiff_t at) {
  all.erase(all.begin() + at);
  return all;
}

TEST_F(ChangesInWords, NothingIsToldOfCoresThatAreAsTheyWere) {
  hold("OAK2", 1910, oak2_);
  hold("OAK1", 1900, oak1_);
  EXPECT_EQ(told(), Sentences{});
}

// The outer end keeps its year, so that 21 rings, 1900 to 1920, move.
TEST_F(ChangesInWords, ARingPutInAndTheYearsThatMoved) {
  hold("OAK1", 1899, with_ring(oak1_, 21, 43));
  hold("OAK2", 1910, with_ring(oak2_, 5, -1));
  EXPECT_EQ(told(), (Sentences{"OAK1: ring inserted in 1920, 0.43 mm; years 1900 to 1920 moved by -1",
                               "OAK2: ring inserted in 1915, marked as missing; years 1915 to 1949 moved by "
                               "+1"}));
}

TEST_F(ChangesInWords, ARingLeftOutOrChanged) {
  hold("OAK1", 1900, without_ring(oak1_, 10));
  std::vector<int> changed = oak2_;
  changed[3] = 200;
  changed[4] = -1;
  hold("OAK2", 1910, changed);
  EXPECT_EQ(told(), (Sentences{"OAK1: ring of 1910 deleted, 1.17 mm; years 1911 to 1929 moved by -1",
                               "OAK2: ring of 1913 changed from 0.91 mm to 2 mm",
                               "OAK2: ring of 1914 changed from 0.98 mm to marked as missing"}));
}

TEST_F(ChangesInWords, OfSeveralRingsTheYearsAreToldOnce) {
  hold("OAK1", 1898, with_ring(with_ring(oak1_, 21, 43), 11, 44));
  hold("OAK2", 1910, oak2_);
  EXPECT_EQ(told(), (Sentences{"OAK1: ring inserted in 1909, 0.44 mm", "OAK1: ring inserted in 1920, 0.43 mm",
                               "OAK1: years 1900 to 1910 moved by -2, 1911 to 1920 by -1"}));
}

TEST_F(ChangesInWords, ACoreThatWasDatedRenamedTakenOutOrPutIn) {
  hold("OAK1", 1903, oak1_);
  hold("FIR", 1910, oak2_);
  hold("NEW", -12, widths(20, 90));
  EXPECT_EQ(told(), (Sentences{"OAK1: moved by +3 years, to 1903 to 1932", "OAK2: its name is now FIR",
                               "NEW: new, 20 rings, -12 to 7"}));
}

TEST_F(ChangesInWords, ACoreThatIsGone) {
  hold("OAK2", 1910, oak2_);
  EXPECT_EQ(told(), Sentences{"OAK1: gone, with its 30 rings, 1900 to 1929"});
}

// A thousandth in a file of hundredths is a change that a store would keep.
TEST_F(ChangesInWords, WidthsOfAStoreAreComparedDigitByDigit) {
  std::vector<double> mm;
  for (const int value : oak1_) mm.push_back(value / 100.0);
  mm[2] += 0.001;
  HeldCores held;
  held.add("OAK1    ", 1900, mm, std::vector<std::uint8_t>(mm.size(), 1));
  EXPECT_EQ(held.cores().front().name, "OAK1");
  MemoryFiles files;
  files.put("one", raw_text("OAK1", 1900, oak1_, 999));
  const auto told = changes_in_words(Collection(files, "one", untreated()), held.cores());
  ASSERT_EQ(told.size(), 1u);
  EXPECT_EQ(told.front().year, 1902);
  EXPECT_EQ(told.front().words, "ring of 1902 changed from 1.14 mm to 1.141 mm");
}

TEST(HeldCores, TheSignOfNegativeYearsIsNoPartOfAName) {
  EXPECT_EQ(plain_name("OAK1   -", -1200), "OAK1");
  EXPECT_EQ(plain_name("OAK1   -", 1200), "OAK1   -");
  EXPECT_EQ(plain_name(" OAK 1 ", -3), "OAK 1");
}

}  // namespace
}  // namespace vorn
