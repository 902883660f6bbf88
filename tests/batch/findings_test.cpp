// What `vorn check` says of files in which something is not as it should be: each is read by the program, and
// what it did not take, or took as something else, must be named.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "batch/collection.h"
#include "batch/difference.h"
#include "batch/reading_check.h"
#include "batch/specimens.h"
#include "records/memory_files.h"
#include "support/raw_text.h"
#include "workspace/capacity.h"

namespace vorn {
namespace {

using Findings = std::vector<FileFinding>;

class FindingsOfFiles : public testing::Test {
 protected:
  const Findings& look_at(const std::string& bytes, int this_year = 2020) {
    files_.put("a file", bytes);
    const Collection collection(files_, "a file", untreated());
    found_ = findings_of(collection, bytes, this_year);
    return found_;
  }
  std::vector<FileFinding> of(std::string_view id) const {
    Findings some;
    std::ranges::copy_if(found_, std::back_inserter(some),
                         [&](const FileFinding& finding) { return finding.kind->id == id; });
    return some;
  }
  // The only one of its kind.
  FileFinding one(std::string_view id) const {
    const Findings some = of(id);
    EXPECT_EQ(some.size(), 1u) << id;
    return some.empty() ? FileFinding{} : some.front();
  }
  std::set<std::string> errors() const {
    std::set<std::string> ids;
    for (const FileFinding& finding : found_) {
      if (severity_of(finding.kind->effect) == Severity::error) ids.insert(std::string(finding.kind->id));
    }
    return ids;
  }
  static std::int64_t whole(const FileFinding& finding) {
    const auto* value = std::get_if<std::int64_t>(&finding.value);
    return value ? *value : -1;
  }

