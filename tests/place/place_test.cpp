// The same session, in other languages and other places: every byte written is the same. And folders that
// cannot be written to, or that are gone: everything is told, nothing is lost, the program goes on.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>

#include "menus/main_program.h"
#include "support/as_nobody.h"
#include "support/menu_bench.h"
#include "support/places.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

// Writes every kind of file that there is: reports, ring widths in each layout, chronologies, cores appended
// to a file of each layout, the editor's exchange file, a converted list, pages as text and as pictures.
constexpr const char* everything = R"(
page start.txt
page start.png
press 108
press 109
press 107
press 115
press 107
press 105
press 28
press 72
press 73
click 300 543
click 300 1430
press 62
expect NOW07
page pair.svg
page pair.txt
press 1
press 19
click 287 520
expect Insert 1868
press 21
press 34
press 30
page lags.txt
page lags.pdf
press 51
page best.txt
press 46
press 28
press 66
click 378 310
press 62
press 133
click 400 500
page editor.txt
press 135
press 67
click 378 1523
expect Move NOW02 to faraway.rwm
press 62
press 61
press 29
press 111
press 106
press 110
press 112
press 106
press 113
press 106
press 102
)";

using Contents = std::map<std::string, std::string>;

// Every file below the current folder, by name.
Contents files_here() {
  Contents all;
  for (const auto& entry : fs::recursive_directory_iterator(".")) {
    if (!entry.is_regular_file()) continue;
    const std::string name = fs::relative(entry.path(), ".").string();
    all[name] = ScratchFolder::read(name);
  }
  return all;
}

int run(const std::string& command) {
  const int answer = std::system(command.c_str());
  return WIFEXITED(answer) ? WEXITSTATUS(answer) : -1;
}

// Plays the session on the examples in the current folder, with these settings of the environment.
Contents played(const std::string& settings = {}) {
  fs::copy(source_folder() / "examples", ".",
           fs::copy_options::recursive | fs::copy_options::overwrite_existing);
  ScratchFolder::write("everything.vrs", everything);
  EXPECT_EQ(run("env " + settings + " \"" VORN_REPLAY "\" everything.vrs 2> said.err"), 0)
      << ScratchFolder::read("said.err");
  return files_here();
}

void expect_same(const Contents& files, const Contents& plain) {
  ASSERT_EQ(files.size(), plain.size());
  for (const auto& [name, bytes] : plain) {
    ASSERT_TRUE(files.contains(name)) << name;
    EXPECT_TRUE(files.at(name) == bytes) << name;
  }
}

class Place : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    const ScratchFolder folder;
    plain() = played("LC_ALL=C");
  }
  static Contents& plain() {
    static Contents files;
    return files;
  }
  ScratchFolder folder_;
};

TEST_F(Place, TheSessionWritesAllThereIs) {
  for (const char* name : {"Stats.prn", "Corr.prn", "Index.prn", "Column.prn", "twocolumn.rwl", "nowhere.RWW",
                           "pair.svg", "start.png", "lags.pdf", "editor.txt"}) {
    EXPECT_TRUE(plain().contains(name) && !plain()[name].empty()) << name;
  }
  EXPECT_NE(plain()["faraway.rwm"], ScratchFolder::read((source_folder() / "examples/faraway.rwm").string()));
}

TEST_F(Place, FoldersWithBlanksAndUmlautsChangeNothing) {
  const fs::path home = "M\xC3\xBCller & S\xC3\xB6hne's \xE5\xB9\xB4\xE8\xBC\xAA";
  fs::create_directories(home / "Jahr ringe");
  fs::current_path(home / "Jahr ringe");
  expect_same(played("HOME=.."), plain());
}

TEST_F(Place, AFolderWhoseNameIsNoTextChangesNothing) {
  fs::create_directory("M\xFCller");
  fs::current_path("M\xFCller");
  expect_same(played(), plain());
}

TEST_F(Place, NoHomeAndNoEnvironmentChangeNothing) {
  expect_same(played("-i"), plain());
}

TEST_F(Place, TheTimeZoneChangesNothing) {
  expect_same(played("TZ=Pacific/Kiritimati"), plain());
}

