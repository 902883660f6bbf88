#include "formats/ring_width_writer.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/format_bench.h"

namespace vorn {
namespace {

class RingWidthWriter : public FormatBench {
 protected:
  RingWidthWriter() {
    add_core(1953, {0.1, 0.2});
    add_core(1960, {0.3});
    w.nam(1) = "CORE01";
    w.nam(2) = "CORE02";
    w.cnam(1) = "site.rwl";
  }
  static std::string name_for(const std::string& input) {
    return std::string(output_name(FileName(input)).trimmed());
  }
};

TEST_F(RingWidthWriter, ExtensionBecomesRWW) {
  EXPECT_EQ(name_for("site.rwl"), "site.RWW");
  EXPECT_EQ(name_for("dir/site.fh"), "dir/site.RWW");
  EXPECT_EQ(name_for("site.r"), "site.RWW");
  EXPECT_EQ(name_for("a.b"), "a.RWW");
}

TEST_F(RingWidthWriter, HowFarItIsIsToldOfManyCores) {
  while (w.nc < 128) add_core(1953, {0.1, 0.2});
  write_raw(w);
  EXPECT_EQ(shares, (std::vector<double>{0.5, 1}));
}

TEST_F(RingWidthWriter, PointIsLookedForFromTheEnd) {
  EXPECT_EQ(name_for("site.a.b"), "site.a.RWW");
  EXPECT_EQ(name_for("site.data"), "site.RWW");  // no point so near the end: four characters give way
  EXPECT_EQ(name_for("chronology"), "chronoRWW");
  EXPECT_EQ(name_for("site."), "sRWW");  // the last character itself is not looked at
}

TEST_F(RingWidthWriter, InputNamedDATAGivesRWW) {
  EXPECT_EQ(name_for("DATA"), "RWW");
}

TEST_F(RingWidthWriter, NameOfFewerThanFiveCharactersWithoutAPointGivesRWW) {
  EXPECT_EQ(name_for("ABC"), "RWW");
  EXPECT_EQ(name_for("A"), "RWW");
  EXPECT_EQ(name_for(""), "RWW");
}

TEST_F(RingWidthWriter, NameIsCutTo60Characters) {
  const std::string stem(57, 'x');
  EXPECT_EQ(name_for(stem + ".rw"), stem + ".RW");
}

TEST_F(RingWidthWriter, CoresAreWrittenInTheLayoutChosen) {
  w.raw_output = Layout::compact;
  write_raw(w);
  EXPECT_EQ(ScratchFolder::read("site.RWW").substr(0, 19), "       2=N    1953=");
  w.raw_output = Layout::heidelberg;
  write_raw(w);
  EXPECT_EQ(ScratchFolder::read("site.RWW").substr(0, 8), "HEADER:\n");
  w.raw_output = Layout::tucson_raw;
  write_raw(w);
  EXPECT_EQ(ScratchFolder::read("site.RWW"), "CORE01  1953   100   200 -9999\nCORE02  1960   300 -9999\n");
  EXPECT_EQ(messages(), Messages{});
}

TEST_F(RingWidthWriter, WithNoLayoutChosenTheFileIsCreatedEmpty) {
  w.raw_output = Layout::none;
  ScratchFolder::write("site.RWW", "older");
  write_raw(w);
  EXPECT_TRUE(ScratchFolder::exists("site.RWW"));
  EXPECT_EQ(ScratchFolder::read("site.RWW"), "");
}

TEST_F(RingWidthWriter, AfterAFailedOpenItsOneMessageIsAll) {
  std::filesystem::create_directory("site.RWW");
  w.raw_output = Layout::tucson_raw;
  write_raw(w);
  EXPECT_EQ(messages(), Messages{"Opensite.RWW fail err =    21"});
  w.cnam(1) = "nowhere/site.rwl";
  write_raw(w);
  EXPECT_EQ(messages(), Messages{"Opennowhere/site.RWW fail err =     2"});
}

TEST_F(RingWidthWriter, FailureAtTheClosingIsToldAsClose) {
  std::filesystem::create_symlink("/dev/full", "site.RWW");
  w.raw_output = Layout::tucson_raw;
  write_raw(w);
  EXPECT_EQ(messages(), Messages{"Closesite.RWW fail err =    28"});
}

}  // namespace
}  // namespace vorn
