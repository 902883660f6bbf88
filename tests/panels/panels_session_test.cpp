// What a user gets done by clicks on panels, on the examples and on made-up cores.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include "apps/script_buttons.h"
#include "apps/whole_program.h"
#include "panels/script_panels.h"
#include "records/disk_files.h"
#include "sessions/session.h"
#include "support/menu_bench.h"
#include "support/places.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

// Plays a script in the current folder, with panels; how it ended, or stopped.
class Played {
 public:
  explicit Played(const std::string& script) {
    std::istringstream in(script);
    const Script read = read_script(in, script_button, is_panel);
    EXPECT_TRUE(read.errors.empty()) << (read.errors.empty() ? "" : read.errors.front().what);
    const Workspace* w = nullptr;
    DiskFiles files;
    PanelsOfScript panels(files);
    ScriptedScreen screen(
        read.statements, "script", button_places(w),
        [this](const Page& page, const std::string& name) {
          std::ostringstream out;
          page.write_text(out);
          pages[name] = out.str();
          return std::optional<std::string>();
        },
        &panels);
    try {
      std::ostringstream log;
      Session session(whole_program([&w](const Workspace& begun) { w = &begun; }), files, log, screen);
      status = session.run();
    } catch (const ScriptStop& stop) {
      status = stop.exit_status();
      said = stop.what();
    }
  }
  bool writes(const std::string& page, const std::string& text) {
    return pages[page].find(text) != std::string::npos;
  }

  int status = 0;
  std::string said;
  std::map<std::string, std::string> pages;
};

class Panels : public ::testing::Test {
 protected:
  Panels() { std::filesystem::copy(source_folder() / "examples", "."); }
  ScratchFolder folder;
};

TEST_F(Panels, SitePutsTheCoresThatNeedWorkFirst) {
  Played played("panel site site.txt\n");
  EXPECT_EQ(played.status, ScriptStop::ended);
  const std::string& site = played.pages["site.txt"];
  EXPECT_TRUE(site.starts_with("size 1480 ")) << site.substr(0, 40);
  const auto at = [&](const char* name) { return site.find("\"" + std::string(name) + "\""); };
  EXPECT_LT(at("NOW19"), at("NOW07"));
  EXPECT_LT(at("NOW07"), at("NOW14"));
  EXPECT_LT(at("NOW14"), at("NOW01"));
  EXPECT_TRUE(played.writes("site.txt", "25 cores, 3 to look at"));
}

TEST_F(Panels, FilesSaysWhatIsNotReadAndWritesACopyThatIs) {
  std::ifstream in("nowhere.rwl", std::ios::binary);
  std::string bytes((std::istreambuf_iterator<char>(in)), {});
  bytes.insert(bytes.find("NOW05"), "\n");
  std::ofstream("nowhere.rwl", std::ios::binary) << bytes;
  Played played(
      "panel files before.txt\n"
      "pick files nowhere.rwl\n"
      "panel files open.txt\n"
      "pick files Write a clean copy\n");
  EXPECT_EQ(played.status, ScriptStop::ended) << played.said;
  EXPECT_TRUE(played.writes("before.txt", "not read whole"));
  EXPECT_TRUE(played.writes("before.txt", "a line without a name ends the file"));
  EXPECT_GT(played.pages["open.txt"].size(), played.pages["before.txt"].size());
  Played again("panel files after.txt\n");
  EXPECT_TRUE(again.writes("after.txt", "\"nowhere-clean.rwl\""));
  EXPECT_TRUE(again.writes("after.txt", "all read whole"));
  EXPECT_FALSE(again.writes("after.txt", "not read whole"));
}

// Three clicks find and mend a missing ring, and a fourth brings it to the core.
TEST_F(Panels, AMissingRingIsFoundAndMendedInFourClicks) {
  Played played(
      "pick site NOW07\n"
      "expect NOW07\n"
      "panel rings before.txt\n"
      "pick rings A ring is missing in 1866 to 1869\n"
      "expect Insert 186\n"
      "panel rings chosen.txt\n"
      "press insertion_ok\n"
      "press save_sample\n"
      "panel rings after.txt\n"
      "panel site site.txt\n");
  EXPECT_EQ(played.status, ScriptStop::ended) << played.said;
  EXPECT_TRUE(played.writes("before.txt", "NOW07 against the 24 others of nowhere.rwl"));
  EXPECT_FALSE(played.writes("before.txt", "\"After\""));
  EXPECT_TRUE(played.writes("chosen.txt", "\"Before\""));
  EXPECT_TRUE(played.writes("chosen.txt", "\"After\""));
  EXPECT_TRUE(played.writes("after.txt", "No error is worth a look"));
  EXPECT_TRUE(played.writes("site.txt", "25 cores, 2 to look at"));
}