class Languages : public Place, public ::testing::WithParamInterface<std::string> {};

// Decimal commas, letters that become others in upper case, encodings of one and of many bytes.
TEST_P(Languages, ChangeNothing) {
  const ScratchFolder locales;
  const std::string locale = GetParam();
  const auto point = locale.find('.');
  const std::string command = "localedef --no-archive -i " + locale.substr(0, point) + " -f " +
                              locale.substr(point + 1) + " ./" + locale + " > localedef.log 2>&1";
  if (run(command) != 0)
    GTEST_SKIP() << "the package locales is not here: " << ScratchFolder::read("localedef.log");
  const std::string settings = "LOCPATH=\"" + locales.path().string() + "\" LC_ALL=" + locale;
  // The language is in force: its decimal point is not ours.
  ASSERT_EQ(run("env " + settings + " locale decimal_point > point.txt"), 0);
  EXPECT_NE(ScratchFolder::read("point.txt"), ".\n");
  fs::create_directory("session");
  fs::current_path("session");
  expect_same(played(settings), plain());
  fs::current_path(locales.path());
}

INSTANTIATE_TEST_SUITE_P(Of, Languages, ::testing::Values("de_DE.UTF-8", "tr_TR.UTF-8", "pt_BR.ISO-8859-1"),
                         [](const auto& language) { return language.param.substr(0, 2); });

// --- Folders that cannot be written to.

// Everything that writes, from the start menu.
class Unwritable : public MenuBench {
 protected:
  Unwritable() {
    ScratchFolder::write("oak.rwl",
                         raw_core_text("OAK01", 1900, 60, 1) + raw_core_text("OAK02", 1900, 60, 2));
    ScratchFolder::write("Vorn.fil", "oak.rwl\n");
    ScratchFolder::write("TRW.fil", "two.rwl\none.trw\n");
    ScratchFolder::write("one.trw", "1900 1.0\n1901 1.1\n1902 1.2\n");
    w->log = &log;
  }
  void press_all_that_write() {
    for (const ButtonNumber n :
         {button::stats_report, button::correlation_report, button::save_raw, button::save_crn}) {
      press(n);
      key(Event::escape);
    }
  }
  static std::string messages_of(int status) {
    const std::string number =
        std::string(" fail err =    ") + (status < 10 ? " " : "") + std::to_string(status) + "\n";
    return "OpenStats.prn" + number + "Open Corr.prn" + number + "Openoak.RWW" + number + "OpenIndex.prn" +
           number;
  }
};

TEST_F(Unwritable, AFolderThatMayNotBeWrittenToIsToldAndKeepsItsFiles) {
  constexpr fs::perms all_write = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
  const Contents before = files_here();
  fs::permissions(".", fs::perms::all & ~all_write);
  {
    const AsNobody nobody;
    if (nobody.mighty()) GTEST_SKIP() << "no way to give up the rights of root";
    press_all_that_write();
    press(button::quit);
    EXPECT_THROW(run_program(*w), ProgramEnd);
  }
  fs::permissions(".", fs::perms::owner_all);
  EXPECT_EQ(screen.steps_left(), 0u);
  EXPECT_EQ(told(), messages_of(13));
  EXPECT_EQ(files_here(), before);
}

TEST_F(Unwritable, AFolderThatIsGoneIsToldAndTheProgramGoesOn) {
  fs::create_directory("gone");
  for (const char* name : {"oak.rwl", "Vorn.fil"}) fs::copy(name, fs::path("gone") / name);
  fs::current_path("gone");
  look([] { fs::remove_all("../gone"); });
  press_all_that_write();
  look([this] { EXPECT_TRUE(reads("Number of cores      2")); });
  press(button::current_chronology);
  look([this] { EXPECT_TRUE(reads("oak.rwl")); });
  click(300, 263);
  press(button::quit);
  EXPECT_THROW(run_program(*w), ProgramEnd);
  EXPECT_EQ(told(), messages_of(2) + "Openoak.rwl fail err =     2\n");
}

}  // namespace
}  // namespace vorn
