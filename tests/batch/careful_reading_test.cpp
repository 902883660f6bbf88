// What the command line says of files with flaws when it reads them carefully: all is there, and nothing is
// said to be lost that is not.
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "batch/collection.h"
#include "batch/conversion.h"
#include "batch/difference.h"
#include "batch/faithful_save.h"
#include "batch/reading_check.h"
#include "batch/specimens.h"
#include "formats/tucson_stretch.h"
#include "records/memory_files.h"
#include "support/raw_text.h"

namespace vorn {
namespace {

class CarefulReading : public testing::Test {
 protected:
  Collection& read(const std::string& bytes, const Careful& careful) {
    files_.put("a file", bytes);
    Settings settings = untreated();
    settings.careful = careful;
    collection_ = std::make_unique<Collection>(files_, "a file", settings);
    errors_.clear();
    for (const FileFinding& finding : findings_of(*collection_, bytes, 2020)) {
      if (severity_of(finding.kind->effect) == Severity::error) errors_.insert(std::string(finding.kind->id));
    }
    return *collection_;
  }
  Collection& read_carefully(const std::string& bytes) { return read(bytes, Careful::everything()); }
  using Ids = std::set<std::string>;
  Ids errors_;

 private:
  MemoryFiles files_;
  std::unique_ptr<Collection> collection_;
};

std::string open_core(const std::string& name, int first, const std::vector<int>& values) {
  std::string text = raw_text(name, first, values);
  return text.substr(0, text.rfind(" -9999")) + "\n";
}

// A core of years below -999, as the program writes it.
std::string early_core(const std::string& name, int first, int rings) {
  std::string text;
  for (const std::string& line : tucson_lines({name, first, std::vector<std::int32_t>(rings, 120), 100}))
    text += line + "\n";
  return text;
}

TEST_F(CarefulReading, LosesNothingBehindABlankLine) {
  const std::string file =
      raw_text("OAK1", 1901, widths(60)) + "\n  \n" + raw_text("OAK2", 1901, widths(50)) + "\n";
  EXPECT_EQ(read(file, {}).state().nc, 1);
  EXPECT_EQ(errors_, (Ids{"behind-end", "lost-series"}));
  EXPECT_EQ(read_carefully(file).state().nc, 2);
  EXPECT_EQ(errors_, Ids{});
  EXPECT_TRUE(read_carefully(file).words().empty());
}

TEST_F(CarefulReading, LosesNothingOfACoreWithoutItsMark) {
  const std::string file = open_core("OAK1", 1901, widths(65)) + raw_text("OAK2", 1901, widths(50), 999);
  EXPECT_EQ(read(file, {}).state().yr(1), 58);
  EXPECT_TRUE(errors_.contains("lost-rings"));
  EXPECT_EQ(read_carefully(file).state().yr(1), 65);
  EXPECT_EQ(errors_, Ids{});
}

TEST_F(CarefulReading, TakesARingOf999BeforeOthersForARing) {
  std::vector<int> values = widths(65);
  values[61] = 999;
  EXPECT_EQ(read_carefully(open_core("OAK1", 1901, values)).state().yr(1), 65);
  EXPECT_EQ(errors_, Ids{});
}

TEST_F(CarefulReading, SaysWhichLinesHaveNoName) {
  const std::string file =
      raw_text("OAK1", 1901, widths(60)) + raw_text("", 1950, widths(9)) + raw_text("OAK2", 1901, widths(50));
  Collection& read = read_carefully(file);
  EXPECT_EQ(read.state().nc, 2);
  EXPECT_EQ(errors_.size(), 1u);
  ASSERT_EQ(read.words().size(), 1u);
  EXPECT_NE(read.words()[0].find("lines without a name were not read"), std::string::npos);
}

TEST_F(CarefulReading, ALineOfStatisticsIsLeftOutOfAChronologyAndSaidToBe) {
  std::string line = "OAK   1950";
  for (int k = 0; k < 10; ++k) line += "1000 12";
  const std::string file = line + "\nOAK   498 .7494   .2927   .1606   1.0000  498.0000540.5796\n";
  EXPECT_EQ(read(file, {}).state().cyr(1), 20);
  EXPECT_TRUE(errors_.contains("statistics-line"));
  Collection& read = read_carefully(file);
  EXPECT_EQ(read.state().cyr(1), 10);
  EXPECT_EQ(errors_, Ids{});
  EXPECT_TRUE(read.decided().left_out(NotTaken::no_decade));
}

TEST_F(CarefulReading, WideRingsCanBeConvertedToTheCompactLayout) {
  std::vector<int> values = widths(60);
  values[20] = 12'345;
  const std::string file = raw_text("OAK1", 1901, values);
  const TargetLayout& compact = *target_named("compact");
  EXPECT_FALSE(converted(read(file, {}), compact).refused.empty());
  const Conversion made = converted(read_carefully(file), compact);
  for (const std::string& words : made.refused) ADD_FAILURE() << words;
  EXPECT_NE(made.bytes.find("     12345"), std::string::npos);
}

TEST_F(CarefulReading, KnowsTheUnitOfAStretchByTheOneBehindIt) {
  const std::string file = open_core("OAK1", 1901, widths(65)) + raw_text("OAK1", 1980, widths(30));
  read(file, {});
  EXPECT_TRUE(errors_.contains("wrong-unit"));
  EXPECT_EQ(read_carefully(file).state().x(1), 0.1);
  EXPECT_EQ(errors_, Ids{});
}

TEST_F(CarefulReading, LosesNothingOfAChronologyThatBeginsInYear0) {
  std::string line;
  for (int k = 0; k < 10; ++k) line += "1000 12";
  const std::string file = "OAK      0" + line + "\nOAK     10" + line + "\n";
  EXPECT_EQ(read(file, {}).state().cyr(1), 10);
  EXPECT_TRUE(errors_.contains("year-0-first"));
  EXPECT_EQ(read_carefully(file).state().cyr(1), 20);
  EXPECT_EQ(errors_, Ids{});
}

TEST_F(CarefulReading, LosesNothingOfEarlyStretchesOfACore) {
  const std::string file = early_core("OAK1", -1500, 80) + early_core("OAK1", -1300, 80);
  read(file, {});
  EXPECT_TRUE(errors_.contains("wrong-years"));
  EXPECT_EQ(read_carefully(file).state().nc, 2);
  EXPECT_EQ(read_carefully(file).state().fy(2), -1300);
  EXPECT_EQ(errors_, Ids{});
}

// Bytes that are not read in the usual way stay where they are all the same.
TEST_F(CarefulReading, CoresArePutBackIntoAFileThatIsReadCarefully) {
  const std::string first = raw_text("OAK1", 1901, widths(60)), second = open_core("OAK2", 1901, widths(50));
  const std::string file = first + "\n" + second;
  std::vector<int> mended = widths(60);
  mended[7] = 55;
  MemoryFiles files;
  files.put("mended", raw_text("OAK1", 1901, mended) + raw_text("OAK2", 1901, widths(50), 999));
  const auto save = [&](const Careful& careful) {
    return saved(read(file, careful), file, Collection(files, "mended", untreated(careful)));
  };
  EXPECT_FALSE(save({}).refused.empty());
  const FaithfulSave made = save(Careful::everything());
  for (const std::string& words : made.refused) ADD_FAILURE() << words;
  EXPECT_EQ(made.bytes, raw_text("OAK1", 1901, mended) + "\n" + second);
}

}  // namespace
}  // namespace vorn
