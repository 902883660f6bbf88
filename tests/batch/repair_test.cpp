// Copies that are taken whole: what is written of a file that is not, and what is not written without being
// told how.
#include "batch/repair.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "batch/collection.h"
#include "batch/difference.h"
#include "batch/reading_check.h"
#include "batch/specimens.h"
#include "records/memory_files.h"
#include "support/raw_text.h"

namespace vorn {
namespace {

class Repairs : public testing::Test {
 protected:
  const Repair& repair(const std::string& bytes, const RepairChoices& choices = {}) {
    files_.put("a file", bytes);
    made_ = repaired(Collection(files_, "a file", untreated()), bytes, choices);
    return made_;
  }
  // The ids of the errors that the copy still has.
  std::string errors_left() {
    std::string all;
    files_.put("the copy", made_.bytes);
    const Collection copy(files_, "the copy", untreated());
    for (const FileFinding& finding : findings_of(copy, made_.bytes, 0)) {
      if (severity_of(finding.kind->effect) == Severity::error) all += std::string(finding.kind->id) + " ";
    }
    return all;
  }
  using Sentences = std::vector<std::string>;

 private:
  MemoryFiles files_;
  Repair made_;
};

const std::string oak1 = raw_text("OAK1", 1903, widths(47), 999);
const std::string oak2 = raw_text("OAK2", 1913, widths(44));

TEST_F(Repairs, AFileThatIsReadWholeNeedsNone) {
  EXPECT_EQ(repair(oak1 + oak2).bytes, "");
  EXPECT_EQ(repair(oak1 + oak2).refused, Sentences{});
  EXPECT_EQ(repair(oak1 + oak2 + "\n\n").bytes, "");
}

TEST_F(Repairs, ABlankLineIsLeftOutAndAllOthersStay) {
  EXPECT_EQ(repair("A header\n" + oak1 + "\n" + oak2).bytes, "A header\n" + oak1 + oak2);
  EXPECT_EQ(repair("A header\n" + oak1 + "\n" + oak2).done, Sentences{"line 8, empty, left out"});
  std::string within = oak1;
  within.insert(within.find("OAK1    1920"), "        \n");
  EXPECT_EQ(repair(within + oak2).bytes, oak1 + oak2);
}

TEST_F(Repairs, HeaderLinesBeyondTheThirdAndWordsAmongTheDataAreLeftOut) {
  EXPECT_EQ(repair("1st\n2nd\n3rd\n4th\n" + oak1 + "Some words\n" + oak2).bytes,
            "1st\n2nd\n3rd\n" + oak1 + oak2);
}

TEST_F(Repairs, LinesOutsideTheColumnsAreWrittenInThem) {
  std::string text = oak2;
  const std::size_t at = text.find("OAK2    1920");
  const std::string line = text.substr(at, text.find('\n', at) - at);
  std::string tabs = "OAK2\t1920";
  for (std::size_t k = 12; k < line.size(); k += 6) tabs += "\t" + line.substr(k + 3, 3);
  text.replace(at, line.size(), tabs);
  EXPECT_EQ(repair(oak1 + text).bytes, oak1 + oak2);
}

// Two stretches of one core, each with the unit that the mark at its end says.
TEST_F(Repairs, StretchesGetEndMarksOfTheirOwn) {
  std::string text = raw_text("OAK1", 1900, widths(60));
  const std::size_t at = text.find("OAK1    1920"), end = text.find("OAK1    1940");
  repair(text.substr(0, at) + text.substr(end));
  const std::vector<int> all = widths(60);
  EXPECT_EQ(repair(text.substr(0, at) + text.substr(end)).bytes,
            raw_text("OAK1", 1900, {all.begin(), all.begin() + 20}) +
                raw_text("OAK1", 1940, {all.begin() + 40, all.end()}));
}

// A gap of one decade behind a mark that has a line to itself: in their order they would be read as one.
TEST_F(Repairs, StretchesThatWouldBeOneChangePlaces) {
  const std::string first = raw_text("OAK1", 1903, widths(27)), second = raw_text("OAK1", 1940, widths(20));
  EXPECT_EQ(repair(first + second).bytes, second + first);
  EXPECT_EQ(errors_left(), "");
}

TEST_F(Repairs, TheUnitOfASeriesWithoutAMarkIsUpToTheUser) {
  const std::string open = oak2.substr(0, oak2.rfind(" -9999")) + "\n";
  EXPECT_EQ(repair(oak1 + open).bytes, "");
  EXPECT_EQ(repair(oak1 + open).refused, Sentences{"OAK2: no end mark: choose its unit by --unit"});
  EXPECT_EQ(repair(oak1 + open, {.unit = 1000}).bytes, oak1 + oak2);
}

TEST_F(Repairs, AWidthThatIsNoNumberIsNotGuessed) {
  std::string text = oak2;
  text.replace(text.find("OAK2    1920") + 15, 3, "1o7");
  EXPECT_EQ(repair(oak1 + text).bytes, "");
  EXPECT_EQ(repair(oak1 + text).refused, Sentences{"OAK2: line 8, column 13: what is its width?"});
}

TEST_F(Repairs, WhichOfSeveralEndMarksEndsASeriesIsNotGuessed) {
  std::string text = oak1;
  text.insert(text.size() - 1, "   999");
  EXPECT_EQ(repair(text + "\n" + oak2).bytes, "");
  EXPECT_EQ(repair(text + "\n" + oak2).refused,
            Sentences{"OAK1: which of the end marks on its last line ends it?"});
}

TEST_F(Repairs, OfAChronologyLinesThatAreNoDecadesAreLeftOut) {
  std::string line = "SITE  1950";
  for (int k = 0; k < 10; ++k) line += "1000  5";
  std::string next = line;
  next.replace(6, 4, "1960");
  EXPECT_EQ(repair(line + "\n" + next + "\nSITE   498 .7494   .2927\n\n").bytes, line + "\n" + next + "\n");
}

TEST_F(Repairs, WhatIsEmptyBeforeTheFirstLineIsLeftOutOfAnyLayout) {
  const std::string record =
      "HEADER:\nKeyCode=OAK1\nDateEnd=1902\nUnit=1/100 mm\nLength=3\nDATA:Tree\n   101   102   103\n";
  EXPECT_EQ(repair("\n\n" + record).bytes, record);
}

TEST_F(Repairs, OfAFileThatIsNoneThereIsNoCopy) {
  for (const char* text : {"", "Some words.\n", "PK\x03\x04", "HEADER:\nDATA:Double\n"}) {
    EXPECT_EQ(repair(text).bytes, "");
    EXPECT_EQ(repair(text).refused.size(), 1u);
  }
}

// Whatever is changed in a file: a copy that is written has no error, and one that is not says why.
TEST_F(Repairs, ACopyIsAlwaysReadWhole) {
  const std::string text = raw_text("OAK1", 1903, widths(27)) + raw_text("OAK2", 1913, widths(14), 999);
  for (std::size_t k = 0; k < text.size(); ++k) {
    for (const char c : {'\n', ' ', '\t', '7', '-', 'x', '\0'}) {
      std::string changed = text;
      changed[k] = c;
      const Repair& made = repair(changed, {.unit = 100});
      if (!made.bytes.empty()) {
        EXPECT_EQ(errors_left(), "") << changed;
      }
      EXPECT_TRUE(made.bytes.empty() || made.refused.empty());
    }
  }
}

}  // namespace
}  // namespace vorn