TEST_F(Panels, OtherProgramsStandBesideThisOne) {
  Played played("panel recipe none.txt\npick site NOW07\npanel recipe recipe.txt\n");
  EXPECT_EQ(played.status, ScriptStop::ended) << played.said;
  EXPECT_TRUE(played.writes("none.txt", "No core is on the cross-dating page."));
  EXPECT_TRUE(played.writes("recipe.txt", "NOW07 by three recipes"));
  EXPECT_TRUE(played.writes("recipe.txt", "\"0.228\""));  // as the file's Stats.prn has it
  EXPECT_TRUE(played.writes("recipe.txt", "the step that makes most of it: growth trend"));
  EXPECT_TRUE(played.writes("recipe.txt", "Tukey's biweight robust mean"));
}

// What is told before the click is what the program shows of the files afterwards, but for the last digit:
// the rings are written in hundredths.
TEST_F(Panels, AMoveIsToldBeforeItIsDone) {
  Played played(
      "press crossdate\npress choose_cores\npress move_core\n"
      "click 378 310\npanel moving marked.txt\n"
      "click 378 1616\npanel moving both.txt\n"
      "expect Move NOW01 to adrift.rwl\n"
      "press chooser_do_it\npress chooser_exit\npanel moving after.txt\npress exit_crossdating\n"
      "expect Number of cores     24\n"
      "press current_chronology\nclick 300 450\nexpect Number of cores      6\n"
      "press crossdate\npanel moving there.txt\n");
  EXPECT_EQ(played.status, ScriptStop::ended) << played.said;
  EXPECT_TRUE(played.writes("marked.txt", "\"nearby.fh\""));
  for (const char* figure : {"\"0.642\"", "\"0.633\"", "\"0.516\"", "\"0.517\"", "\"0.891\""})
    EXPECT_TRUE(played.writes("both.txt", figure)) << figure;
  // Six cores would have it, had NOW01 a year in common with them.
  EXPECT_FALSE(played.writes("both.txt", "\"0.908\""));
  EXPECT_TRUE(played.writes("after.txt", "\"0.633\"")) << played.pages["after.txt"];
  EXPECT_TRUE(played.writes("there.txt", "\"0.517\"")) << played.pages["there.txt"];
}

TEST_F(Panels, AWrongDateIsPutRightInThreeClicks) {
  Played played(
      "pick site NOW19\n"
      "panel dates dates.txt\n"
      "pick dates moves by -7 years\n"
      "press save_sample\n"
      "panel site site.txt\n");
  EXPECT_EQ(played.status, ScriptStop::ended) << played.said;
  EXPECT_TRUE(played.writes("dates.txt", "One date stands out: 1808 to 2003"));
  EXPECT_TRUE(played.writes("site.txt", "25 cores, 2 to look at"));
}

// The last year stays, and the part before the ring moves back; "NOT" leaves all as it was.
TEST_F(Panels, TheBarkIsHeldWhenTheChangeStays) {
  const std::string begin =
      "pick site NOW07\n"
      "pick rings Bark held: where it fits\n"
      "pick rings A ring is missing in 1866 to 1869\n";
  Played kept(begin + "press insertion_ok\npanel dates dates.txt\n");
  EXPECT_EQ(kept.status, ScriptStop::ended) << kept.said;
  EXPECT_TRUE(kept.writes("dates.txt", "NOW07, 275 rings, now 1739 to 2013"));
  Played refused(begin + "press insertion_not\npanel dates dates.txt\n");
  EXPECT_TRUE(refused.writes("dates.txt", "NOW07, 274 rings, now 1740 to 2013"));
  // One decision, which one step takes back.
  Played undone(begin + "press insertion_ok\nundo\npanel dates dates.txt\n");
  EXPECT_EQ(undone.status, ScriptStop::ended) << undone.said;
  EXPECT_TRUE(undone.writes("dates.txt", "NOW07, 274 rings, now 1740 to 2013"));
}

TEST_F(Panels, EveryCoreIsLookedAtWithOneClick) {
  std::string script;
  for (int k = 1; k <= 25; ++k) {
    const std::string name = std::string("NOW") + (k < 10 ? "0" : "") + std::to_string(k);
    script += "pick site " + name + "\nexpect " + name + "\n";
  }
  EXPECT_EQ(Played(script).status, ScriptStop::ended);
}

TEST_F(Panels, MarksGoRoundAndAreNotKeptByScripts) {
  Played played(
      "pick site NOW19 is to do\n"
      "panel site done.txt\n"
      "pick site NOW19 is done\n"
      "pick site Hide\n"
      "panel site hidden.txt\n"
      "pick site NOW07 is to do\n");
  EXPECT_EQ(played.status, ScriptStop::ended) << played.said;
  EXPECT_TRUE(played.writes("done.txt", "25 cores, 2 to look at"));
  EXPECT_FALSE(played.writes("hidden.txt", "\"NOW19\""));
  EXPECT_TRUE(played.writes("hidden.txt", "\"NOW07\""));
  EXPECT_FALSE(std::filesystem::exists(".vorn"));
}

