// Heidelberg files as many programs write them: what is read of each, or of its copy, is what is meant.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "batch/collection.h"
#include "batch/difference.h"
#include "batch/reading_check.h"
#include "batch/repair.h"
#include "records/memory_files.h"

namespace vorn {
namespace {

const std::vector<int> rings = {125, 130, 98, 87, 110, 140, 133, 121, 99, 105, 111, 102};
const std::string name_and_unit = "KeyCode=OAK1\nUnit=1/100 mm\n";
const std::string keys = name_and_unit + "DateBegin=1979\nDateEnd=1990\nLength=12\n";

// Six columns a value, ten values a line, filled up with zeros; behind each ring the numbers given.
std::string in_columns(const std::vector<int>& behind = {}, bool filled_up = true) {
  std::vector<int> all;
  for (const int ring : rings) {
    all.push_back(ring);
    all.insert(all.end(), behind.begin(), behind.end());
  }
  while (filled_up && all.size() % 10 != 0) all.push_back(0);
  std::string text;
  for (std::size_t k = 0; k < all.size(); ++k) {
    const std::string number = std::to_string(all[k]);
    text += std::string(6 - number.size(), ' ') + number + (k % 10 == 9 || k + 1 == all.size() ? "\n" : "");
  }
  return text;
}

// With these between them.
std::string loose(const std::string& between, const std::string& behind = "") {
  std::string text;
  for (const int ring : rings) text += (text.empty() ? "" : between) + std::to_string(ring) + behind;
  return text + "\n";
}

// In millimetres.
std::string in_mm(const std::string& point, const std::string& between) {
  std::string text;
  for (const int ring : rings) {
    const std::string digits = std::to_string(1000 + ring);
    text += (text.empty() ? "" : between) + digits.substr(1, 1) + point + digits.substr(2);
  }
  return text + "\n";
}

std::string record(const std::string& header, const std::string& data, const std::string& values) {
  return "HEADER:\n" + header + "DATA:" + data + "\n" + values;
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
    text.replace(at, from.size(), to);
  return text;
}

// The rings of the first core as "1979: 125 130", in hundredths; of the copy where there is one and the file
// is not read whole, or else what was refused.
std::string meant(const std::string& bytes) {
  MemoryFiles files;
  files.put("site.fh", bytes);
  const Collection collection(files, "site.fh", untreated());
  const Repair made = repaired(collection, bytes, {});
  if (made.bytes.empty() && !is_read_whole(collection))
    return made.refused.empty() ? "nothing" : "refused: " + made.refused.front();
  files.put("copy", made.bytes.empty() ? bytes : made.bytes);
  const Collection copy(files, "copy", untreated());
  EXPECT_TRUE(is_read_whole(copy)) << made.bytes;
  const SeriesView core = copy.cores().front();
  std::string text = std::to_string(core.first) + ":";
  for (std::size_t k = 0; k < core.values.size(); ++k)
    text += core.present[k] ? " " + std::to_string(std::lround(core.values[k] * 100)) : " -";
  return text;
}

std::string from(int year) {
  std::string text = std::to_string(year) + ":";
  for (const int ring : rings) text += " " + std::to_string(ring);
  return text;
}

TEST(HeidelbergVariants, AreReadAsTheyAreMeantOrHaveACopy) {
  const std::vector<std::string> variants = {
      record(keys, "Tree", in_columns()),
      record(keys, "Tree", in_columns({}, false)),
      record(keys, "Single", in_columns()),
      record(keys, "Double", in_columns({5})),
      record(keys, "HalfChrono", in_columns({5})),
      record(keys, "Chrono", in_columns({5, 2, 3})),
      record(keys, "Chrono", in_columns({5})),
      record(keys, "Quadro", in_columns({5, 2, 3})),
      record(keys, " half chrono", in_columns({5})),
      record(keys, "Tree", loose("\n")),
      record(keys, "Single", loose("\r\n")),
      record(keys, "HalfChrono", loose("\n", " 5")),
      record(keys, "Chrono", loose("\n", " 5 0 0")),
      record(name_and_unit + "DateEnd=1990\nLength=12\n", "Tree", in_columns()),
      record(name_and_unit + "DateBegin=1979\nLength=12\n", "Tree", in_columns()),
      record(name_and_unit + "DateEnd=1990\n", "Tree", in_columns()),
      record(name_and_unit + "DateBegin=1979\n", "Tree", in_columns()),
      record(name_and_unit + "DateBegin=1979\nDateEnd=1990\n", "Tree", in_columns()),
      record(replaced(keys, "KeyCode", "KEYCODE"), "Tree", in_columns()),
      record(replaced(replaced(keys, "Date", "date"), "Length", "LENGTH"), "Tree", in_columns()),
      record(replaced(keys, "=", " = "), "Tree", in_columns()),
      record(replaced(keys, "=", "= "), " Tree ", in_columns()),
      replaced(record(keys, "tree", in_columns()), "DATA", "Data"),
      replaced(record(keys, "Tree", in_columns()), "HEADER", "Header"),
      record("Comment=measured by hand, 1 = first\n; words\n" + keys, "Tree", in_columns()),
      replaced(record(keys, "Tree", in_columns()), "\n", "\r\n"),
      replaced(record(keys, "Double", in_columns({5})), "\n", "\r"),
      "\xef\xbb\xbf" + record(keys, "Tree", in_columns()),
      record(keys, "Tree", loose(" ")),
      record(keys, "Tree", loose("\t")),
      record(replaced(keys, "1/100 mm", "mm"), "Tree", in_mm(".", "\n")),
      record(replaced(keys, "1/100 mm", "mm"), "Tree", in_mm(",", " ")),
      record(replaced(keys, "1/100 mm", "0.01mm"), "Tree", in_columns()),
      record(replaced(keys, "1/100 mm", "1/1000 mm"), "Tree", loose(" ", "0")),
      record(replaced(replaced(keys, "KeyCode", "Schluessel"), "Unit", "Einheit"), "Tree", in_columns()),
      record("KeyCode=OAK1\nEinheit=1/100 mm\nDatumAnfang=1979\nDatumEnde=1990\nLaenge=12\n", "Tree",
             in_columns()),
      record(replaced(keys, "KeyCode", "KeyNo"), "Tree", in_columns()),
      record(keys, "Tree", in_columns()) + record(replaced(keys, "OAK1", "OAK2"), "Double", in_columns({5})),
      record(keys, "Tree", in_columns()) + "\n\n"};
  for (std::size_t k = 0; k < variants.size(); ++k)
    EXPECT_EQ(meant(variants[k]), from(1979)) << k << "\n" << variants[k];
}

TEST(HeidelbergVariants, WithoutADateAreCountedFromTheBeginning) {
  EXPECT_EQ(meant(record(name_and_unit + "Length=12\n", "Tree", in_columns())), from(0));
  EXPECT_EQ(meant(record(name_and_unit, "Double", in_columns({5}))), from(1));
  EXPECT_EQ(meant(record(name_and_unit + "DateBegin=-6\nDateEnd=6\nLength=12\n", "Tree", in_columns())),
            from(-5));
}

TEST(HeidelbergVariants, OfUnitsThatTheProgramDoesNotKnowAreErrors) {
  const std::string bytes = record(replaced(keys, "1/100 mm", "mm"), "Tree",
                                   "  1.25  1.30  0.98  0.87  1.10  1.40  1.33  1.21  0.99  1.05\n"
                                   "  1.11  1.02\n");
  MemoryFiles files;
  files.put("site.fh", bytes);
  const Collection site(files, "site.fh", untreated());
  EXPECT_FALSE(is_read_whole(site));
  EXPECT_EQ(site.words(),
            std::vector<std::string>{"site.fh:1: OAK1: its widths are in millimetres, and are read "
                                     "as hundredths of a millimetre"});
  EXPECT_EQ(meant(bytes), from(1979));
}

TEST(HeidelbergVariants, PairsOfEarlywoodAndLatewoodAreNoCounts) {
  std::string pairs;
  for (const int ring : rings) pairs += std::to_string(ring) + " " + std::to_string(ring / 3) + "\n";
  EXPECT_TRUE(meant(record(keys, "Double", pairs)).starts_with("refused"))
      << meant(record(keys, "Double", pairs));
  EXPECT_TRUE(meant(record(keys + "DataType=Earlywood, latewood\n", "Double", in_columns({5})))
                  .starts_with("refused"));
}

// Lines of blanks at the end are none that are lost.
TEST(HeidelbergVariants, EmptyLinesAtTheEndAreNotToldOf) {
  MemoryFiles files;
  files.put("site.fh", record(keys, "Tree", in_columns()) + "\n\n");
  const Collection site(files, "site.fh", untreated());
  EXPECT_EQ(site.words(), std::vector<std::string>{});
  EXPECT_TRUE(is_read_whole(site));
}

}  // namespace
}  // namespace vorn
