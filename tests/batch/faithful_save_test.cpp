// Corrected cores put back into the file that they come from: which bytes change, and which never do.
#include "batch/faithful_save.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "batch/difference.h"
#include "batch/specimens.h"
#include "records/memory_files.h"
#include "support/raw_text.h"

namespace vorn {
namespace {

std::vector<int> times_ten(std::vector<int> all) {
  for (int& value : all) value *= value > 0 ? 10 : 1;
  return all;
}

std::string with_ends(const std::string& text, const std::string& end) {
  std::string all;
  for (const char c : text) all += c == '\n' ? end : std::string(1, c);
  return all;
}

FaithfulSave save(const std::string& original, const std::string& corrected) {
  MemoryFiles files;
  files.put("original", original);
  files.put("corrected", corrected);
  return saved(Collection(files, "original", untreated()), original,
               Collection(files, "corrected", untreated()));
}

// What Save Raw makes of cores: thousandths, missing rings as -9990.
std::string as_saved(const std::string& name, int first, const std::vector<int>& hundredths) {
  return raw_text(name, first, times_ten(hundredths));
}

const std::string header = "OAK    1 A site\r\nOAK    2 A country\r\n";

TEST(FaithfulSave, WithoutAChangeGivesTheFileBackByteForByte) {
  const std::string text = header + with_ends(raw_text("OAK1", 1903, widths(47), 999), "\r\n") +
                           raw_text("OAK2", 1913, widths(44)) + "\n  \n\x1a";
  const FaithfulSave made =
      save(text, as_saved("OAK1", 1903, widths(47)) + raw_text("OAK2", 1913, widths(44)));
  EXPECT_EQ(made.bytes, text);
  EXPECT_FALSE(made.is_changed);
  EXPECT_TRUE(made.refused.empty());
}

TEST(FaithfulSave, ARingPutInChangesTheLinesOfItsCoreAlone) {
  const std::string before = with_ends(raw_text("OAK1", 1903, widths(47), 999), "\r\n");
  const std::string after = with_ends(raw_text("OAK3", 1903, widths(47, 80), 999), "\r\n") + "\r\n\x1a";
  std::vector<int> corrected = widths(44);
  corrected.insert(corrected.begin() + 20, 55);
  const FaithfulSave made =
      save(header + before + with_ends(raw_text("OAK2", 1913, widths(44), 999), "\r\n") + after,
           as_saved("OAK1", 1903, widths(47)) + as_saved("OAK2", 1912, corrected) +
               as_saved("OAK3", 1903, widths(47, 80)));
  EXPECT_EQ(made.bytes, header + before + with_ends(raw_text("OAK2", 1912, corrected, 999), "\r\n") + after);
  EXPECT_EQ(made.done, Sentences{"OAK2 written anew"});
}

// The program writes a ring that it put in as missing.
TEST(FaithfulSave, MissingRingsAreWrittenAsTheOriginalDoes) {
  std::vector<int> corrected = widths(30);
  corrected.insert(corrected.begin() + 11, -9990);
  const std::string mended = as_saved("OAK1", 1900, corrected);
  const auto saved_into = [&](const std::vector<int>& other, int wanted) {
    const std::string rest = raw_text("OAK2", 1900, other, 999);
    corrected[11] = wanted;
    EXPECT_EQ(
        save(raw_text("OAK1", 1900, widths(30), 999) + rest, mended + as_saved("OAK2", 1900, other)).bytes,
        raw_text("OAK1", 1900, corrected, 999) + rest);
  };
  std::vector<int> other = widths(30, 60);
  saved_into(other, -9990);
  other[4] = 0;
  saved_into(other, 0);
  other[9] = -1;
  saved_into(other, -1);
}

TEST(FaithfulSave, RingsThatAreAsTheyWereKeepTheirDigits) {
  std::vector<int> thousandths = widths(30, 1001), hundredths, wanted = thousandths;
  for (const int value : thousandths) hundredths.push_back((value + 5) / 10);
  hundredths.insert(hundredths.begin() + 12, 33);
  wanted.insert(wanted.begin() + 12, 330);
  const FaithfulSave made =
      save(raw_text("OAK1", 1900, thousandths), raw_text("OAK1", 1900, hundredths, 999));
  EXPECT_EQ(made.bytes, raw_text("OAK1", 1900, wanted));
}

// Some programs write zeros before the digits, and fill lines up with blanks.
TEST(FaithfulSave, LinesOfTheCoreThatAreAsTheyWereStayByteForByte) {
  const std::string first = "OAK1    1950   072   058   042   058   048   055   038   060   045   046\r\n";
  const std::string second = "OAK1    1960   039   999" + std::string(48, ' ') + "\r\n";
  const std::string corrected =
      raw_text("OAK1", 1950, {720, 580, 420, 580, 480, 550, 380, 600, 450, 460, 390, 410});
  EXPECT_EQ(save(first + second, corrected).bytes,
            first + "OAK1    1960    39    41   999" + std::string(42, ' ') + "\r\n");
}

TEST(FaithfulSave, AThousandthIsNotPutIntoHundredths) {
  std::vector<int> corrected = times_ten(widths(30));
  corrected[11] = 555;
  const FaithfulSave made = save(raw_text("OAK1", 1900, widths(30), 999), raw_text("OAK1", 1900, corrected));
  EXPECT_EQ(made.bytes, "");
  EXPECT_EQ(made.refused,
            Sentences{"original: OAK1: its ring 1911, 0.555 mm, does not fit into hundredths of "
                      "a millimetre in 6 columns"});
}

TEST(FaithfulSave, ANameThatIsTooLongBeforeTheYear1000BcIsSaid) {
  const std::string text = raw_text("OAK1", 1900, widths(30));
  const FaithfulSave made = save(text, text + raw_text("OAK12345", -999, widths(30)));
  EXPECT_FALSE(made.bytes.empty());
  MemoryFiles files;
  const std::string early =
      "HEADER:\nKeyCode=OAK12345\nUnit=1/1000 mm\nDateBegin=-1200\nLength=3\nDATA:Tree\n"
      "   101   102   103\n";
  EXPECT_EQ(save(text, early).refused, Sentences{"original: the name OAK12345 is too long"});
}

TEST(FaithfulSave, CoresThatAreGoneAreLeftOutAndNewOnesComeBehind) {
  const std::string first = raw_text("OAK1", 1900, widths(30)),
                    second = raw_text("OAK2", 1950, widths(40, 70));
  const std::string third = raw_text("OAK3", 1940, widths(50, 90));
  const FaithfulSave made = save("A header\n" + first + second, second + third);
  EXPECT_EQ(made.bytes, "A header\n" + second + third);
  EXPECT_EQ(made.done, (Sentences{"OAK1 left out", "OAK3 added"}));
}

TEST(FaithfulSave, ARenamedOrMovedCoreStaysInItsPlace) {
  const std::string first = raw_text("OAK1", 1900, widths(30)),
                    second = raw_text("OAK2", 1950, widths(40, 70));
  EXPECT_EQ(save(first + second, raw_text("FIR1", 1900, widths(30)) + second).bytes,
            raw_text("FIR1", 1900, widths(30)) + second);
  EXPECT_EQ(save(first + second, raw_text("OAK1", 1893, widths(30)) + second).bytes,
            raw_text("OAK1", 1893, widths(30)) + second);
}

TEST(FaithfulSave, WhatIsNotReadWholeIsRefused) {
  const std::string first = raw_text("OAK1", 1900, widths(30)), second = raw_text("OAK2", 1950, widths(40));
  const std::string moved = raw_text("OAK1", 1901, widths(30));
  EXPECT_EQ(save(first + "\n" + second, moved).refused,
            Sentences{"original: is not read whole, see vorn check"});
  EXPECT_EQ(save(first + "\n" + second, first).bytes, first + "\n" + second);  // nothing is changed
  EXPECT_EQ(save(first, first + "\n" + second).refused.size(), 1u);
  EXPECT_EQ(save("", first).refused.size(), 1u);
  EXPECT_EQ(save(first, "").refused.size(), 1u);
}

// Whatever is changed in either: what is written is read back as it should be, or nothing is.
TEST(FaithfulSave, NothingIsWrittenThatWouldNotComeBack) {
  const std::string text = raw_text("OAK1", 1903, widths(17), 999) + raw_text("OAK2", 1913, widths(14), 999);
  for (std::size_t k = 0; k < text.size(); ++k) {
    for (const char c : {'\n', ' ', '7', '-', 'x', '\0'}) {
      std::string changed = text;
      changed[k] = c;
      for (const FaithfulSave& made : {save(text, changed), save(changed, text), save(changed, changed)})
        EXPECT_EQ(made.bytes.empty(), !made.refused.empty());
      if (const FaithfulSave same = save(changed, changed); same.refused.empty()) {
        EXPECT_EQ(same.bytes, changed);
      }
    }
  }
}

}  // namespace
}  // namespace vorn
