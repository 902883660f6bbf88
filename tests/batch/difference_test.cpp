// The rows of `vorn diff`, from files in every layout.
#include "batch/difference.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "records/memory_files.h"
#include "support/raw_text.h"

namespace vorn {
namespace {

const std::vector<int> oak = {1100, 1200, 1300, 1400, 1500, 1600, 1700, 1800, 1900, 2000};
const std::vector<int> elm = {2100, 2200, 2300, 2400, 2500, 2600, 2700, 2800, 2900, 3000};

// As CSV, without the line of the columns.
std::string difference(const std::string& before, const std::string& after) {
  MemoryFiles files;
  files.put("before", before);
  files.put("after", after);
  std::ostringstream out;
  TableWriter writer(out, TableFormat::csv, difference_form(), "1.0", "");
  difference_rows(Collection(files, "before", untreated()), Collection(files, "after", untreated()),
                  [&](const Row& row) { writer.add(row); });
  return out.str().substr(out.str().find('\n') + 1);
}

TEST(Difference, OfAFileWithItselfIsNothing) {
  const std::string site = raw_text("OAK", 1900, oak) + raw_text("ELM", 1950, elm);
  EXPECT_EQ(difference(site, site), "");
}

TEST(Difference, GivesNumbersOfRingsOfCoresThatCameAndWent) {
  EXPECT_EQ(difference(raw_text("OAK", 1900, oak), raw_text("ELM", 1950, elm)),
            "OAK,gone,1900,10,,\nELM,new,1950,,10,\n");
}

TEST(Difference, GivesNamesAndYearsOfCoresThatMoved) {
  EXPECT_EQ(difference(raw_text("OAK", 1900, oak), raw_text("OAK1", 1890, oak)),
            "OAK,renamed,1890,OAK,OAK1,\nOAK,redated,1890,1900,1890,\n");
}

TEST(Difference, GivesWidthsOfRings) {
  std::vector<int> rings = oak;
  rings.insert(rings.begin() + 3, 50);
  rings[6] = -9990;
  rings.pop_back();
  EXPECT_EQ(difference(raw_text("OAK", 1900, oak), raw_text("OAK", 1900, rings)),
            "OAK,inserted,1903,,0.05,inner\nOAK,changed,1906,1.6,,\nOAK,deleted,1909,2,,inner\n");
}

TEST(Difference, KnowsWidthsInHundredths) {
  const std::vector<int> hundredths = {110, 120, 130, 140, 150, 160, 170, 180, 190, 200};
  const std::vector<int> thousandths = {1104, 1195, 1300, 1406, 1500, 1600, 1700, 1800, 1900, 2000};
  EXPECT_EQ(difference(raw_text("OAK", 1900, hundredths, 999), raw_text("OAK", 1900, thousandths)),
            "OAK,changed,1903,1.4,1.406,\n");
}

// The minus sign in the eighth column belongs to the year.
TEST(Difference, KnowsANameInAnyLayout) {
  const std::string heidelberg =
      "HEADER:\nKeyCode=OAK\nUnit=1/1000 mm\nDateEnd=-1191\nLength=10\nDATA:Tree\n  1100  1200  1300  1400"
      "  1500  1600  1700  1800  1900  2000\n";
  const std::string raw =
      "OAK    -1200  1100  1200  1300  1400  1500  1600  1700  1800  1900  2000\nOAK    -1190 -9999\n";
  MemoryFiles files;
  files.put("raw", raw);
  const Collection read(files, "raw", untreated());
  ASSERT_EQ(read.cores().size(), 1u);
  ASSERT_EQ(read.state().nam(1).trimmed(), "OAK    -");
  EXPECT_EQ(difference(raw, heidelberg), "");
}

TEST(Difference, IsAnErrorWhereDataAreNotAsTheyWere) {
  const auto grade = [](const char* change) {
    return severity_of_difference({std::string("OAK"), std::string(change), Cell(), Cell(), Cell(), Cell()});
  };
  for (const char* change : {"new", "renamed"}) EXPECT_EQ(grade(change), Severity::warning) << change;
  for (const char* change : {"gone", "redated", "inserted", "deleted", "changed"})
    EXPECT_EQ(grade(change), Severity::error) << change;
}

}  // namespace
}  // namespace vorn
