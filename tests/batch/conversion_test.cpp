// Files of ring widths in another layout, read back.
#include "batch/conversion.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "batch/difference.h"
#include "records/disk_files.h"
#include "records/memory_files.h"
#include "support/places.h"
#include "support/raw_text.h"

namespace vorn {
namespace {

const std::vector<int> oak = {1100, 0, 1300, -9990, 1500, 1600, 1700, 1800, 1900, 2000};

Conversion converted(const std::string& text, std::string_view target) {
  MemoryFiles files;
  files.put("site", text);
  return vorn::converted(Collection(files, "site", untreated()), *target_named(target));
}

TEST(Conversion, WritesWhatTheProgramWrites) {
  const std::string text = raw_text("OAK00001", 1900, oak);
  EXPECT_EQ(converted(text, "tucson").bytes, text);
  EXPECT_EQ(converted(text, "heidelberg").bytes,
            "HEADER:\nKeyCode=OAK00001    \nUnit=1/1000 mm\nDateEnd=1909  \nLength=10    \nDATA:Tree\n"
            "  1100     0  1300 -9990  1500  1600  1700  1800  1900  2000\n");
  EXPECT_EQ(converted(text, "compact").bytes, "      10=N    1900=I OAK00001" + std::string(42, ' ') +
                                                  "(19F4.0)\n"
                                                  "1100   01300-999150016001700180019002000\n");
}

TEST(Conversion, OfTheExamplesGivesTheSameCoresInEachLayout) {
  DiskFiles disk((source_folder() / "examples").string());
  for (const char* name : {"nowhere.rwl", "nearby.fh", "faraway.rwm", "yonder.rwl", "adrift.rwl"}) {
    const Collection read(disk, name, untreated());
    for (const TargetLayout& target : target_layouts()) {
      SCOPED_TRACE(std::string(name) + " " + std::string(target.name));
      const Conversion made = vorn::converted(read, target);
      if (made.refused.size() == 1 && made.refused[0].ends_with("cannot read workbooks")) continue;
      EXPECT_EQ(made.refused, Sentences{});
      MemoryFiles files;
      files.put("new", made.bytes);
      const Collection back(files, "new", untreated());
      EXPECT_EQ(back.recognition().layout, target.layout);
      EXPECT_EQ(back.cores().size(), read.cores().size());
      int rows = 0;
      difference_rows(read, back, [&rows](const Row&) { ++rows; });
      EXPECT_EQ(rows, 0);
    }
  }
}

TEST(Conversion, RefusesWidthsOfTenMillimetresInTheCompactLayout) {
  const Conversion made = converted(
      raw_text("OAK", 1907, {100, 200, 9999}) + raw_text("ELM", 1900, {100, 200, 10000}), "compact");
  EXPECT_EQ(made.refused, Sentences{"site: ELM: widths of 10 mm or more do not fit"});
  EXPECT_EQ(made.bytes, "");
}

// A compact file holds years and numbers of rings that others have no columns for.
std::string compact_text(const char* name, int first, int rings) {
  char header[100];
  std::snprintf(header, sizeof header, "%8d=N%8d=I %-8s%42s(19F4.0)\n", rings, first, name, "");
  std::string text = header;
  for (int k = 1; k <= rings; ++k) {
    std::snprintf(header, sizeof header, "%4d", 100 + k % 100);
    text += header;
    if (k % 19 == 0 || k == rings) text += "\n";
  }
  return text;
}

TEST(Conversion, RefusesYearsThatTheLayoutHasNoColumnsFor) {
  const std::string late = compact_text("OAK", 9'995, 30);
  EXPECT_EQ(converted(late, "compact").bytes, late);
  const Conversion made = converted(late, "tucson");
  EXPECT_FALSE(made.refused.empty());
  EXPECT_EQ(made.bytes, "");
}

TEST(Conversion, RefusesANameThatTheYearLeavesNoRoomFor) {
  const std::string early = compact_text("OAK00001", -1'200, 30);
  EXPECT_EQ(converted(early, "heidelberg").refused, Sentences{});
  EXPECT_EQ(converted(early, "tucson").refused, Sentences{"site: OAK00001 would be called OAK0000"});
  EXPECT_EQ(converted(compact_text("OAK0001", -1'200, 30), "tucson").refused, Sentences{});
}

TEST(Conversion, RefusesMoreRingsThanTheLayoutTakesForASeries) {
  const std::string longest = compact_text("OAK", -2'000, 10'100);
  const Conversion made = converted(longest, "tucson");
  ASSERT_FALSE(made.refused.empty());
  EXPECT_EQ(made.refused.front(), "site: OAK would be lost");
  EXPECT_FALSE(converted(longest, "heidelberg").refused.empty());
}

// The first line of a file is known by being as long as its year asks for.
TEST(Conversion, RefusesAFirstCoreTooShortForItsLayoutToBeKnown) {
  EXPECT_EQ(converted(compact_text("OAK", 1900, 8), "tucson").refused,
            Sentences{"site: the layout would not be recognised by the first core, OAK"});
  EXPECT_EQ(converted(compact_text("OAK", 1902, 8), "tucson").refused, Sentences{});
}

TEST(Conversion, RefusesAFileWithoutCores) {
  EXPECT_EQ(converted("Nothing of the kind.\n", "compact").refused,
            Sentences{"site: no ring widths to write"});
}

TEST(Conversion, SaysWhatTheNewFileHasNot) {
  EXPECT_EQ(converted("One\nTwo\nThree\n" + raw_text("OAK", 1900, oak), "compact").lost,
            Sentences{"site: 3 lines before the data are not kept"});
  EXPECT_EQ(converted("HEADER:\nKeyCode=OAK\nSpecies=QUSP\nUnit=1/1000 mm\nDateEnd=1910\nLength=4\nDATA:"
                      "Tree\n  1100  1200  1300  1400\n",
                      "tucson")
                .lost,
            Sentences{"site: 1 line with keywords that the program does not know is not kept"});
  EXPECT_EQ(converted(raw_text("OAK", 1900, oak), "compact").lost, Sentences{});
}

TEST(Conversion, SaysWhatWasNotRead) {
  EXPECT_EQ(converted(raw_text("OAK", 1900, oak) + "\n" + raw_text("ELM", 1900, oak), "compact").not_read,
            Sentences{"site:3: what follows is not read"});
  std::string open = raw_text("OAK", 1900, oak) + raw_text("ELM", 1900, oak);
  open.resize(open.rfind("-9999"));
  EXPECT_EQ(converted(open, "compact").not_read,
            Sentences{"site: 1 line of series without an end mark is not read"});
  EXPECT_EQ(converted(raw_text("OAK", 1900, oak), "compact").not_read, Sentences{});
}

TEST(Conversion, SaysThatFinerWidthsAreRounded) {
  const std::string header = "       3=N    1907=I OAK     " + std::string(39, ' ') + " -4(10F8.0)\n";
  const Conversion made = converted(header + "   12344   12345   12346\n", "tucson");
  EXPECT_EQ(made.lost, Sentences{"site: OAK: its widths are rounded to thousandths of a millimetre"});
  EXPECT_EQ(made.bytes, raw_text("OAK", 1907, {1234, 1235, 1235}));
}

}  // namespace
}  // namespace vorn