TEST_F(Panels, AScriptStopsWhereThereIsNoSuchSpot) {
  Played missing("pick site NOW99\n");
  EXPECT_EQ(missing.status, ScriptStop::failed);
  EXPECT_EQ(missing.said, "script:1: the panel \"site\" has no spot with \"NOW99\"");
  Played idle("press crossdate\npress insert_ring\npick site NOW01\n");
  EXPECT_EQ(idle.status, ScriptStop::failed);
  EXPECT_EQ(idle.said, "script:3: \"NOW01\" of the panel \"site\" does nothing now");
  std::istringstream in("panel nowhere x.txt\npick site\npanel site x.doc\n");
  const Script wrong = read_script(in, script_button, is_panel);
  ASSERT_EQ(wrong.errors.size(), 3u);
  EXPECT_EQ(wrong.errors[0].what, "there is no panel \"nowhere\"");
  EXPECT_EQ(wrong.errors[1].what, "expected a text");
  EXPECT_EQ(wrong.errors[2].what, "expected a file name that ends in .txt, .png, .svg or .pdf");
}

// On the start page no pair is there, and with no cores nothing.
TEST_F(Panels, SayWhyTheyAreEmpty) {
  Played played(
      "panel rings rings.txt\npanel dates dates.txt\npanel around around.txt\npanel pointers pointers.txt\n");
  EXPECT_TRUE(played.writes("rings.txt", "No core is on the cross-dating page."));
  EXPECT_TRUE(played.writes("dates.txt", "No sample is on the cross-dating page."));
  EXPECT_TRUE(played.writes("around.txt", "No core is on the cross-dating page."));
  EXPECT_TRUE(played.writes("pointers.txt", "\"Pointer years\""));
}

// Two parts of NOW07 are a year apart: moved as a whole the longer one fits.
TEST_F(Panels, ADateThatAMissingRingExplainsIsNotTakenForItsOwn) {
  Played played("pick site NOW07\npanel dates missing.txt\npick site NOW19\npanel dates wrong.txt\n");
  EXPECT_TRUE(played.writes("missing.txt", "explains more: see Rings"));
  EXPECT_FALSE(played.writes("wrong.txt", "explains more: see Rings"));
}

// The core as it is dated is what the panel held at its bark would make wrong: it says so.
TEST_F(Panels, SayWhenTheBarkIsHeldAgainstTheEvidence) {
  Played played(
      "pick site NOW07\n"
      "pick rings Bark held: where it fits\n"
      "panel rings rings.txt\n");
  EXPECT_TRUE(played.writes("rings.txt", "with the bark held r .26 to -")) << played.pages["rings.txt"];
  EXPECT_TRUE(played.writes("rings.txt", "the evidence says that the pith end stays"));
}

// What is known of an index file that is the current chronology is not known of its cores: it has none.
TEST_F(Panels, CoresAreThoseOfTheirOwnFile) {
  folder.write("Vorn.fil", "anywhere.crn\nnowhere.rwl\nnowhere.rwl\n");
  Played played(
      "panel site site.txt\n"
      "pick site NOW19\n"
      "panel rings rings.txt\n"
      "panel dates dates.txt\n");
  EXPECT_EQ(played.status, ScriptStop::ended) << played.said;
  EXPECT_TRUE(played.writes("site.txt", "\"nowhere.rwl\""));
  EXPECT_TRUE(played.writes("rings.txt", "NOW19 against the 24 others of nowhere.rwl"));
  EXPECT_TRUE(played.writes("dates.txt", "\"others of nowhere.rwl\""));
  EXPECT_TRUE(played.writes("dates.txt", "\"anywhere.crn\""));
  // The same file once more is no second witness.
  EXPECT_FALSE(played.writes("dates.txt", "\"nowhere.rwl\""));
}

// A core alone in its file has no date by it.
TEST_F(Panels, NoCoreIsDatedByItself) {
  folder.write("alone.rwl", raw_core_text("OAK1", 1900, 60, 7));
  folder.write("Vorn.fil", "alone.rwl\nanywhere.crn\n");
  Played played("press crossdate\npanel dates dates.txt\n");
  EXPECT_EQ(played.status, ScriptStop::ended) << played.said;
  EXPECT_TRUE(played.writes("dates.txt", "No date stands out."));
  EXPECT_TRUE(played.writes("dates.txt", "too few years in common"));
}

}  // namespace
}  // namespace vorn
