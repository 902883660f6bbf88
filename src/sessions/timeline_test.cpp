// What was done, taken back and done again. Steps are told by the codes of their keys, answers by their
// names.
#include "sessions/timeline.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

class Doing : public ::testing::Test {
 protected:
  // A step, behind so many answers as there are, that leads to answers of these names.
  void step(char code, const std::string& names = "") {
    timeline.happened({0, 0, code}, answers.size());
    for (const char name : names) answers.push_back({.name = std::string(1, name)});
  }
  // A decision of the steps behind the last one.
  void decide(const std::string& what, bool only_wrote = false, bool is_final = false) {
    const std::size_t from = timeline.taken() == 0 ? 0 : timeline.entries()[timeline.taken() - 1].to;
    timeline.decided({.what = what, .is_final = is_final}, from, only_wrote);
  }
  void undo() {
    const std::size_t stay = timeline.undo(answers);
    EXPECT_EQ(stay, answers.size());
  }
  void redo() { timeline.redo(answers); }
  void cut(std::size_t count) { answers.resize(timeline.cut(count, answers.size())); }

  std::string steps() const {
    std::string codes;
    for (const TimelineStep& step : timeline.steps()) codes += static_cast<char>(step.event.code);
    return codes;
  }
  std::string names() const {
    std::string all;
    for (const FileAnswer& answer : answers) all += answer.name;
    return all;
  }

  Timeline timeline;
  std::vector<FileAnswer> answers;
};

TEST_F(Doing, TakesBackTheStepsOfADecisionWithTheirAnswers) {
  answers.push_back({.name = "0"});  // of the start
  step('a', "A");
  decide("first");
  step('v', "V");  // only looked at
  step('b', "BC");
  decide("second");
  undo();
  EXPECT_EQ(steps(), "a");
  EXPECT_EQ(names(), "0A");
  EXPECT_EQ(timeline.taken(), 1u);
  EXPECT_EQ(timeline.to_redo(), 1u);
  redo();
  EXPECT_EQ(steps(), "avb");
  EXPECT_EQ(names(), "0AVBC");
  EXPECT_FALSE(timeline.to_redo());
  undo();
  undo();
  EXPECT_EQ(steps(), "");
  EXPECT_EQ(names(), "0");
  EXPECT_FALSE(timeline.to_undo());
  redo();
  EXPECT_EQ(steps(), "a");
  EXPECT_EQ(names(), "0A");
  redo();
  EXPECT_EQ(steps(), "avb");
  EXPECT_EQ(names(), "0AVBC");
}

TEST_F(Doing, ForgetsWhatDecidedNothingBetweenTwoStepsBack) {
  step('a', "A");
  decide("first");
  step('b', "B");
  decide("second");
  undo();
  step('v', "V");
  step('w');
  redo();
  EXPECT_EQ(steps(), "ab");
  EXPECT_EQ(names(), "AB");
  undo();
  step('v', "V");
  undo();
  EXPECT_EQ(steps(), "");
  redo();
  redo();
  EXPECT_EQ(steps(), "ab");
  EXPECT_EQ(names(), "AB");
}

TEST_F(Doing, DropsWhatWasTakenBackWhenSomethingElseIsDecided) {
  step('a', "A");
  decide("first");
  step('b', "B");
  decide("second");
  undo();
  step('c', "C");
  decide("third");
  EXPECT_FALSE(timeline.to_redo());
  ASSERT_EQ(timeline.entries().size(), 2u);
  EXPECT_EQ(timeline.entries()[1].decision.what, "third");
  EXPECT_EQ(timeline.entries()[1].from, 1u);
  EXPECT_EQ(timeline.entries()[1].to, 2u);
  EXPECT_EQ(names(), "AC");
}

TEST_F(Doing, GoesOnBehindAStepBackAndForth) {
  step('a', "A");
  decide("slide");
  step('v', "V");
  undo();
  redo();
  EXPECT_EQ(steps(), "a");
  step('b', "B");
  timeline.went_on({.what = "slide further"});
  undo();
  EXPECT_EQ(steps(), "");
  redo();
  EXPECT_EQ(steps(), "ab") << "all of the steps that it went on with";
  EXPECT_EQ(names(), "AB");
  EXPECT_EQ(timeline.entries()[0].decision.what, "slide further");
}