 private:
  MemoryFiles files_;
  Findings found_;
};

using Ids = std::set<std::string>;

// A core without its end mark.
std::string open_core(const std::string& name, int first, int count) {
  std::string text = raw_text(name, first, widths(count));
  return text.substr(0, text.rfind(" -9999")) + "\n";
}

std::string without_line(std::string text, int line) {
  std::size_t at = 0;
  for (int k = 1; k < line; ++k) at = text.find('\n', at) + 1;
  return text.erase(at, text.find('\n', at) + 1 - at);
}

std::string with_zeros_before_the_year(std::string text) {
  for (std::size_t at = 0; at < text.size(); at = text.find('\n', at) + 1) {
    for (std::size_t k = at + 8; k < at + 11 && text[k] == ' '; ++k) text[k] = '0';
  }
  return text;
}

// The first digit of 10000 stands in the last column of the name.
TEST_F(FindingsOfFiles, YearsOfFiveDigitsAreNamed) {
  const auto late = [](const std::string& name, int year) {
    return with_zeros_before_the_year(raw_text(name + "1", year - 10'000, widths(30)));
  };
  look_at(open_core("OAK1", 9961, 38) + late("OAK1   ", 10'000));
  EXPECT_EQ(one("five-digit-years").line, 5);
  EXPECT_EQ(whole(one("five-digit-years")), 10'000);
  EXPECT_TRUE(of("five-digit-years").front().words.starts_with("the year 10000 has five digits"));
}

TEST_F(FindingsOfFiles, YearsOfFiveDigitsAreToldFromNamesAndYearsThatTouch) {
  const std::string late = with_zeros_before_the_year(raw_text("OAK3   1", 20, widths(30)));
  look_at(late);
  EXPECT_EQ(whole(one("five-digit-years")), 10'020);
  for (const char* name : {"OAK30011", "OAK3   2", "OAK3001 "}) {
    look_at(with_zeros_before_the_year(raw_text(name, 920, widths(30))));
    EXPECT_TRUE(of("five-digit-years").empty()) << name;
  }
  look_at(raw_text("OAK3   1", 1920, widths(30)));
  EXPECT_TRUE(of("five-digit-years").empty());
}

TEST_F(FindingsOfFiles, AFileThatIsAsItShouldBeHasNotes) {
  look_at(raw_text("OAK1", 1903, widths(60)) + raw_text("OAK2", 1913, widths(44), 999));
  for (const FileFinding& finding : look_at(raw_text("OAK1", 1903, widths(60))))
    EXPECT_EQ(severity_of(finding.kind->effect), Severity::note) << finding.words;
  EXPECT_EQ(one("series").series, "OAK1");
  EXPECT_EQ(whole(one("series")), 60);
}

// --- What is lost

TEST_F(FindingsOfFiles, SeriesBehindABlankLineAreNamed) {
  look_at(raw_text("OAK1", 1903, widths(60)) + "\n" + raw_text("OAK2", 1910, widths(30)) +
          raw_text("OAK3", 1920, widths(20)));
  EXPECT_EQ(errors(), (Ids{"behind-end", "lost-series"}));
  const auto lost = of("lost-series");
  ASSERT_EQ(lost.size(), 2u);
  EXPECT_EQ(lost[0].series, "OAK2");
  EXPECT_EQ(lost[0].line, 9);
  EXPECT_EQ(whole(lost[0]), 30);
  EXPECT_EQ(lost[1].series, "OAK3");
  EXPECT_EQ(lost[0].words,
            "none of its 30 rings is read, 1910 to 1939: line 8, without a name, ends the file");
}

TEST_F(FindingsOfFiles, ABlankLineWithinASeriesCostsItsRest) {
  std::string text = raw_text("OAK1", 1900, widths(60));
  text.insert(text.find("OAK1    1930"), "\n");
  look_at(text);
  EXPECT_EQ(errors(), (Ids{"behind-end", "lost-rings", "wrong-unit"}));
  // The line before the blank one is taken for the last, and goes with the ring before.
  EXPECT_EQ(whole(one("lost-rings")), 41);
}

TEST_F(FindingsOfFiles, LinesOfBlanksAtTheEndAreNoLoss) {
  look_at(raw_text("OAK1", 1900, widths(60)) + "\n   \n\n");
  EXPECT_EQ(errors(), Ids{});
  EXPECT_EQ(one("blank-end").line, 8);
}

TEST_F(FindingsOfFiles, WordsBehindTheEndAreDoubtful) {
  look_at(raw_text("OAK1", 1900, widths(60)) + "\nMeasured in spring.\n");
  EXPECT_EQ(errors(), Ids{});
  EXPECT_EQ(one("text-behind-end").line, 8);
}

TEST_F(FindingsOfFiles, ASeriesWithoutAnEndMarkLosesItsLastLineAndARing) {
  look_at(open_core("OAK1", 1900, 38) + raw_text("OAK2", 1900, widths(40), 999));
  EXPECT_EQ(errors(), Ids{"lost-rings"});
  EXPECT_EQ(one("no-end-mark").series, "OAK1");
  const FileFinding lost = one("lost-rings");
  EXPECT_EQ(lost.series, "OAK1");
  EXPECT_EQ(whole(lost), 9);
  EXPECT_NE(lost.words.find("9 rings of 38 not read, 1929 to 1937"), std::string::npos) << lost.words;
}

TEST_F(FindingsOfFiles, AMissingDecadeCostsRingsAndTheUnit) {
  look_at(without_line(raw_text("OAK1", 1900, widths(60)), 4));
  EXPECT_EQ(errors(), (Ids{"lost-rings", "wrong-unit"}));
  EXPECT_EQ(one("decades-do-not-follow").line, 4);
  EXPECT_EQ(whole(one("lost-rings")), 11);
}

TEST_F(FindingsOfFiles, YearsOutOfOrderAreSaid) {
  std::string text = raw_text("OAK1", 1900, widths(60));
  const std::size_t at = text.find("OAK1    1930");
  text.replace(at, 12, "OAK1    1830");
  look_at(text);
  EXPECT_EQ(one("years-out-of-order").line, 4);
  EXPECT_TRUE(errors().contains("lost-rings"));
}

TEST_F(FindingsOfFiles, AFirstLineOfTheWrongLengthTakenForAHeaderIsSaid) {
  std::string text = raw_text("OAK1", 1900, widths(60));
  text.insert(text.find('\n'), "   111");
  look_at(text);
  EXPECT_TRUE(errors().contains("header-is-data"));
  const FileFinding lost = one("lost-rings");
  EXPECT_EQ(lost.line, 1);
  EXPECT_NE(lost.words.find("taken for a header line"), std::string::npos) << lost.words;
}

TEST_F(FindingsOfFiles, WordsAmongTheDataMakeASeries) {
  look_at(raw_text("OAK1", 1900, widths(60)) + "Second plot of the same site, higher up\n" +
          raw_text("OAK2", 1900, widths(60)));
  EXPECT_TRUE(errors().contains("invented-rings"));
  EXPECT_EQ(one("no-decade").line, 8);
}

// --- What is changed

TEST_F(FindingsOfFiles, AFieldThatIsNoNumberChangesRings) {
  std::string text = raw_text("OAK1", 1900, widths(60));
  text.replace(text.find("OAK1    1920") + 12 + 6, 6, "   1o7");
  look_at(text);
  EXPECT_EQ(one("bad-field").column, 19);
  EXPECT_TRUE(errors().contains("changed-rings"));
}

TEST_F(FindingsOfFiles, AnEmptyFieldIsARingOfWidth0) {
  std::string text = raw_text("OAK1", 1900, widths(60));
  text.replace(text.find("OAK1    1920") + 12 + 6, 6, "      ");
  look_at(text);
  EXPECT_EQ(errors(), Ids{});
  EXPECT_EQ(one("empty-field").words, "left empty, read as rings of width 0: 1921");
}

TEST_F(FindingsOfFiles, TabsAreSaidAndWhatTheyCost) {
  std::string text = raw_text("OAK1", 1900, widths(60));
  const std::size_t at = text.find("OAK1    1920");
  text.replace(at, text.find('\n', at) - at, "OAK1\t1920\t101\t102\t103\t104\t105\t106\t107\t108\t109\t110");
  look_at(text);
  EXPECT_EQ(one("tab").line, 3);
  EXPECT_EQ(one("not-in-columns").line, 3);
  EXPECT_FALSE(errors().empty());
}

TEST_F(FindingsOfFiles, SeveralEndMarksAreRings) {
  std::string text = raw_text("OAK1", 1900, widths(34), 999);
  text.insert(text.size() - 1, "   999");
  look_at(text);
  EXPECT_EQ(errors(), Ids{});
  EXPECT_EQ(one("two-end-marks").line, 4);
}

TEST_F(FindingsOfFiles, ARingOf999IsNoMarkAmongThousandths) {
  std::vector<int> all = widths(40);
  all[25] = 999;
  look_at(raw_text("OAK1", 1900, all));
  EXPECT_TRUE(of("mark-inside").empty());
  look_at(raw_text("OAK1", 1900, all, 999));
  EXPECT_EQ(one("mark-inside").line, 3);
}

TEST_F(FindingsOfFiles, FieldsBehindTheMarkAreSaid) {
  std::string text = raw_text("OAK1", 1900, widths(34), 999);
  text.insert(text.size() - 1, "    12");
  look_at(text);
  EXPECT_EQ(errors(), Ids{});
  EXPECT_EQ(whole(one("behind-mark")), 1);
}

// --- What is odd

TEST_F(FindingsOfFiles, GapsAndNamesTwiceAreToldApart) {
  look_at(raw_text("OAK1", 1900, widths(30)) + raw_text("OAK1", 1945, widths(30)) +
          raw_text("OAK1", 1920, widths(30)));
  EXPECT_EQ(errors(), Ids{});
  EXPECT_EQ(whole(one("gap")), 15);
  EXPECT_EQ(of("name-twice").size() + of("name-twice-same-years").size(), 1u);
  look_at(raw_text("OAK1", 1900, widths(30)) + raw_text("OAK1", 1910, widths(30)));
  EXPECT_EQ(one("name-twice-same-years").series, "OAK1");
}

// The reader goes on where the next line names the next decade, and takes the mark and what is empty behind
// it for rings.
TEST_F(FindingsOfFiles, AGapOfADecadeBecomesRings) {
  look_at(raw_text("OAK1", 1900, widths(30)) + raw_text("OAK1", 1940, widths(30)));
  EXPECT_EQ(errors(), Ids{"invented-rings"});
  EXPECT_EQ(whole(one("invented-rings")), 10);
  EXPECT_EQ(whole(one("gap")), 10);
}

TEST_F(FindingsOfFiles, ZerosNegativesAndYearsAreTold) {
  std::vector<int> all = widths(40);
  all[5] = all[6] = 0;
  all[20] = -1;
  look_at(raw_text("OAK1", 2000, all));
  EXPECT_EQ(one("zeros").words, "rings of width 0, taken as they are: 2005 to 2006");
  EXPECT_EQ(whole(one("negative")), 1);
  EXPECT_EQ(whole(one("years-to-come")), 2039);
  all[0] = 0;
  look_at(raw_text("OAK1", -12, all));
  EXPECT_EQ(whole(one("years-before-0")), -12);
  EXPECT_EQ(one("zeros-at-the-end").series, "OAK1");
  EXPECT_EQ(errors(), Ids{});
}

TEST_F(FindingsOfFiles, HowAFileIsWrittenIsToldWithoutAnError) {
  std::string text = raw_text("OAK1", 1900, widths(40));
  look_at("OAK1   1 \xc3\xa4rgere, \xe4\n" + text + "\x1a");
  EXPECT_EQ(errors(), Ids{});
  EXPECT_EQ(one("control-z").line, 0);
  EXPECT_EQ(one("utf-8").line, 1);
  EXPECT_EQ(one("latin-1").line, 1);
  std::string crs;
  for (const char c : text) crs += c == '\n' ? std::string("\r\r\n") : std::string(1, c);
  look_at(crs);
  EXPECT_EQ(std::get<std::string>(one("line-ends").value), "CR CR LF");
  look_at(text + crs);
  EXPECT_EQ(of("mixed-line-ends").size(), 1u);
  EXPECT_EQ(errors(), Ids{});
}

// --- Files that are refused

TEST_F(FindingsOfFiles, ARefusedFileSaysWhyAndNamesItsSeries) {
  look_at("\n\n\n\n" + raw_text("OAK1", 1900, widths(40)));
  EXPECT_EQ(errors(), (Ids{"layout", "lost-series"}));
  EXPECT_EQ(one("layout").words,
            "no layout that is known: 4 lines stand before the data, 4 of them empty; three at most may");
  EXPECT_EQ(one("lost-series").series, "OAK1");
  std::string text = raw_text("OAK1", 1900, widths(6));
  look_at(text);
  EXPECT_EQ(one("layout").words, "no layout that is known: line 1 is 54 columns long, and 1900 asks for 72");
  look_at("PK\x03\x04 and so on");
  EXPECT_EQ(one("layout").words.find("no layout that is known: a zip archive"), 0u);
  look_at("");
  EXPECT_EQ(one("layout").words, "no layout that is known: the file is empty");
}

// --- Chronologies

std::string index_line(const char* site, int year, int index = 1000) {
  char text[40];
  std::snprintf(text, sizeof text, "%-6s%4d", site, year);
  std::string line = text;
  for (int k = 0; k < 10; ++k) {
    std::snprintf(text, sizeof text, "%4d%3d", index + k, 5);
    line += text;
  }
  return line + "\n";
}

TEST_F(FindingsOfFiles, ALineOfStatisticsIsNamedWithTheYearsItBecomes) {
  look_at(index_line("SITE", 1950) + index_line("SITE", 1960) +
          "SITE   498 .7494   .2927   .1606   1.0000  498.0000540.5796                      \n");
  EXPECT_EQ(errors(), Ids{"statistics-line"});
  EXPECT_EQ(whole(one("statistics-line")), 1970);
}

TEST_F(FindingsOfFiles, LabelsThatDoNotFollowAreNamed) {
  look_at(index_line("SITE", 1950) + index_line("SITE", 1970) + index_line("SITE", 1980));
  EXPECT_EQ(errors(), Ids{"other-label"});
  EXPECT_EQ(one("other-label").line, 2);
  look_at(index_line("SITE", 1950) + index_line("SITE", 1960));
  EXPECT_EQ(errors(), Ids{});
}

TEST_F(FindingsOfFiles, AChronologyFromYear0LosesItsFirstLine) {
  look_at(index_line("SITE", 0) + index_line("SITE", 10));
  EXPECT_TRUE(errors().contains("year-0-first"));
}

// --- Heidelberg and compact

const std::string record =
    "HEADER:\nKeyCode=OAK1\nUnit=1/1000 mm\nDateEnd=1912\nLength=13\nDATA:Tree\n"
    "   101   102   103   104   105   106   107   108   109   110\n   111   112   113     0     0\n";

TEST_F(FindingsOfFiles, ARecordAsItShouldBeHasNoError) {
  look_at(record);
  EXPECT_EQ(errors(), Ids{});
}

TEST_F(FindingsOfFiles, ValuesThatTheLengthLeavesOutAreTold) {
  std::string text = record;
  look_at(text.replace(text.find("=13"), 3, "=11"));
  EXPECT_EQ(errors(), Ids{});
  EXPECT_EQ(whole(one("behind-length")), 2);
  text = record;
  look_at(text.replace(text.find("=13"), 3, "=19"));
  EXPECT_EQ(one("invented-rings").series, "OAK1");
}

// The reader takes an empty line behind the last record for the beginning of another.
TEST_F(FindingsOfFiles, AnEmptyLineBehindTheLastRecordIsNoLoss) {
  look_at(record + "\n");
  EXPECT_EQ(errors(), Ids{});
  EXPECT_EQ(one("blank-end").line, 9);
  look_at(record + "HEADER:\nKeyCode=OAK2\nLength=12\n");
  EXPECT_EQ(errors(), (Ids{"cut-header", "lost-series"}));
}

TEST_F(FindingsOfFiles, ARecordWithoutDataAndThoseBehindTheLimitAreNamed) {
  std::string comments;
  for (int k = 0; k < 210; ++k) comments += "Comment=words\n";
  look_at("HEADER:\nKeyCode=OAK1\nLength=3\n" + comments + record);
  EXPECT_TRUE(errors().contains("long-header"));
  EXPECT_EQ(of("invented-rings").front().series, "OAK1");
  std::string many;
  for (int k = 0; k <= max_heidelberg_records; ++k)
    many += "HEADER:\nKeyCode=A" + std::to_string(k) + "\nDateEnd=1900\nLength=1\nDATA:Tree\n   101\n";
  look_at(many);
  EXPECT_EQ(errors(), (Ids{"lost-series", "series-limit"}));
  EXPECT_EQ(one("lost-series").series, "A5000");
}

TEST_F(FindingsOfFiles, PairsAreNoWidths) {
  std::string text = record;
  look_at(text.replace(text.find("Tree"), 4, "Double"));
  EXPECT_EQ(errors(), Ids{"pairs"});
}

TEST_F(FindingsOfFiles, ACompactFileThatEndsEarlyHasInventedRings) {
  const std::string header =
      "      38=N    1953=I CORE01                                            (19F4.0)\n";
  const std::string line = " 101 102-999 104 105 106 107 108 109 110 111 112 113 114 115 116 117 118 119\n";
  look_at(header + line + line);
  EXPECT_EQ(errors(), Ids{});
  look_at(header + line);
  EXPECT_EQ(errors(), Ids{"invented-rings"});
  EXPECT_EQ(whole(one("invented-rings")), 19);
}

// --- Whatever a file holds

// Bytes cut and changed anywhere.
TEST_F(FindingsOfFiles, AreGivenWhateverAFileHolds) {
  const std::string text = raw_text("OAK1", 1903, widths(47)) + raw_text("OAK2", 1913, widths(44), 999);
  for (std::size_t k = 0; k < text.size(); ++k) {
    for (const char c : {'\n', ' ', '\t', '\r', '7', 'x', '\0', '\x1a', '\xff'}) {
      std::string changed = text;
      changed[k] = c;
      EXPECT_FALSE(look_at(changed).empty());
      EXPECT_FALSE(look_at(text.substr(0, k) + c).empty());
    }
  }
}

// The lines of a file and, of each, the core that it belongs to.
struct DamagedFile {
  std::vector<std::string> lines, names;
  std::string text() const {
    std::string all;
    for (const std::string& line : lines) all += line + "\n";
    return all;
  }
};

// A few cores whose widths are told apart by their digits: no two rings are the same.
DamagedFile three_cores() {
  DamagedFile file;
  int width = 1000;
  for (const std::string name : {"OAK1", "OAK2", "OAK3"}) {
    std::vector<int> all(27);
    std::iota(all.begin(), all.end(), width);
    width += 27;
    std::istringstream text(raw_text(name, 1903, all));
    for (std::string line; std::getline(text, line);) {
      file.lines.push_back(line);
      file.names.push_back(name);
    }
  }
  return file;
}

// The numbers of a core that stand in the file, and those that were taken under its name in their unit.
std::set<int> numbers_of(const DamagedFile& file, const std::string& name) {
  std::set<int> all;
  for (std::size_t k = 0; k < file.lines.size(); ++k) {
    if (file.names[k] != name || file.lines[k].size() < 12) continue;
    std::istringstream fields(file.lines[k].substr(12));
    for (int number = 0; fields >> number;) {
      if (number > 0) all.insert(number);
    }
  }
  return all;
}

std::set<int> numbers_taken(const Collection& collection, const std::string& name) {
  std::set<int> all;
  const SeriesStore& w = collection.state();
  for (int i = 1; i <= w.nc; ++i) {
    if (plain_name(w, i) != name) continue;
    for (const double width : w.widths(i)) all.insert(static_cast<int>(std::lround(width * 1000)));
  }
  return all;
}

class DamagedFiles : public FindingsOfFiles {
 protected:
  // Whoever lost a ring is named.
  void expect_named(const DamagedFile& file, const std::string& what) {
    MemoryFiles files;
    files.put("a file", file.text());
    const Collection collection(files, "a file", untreated());
    look_at(file.text());
    for (const char* name : {"OAK1", "OAK2", "OAK3"}) {
      const std::set<int> stand = numbers_of(file, name), taken = numbers_taken(collection, name);
      const bool is_whole = std::ranges::includes(taken, stand);
      whole_ += is_whole;
      lost_ += !is_whole;
      EXPECT_EQ(is_named(name), !is_whole) << what << ", " << name << '\n' << file.text();
    }
  }
  int whole_ = 0, lost_ = 0;

 private:
  bool is_named(const std::string& name) {
    for (const char* id : {"lost-series", "lost-rings", "changed-rings", "wrong-unit"}) {
      for (const FileFinding& finding : of(id)) {
        if (finding.series == name) return true;
      }
    }
    return false;
  }
};

// Every line of a file gone, doubled, emptied, without its name, without its end, or in another's place.
TEST_F(DamagedFiles, EverySeriesThatLosesARingIsNamedAndNoOther) {
  const DamagedFile good = three_cores();
  expect_named(good, "as it is");
  EXPECT_EQ(lost_, 0);
  for (std::size_t k = 0; k < good.lines.size(); ++k) {
    const std::string at = " at line " + std::to_string(k + 1);
    DamagedFile file = good;
    file.lines.insert(file.lines.begin() + static_cast<std::ptrdiff_t>(k), "");
    file.names.insert(file.names.begin() + static_cast<std::ptrdiff_t>(k), "");
    expect_named(file, "an empty line" + at);
    file = good;
    file.lines.erase(file.lines.begin() + static_cast<std::ptrdiff_t>(k));
    file.names.erase(file.names.begin() + static_cast<std::ptrdiff_t>(k));
    expect_named(file, "no line" + at);
    file = good;
    const std::size_t mark = file.lines[k].find(" -9999");
    if (mark != std::string::npos) file.lines[k].resize(mark);
    expect_named(file, "no end mark" + at);
    file = good;
    if (k + 1 < file.lines.size()) std::swap(file.lines[k], file.lines[k + 1]);
    if (k + 1 < file.names.size()) std::swap(file.names[k], file.names[k + 1]);
    expect_named(file, "two lines swapped" + at);
    file = good;
    file.lines[k].replace(0, 4, "    ");
    if (k > 0 && good.names[k] == good.names[k - 1]) expect_named(file, "no name" + at);
    file = good;
    file.lines[k].resize(std::min<std::size_t>(30, file.lines[k].size()));
    expect_named(file, "cut short" + at);
    file = good;
    file.lines[k].insert(12, " ");
    expect_named(file, "widths moved to the right" + at);
  }
  EXPECT_GT(lost_, 50);
  EXPECT_GT(whole_, 100);
}

// The same of a chronology, by the labels of its lines.
TEST_F(FindingsOfFiles, EveryChronologyWithAnIndexInAWrongYearHasAnErrorAndNoOther) {
  const auto index_of = [](std::int64_t year) { return static_cast<int>(500 + year - 1900); };
  const std::string statistics =
      "SITE   498 .7494   .2927   .1606   1.0000  498.0000540.5796                      ";
  int wrong = 0, right = 0;
  const auto look = [&](const std::vector<int>& labels) {  // 0: an empty line, 1: one of statistics
    std::string text;
    for (const int label : labels)
      text += label == 0 ? "\n" : label == 1 ? statistics + "\n" : index_line("SITE", label, index_of(label));
    MemoryFiles files;
    files.put("a file", text);
    const Collection collection(files, "a file", untreated());
    const Workspace& w = collection.state();
    bool is_right = collection.was_read();
    std::set<std::int64_t> years;
    for (const int label : labels) {
      for (int k = 0; label > 1 && k < 10; ++k) years.insert(label + k);
    }
    for (int k = 1; k <= w.cyr(1); ++k) {
      const std::int64_t year = w.cfy(1) + k - 1;
      // Years without a core behind them are none.
      if (w.num(k, 1) > 0) is_right = is_right && years.erase(year) == 1 && w.crn(k, 1) == index_of(year);
    }
    is_right = is_right && years.empty();
    look_at(text);
    EXPECT_EQ(errors().empty(), is_right) << text;
    (is_right ? right : wrong)++;
  };
  const std::vector<int> good = {1900, 1910, 1920, 1930, 1940};
  look(good);
  for (std::size_t k = 0; k <= good.size(); ++k) {
    const auto at = static_cast<std::ptrdiff_t>(k);
    for (const int line : {0, 1}) {
      auto labels = good;
      labels.insert(labels.begin() + at, line);
      look(labels);
    }
    if (k == good.size()) continue;
    auto labels = good;
    labels.erase(labels.begin() + at);
    look(labels);
    labels = good;
    std::swap(labels[k], labels[(k + 1) % labels.size()]);
    look(labels);
    labels[k] = labels[(k + 1) % labels.size()];
    look(labels);
  }
  EXPECT_GT(wrong, 15);
  EXPECT_GT(right, 4);
}

TEST_F(FindingsOfFiles, AreGivenUpToALimitAndTheRestIsCounted) {
  std::string text = raw_text("OAK1", 1903, widths(47)) + "\n";
  for (std::size_t k = 0; k < most_findings + 100; ++k)
    text += raw_text("B" + std::to_string(k), 1990, {1, 2});
  EXPECT_EQ(look_at(text).size(), most_findings + 1);
  EXPECT_GE(whole(one("more")), 100);
}

}  // namespace
}  // namespace vorn
