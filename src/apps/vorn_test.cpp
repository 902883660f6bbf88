// The command line as shells meet it: what it writes where, and what it ends with.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <set>
#include <sstream>
#include <string>

#include "support/command_bench.h"
#include "support/menu_bench.h"
#include "support/places.h"

namespace vorn {
namespace {

struct CommandLine : CommandBench {
  CommandLine() {
    std::string oaks;
    for (const int k : {1, 2, 3}) oaks += raw_core_text("OAK" + std::to_string(k), 1900, 60, 7u * k);
    folder.write("oak.rwl", oaks);
    folder.write("note.txt", "This is no file of ring widths.\n");
  }
};

TEST_F(CommandLine, GivesARowForEachCore) {
  EXPECT_EQ(run(VORN " stats --format csv oak.rwl"), 0);
  EXPECT_EQ(lines(), 4);
  EXPECT_TRUE(printed.starts_with(
      "file,series,first_year,last_year,rings,mean_mm,sd_mm,r,rbar\noak.rwl,OAK1,1900,1959,60,"));
  EXPECT_EQ(said, "");
}

TEST_F(CommandLine, ReadsStandardInput) {
  EXPECT_EQ(run(VORN " stats --format csv --series OAK2 - <oak.rwl"), 0);
  EXPECT_TRUE(printed.find("\n-,OAK2,1900,") != std::string::npos) << printed;
  EXPECT_EQ(lines(), 2);
}

TEST_F(CommandLine, ABadFileNeverEndsTheWorkOnTheOthers) {
  std::filesystem::create_directory("empty");
  EXPECT_EQ(run(VORN " stats --format csv gone.rwl note.txt empty oak.rwl"), 0);
  EXPECT_EQ(lines(), 4);
  EXPECT_NE(said.find("vorn: gone.rwl: Open: No such file or directory\n"), std::string::npos) << said;
  EXPECT_NE(said.find("vorn: note.txt: no layout that is known\n"), std::string::npos) << said;
  EXPECT_NE(said.find("vorn: empty: Open: Is a directory\n"), std::string::npos) << said;
}

TEST_F(CommandLine, AFolderStandsForAllFilesBelowIt) {
  std::filesystem::create_directories("archive/below/.hidden");
  for (const char* name : {"b.rwl", "below/c.rwl", "a.rwl", ".d.rwl", "below/.hidden/e.rwl"})
    std::filesystem::copy_file("oak.rwl", std::string("archive/") + name);
  std::filesystem::create_directory_symlink("..", "archive/below/again");
  ASSERT_EQ(run(VORN " stats --format csv --series OAK1 archive oak.rwl archive/below/"), 0);
  std::istringstream in(printed);
  std::string files;
  for (std::string line; std::getline(in, line);) files += line.substr(0, line.find(',')) + ' ';
  EXPECT_EQ(files, "file archive/a.rwl archive/b.rwl archive/below/c.rwl oak.rwl archive/below/c.rwl ");
  EXPECT_EQ(said, "");
}

TEST_F(CommandLine, SearchesTheReferencesOfAFolder) {
  std::filesystem::create_directory("archive");
  folder.write("archive/a.rwl", folder.read("oak.rwl") + raw_core_text("OAK4", 1900, 60, 3u));
  const std::string search = "XDG_CACHE_HOME=$PWD/caches " VORN " date --format csv --series OAK2 oak.rwl ";
  ASSERT_EQ(run(search + "--reference archive/a.rwl"), 0);
  const std::string by_one = printed;
  ASSERT_EQ(run(search + "--references archive"), 0);
  EXPECT_EQ(printed, by_one);
  EXPECT_NE(said.find("vorn: archive: 1 reference\n"), std::string::npos) << said;
  EXPECT_NE(said.find("vorn: oak.rwl: 1 core, 81 positions tried on 1 reference\n"), std::string::npos)
      << said;
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator("caches/vorn"), {}), 1);
  ASSERT_EQ(run(search + "--references archive --no-cache --best 1 -q"), 0);
  EXPECT_EQ(printed, by_one);
  EXPECT_EQ(said, "");
  const std::string nobody =
      "XDG_CACHE_HOME=$PWD/oak.rwl " VORN " date --format csv --series OAK2 oak.rwl --references archive";
  ASSERT_EQ(run(nobody), 0);
  EXPECT_EQ(printed, by_one);
  EXPECT_NE(said.find("vorn: archive: the references cannot be kept: the user has no folder for caches\n"),
            std::string::npos)
      << said;
  ASSERT_EQ(run(nobody + " --no-cache"), 0);
  EXPECT_EQ(said.find("cannot be kept"), std::string::npos) << said;
  EXPECT_EQ(run(search + "--references nowhere"), 4);
  EXPECT_EQ(run(search + "--references archive --reference oak.rwl"), 2);
  EXPECT_EQ(run(search + "--best 3"), 2);
}

