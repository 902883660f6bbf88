#include "sessions/scripted_screen.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "plot/plot.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

// Button n lies around (10 n, 20 n); those of even numbers are shown.
PageSpot middle(int n) {
  return {10 * n, 20 * n};
}
bool even(int n) {
  return n % 2 == 0;
}
int number_of(std::string_view name) {
  return name == "eight" ? 8 : name == "nine" ? 9 : 0;
}

// Pages go to files as text; those of one folder are refused.
std::optional<std::string> written_as_text(const Page& page, const std::string& name) {
  if (name.starts_with("nowhere/")) return name + ": not here";
  std::ofstream file(name);
  page.write_text(file);
  return {};
}

class ScriptedRun {
 public:
  explicit ScriptedRun(const std::string& script)
      : screen(statements(script), "test.script", {middle, even}, written_as_text) {}

  // The codes of all events up to the end of the script.
  std::vector<int> codes() {
    std::vector<int> result;
    try {
      for (;;) result.push_back(plot.csrpos().code);
    } catch (const ScriptStop& stop) {
      exit_status = stop.exit_status();
      said = stop.what();
    }
    return result;
  }

  ScriptedScreen screen;
  Plot plot{screen};
  int exit_status = 0;
  std::string said;

 private:
  static std::vector<Statement> statements(const std::string& text) {
    std::istringstream in(text);
    const Script script = read_script(in, number_of);
    EXPECT_TRUE(script.errors.empty());
    return script.statements;
  }
};

using Codes = std::vector<int>;

TEST(ScriptedScreen, HandsOnClicksKeysAndHelp) {
  ScriptedRun run("click 30 40\nhelp 50 60\nkey 45\nenter\npress 7\nkey 27\n");
  const auto next = [&] { return run.plot.csrpos(); };
  const auto expect = [](const Event& event, int x, int y, int code) {
    EXPECT_EQ(event.x, x);
    EXPECT_EQ(event.y, y);
    EXPECT_EQ(event.code, code);
  };
  expect(next(), 30, 40, Event::click);
  expect(next(), 50, 60, Event::help);
  expect(next(), 50, 60, '-');  // keys come from where the mouse was last
  expect(next(), 50, 60, Event::enter);
  expect(next(), 70, 140, Event::click);
  expect(next(), 70, 140, Event::escape);
}

TEST(ScriptedScreen, ATypedTextIsAKeyForEachCharacter) {
  EXPECT_EQ(ScriptedRun("type -12 \nenter").codes(), (Codes{'-', '1', '2', ' ', 13}));
}

TEST(ScriptedScreen, OfATypedTextOnlyWhatAWindowHandsOnArrives) {
  EXPECT_EQ(ScriptedRun("type a\tM\xC3\xBC\x05z").codes(), (Codes{'a', 'M', 'z'}));
}

TEST(ScriptedScreen, KeysBehindTheLastPrintableOneAreDropped) {
  EXPECT_EQ(ScriptedRun("key 126\nkey 127\nkey 255\nenter").codes(), (Codes{'~', 13}));
}

TEST(ScriptedScreen, AButtonIsLookedUpWhenItIsPressed) {
  PageSpot spot{1, 1};
  std::istringstream in("press 5\npress 5");
  ScriptedScreen screen(read_script(in).statements, "s", {[&](int) { return spot; }, even}, written_as_text);
  EXPECT_EQ(screen.next_event().x, 1);
  spot = {900, 2};
  EXPECT_EQ(screen.next_event().x, 900);
}

TEST(ScriptedScreen, AButtonOfANameIsClickedWhereItIsShown) {
  ScriptedRun run("press eight\n");
  const Event event = run.plot.csrpos();
  EXPECT_EQ(event.x, 80);
  EXPECT_EQ(event.y, 160);
  EXPECT_EQ(event.code, Event::click);
}

TEST(ScriptedScreen, AButtonOfANameThatIsNotShownIsStatus1AtOnce) {
  ScriptedRun run("enter\npress nine\nenter\n");
  run.plot.messag("Quit", 2245, 42);
  EXPECT_EQ(run.codes(), Codes{13});
  EXPECT_EQ(run.exit_status, 1);
  EXPECT_EQ(run.said, "test.script:2: the button \"nine\" is not shown; on the page:\n    Quit");
}

TEST(ScriptedScreen, TheEndOfTheScriptWhileTheProgramWaitsIsStatus3) {
  ScriptedRun run("enter");
  run.plot.messag("Quit", 2245, 42);
  EXPECT_EQ(run.codes(), Codes{13});
  EXPECT_EQ(run.exit_status, 3);
  EXPECT_EQ(run.said,
            "test.script: the script ended while the program was waiting for a click or key; on the page:\n  "
            "  Quit");
}

TEST(ScriptedScreen, TheEndAtAMessageNamesTheMessage) {
  ScriptedRun run("");
  run.plot.messag("Quit", 2245, 42);
  run.plot.messag("No file - hit key to continue", 310, 1560);
  try {
    run.plot.csrpos_fresh();
    FAIL() << "went on";
  } catch (const ScriptStop& stop) {
    EXPECT_EQ(stop.exit_status(), 3);
    EXPECT_STREQ(
        stop.what(),
        "test.script: the script ended while the program was waiting for a key or click that dismisses the "
        "message \"No file - hit key to continue\"");
  }
}

TEST(ScriptedScreen, AfterAMessageTheWaitIsAPlainOneAgain) {
  ScriptedRun run("enter");
  run.plot.csrpos_fresh();
  run.codes();
  EXPECT_NE(run.said.find("for a click or key; on the page: nothing"), std::string::npos) << run.said;
}