TEST_F(Doing, KeepsTheNoteOfADecisionThatGoesOn) {
  step('a');
  decide("slide");
  timeline.note(0, "sure");
  timeline.note(1, "of nothing");
  step('b');
  timeline.went_on({.what = "slide further"});
  ASSERT_EQ(timeline.entries().size(), 1u);
  EXPECT_EQ(timeline.entries()[0].decision.note, "sure");
  EXPECT_EQ(timeline.entries()[0].to, 2u);
}

TEST_F(Doing, PassesOverWhatOnlyWrote) {
  step('w', "W");
  decide("write first", true);
  EXPECT_FALSE(timeline.to_undo());
  step('a', "A");
  decide("change");
  step('x', "X");
  decide("write", true);
  step('y', "Y");
  decide("write again", true);
  EXPECT_EQ(timeline.to_undo(), 1u);
  undo();
  EXPECT_EQ(steps(), "w");
  EXPECT_EQ(timeline.taken(), 1u);
  EXPECT_FALSE(timeline.to_undo());
  redo();
  EXPECT_EQ(steps(), "waxy");
  EXPECT_EQ(names(), "WAXY");
  EXPECT_EQ(timeline.taken(), 4u);
}

TEST_F(Doing, EndsTakingBackAtWhatIsFinal) {
  step('a');
  decide("change");
  step('m');
  decide("move", false, true);
  EXPECT_FALSE(timeline.to_undo());
  step('w');
  decide("write", true);
  EXPECT_FALSE(timeline.to_undo()) << "what only wrote does not lead over it";
  step('b');
  decide("change again");
  EXPECT_EQ(timeline.to_undo(), 3u);
  undo();
  EXPECT_EQ(steps(), "amw");
  EXPECT_FALSE(timeline.to_undo());
  redo();
  EXPECT_EQ(steps(), "amwb");
}

// --- Cuts.

TEST_F(Doing, IsCutBehindTheLastDecision) {
  step('a', "A");
  decide("first");
  step('v', "V");
  step('w', "W");
  cut(2);
  EXPECT_EQ(steps(), "av");
  EXPECT_EQ(names(), "AV");
  EXPECT_EQ(timeline.taken(), 1u);
}

TEST_F(Doing, LosesTheDecisionsThatItIsCutIn) {
  step('a', "A");
  decide("first");
  step('b', "B");
  step('c', "C");
  decide("second");
  cut(2);
  EXPECT_EQ(steps(), "ab");
  EXPECT_EQ(timeline.entries().size(), 1u);
  cut(0);
  EXPECT_EQ(steps(), "");
  EXPECT_EQ(names(), "");
  EXPECT_TRUE(timeline.entries().empty());
  EXPECT_FALSE(timeline.to_undo());
}

TEST_F(Doing, IsNotCutBehindItsEnd) {
  step('a', "A");
  cut(1);
  cut(7);
  EXPECT_EQ(steps(), "a");
  EXPECT_EQ(names(), "A");
}

TEST_F(Doing, CanBeDoneAgainWhenCutBehindWhereItWasTakenBack) {
  step('a', "A");
  decide("first");
  step('b', "B");
  decide("second");
  undo();
  step('v', "V");
  step('w', "W");
  cut(2);
  EXPECT_EQ(steps(), "av");
  cut(1);
  redo();
  EXPECT_EQ(steps(), "ab");
  EXPECT_EQ(names(), "AB");
}

TEST_F(Doing, CannotBeDoneAgainWhenCutBeforeWhereItWasTakenBack) {
  step('a', "A");
  step('b', "B");
  decide("first");
  step('c', "C");
  decide("second");
  undo();
  cut(1);
  EXPECT_FALSE(timeline.to_redo());
  EXPECT_TRUE(timeline.entries().empty());
  EXPECT_EQ(steps(), "a");
}

}  // namespace
}  // namespace vorn
