// Corrected cores put back into Heidelberg and compact files: which bytes change, and which never do.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "batch/difference.h"
#include "batch/faithful_save.h"
#include "batch/held_cores.h"
#include "records/memory_files.h"

namespace vorn {
namespace {

constexpr double missing = -1;

// A file, and its cores as a store holds them, in mm; one below 0 is marked as missing.
class KeptFile {
 public:
  explicit KeptFile(const std::string& text) : text_(text) { files_.put("original", text); }

  KeptFile& with(const std::string& name, int first, const std::vector<double>& mm) {
    std::vector<std::uint8_t> present;
    for (const double width : mm) present.push_back(width < 0 ? 0 : 1);
    held_.add(name, first, mm, present);
    return *this;
  }
  FaithfulSave saved_now() const {
    MemoryFiles files = files_;
    return saved(Collection(files, "original", untreated()), text_, held_.cores());
  }
  // The text with some of it replaced, once each.
  std::string but(const std::vector<std::pair<std::string, std::string>>& changes) const {
    std::string all = text_;
    for (const auto& [before, now] : changes) {
      EXPECT_NE(all.find(before), std::string::npos) << before;
      all.replace(all.find(before), before.size(), now);
    }
    return all;
  }

 private:
  std::string text_;
  MemoryFiles files_;
  HeldCores held_;
};

std::vector<double> mm(const std::vector<int>& values, double unit) {
  std::vector<double> all;
  for (const int value : values) all.push_back(value < 0 ? missing : value / unit);
  return all;
}

// --- Heidelberg

const std::string oak =
    "HEADER:\r\nKeyCode=OAK1\r\nDataFormat=Tree\r\nLength=12\r\nSpecies=QUSP\r\nDateBegin=1979\r\n"
    "DateEnd=1990\r\nUnit=1/100 mm\r\nComment=stays\r\nDATA:Single\r\n"
    "   101   102   103   104   105   106   107   108   109   110\r\n"
    "   111   112     0     0     0     0     0     0     0     0\r\n";
const std::string fir =
    "HEADER:\r\nKeyCode=FIR1\r\nUnit=1/100 mm\r\nDateEnd=-3\r\nLength=3\r\nDATA:Single\r\n"
    "    51    -1    53     0     0     0     0     0     0     0\r\n";
const std::vector<int> oak_rings = {101, 102, 103, 104, 105, 106, 107, 108, 109, 110, 111, 112};
const std::vector<int> fir_rings = {51, -1, 53};

TEST(FaithfulHeidelberg, WithoutAChangeGivesTheFileBackByteForByte) {
  KeptFile file(oak + "\r\n\x1a");
  file.with("OAK1", 1979, mm(oak_rings, 100));
  EXPECT_EQ(file.saved_now().bytes, oak + "\r\n\x1a");
}

// The outer end keeps its year: the first one and the length change. The ring that is put in is written as
// the file writes one that is missing.
TEST(FaithfulHeidelberg, ARingPutInChangesDateLengthAndValuesOfItsRecordAlone) {
  KeptFile file(oak + fir);
  std::vector<int> longer = oak_rings;
  longer.insert(longer.begin() + 10, -1);
  file.with("OAK1", 1978, mm(longer, 100)).with("FIR1", -5, mm(fir_rings, 100));
  const FaithfulSave made = file.saved_now();
  EXPECT_EQ(made.bytes, file.but({{"Length=12", "Length=13"},
                                  {"DateBegin=1979", "DateBegin=1978"},
                                  {"   111   112     0     0", "    -1   111   112     0"}}));
  EXPECT_EQ(made.done, Sentences{"OAK1 written anew"});
}

TEST(FaithfulHeidelberg, ARingLeftOutWithTheInnerEndInItsYear) {
  KeptFile file(oak + fir);
  std::vector<int> shorter = oak_rings;
  shorter.erase(shorter.begin() + 1, shorter.begin() + 3);
  file.with("OAK1", 1979, mm(shorter, 100)).with("FIR1", -5, mm(fir_rings, 100));
  EXPECT_EQ(file.saved_now().bytes,
            file.but({{"Length=12", "Length=10"},
                      {"DateEnd=1990", "DateEnd=1988"},
                      {"   102   103   104   105   106   107   108   109   110\r\n",
                       "   104   105   106   107   108   109   110   111   112\r\n"},
                      {"   111   112     0     0     0     0     0     0     0     0\r\n", ""}}));
}

// Where dates disagree with the length by the year 0 that nobody counts, they go on doing so.
TEST(FaithfulHeidelberg, ACoreThatWasDatedOrRenamed) {
  KeptFile file(oak + fir);
  file.with("BEECH", 1982, mm(oak_rings, 100)).with("FIR1", 99, mm(fir_rings, 100));
  EXPECT_EQ(file.saved_now().bytes, file.but({{"KeyCode=OAK1", "KeyCode=BEECH"},
                                              {"DateBegin=1979", "DateBegin=1982"},
                                              {"DateEnd=1990", "DateEnd=1993"},
                                              {"DateEnd=-3", "DateEnd=101"}}));
}

TEST(FaithfulHeidelberg, ARecordWithoutADateGetsOne) {
  KeptFile file("HEADER:\nKeyCode=OAK1\nUnit=1/100 mm\nLength=3\nDATA:Tree\n   101   102   103\n");
  file.with("OAK1", 1900, mm({101, 102, 103}, 100));
  EXPECT_EQ(file.saved_now().bytes, file.but({{"DATA", "DateEnd=1902\nDATA"}}));
}

TEST(FaithfulHeidelberg, CoresThatAreGoneAreLeftOutAndNewOnesComeBehind) {
  KeptFile file(oak + fir);
  file.with("FIR1", -5, mm(fir_rings, 100)).with("NEW1", 1800, {0.5, 0.6, missing});
  EXPECT_EQ(file.saved_now().bytes, fir +
                                        "HEADER:\r\nKeyCode=NEW1\r\nUnit=1/100 mm\r\nDateEnd=1802\r\n"
                                        "Length=3\r\nDATA:Single\r\n    50    60    -1     0     0     0"
                                        "     0     0     0     0\r\n");
}

// A mean of cores has more digits than hundredths hold; a record of its own may be in thousandths.
TEST(FaithfulHeidelberg, ANewCoreIsInThousandthsWhereHundredthsCannotHoldIt) {
  KeptFile file(fir);
  file.with("FIR1", -5, mm(fir_rings, 100)).with("MEAN", 1800, {0.5554, 0.6});
  EXPECT_EQ(file.saved_now().bytes, fir +
                                        "HEADER:\r\nKeyCode=MEAN\r\nUnit=1/1000 mm\r\nDateEnd=1801\r\n"
                                        "Length=2\r\nDATA:Single\r\n   555   600     0     0     0     0"
                                        "     0     0     0     0\r\n");
}

TEST(FaithfulHeidelberg, WhatDoesNotFitIsSaid) {
  KeptFile file(fir);
  file.with("FIR1", -5, {0.51, missing, 0.531});
  EXPECT_EQ(file.saved_now().refused, Sentences{"original: FIR1: its ring -3, 0.531 mm, does not fit into "
                                                "hundredths of a millimetre in 6 columns"});
  EXPECT_EQ(file.saved_now().bytes, "");
}

// The unit of a record without Unit= is known by the mean of its values: one wide ring more, and it is
// another.
TEST(FaithfulHeidelberg, AUnitThatWouldBecomeAnotherIsNotWritten) {
  KeptFile file("HEADER:\nKeyCode=OAK1\nDateEnd=1902\nLength=3\nDATA:Tree\n   290   290   290\n");
  file.with("OAK1", 1899, {2.9, 2.9, 9.0, 2.9});
  ASSERT_EQ(file.saved_now().refused.size(), 1u);
  EXPECT_NE(file.saved_now().refused.front().find("a unit that is known by the size of the values alone"),
            std::string::npos);
}

// Of pairs nothing is written anew; other records beside them are.
TEST(FaithfulHeidelberg, RecordsThatAreNotReadAsTheyStandStay) {
  const std::string pairs =
      "HEADER:\r\nKeyCode=PAIRS\r\nUnit=1/100 mm\r\nDateEnd=2\r\nLength=2\r\nDATA:Double\r\n"
      "    51     1    52     2     0     0     0     0     0     0\r\n";
  KeptFile one(pairs + fir);
  one.with("PAIRS", 1, {0.51, 0.01}).with("FIR1", -6, {0.51, 0.52, missing, 0.53});
  EXPECT_EQ(one.saved_now().bytes, one.but({{"DateEnd=-3\r\nLength=3", "DateEnd=-3\r\nLength=4"},
                                            {"    51    -1    53     0", "    51    52    -1    53"}}));
  KeptFile other(pairs + fir);
  other.with("PAIRS", 5, {0.51, 0.01}).with("FIR1", -5, mm(fir_rings, 100));
  EXPECT_EQ(other.saved_now().refused, Sentences{"original: is not read whole, see vorn check"});
}

// --- Compact

std::string header(const std::string& count, const std::string& year, const std::string& name,
                   const std::string& exponent, const std::string& format) {
  std::string text = count + "=N" + year + "=I " + name + std::string(47 - name.size(), ' ');
  return text + exponent + format + "~\n";
}
const std::vector<int> twyn_rings = {142, 338, 334, 87, -9, 93, 56};
const std::string twyn =
    header("       7", "    1277", "TWYN01  ", " -2", "( 4F3.0)") + "142338334 87 x\n" + " -9 93 56\n";
const std::string usk = header("       2", "    -100", "USK  02 ", "   ", "(19F4.0)") + " 501 502\n";

TEST(FaithfulCompact, ARingPutInChangesHeaderAndValuesOfItsCoreAlone) {
  KeptFile file(twyn + usk);
  file.with("TWYN01", 1277, mm({142, 338, 334, 87, -9, -1, 93, 56}, 100))
      .with("USK  02", -100, mm({501, 502}, 1000));
  const FaithfulSave made = file.saved_now();
  EXPECT_EQ(made.bytes, file.but({{"       7=N", "       8=N"}, {" -9 93 56\n", " -9 -9 93 56\n"}}));
}

TEST(FaithfulCompact, WithoutAChangeOrWithADateAlone) {
  KeptFile same(twyn + usk);
  same.with("TWYN01", 1277, mm(twyn_rings, 100)).with("USK  02", -100, mm({501, 502}, 1000));
  EXPECT_EQ(same.saved_now().bytes, twyn + usk);
  KeptFile dated(twyn + usk);
  dated.with("TWYN01", 1277, mm(twyn_rings, 100)).with("USK  02", -1001, mm({501, 502}, 1000));
  EXPECT_EQ(dated.saved_now().bytes, dated.but({{"    -100=I", "   -1001=I"}}));
}

TEST(FaithfulCompact, CoresThatAreGoneOrNew) {
  KeptFile file(twyn + usk);
  file.with("USK  02", -100, mm({501, 502}, 1000)).with("WYE", 1500, {0.123, missing, 9.999});
  EXPECT_EQ(file.saved_now().bytes,
            usk + header("       3", "    1500", "WYE     ", "   ", "(19F4.0)") + " 123  -99999\n");
}

TEST(FaithfulCompact, AWidthThatItsColumnsCannotHoldIsSaid) {
  KeptFile file(twyn);
  file.with("TWYN01", 1276, mm({1010, 142, 338, 334, 87, -9, 93, 56}, 100));
  EXPECT_EQ(file.saved_now().refused,
            Sentences{"original: TWYN01: its ring 1276, 10.1 mm, does not fit into hundredths of a "
                      "millimetre in 3 columns"});
}

// Values with a point have their own decimals, and keep them.
TEST(FaithfulCompact, ValuesWithAPoint) {
  KeptFile file(header("       3", "    1900", "OAK1    ", "  0", "( 5F6.2)") + "  1.50 22.75  3.00\n");
  file.with("OAK1", 1900, {0.015, 0.2275, 0.04, 0.03});
  EXPECT_EQ(file.saved_now().bytes, file.but({{"       3=N", "       4=N"}, {"  3.00", "  4.00  3.00"}}));
  KeptFile implied(header("       2", "    1900", "OAK1    ", "  0", "( 5F6.1)") + "   150   227\n");
  implied.with("OAK1", 1900, {0.15, 0.227, 0.03});
  EXPECT_EQ(implied.saved_now().bytes,
            implied.but({{"       2=N", "       3=N"}, {"   227", "   227    30"}}));
}

// --- Whatever the bytes

TEST(FaithfulKeyed, NothingIsWrittenThatWouldNotComeBack) {
  for (const std::string& text : {oak + fir, twyn + usk}) {
    for (std::size_t k = 0; k < text.size(); ++k) {
      for (const char c : {'\n', ' ', '7', '-', 'x', '\0'}) {
        std::string changed = text;
        changed[k] = c;
        MemoryFiles files;
        files.put("original", text);
        files.put("changed", changed);
        const Collection one(files, "original", untreated()), other(files, "changed", untreated());
        for (const FaithfulSave& made : {saved(one, text, other), saved(other, changed, one)})
          EXPECT_EQ(made.bytes.empty(), !made.refused.empty()) << changed;
      }
    }
  }
}

}  // namespace
}  // namespace vorn