TEST(ScriptedScreen, ExpectationsThatHoldAreSilent) {
  ScriptedRun run("expect sav\nrefuse Save\nenter\n");
  run.plot.messag("unsaved", 0, 0);
  EXPECT_EQ(run.codes(), Codes{13});
  EXPECT_EQ(run.exit_status, 3);
}

TEST(ScriptedScreen, AFailedExpectationIsStatus1AtOnceAndTellsWhatIsThere) {
  ScriptedRun run("enter\n\nexpect Cancel\nenter\n");
  run.plot.messag("Quit", 2245, 42);
  run.plot.messag(" Yes", 845, 552);
  run.plot.messag(" Yes", 845, 672);
  EXPECT_EQ(run.codes(), Codes{13});
  EXPECT_EQ(run.exit_status, 1);
  EXPECT_EQ(run.said, "test.script:3: expected \"Cancel\"; on the page:\n    Quit\n     Yes");
}

TEST(ScriptedScreen, ARefusedTextIsStatus1) {
  ScriptedRun run("refuse fail err\n");
  run.plot.messag("OpenHelp.prn fail err =     2", 310, 1560);
  EXPECT_EQ(run.codes(), Codes{});
  EXPECT_EQ(run.exit_status, 1);
  EXPECT_NE(run.said.find("test.script:1: refused \"fail err\""), std::string::npos);
}

TEST(ScriptedScreen, TextsThatWereCoveredAndLabelsOfAxesAreNotThere) {
  ScriptedRun run("refuse Years\nrefuse No file\nenter");
  run.plot.name("Years", 'X');
  run.plot.graf(0, 1, 0, 1, 0, 1, 0, 1);
  run.plot.messag("No file", 310, 1560);
  run.plot.rectangle(300, 1550, 2100, 1760);
  EXPECT_EQ(run.codes(), Codes{13});
}

TEST(ScriptedScreen, StatementsActOnThePageAsItStandsWhenTheProgramWaits) {
  ScriptedRun run("enter\nexpect second\nrefuse first\nenter");
  run.plot.messag("first", 0, 0);
  run.plot.csrpos();
  run.plot.erase();
  run.plot.messag("second", 0, 0);
  EXPECT_EQ(run.plot.csrpos().code, Event::enter);
}

TEST(ScriptedScreen, WritesThePageAsItStands) {
  const ScratchFolder folder;
  ScriptedRun run("page now.txt\nenter");
  run.plot.messag("Quit", 2245, 42);
  EXPECT_EQ(run.codes(), Codes{13});
  EXPECT_EQ(folder.read("now.txt"), "text 15 25 2245 42 \"Quit\"\n");
}

TEST(ScriptedScreen, APageThatCannotBeWrittenIsStatus1) {
  ScriptedRun run("enter\npage nowhere/now.txt\nenter");
  EXPECT_EQ(run.codes(), Codes{13});
  EXPECT_EQ(run.exit_status, 1);
  EXPECT_EQ(run.said, "test.script:2: nowhere/now.txt: not here");
}

TEST(ScriptedScreen, TellsWhatWasNotReached) {
  ScriptedRun run("enter\nexpect Quit\nenter");
  EXPECT_EQ(run.screen.first_line_not_reached(), 1);
  run.plot.csrpos();
  EXPECT_EQ(run.screen.first_line_not_reached(), 2);
}

// One panel, in which a click on "core" is a click on the page, and one on "mark" is none.
class OnePanel : public ScriptPanels {
 public:
  void stand(const SharedStanding&) override { ++stood; }
  Page page(const std::string& panel) override {
    asked.push_back(panel);
    return {600, 80};
  }
  Picked pick(const std::string&, const std::string& text) override {
    if (text == "core") return {.deed = Deed(Event{11, 22, Event::click})};
    if (text == "mark") return {};
    return {.wrong = "no such spot"};
  }
  int stood = 0;
  std::vector<std::string> asked;
};

class PanelRun : public ::testing::Test {
 protected:
  std::string play(const std::string& script, ScriptPanels* used) {
    std::istringstream in(script);
    const Script read = read_script(in, number_of, [](std::string_view name) { return name == "site"; });
    EXPECT_TRUE(read.errors.empty());
    ScriptedScreen screen(read.statements, "test.script", {middle, even}, written_as_text, used);
    screen.stand({});
    try {
      for (;;) events.push_back(screen.next_event());
    } catch (const ScriptStop& stop) {
      return stop.what();
    }
  }
  ScratchFolder folder;
  OnePanel panels;
  std::vector<Event> events;
};

TEST_F(PanelRun, WritesPanelsAndHandsOnWhatIsPicked) {
  play("panel site site.txt\npick site mark\npick site core\nenter\n", &panels);
  EXPECT_EQ(folder.read("site.txt"), "size 600 80\n");
  EXPECT_EQ(panels.asked, (std::vector<std::string>{"site"}));
  EXPECT_EQ(panels.stood, 1);
  ASSERT_EQ(events.size(), 2u);
  EXPECT_EQ(events[0].x, 11);
  EXPECT_EQ(events[1].code, Event::enter);
}

TEST_F(PanelRun, StopsWhereAPanelDoesNotHaveIt) {
  EXPECT_EQ(play("pick site nobody\n", &panels), "test.script:1: no such spot");
  EXPECT_EQ(play("panel site nowhere/x.txt\n", &panels), "test.script:1: nowhere/x.txt: not here");
  EXPECT_EQ(play("panel site x.txt\n", nullptr), "test.script:1: there are no panels here");
  EXPECT_EQ(play("pick site x\n", nullptr), "test.script:1: there are no panels here");
}

}  // namespace
}  // namespace vorn
