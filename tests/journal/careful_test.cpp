// Switching to careful and back in a session: a step like any other, which is taken back, gone through again
// and kept.
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

#include "desk/questions.h"
#include "journal/session_bench.h"
#include "sessions/kept_careful.h"

namespace vorn {
namespace {

constexpr CarefulSwitch help_on = {.mend = Mend::help}, help_off = {.mend = Mend::help, .on = false};

class SwitchesToCareful : public SessionBench {
 protected:
  void expect_careful(const std::string& names) {
    look([this, names](const Standing& standing) {
      EXPECT_EQ(names_of(standing.situation->settings.careful), names);
      EXPECT_EQ(names_of(w->careful), names) << "the program and what is told of it differ";
    });
  }
  void expect_decisions(std::vector<std::string> words) {
    look([words](const Standing& standing) {
      std::vector<std::string> taken;
      for (std::size_t k = 0; k < standing.taken; ++k) taken.push_back(standing.decisions[k].what);
      EXPECT_EQ(taken, words);
    });
  }
  std::string journal() {
    for (const auto& entry : std::filesystem::directory_iterator(".vorn")) {
      if (entry.path().extension() == ".vrs") return folder.read(entry.path().string());
    }
    return "";
  }
};

TEST_F(SwitchesToCareful, IsOffAtFirst) {
  expect_careful("");
  EXPECT_EQ(run(), 0);
}

TEST_F(SwitchesToCareful, BehindAnEventItIsADecisionThatCanBeTakenBack) {
  press(button::crossdate);
  deed(help_on);
  expect_careful("help");
  expect_decisions({"Careful: help on"});
  insert_ring_at(1930);
  deed(Undo{});
  expect_careful("help");
  deed(Undo{});
  expect_careful("");
  expect_decisions({});
  deed(Redo{});
  deed(Redo{});
  expect_careful("help");
  expect_decisions({"Careful: help on", "Insert 1930 in OAK1"});
  deed(help_off);
  expect_careful("");
  EXPECT_EQ(run(), 0);
}

TEST_F(SwitchesToCareful, WithNothingDoneTheFilesAreReadAnew) {
  int begun = 0;
  begins = [&begun](Files&) { return ++begun > 0; };
  deed(help_on);
  expect_careful("help");
  deed(CarefulSwitch{});
  expect_careful("all");
  look([&begun](const Standing& standing) {
    EXPECT_EQ(begun, 3);
    EXPECT_FALSE(standing.can_undo);
  });
  press(button::spline_on);
  deed(Undo{});
  expect_careful("all");
  deed(CarefulSwitch{.on = false});
  expect_careful("");
  EXPECT_EQ(run(), 0);
}

TEST_F(SwitchesToCareful, ThePageShowsItAtOnceAndWhenItIsTakenBack) {
  const auto texts = [this] { return visible_texts(screen.page()).size(); };
  std::size_t usual = 0;
  press(button::crossdate);
  look([&](const Standing&) { usual = texts(); });
  deed(CarefulSwitch{.mend = Mend::bar_year});
  look([&](const Standing&) { EXPECT_EQ(texts(), usual + 1); });
  press(button::scroll_minus_1);
  deed(Undo{});
  look([&](const Standing&) { EXPECT_EQ(texts(), usual); });
  deed(Redo{});
  look([&](const Standing&) { EXPECT_EQ(texts(), usual + 1); });
  EXPECT_EQ(run(), 0);
}

TEST_F(SwitchesToCareful, WhatIsSoAlreadyChangesNothing) {
  press(button::crossdate);
  deed(help_off);
  expect_decisions({});
  look([](const Standing& standing) { EXPECT_EQ(standing.steps, 1u); });
  EXPECT_EQ(run(), 0);
}

TEST_F(SwitchesToCareful, IsLeftAloneWhileSomethingIsTyped) {
  press(button::spline_years);
  deed(help_on);
  expect_careful("");
  type("50\r");
  deed(help_on);
  expect_careful("help");
  EXPECT_EQ(run(), 0);
}

TEST_F(SwitchesToCareful, StandsInTheJournalAndIsKeptForTheFolder) {
  {
    Journal keeper("", "1");
    deed(help_on);
    press(button::spline_on);
    deed(CarefulSwitch{.mend = Mend::blank_line});
    EXPECT_EQ(run(nullptr, &keeper), 0);
  }
  const std::string text = journal();
  const auto begin = text.find("\ncareful help on\n"), click = text.find("\nclick "),
             later = text.find("\ncareful blank-line on\n");
  EXPECT_NE(begin, std::string::npos);
  EXPECT_LT(begin, click);
  EXPECT_LT(click, later);
  EXPECT_NE(later, std::string::npos);
  EXPECT_EQ(names_of(kept_careful("")), "blank-line,help");
}

TEST_F(SwitchesToCareful, IsThereAgainWhenWorkIsTakenUp) {
  {
    Journal keeper("", "1");
    deed(help_on);
    press(button::crossdate);
    insert_ring_at(1930);
    deed(CarefulSwitch{.mend = Mend::blank_line});
    EXPECT_EQ(run(nullptr, &keeper), 0);
  }
  EXPECT_EQ(keep_careful("", Careful()), "");
  Journal keeper("", "1");
  screen.then([](const Standing& standing) -> std::optional<Deed> {
    EXPECT_NE(standing.to_take_up, "");
    return TakeUp{standing.to_take_up};
  });
  expect_careful("blank-line,help");
  expect_decisions({"Insert 1930 in OAK1", "Careful: blank-line on"});
  EXPECT_EQ(run(nullptr, &keeper), 0);
  EXPECT_EQ(names_of(kept_careful("")), "blank-line,help");
}

TEST_F(SwitchesToCareful, BesideWhatIsWrittenStandsHow) {
  press(button::stats_report);
  look([](const Standing&) { EXPECT_FALSE(std::filesystem::exists("Stats.prn.careful")); });
  deed(help_on);
  press(button::stats_report);
  look([this](const Standing&) {
    EXPECT_EQ(folder.read("Stats.prn.careful"),
              "Stats.prn was written carefully. What differs from the usual way:\nhelp: " +
                  std::string(row_of(Mend::help).does) + "\n");
  });
  deed(help_off);
  press(button::stats_report);
  look([this](const Standing&) {
    EXPECT_EQ(folder.read("Stats.prn.careful"), "Stats.prn was written in the usual way.\n");
  });
  EXPECT_EQ(run(), 0);
}

TEST_F(SwitchesToCareful, TheLastCoreIsSavedAsTheQuestionOffers) {
  Questions questions;
  class Asking : public Gate {
   public:
    explicit Asking(Questions& questions) : questions_(questions) {}
    std::optional<Question> before(const Deed& deed, const Situation& now) override {
      return questions_.before(deed, now);
    }
    void given_up(const Situation& now) override { questions_.given_up(now); }

   private:
    Questions& questions_;
  } gate(questions);
  press(button::crossdate);
  press(button::choose_cores);
  const auto series = [](int entry) { return PlayStep{.kind = PlayStep::Kind::series, .number = entry}; };
  play({series(1), series(2), series(4), series(2)});  // the two that are marked at first are unmarked
  press(button::chooser_do_it);
  look([](const Standing& standing) { EXPECT_EQ(standing.situation->sample.name, "OAK4"); });
  insert_ring_at(1930);
  press(button::exit_crossdating);
  screen.then([](const Standing& standing) -> std::optional<Deed> {
    EXPECT_TRUE(standing.question);
    EXPECT_EQ(standing.question->answers[0].text, "Be Careful and Save Change First");
    return Choose{0};
  });
  look([](const Standing& standing) {
    const Situation& now = *standing.situation;
    EXPECT_EQ(now.place, Place::start);
    EXPECT_EQ(now.unwritten, std::vector<std::string>{"OAK4"});
    EXPECT_EQ(now.cores[3]->first_year, 1900);
    EXPECT_EQ(now.cores[3]->widths.size(), 61u);
    EXPECT_TRUE(now.settings.careful.has(Mend::last_core));
  });
  EXPECT_EQ(run(&gate), 0);
}

TEST_F(SwitchesToCareful, ScriptsSwitchFromTheStartAndOnTheWay) {
  folder.write("script.vrs",
               "careful help on\npress crossdate\ncareful blank-line on\nundo\npress exit_crossdating\n"
               "press quit\n");
  EXPECT_EQ(std::system(VORN_REPLAY " script.vrs"), 0);
  EXPECT_EQ(std::system(VORN_REPLAY " --careful=help script.vrs"), 0);
  folder.write("wrong.vrs", "careful hepl on\ncareful help maybe\ncareful help\n");
  EXPECT_NE(std::system(VORN_REPLAY " wrong.vrs 2>told"), 0);
  EXPECT_EQ(folder.read("told"),
            "wrong.vrs:1: there is no mend \"hepl\"\nwrong.vrs:2: expected on or off\n"
            "wrong.vrs:3: expected the name of a mend, or all, and on or off\n");
  EXPECT_NE(std::system(VORN_REPLAY " --careful=hepl script.vrs 2>told"), 0);
  EXPECT_EQ(folder.read("told"), "vorn_replay: there is no mend \"hepl\"\n");
}

}  // namespace
}  // namespace vorn