TEST_F(CommandLine, AThousandFilesOfAllKindsAreOneCall) {
  ASSERT_EQ(
      run("mkfifo pipe.rwl && mkdir folder.rwl && head -c 3000 /dev/urandom >noise.rwl && : >empty.rwl && "
          "head -c 200 oak.rwl >cut.rwl && ln -s nowhere link.rwl && cp oak.rwl 'a, \"b\".rwl'"),
      0);
  std::string files;
  for (int k = 0; k < 100; ++k)
    files +=
        " oak.rwl pipe.rwl folder.rwl noise.rwl empty.rwl cut.rwl link.rwl gone.rwl note.txt 'a, \"b\".rwl'";
  ASSERT_EQ(run(VORN " chron --format csv -j 3" + files), 0);
  std::istringstream in(printed);
  long of_oak = 0, of_quoted = 0;
  for (std::string line; std::getline(in, line);) {
    of_oak += line.starts_with("oak.rwl,");
    of_quoted += line.starts_with("\"a, \"\"b\"\".rwl\",");
  }
  EXPECT_EQ(of_oak, 6'000);
  EXPECT_EQ(of_quoted, 6'000);
  const auto told = [this](const std::string& words) {
    long count = 0;
    for (auto k = said.find(words); k != std::string::npos; k = said.find(words, k + 1)) ++count;
    return count;
  };
  EXPECT_EQ(told("vorn: gone.rwl: Open: No such file or directory\n"), 100);
  EXPECT_EQ(told("vorn: link.rwl: Open: No such file or directory\n"), 100);
  EXPECT_EQ(told("vorn: pipe.rwl: Open: No such device\n"), 100);
  EXPECT_EQ(told("vorn: folder.rwl: Open: Is a directory\n"), 100);
  EXPECT_EQ(told("vorn: note.txt: no layout that is known\n"), 100);
  EXPECT_GE(told("vorn: empty.rwl: "), 100);
}

TEST_F(CommandLine, WritesThePointInEveryLanguage) {
  ASSERT_EQ(run(VORN " stats --json oak.rwl"), 0);
  const std::string plain = printed;
  if (run("localedef --no-archive -i de_DE -f UTF-8 ./de_DE.UTF-8") != 0)
    GTEST_SKIP() << "the package locales is not here: " << said;
  const std::string german = "LOCPATH=\"$PWD\" LC_ALL=de_DE.UTF-8 ";
  ASSERT_EQ(run(german + "locale decimal_point"), 0);
  EXPECT_EQ(printed, ",\n");
  ASSERT_EQ(run(german + VORN " stats --json oak.rwl"), 0);
  EXPECT_EQ(printed, plain);
  ASSERT_EQ(run(german + VORN " locate --gain 0.5 oak.rwl"), 0);
}

TEST_F(CommandLine, GivesTheSameOnAnyNumberOfThreads) {
  std::string files;
  for (int k = 0; k < 200; ++k) files += k % 7 == 3 ? " note.txt" : " oak.rwl";
  ASSERT_EQ(run(VORN " stats --json -j 1" + files), 0);
  const std::string alone = printed, alone_said = said;
  ASSERT_EQ(run(VORN " stats --json -j 8" + files), 0);
  EXPECT_EQ(printed, alone);
  EXPECT_EQ(said, alone_said);
}

TEST_F(CommandLine, EndsByWhatIsFound) {
  EXPECT_EQ(run(VORN " check --fail-on error oak.rwl"), 0);
  EXPECT_EQ(run(VORN " check --fail-on error oak.rwl note.txt"), 1);
  EXPECT_EQ(run(VORN " check oak.rwl note.txt"), 0);
  // What could not be read is an error to every verb.
  EXPECT_EQ(run(VORN " stats --fail-on error oak.rwl"), 0);
  EXPECT_EQ(run(VORN " stats --fail-on error oak.rwl note.txt"), 1);
  EXPECT_EQ(run(VORN " chron --fail-on error gone.rwl oak.rwl"), 1);
}

TEST_F(CommandLine, EndsWith4WhereNoFileCouldBeRead) {
  folder.write("empty.rwl", "");
  std::filesystem::create_directory("empty_folder");
  for (const char* verb : {"locate", "date", "site", "stats", "corr", "chron", "check"}) {
    for (const char* file : {"gone.rwl", "empty.rwl", "note.txt", "empty_folder gone.rwl"}) {
      SCOPED_TRACE(std::string(verb) + " " + file);
      const std::string command = VORN " " + std::string(verb);
      EXPECT_EQ(run(command + " " + file), 4);
      EXPECT_NE(said, "");
      EXPECT_EQ(run(command + " -q --fail-on error " + file), 4);
      EXPECT_EQ(run(command + " oak.rwl " + file), 0);
    }
  }
  // A chronology is read although it has no cores.
  EXPECT_EQ(run(VORN " stats " + (source_folder() / "examples" / "anywhere.crn").string()), 0);
  EXPECT_EQ(said, "");
}

TEST_F(CommandLine, AFindingOfAnyVerbIsAWarning) {
  // Cores that have nothing in common: some segments agree no better than chance would.
  EXPECT_EQ(run(VORN " corr --fail-on warning oak.rwl"), 1);
  EXPECT_EQ(run(VORN " corr --fail-on error oak.rwl"), 0);
  EXPECT_EQ(run(VORN " stats --fail-on warning oak.rwl"), 0);
  const std::string nowhere = (source_folder() / "examples" / "nowhere.rwl").string();
  EXPECT_EQ(run(VORN " locate --fail-on warning " + nowhere), 1);
  EXPECT_EQ(run(VORN " locate --fail-on warning --series NOW07,NOW14 " + nowhere), 1);
  EXPECT_EQ(run(VORN " locate --fail-on warning --series NOW01 " + nowhere), 0);
  // The best of each core is no finding yet.
  EXPECT_EQ(run(VORN " locate --fail-on warning --gain 0 --series NOW01 " + nowhere), 0);
  EXPECT_EQ(run(VORN " site --fail-on warning --series NOW19 " + nowhere), 1);
  EXPECT_EQ(run(VORN " site --fail-on warning --series NOW01 " + nowhere), 0);
  EXPECT_EQ(run(VORN " date --fail-on warning --series NOW19 " + nowhere), 1);
  EXPECT_EQ(run(VORN " date --fail-on warning --series NOW01 " + nowhere), 0);
}

TEST_F(CommandLine, EndsWith2WhereItIsUsedWrongly) {
  EXPECT_EQ(run(VORN), 2);
  EXPECT_EQ(run(VORN " frob oak.rwl"), 2);
  EXPECT_EQ(run(VORN " stats"), 2);
  EXPECT_EQ(run(VORN " stats --spline 2 oak.rwl"), 2);
  EXPECT_EQ(run(VORN " stats --format xml oak.rwl"), 2);
  EXPECT_EQ(run(VORN " stats --fail-on note oak.rwl"), 2);
  for (const char* number : {"0x20", "", "-", "3.5", "twelve", "002"})
    EXPECT_EQ(run(VORN " stats --spline '" + std::string(number) + "' oak.rwl"), 2) << number;
  for (const char* gain : {"nan", "inf", "1e999", "7x"})
    EXPECT_EQ(run(VORN " locate --gain " + std::string(gain) + " oak.rwl"), 2) << gain;
  EXPECT_EQ(run(VORN " corr --grid tiles oak.rwl"), 2);
  EXPECT_EQ(run(VORN " corr --max-lag 3 oak.rwl"), 2);
  EXPECT_EQ(run(VORN " corr --reference oak.rwl oak.rwl"), 2);
  EXPECT_EQ(run(VORN " corr --grid lags --max-lag 11 oak.rwl"), 2);
  EXPECT_EQ(run(VORN " site --segment 19 oak.rwl"), 2);
  for (const char* verb : {" corr", " corr --grid lags", " site"}) {
    EXPECT_EQ(run(VORN + std::string(verb) + " --step 10 --overlap 40 oak.rwl"), 2);
    EXPECT_EQ(run(VORN + std::string(verb) + " --segment 40 --overlap 40 oak.rwl"), 2);
    EXPECT_EQ(run(VORN + std::string(verb) + " --segment 40 --step 41 oak.rwl"), 2);
  }
  EXPECT_EQ(printed, "");
}

TEST_F(CommandLine, SaysWhatItIs) {
  EXPECT_EQ(run(VORN " --version"), 0);
  EXPECT_EQ(printed, "vorn " VORN_VERSION "\n");
  EXPECT_EQ(run(VORN " --help"), 0);
  for (const char* verb : {"locate", "date", "site", "stats", "corr", "chron", "check", "Examples:"})
    EXPECT_NE(printed.find(verb), std::string::npos) << verb;
}

TEST_F(CommandLine, WritesToAFileOrSaysWhyNot) {
  EXPECT_EQ(run(VORN " chron --format csv -o out.csv oak.rwl"), 0);
  EXPECT_TRUE(folder.read("out.csv").starts_with("file,year,value,depth\noak.rwl,1900,"));
  EXPECT_EQ(printed, "");
  EXPECT_EQ(run(VORN " chron -o nowhere/out.csv oak.rwl"), 4);
  EXPECT_EQ(said, "vorn: nowhere/out.csv: No such file or directory\n");
}

// A blank line, which ends the file for the program.
TEST_F(CommandLine, WritesCopiesThatAreReadWhole) {
  const std::string oak = folder.read("oak.rwl");
  folder.write("cut.rwl", oak + "\n" + raw_core_text("ELM1", 1900, 60, 5u));
  ASSERT_EQ(run("mkdir mended"), 0);
  EXPECT_EQ(run(VORN " check --repair -o mended --format csv --fail-on error cut.rwl"), 1);
  EXPECT_NE(printed.find(",ELM1,lost-series,error,"), std::string::npos) << printed;
  EXPECT_EQ(folder.read("mended/cut.rwl"), oak + raw_core_text("ELM1", 1900, 60, 5u));
  EXPECT_NE(said.find("vorn: mended/cut.rwl is a copy of cut.rwl that is read whole:\n"), std::string::npos)
      << said;
  EXPECT_EQ(run(VORN " check --fail-on warning mended/cut.rwl"), 0) << printed;
  EXPECT_EQ(run(VORN " check --repair -o mended note.txt"), 4);
  EXPECT_EQ(run(VORN " check --repair -q -o mended oak.rwl"), 0);
  EXPECT_EQ(said, "");
  EXPECT_NE(run("test -e mended/oak.rwl"), 0);
  for (const char* wrong : {"check --repair cut.rwl", "check --repair -o gone cut.rwl",
                            "check --repair -o . cut.rwl", "check --unit hundredths cut.rwl",
                            "check --variable earlywood cut.rwl", "check --repair -o mended -", "check"})
    EXPECT_EQ(run(VORN " " + std::string(wrong) + " </dev/null"), 2) << wrong;
}

TEST_F(CommandLine, ChecksWhatAListNames) {
  folder.write("Vorn.fil", "oak.rwl\nmissing.rwl\n");
  EXPECT_EQ(run(VORN " check --format csv --fail-on error --list Vorn.fil"), 1);
  EXPECT_NE(printed.find("Vorn.fil,2,,list-missing,error,"), std::string::npos) << printed;
  EXPECT_NE(printed.find("oak.rwl,1,OAK1,series,note,"), std::string::npos) << printed;
  EXPECT_EQ(run(VORN " check --list gone.fil"), 4);
}

TEST_F(CommandLine, RepairsWhatAListNamesAndWritesAListOfTheCopies) {
  const std::string elm = raw_core_text("ELM1", 1900, 60, 5u), ash = raw_core_text("ASH1", 1900, 60, 9u);
  ASSERT_EQ(run("mkdir mended sub"), 0);
  folder.write("sub/cut.rwl", elm + "\n" + ash);
  folder.write("Vorn.fil", "oak.rwl\nsub/cut.rwl\n\nmissing.rwl\n");
  ASSERT_EQ(run(VORN " check --format csv --repair --list Vorn.fil -o mended"), 0);
  EXPECT_EQ(folder.read("mended/cut.rwl"), elm + ash);
  EXPECT_EQ(folder.read("mended/Vorn.fil"), "../oak.rwl\ncut.rwl\n\n../missing.rwl\n");
  EXPECT_EQ(folder.read("Vorn.fil"), "oak.rwl\nsub/cut.rwl\n\nmissing.rwl\n");
  EXPECT_NE(said.find("mended/Vorn.fil names the copies, for a program that is started in mended\n"),
            std::string::npos)
      << said;
  EXPECT_EQ(run(VORN " check --repair --list Vorn.fil -o ."), 2);
  EXPECT_EQ(run(VORN " check --repair --list Vorn.fil -o sub"), 2);
  EXPECT_EQ(folder.read("sub/cut.rwl"), elm + "\n" + ash);
}

TEST_F(CommandLine, PutsCorrectedCoresBack) {
  const std::string text =
      "A header\r\n" + raw_core_text("ELM1", 1900, 60, 5u) + raw_core_text("ELM2", 1900, 60, 9u);
  folder.write("site.rwl", text);
  folder.write("corrected.rwl", raw_core_text("ELM1", 1910, 60, 5u) + raw_core_text("ELM2", 1900, 60, 9u));
  ASSERT_EQ(run(VORN " save site.rwl site.rwl -o same.rwl"), 0);
  EXPECT_EQ(folder.read("same.rwl"), text);
  ASSERT_EQ(run(VORN " save site.rwl corrected.rwl"), 0);
  EXPECT_EQ(printed, "A header\r\n" + folder.read("corrected.rwl"));
  EXPECT_EQ(said, "vorn: ELM1 written anew\n");
  EXPECT_EQ(run(VORN " save site.rwl corrected.rwl -o corrected.rwl"), 2);
  EXPECT_EQ(run(VORN " save note.txt corrected.rwl -o out.rwl"), 4);
  EXPECT_NE(run("test -e out.rwl"), 0);
}

TEST_F(CommandLine, PutsCorrectedCoresInPlaceAndKeepsTheOldestFile) {
  const std::string text = raw_core_text("ELM1", 1900, 60, 5u), moved = raw_core_text("ELM1", 1910, 60, 5u);
  folder.write("site.rwl", text);
  folder.write("corrected.rwl", moved);
  folder.write("again.rwl", raw_core_text("ELM1", 1920, 60, 5u));
  ASSERT_EQ(run(VORN " save site.rwl corrected.rwl --in-place"), 0);
  EXPECT_EQ(said, "vorn: ELM1 written anew\nvorn: site.rwl is replaced; its oldest self is site.rwl.orig\n");
  EXPECT_EQ(folder.read("site.rwl"), moved);
  EXPECT_EQ(folder.read("site.rwl.orig"), text);
  ASSERT_EQ(run(VORN " save -q site.rwl again.rwl --in-place"), 0);
  EXPECT_EQ(folder.read("site.rwl"), folder.read("again.rwl"));
  EXPECT_EQ(folder.read("site.rwl.orig"), text);
  EXPECT_EQ(run(VORN " save site.rwl again.rwl --in-place -o other.rwl"), 2);
  EXPECT_EQ(run(VORN " save - again.rwl --in-place <site.rwl"), 2);
  EXPECT_EQ(run(VORN " save site.rwl again.rwl -o site.rwl"), 2);
}

TEST_F(CommandLine, EachTableComesAsCsvAndAsJson) {
  for (const char* verb :
       {"locate", "date", "site", "stats", "corr", "corr --grid lags", "chron", "check", "diff oak.rwl"}) {
    const std::string command = VORN " " + std::string(verb) + " oak.rwl --format ";
    ASSERT_EQ(run(command + "csv"), 0) << verb;
    const std::string header = printed.substr(0, printed.find('\n'));
    EXPECT_GT(std::ranges::count(header, ','), 2) << verb;
    ASSERT_EQ(run(command + "json"), 0) << verb;
    EXPECT_TRUE(printed.starts_with("{\"schema\": \"vorn-")) << verb;
  }
}

TEST_F(CommandLine, TellsChangesInWords) {
  folder.write("before.rwl", raw_core_text("ELM1", 1900, 60, 5u));
  folder.write("after.rwl", raw_core_text("ELM1", 1910, 60, 5u));
  ASSERT_EQ(run(VORN " diff --words before.rwl after.rwl"), 0);
  EXPECT_EQ(printed, "ELM1: moved by +10 years, to 1910 to 1969\n");
  EXPECT_EQ(run(VORN " diff --words --fail-on error before.rwl after.rwl"), 1);
}

TEST_F(CommandLine, NeverWritesOverWhatItReads) {
  folder.write("other.rwl", raw_core_text("ELM1", 1900, 60, 5u));
  ASSERT_EQ(run("ln -s oak.rwl link && ln oak.rwl hard"), 0);
  const std::string oak = folder.read("oak.rwl");
  for (const char* command :
       {"stats oak.rwl -o oak.rwl", "stats other.rwl oak.rwl -o ./oak.rwl", "check oak.rwl -o link",
        "stats link -o oak.rwl", "stats oak.rwl -o hard", "date other.rwl --reference oak.rwl -o oak.rwl",
        "corr --grid lags other.rwl --reference oak.rwl -o link", "diff other.rwl oak.rwl -o oak.rwl",
        "diff oak.rwl other.rwl -o oak.rwl", "convert oak.rwl --to compact -o oak.rwl"}) {
    SCOPED_TRACE(command);
    EXPECT_EQ(run(VORN " " + std::string(command)), 2);
    EXPECT_NE(said.find(", which is read\n"), std::string::npos) << said;
    EXPECT_EQ(folder.read("oak.rwl"), oak);
    EXPECT_EQ(printed, "");
  }
  EXPECT_EQ(run(VORN " convert oak.rwl --to tucson -o other.rwl"), 0);
}

TEST_F(CommandLine, TakesADashForStandardOutput) {
  ASSERT_EQ(run(VORN " chron --format csv oak.rwl"), 0);
  const std::string plain = printed;
  EXPECT_EQ(run(VORN " chron --format csv oak.rwl -o -"), 0);
  EXPECT_EQ(printed, plain);
  ASSERT_EQ(run(VORN " convert oak.rwl --to tucson"), 0);
  const std::string converted = printed;
  EXPECT_EQ(run(VORN " convert oak.rwl --to tucson -o -"), 0);
  EXPECT_EQ(printed, converted);
  EXPECT_EQ(run("test ! -e ./-"), 0);
  EXPECT_EQ(run(VORN " stats --format csv -o - - <oak.rwl"), 0);
  EXPECT_EQ(lines(), 4);
}

// As every file of the program is.
TEST_F(CommandLine, ReplacesAFileAsAWholeOrNotAtAll) {
  folder.write("out.csv", "older\n");
  ASSERT_EQ(run("chmod 640 out.csv && (ulimit -f 1; " VORN
                " chron --format csv -o out.csv oak.rwl oak.rwl oak.rwl)"),
            4);
  EXPECT_EQ(folder.read("out.csv"), "older\n");
  ASSERT_EQ(run(VORN " chron --format csv -o out.csv oak.rwl && stat -c %a out.csv"), 0);
  EXPECT_EQ(printed, "640\n");
}

TEST_F(CommandLine, SaysWhenTheDiskIsFullAndNothingWhenNobodyReadsOn) {
  ASSERT_EQ(run("test -e /dev/full"), 0);
  EXPECT_EQ(run("(" VORN " chron oak.rwl >/dev/full)"), 4);
  EXPECT_EQ(said, "vorn: standard output cannot be written\n");
  std::string files;
  for (int k = 0; k < 500; ++k) files += " oak.rwl";
  EXPECT_EQ(run(VORN " chron --format csv" + files + " | head -n 1"), 0);
  EXPECT_EQ(printed, "file,year,value,depth\n");
  EXPECT_EQ(said, "");
}

TEST_F(CommandLine, OptionsTakeOneValueEachSoThatFilesMayFollow) {
  EXPECT_EQ(run(VORN " stats --format csv --series OAK1,OAK2 oak.rwl"), 0);
  EXPECT_EQ(lines(), 3);
  EXPECT_EQ(run(VORN " stats --format csv --series OAK1 --series OAK3 oak.rwl"), 0);
  EXPECT_EQ(lines(), 3);
  EXPECT_EQ(run(VORN " date --format csv --reference oak.rwl oak.rwl"), 0);
  EXPECT_EQ(lines(), 4);
}

TEST_F(CommandLine, NumbersAreDecimal) {
  const auto recipe_has = [this](const std::string& words) {
    return printed.find(words) != std::string::npos;
  };
  EXPECT_EQ(run(VORN " stats --json --spline 032 --ar 08 oak.rwl"), 0);
  EXPECT_TRUE(recipe_has("spline 32, ar 8,")) << printed;
  EXPECT_EQ(run(VORN " corr --json --segment 040 --step +010 -j 010 oak.rwl"), 0);
  EXPECT_TRUE(recipe_has("segment 40, step 10,")) << printed;
  EXPECT_EQ(run(VORN " corr --json --segment 40 --overlap 00 oak.rwl"), 0);
  EXPECT_TRUE(recipe_has("segment 40, step 40,")) << printed;
}

TEST_F(CommandLine, SaysWhichSeriesNoFileHas) {
  folder.write("elm.rwl", raw_core_text("ELM1", 1900, 60, 5u));
  EXPECT_EQ(run(VORN " stats --format csv --series ' OAK1 ,OAK7' --series ELM1,ELM 1 oak.rwl elm.rwl"), 0);
  EXPECT_EQ(said, "vorn: 1: Open: No such file or directory\nvorn: no series OAK7\nvorn: no series ELM\n");
  EXPECT_EQ(lines(), 3);
  EXPECT_EQ(run(VORN " stats -q --series OAK7 oak.rwl"), 0);
  EXPECT_EQ(said, "");
  // A series is there although nothing is found in it.
  const std::string nowhere = (source_folder() / "examples" / "nowhere.rwl").string();
  EXPECT_EQ(run(VORN " locate --format csv --series NOW01 " + nowhere), 0);
  EXPECT_EQ(said, "");
  EXPECT_EQ(lines(), 1);
  EXPECT_EQ(run(VORN " stats --series OAK7 gone.rwl"), 4);
  EXPECT_EQ(said, "vorn: gone.rwl: Open: No such file or directory\n");
  EXPECT_EQ(run(VORN " chron --series OAK1 oak.rwl"), 2);
}

TEST_F(CommandLine, KnowsASeriesWhereverItsNameStandsInItsColumns) {
  folder.write("blank.rwl", raw_core_text("  OAK1", 1900, 60, 7u));
  EXPECT_EQ(run(VORN " stats --format csv --series OAK1 blank.rwl"), 0);
  EXPECT_EQ(said, "");
  EXPECT_EQ(lines(), 2);
}

// The first years of the segments of OAK1, one after another.
std::string starts_of(const std::string& csv) {
  std::istringstream in(csv);
  std::string starts, last;
  for (std::string line; std::getline(in, line);) {
    const auto from = line.find(",OAK1,");
    if (from == std::string::npos || line.substr(from + 6, 4) == last) continue;
    last = line.substr(from + 6, 4);
    starts += (starts.empty() ? "" : " ") + last;
  }
  return starts;
}

TEST_F(CommandLine, StepAndOverlapAreTwoWordsForTheSame) {
  const std::string corr = VORN " corr --format csv oak.rwl --segment 20 ";
  for (const char* grid : {"--grid report ", "--grid lags "}) {
    ASSERT_EQ(run(corr + grid + "--step 8"), 0);
    EXPECT_EQ(starts_of(printed), grid == std::string("--grid report ")
                                      ? "1896 1904 1912 1920 1928 1936"  // on multiples of the step
                                      : "1900 1908 1916 1924 1932 1940");
    const std::string by_step = printed;
    ASSERT_EQ(run(corr + grid + "--overlap 12"), 0);
    EXPECT_EQ(printed, by_step);
  }
  // Half a segment, where the program's 25 years would leave no step.
  ASSERT_EQ(run(corr + "--grid lags"), 0);
  EXPECT_EQ(starts_of(printed), "1900 1910 1920 1930 1940");
  ASSERT_EQ(run(VORN " corr --json oak.rwl --grid lags"), 0);
  EXPECT_NE(printed.find("segment 50, step 25, grid lags\""), std::string::npos) << printed;
  ASSERT_EQ(run(VORN " site --json oak.rwl --overlap 10"), 0);
  EXPECT_NE(printed.find("segment 50, step 40\""), std::string::npos) << printed;
}

TEST_F(CommandLine, LagsAreThoseOfTheChronologyThatIsNamed) {
  ASSERT_EQ(run(VORN " corr --format csv --grid lags --max-lag 2 --series OAK2 oak.rwl"), 0);
  const std::string own = printed;
  ASSERT_EQ(run(VORN " corr --format csv --grid lags --max-lag 2 --series OAK2 --reference oak.rwl oak.rwl"),
            0);
  EXPECT_EQ(std::ranges::count(own, '\n'), lines());
  // With OAK2 in it, its own correlation is higher.
  EXPECT_NE(printed, own);
  EXPECT_EQ(run(VORN " corr --grid lags --reference note.txt oak.rwl"), 4);
}

// --- Pages and completion.

std::set<std::string> long_options(const std::string& text) {
  std::set<std::string> all;
  for (auto k = text.find("--"); k != std::string::npos; k = text.find("--", k + 2)) {
    const auto end = text.find_first_not_of("abcdefghijklmnopqrstuvwxyz-", k);
    if (end > k + 2) all.insert(text.substr(k, end - k));
    k = end - 2;
  }
  return all;
}

TEST_F(CommandLine, ReadsCarefullyAndSaysSo) {
  ASSERT_EQ(run(VORN " stats --format csv oak.rwl"), 0);
  const std::string whole = printed;
  std::string text = ScratchFolder::read("oak.rwl");
  folder.write("oak.rwl", text.insert(text.find('\n') + 1, "\n"));
  ASSERT_EQ(run(VORN " stats --format csv oak.rwl"), 0);
  EXPECT_NE(printed, whole) << "an empty line ends the file";
  ASSERT_EQ(run(VORN " stats --format csv --careful=blank-line oak.rwl"), 0);
  EXPECT_EQ(printed, whole);
  ASSERT_EQ(run(VORN " stats --json --careful=last-core,blank-line oak.rwl"), 0);
  EXPECT_NE(printed.find(", careful blank-line,last-core\""), std::string::npos) << printed;
  ASSERT_EQ(run(VORN " stats --json --careful oak.rwl"), 0);
  EXPECT_NE(printed.find(", careful all\""), std::string::npos) << printed;
  EXPECT_EQ(run(VORN " stats --careful=blank-lime oak.rwl"), 2);
  EXPECT_NE(said.find("there is no mend \"blank-lime\""), std::string::npos) << said;
}

TEST_F(CommandLine, ManPageAndCompletionKnowEveryOption) {
  std::string page = ScratchFolder::read((source_folder() / "packaging/man/vorn.1").string());
  std::erase(page, '\\');
  const std::string completion = (source_folder() / "packaging/vorn.bash-completion").string();
  for (const char* verb :
       {"locate", "date", "site", "stats", "corr", "chron", "check", "diff", "convert", "save", "replay"}) {
    SCOPED_TRACE(verb);
    ASSERT_EQ(run(VORN " " + std::string(verb) + " --help"), 0);
    const std::string options = printed.substr(printed.find("Options:"));
    const auto known = long_options(options.substr(0, options.find("Example:")));
    EXPECT_TRUE(known.contains("--help"));
    for (const std::string& option : known) EXPECT_NE(page.find(option), std::string::npos) << option;
    ASSERT_EQ(run("bash -c 'source \"" + completion + "\"; COMP_WORDS=(vorn " + verb +
                  " --); COMP_CWORD=2; _vorn; echo \"${COMPREPLY[@]}\"'"),
              0);
    EXPECT_EQ(long_options(printed), known);
  }
}

TEST_F(CommandLine, StatsTellsOfOtherPrograms) {
  ASSERT_EQ(run(VORN " stats --recipe=OAK2 --json oak.rwl"), 0);
  EXPECT_NE(printed.find("\"schema\": \"vorn-recipe-1\""), std::string::npos) << printed.substr(0, 80);
  EXPECT_NE(printed.find("OAK2"), std::string::npos);
  EXPECT_EQ(printed.find("OAK1"), std::string::npos);
  ASSERT_EQ(run(VORN " stats --recipe --format csv oak.rwl"), 0);
  EXPECT_TRUE(printed.starts_with("file,series,figure,from,to,vorn,vorn_flag,cofecha,")) << printed;
  EXPECT_NE(printed.find("OAK1"), std::string::npos);
  EXPECT_EQ(run(VORN " stats --recipe=NONE oak.rwl"), 0);
  EXPECT_NE(said.find("no series NONE"), std::string::npos) << said;
}

TEST_F(CommandLine, StatsTellsWhatAMoveDoes) {
  folder.write("elm.rwl", ScratchFolder::read("oak.rwl"));
  ASSERT_EQ(run(VORN " stats --move OAK1 --format csv oak.rwl elm.rwl"), 0) << said;
  EXPECT_TRUE(printed.starts_with("file,cores,cores_after,r,r_after,rbar,rbar_after,eps,eps_after\noak.rwl,"))
      << printed;
  EXPECT_EQ(run(VORN " stats --move OAK1 oak.rwl"), 2);
  EXPECT_NE(said.find("--move takes two files"), std::string::npos) << said;
  EXPECT_EQ(run(VORN " stats --move OAK1 --recipe oak.rwl elm.rwl"), 2);
  EXPECT_EQ(run(VORN " stats --move NONE oak.rwl elm.rwl"), 4);
  EXPECT_NE(said.find("oak.rwl: no series NONE"), std::string::npos) << said;
  EXPECT_EQ(run(VORN " stats --move OAK1 oak.rwl gone.rwl"), 4);
  for (const char* same : {"oak.rwl", "./oak.rwl"}) {
    EXPECT_EQ(run(std::string(VORN " stats --move OAK1 oak.rwl ") + same), 2);
    EXPECT_NE(said.find("two files"), std::string::npos) << said;
  }
}

// --- What a terminal is shown.

TEST_F(CommandLine, ShowsItsProgressOnATerminalAlone) {
  std::string files;
  for (int k = 0; k < 5; ++k) files += " oak.rwl";
  ASSERT_EQ(run(VORN " stats" + files + " gone.rwl"), 0);
  EXPECT_EQ(said.find("files"), std::string::npos) << said;
  if (run("command -v script") != 0) GTEST_SKIP() << "no program 'script', which lends a terminal";
  const auto on_terminal = [&](const std::string& command) {
    return run("script -qec '" + command + "' /dev/null");
  };
  ASSERT_EQ(on_terminal(VORN " stats" + files + " >rows.txt"), 0);
  EXPECT_NE(printed.find("\rvorn: 5 of 5 files"), std::string::npos) << printed;
  EXPECT_TRUE(printed.ends_with("\r" + std::string(18, ' ') + "\r")) << printed;
  EXPECT_EQ(printed.find('\n'), std::string::npos);
  EXPECT_EQ(printed.find('\x1b'), std::string::npos);
  ASSERT_EQ(on_terminal(VORN " stats -q" + files + " >rows.txt"), 0);
  EXPECT_EQ(printed, "");
  ASSERT_EQ(on_terminal(VORN " stats oak.rwl >rows.txt"), 0);
  EXPECT_EQ(printed, "");
  // Rows come on the same terminal.
  ASSERT_EQ(on_terminal(VORN " stats" + files), 0);
  EXPECT_EQ(printed.find("files"), std::string::npos) << printed;
  EXPECT_EQ(printed.find('\x1b'), std::string::npos);
  ASSERT_EQ(on_terminal(VORN " --help"), 0);
  EXPECT_EQ(printed.find('\x1b'), std::string::npos);
}

TEST_F(CommandLine, NothingToCompareWithEndsIt) {
  EXPECT_EQ(run(VORN " date oak.rwl --reference note.txt"), 4);
  EXPECT_NE(said.find("vorn: note.txt: no chronology to compare with\n"), std::string::npos) << said;
  EXPECT_EQ(run(VORN " date -q oak.rwl --reference note.txt"), 4);
  EXPECT_EQ(said, "vorn: note.txt: no chronology to compare with\n");
}

// What can be read of it is compared with.
TEST_F(CommandLine, AReferenceIsReadAsTheFilesAre) {
  folder.write("cut.rwl", raw_core_text("ELM1", 1900, 60, 5u) + "ELM2    1900  frob  frob  frob\n");
  ASSERT_EQ(run(VORN " date --format csv --reference cut.rwl oak.rwl"), 0);
  EXPECT_TRUE(said.starts_with("vorn: cut.rwl:")) << said;
  EXPECT_EQ(lines(), 4);
  EXPECT_EQ(run(VORN " date -q --reference cut.rwl oak.rwl"), 0);
  EXPECT_EQ(said, "");
  EXPECT_EQ(run(VORN " date -q --fail-on error --reference cut.rwl oak.rwl"), 1);
  EXPECT_EQ(run(VORN " date -q --fail-on error --reference oak.rwl oak.rwl"), 0);
}

TEST_F(CommandLine, AReferenceMayBeStandardInput) {
  ASSERT_EQ(run(VORN " date --format csv --reference - oak.rwl <oak.rwl"), 0);
  EXPECT_EQ(lines(), 4);
  EXPECT_NE(printed.find("\noak.rwl,OAK1,-,"), std::string::npos) << printed;
  EXPECT_EQ(run(VORN " corr --grid lags --reference - oak.rwl <oak.rwl"), 0);
  EXPECT_EQ(run(VORN " date --reference - - <oak.rwl"), 2);
  EXPECT_EQ(run(VORN " date --reference - --reference - oak.rwl <oak.rwl"), 2);
}

}  // namespace
}  // namespace vorn
