// The program as users start it: what a run of vorn_replay ends with and what it says.
#include <gtest/gtest.h>

#include <string>

#include "support/command_bench.h"

namespace vorn {
namespace {

struct Replay : CommandBench {
  // In a folder with an empty list the start menu comes up without any series.
  Replay() { folder.write("Vorn.fil", ""); }

  int replay(const std::string& script) {
    folder.write("session.vrs", script);
    return run(VORN_REPLAY " session.vrs");
  }
};

TEST_F(Replay, QuitEndsWith0) {
  EXPECT_EQ(replay("expect Leave the Program\npress 102\n"), 0) << said;
  EXPECT_EQ(printed, "");
}

TEST_F(Replay, WhatWasNotReachedIsToldAndChangesNoStatus) {
  EXPECT_EQ(replay("press 102\nenter\n"), 0);
  EXPECT_NE(said.find("session.vrs:2: the program ended before this line was reached\n"), std::string::npos)
      << said;
}

TEST_F(Replay, AFailedExpectationEndsWith1) {
  EXPECT_EQ(replay("refuse Crossdate\npress 102\n"), 1);
  EXPECT_NE(said.find("session.vrs:1: refused \"Crossdate\"; on the page:\n"), std::string::npos) << said;
}

TEST_F(Replay, AnInvalidScriptEndsWith2BeforeAnythingRuns) {
  EXPECT_EQ(replay("page before.txt\npress 102\nkey 5\njump\n"), 2);
  EXPECT_EQ(said,
            "session.vrs:3: 5 is no key (see click and help)\nsession.vrs:4: \"jump\" is no statement\n");
  EXPECT_FALSE(folder.exists("before.txt"));
}

TEST_F(Replay, AButtonMayBePressedByItsName) {
  EXPECT_EQ(replay("press spline_on\nexpect  No\npress spline_years\ntype 40\nenter\npress quit\n"), 0)
      << said;
  EXPECT_EQ(said, "");
}

// It is on, and its place is on the page; but that is another menu's.
TEST_F(Replay, AButtonThatIsNotShownEndsWith1) {
  EXPECT_EQ(replay("press exit_crossdating\npress quit\n"), 1);
  EXPECT_NE(said.find("session.vrs:1: the button \"exit_crossdating\" is not shown; on the page:\n"),
            std::string::npos)
      << said;
  EXPECT_EQ(replay("press chronology_list\n"), 1);        // of this menu, and off
  EXPECT_EQ(replay("press crossdate\npress quit\n"), 1);  // the message that tells why not waits for any key
  EXPECT_EQ(replay("press 29\npress 102\n"), 0);          // by its number it is a click like any other
}

TEST_F(Replay, ANameThatNoButtonHasEndsWith2BeforeAnythingRuns) {
  EXPECT_EQ(replay("page before.txt\npress leave\n"), 2);
  EXPECT_EQ(said, "session.vrs:2: there is no button \"leave\"\n");
  EXPECT_FALSE(folder.exists("before.txt"));
}

TEST_F(Replay, AScriptThatCannotBeReadEndsWith2) {
  EXPECT_EQ(run(VORN_REPLAY " missing.vrs"), 2);
  EXPECT_EQ(said, "vorn_replay: missing.vrs cannot be read\n");
  EXPECT_EQ(run(VORN_REPLAY " ."), 2);
  EXPECT_EQ(run(VORN_REPLAY), 2);
  EXPECT_EQ(run(VORN_REPLAY " a b"), 2);
}

TEST_F(Replay, TheEndOfTheScriptWhileTheProgramWaitsEndsWith3) {
  EXPECT_EQ(replay("# nothing is done\n"), 3);
  EXPECT_NE(said.find("the script ended while the program was waiting for a click or key"),
            std::string::npos);
}

TEST_F(Replay, AMissingListFileEndsWith4) {
  std::filesystem::remove("Vorn.fil");
  EXPECT_EQ(replay("enter\nenter\n"), 4);
  EXPECT_NE(said.find("Vorn.fil"), std::string::npos) << said;
}

TEST_F(Replay, MessagesThatNobodyReadsAreNotTheEndOfTheProgram) {
  folder.write("session.vrs", "press 110\nenter\n");  // there is no TRW.fil
  run("(sleep 0.2; " VORN_REPLAY " session.vrs 2>&1; echo $? >status) | true");
  EXPECT_EQ(folder.read("status"), "4\n");
}

TEST_F(Replay, TheScriptCanComeFromStandardInput) {
  EXPECT_EQ(run("echo press 102 | " VORN_REPLAY " -"), 0) << said;
}

TEST_F(Replay, APressedButtonIsClickedInItsMiddle) {
  // "Yes" of the spline becomes "No"; the field of the cut-off takes a number.
  EXPECT_EQ(replay("press 94\nexpect  No\npress 97\ntype 40\nenter\nexpect    40\npress 102\n"), 0) << said;
}

TEST_F(Replay, PagesAreWrittenAlongTheWay) {
  EXPECT_EQ(replay("page start.txt\npage start.png\npage start.svg\npage start.pdf\npress 102\n"), 0) << said;
  EXPECT_NE(folder.read("start.txt").find("text 15 25 2245 42 \"Quit\"\n"), std::string::npos);
  EXPECT_TRUE(folder.read("start.png").starts_with("\x89PNG"));
  EXPECT_TRUE(folder.read("start.svg").starts_with("<?xml"));
  EXPECT_TRUE(folder.read("start.pdf").starts_with("%PDF"));
  EXPECT_EQ(printed, "");
}

// A picture takes longer to begin with than all the rest: without one the window system is not even loaded.
TEST_F(Replay, OnlyPicturesLoadTheWindowSystem) {
  const auto names_loaded = [&](const char* script) {
    folder.write("session.vrs", script);
    EXPECT_EQ(run("LD_DEBUG=files " VORN_REPLAY " session.vrs"), 0);
    return said;
  };
  EXPECT_EQ(names_loaded("page start.txt\npress 102\n").find("Qt"), std::string::npos);
  EXPECT_NE(names_loaded("page start.png\npress 102\n").find("libQt6Gui"), std::string::npos);
}

// A copy of the program, in a folder where things are missing.
struct CopiedReplay : Replay {
  CopiedReplay() { std::filesystem::copy(VORN_REPLAY, "vorn_replay"); }
  int replay_copy() {
    folder.write("session.vrs", "page start.txt\npage start.png\n");
    return run("./vorn_replay session.vrs");
  }
};

TEST_F(CopiedReplay, WithoutTheModuleAPictureIsStatus1AndTheReasonOneLine) {
  EXPECT_EQ(replay_copy(), 1);
  EXPECT_TRUE(said.starts_with("session.vrs:2: start.png: what paints pictures cannot be loaded: ")) << said;
  EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
  EXPECT_TRUE(folder.exists("start.txt"));
}

TEST_F(CopiedReplay, FindsTheModuleWhereItIsInstalled) {
  std::filesystem::create_directories("tree/bin");
  std::filesystem::create_directories("tree/" VORN_MODULE_DIR);
  std::filesystem::rename("vorn_replay", "tree/bin/vorn_replay");
  std::filesystem::copy(VORN_PICTURE_MODULE, "tree/" VORN_MODULE_DIR);
  folder.write("session.vrs", "page start.png\npress 102\n");
  EXPECT_EQ(run("tree/bin/vorn_replay session.vrs"), 0) << said;
  EXPECT_TRUE(folder.read("start.png").starts_with("\x89PNG"));
}

// The file qt.conf beside a program tells the window system where its plug-ins lie.
TEST_F(CopiedReplay, WithoutThePlugInThatPaintsAPictureIsStatus1AndNoAbort) {
  std::filesystem::copy(VORN_PICTURE_MODULE, ".");
  folder.write("qt.conf", "[Paths]\nPlugins=nowhere\n");
  EXPECT_EQ(replay_copy(), 1) << said;
  EXPECT_EQ(
      said,
      "session.vrs:2: start.png: pictures need the plug-in \"offscreen\" of Qt, which cannot be loaded\n");
}

TEST_F(Replay, SaysWhatItIs) {
  EXPECT_EQ(run(VORN_REPLAY " --version"), 0);
  EXPECT_EQ(printed, "vorn_replay " VORN_VERSION "\n");
  EXPECT_EQ(run(VORN_REPLAY " --help"), 0);
  EXPECT_TRUE(printed.starts_with("usage: vorn_replay SCRIPT")) << printed;
}

struct DesktopProgram : Replay {};

TEST_F(DesktopProgram, WithoutADisplayItSaysWhatToDoInstead) {
  EXPECT_EQ(run("env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM " VORNOSX), 1);
  EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
  EXPECT_NE(said.find("vorn_replay SCRIPT"), std::string::npos) << said;
}

TEST_F(DesktopProgram, SaysWhatItIs) {
  EXPECT_EQ(run(VORNOSX " --version"), 0);
  EXPECT_EQ(printed, "VORNosx " VORN_VERSION "\n");
  EXPECT_EQ(run(VORNOSX " --help"), 0);
  EXPECT_TRUE(printed.starts_with("usage: VORNosx [FOLDER]")) << printed;
}

TEST_F(DesktopProgram, TakesOneFolderOrOneOption) {
  EXPECT_EQ(run(VORNOSX " a b"), 2);
  EXPECT_TRUE(said.starts_with("usage: VORNosx [FOLDER]")) << said;
  EXPECT_EQ(run(VORNOSX " --chose"), 2);
}

TEST_F(DesktopProgram, AFolderThatIsNotThereIsTold) {
  EXPECT_EQ(run(VORNOSX " nowhere"), 2);
  EXPECT_EQ(said, "VORNosx: nowhere: No such file or directory\n");
  EXPECT_EQ(run(VORNOSX " Vorn.fil"), 2);
  EXPECT_EQ(said, "VORNosx: Vorn.fil: Not a directory\n");
  EXPECT_EQ(run(VORNOSX " ''"), 2);
  EXPECT_EQ(said, "VORNosx: : No such file or directory\n");
}

// Seen by what it says there: the current folder has a list, the other one none. What the window system
// without a screen says of itself is left out.
TEST_F(DesktopProgram, WorksInTheFolderItIsGiven) {
  std::filesystem::create_directory("site");
  ASSERT_EQ(run("(env QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES=default.warning=false XDG_CONFIG_HOME=$PWD "
                "timeout 20 " VORNOSX " site 2>site.log & "
                "for i in $(seq 100); do grep -q Vorn.fil site.log && break; sleep 0.1; done; kill $!)"),
            0);
  EXPECT_EQ(folder.read("site.log"), "Vorn.fil does not exist\n");
}

// The same scripts, the same words and the same ends.
TEST_F(Replay, IsAVerbOfTheCommandLineToo) {
  for (const char* script :
       {"expect Leave the Program\npress 102\n", "refuse Crossdate\npress 102\n", "key 5\njump\n",
        "press spline_on\n", "page page.png\npage page.txt\npress quit\n", ""}) {
    SCOPED_TRACE(script);
    const int status = replay(script);
    const std::string alone_said = said, picture = folder.read("page.png");
    EXPECT_EQ(run(VORN " replay session.vrs"), status);
    EXPECT_EQ(said, alone_said);
    EXPECT_EQ(folder.read("page.png"), picture);
    EXPECT_EQ(run(VORN " replay - <session.vrs"), status);
  }
  folder.write("session.vrs", "enter\n");
  EXPECT_EQ(run("rm Vorn.fil && " VORN " replay session.vrs"), 4) << said;
  EXPECT_EQ(run(VORN " replay gone.vrs"), 2);
  EXPECT_EQ(said, "vorn replay: gone.vrs cannot be read\n");
  EXPECT_EQ(run(VORN " replay"), 2);
}

}  // namespace
}  // namespace vorn
