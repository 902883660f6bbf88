#include "desk/methods.h"

#include <gtest/gtest.h>

#include <sstream>

#include "desk/specimens_for_tests.h"

namespace vorn {
namespace {

Decision decision(std::string what, std::vector<std::string> cores) {
  Decision made;
  made.what = std::move(what);
  made.cores = std::move(cores);
  return made;
}

// The text with its lines joined.
std::string in_one_line(std::string text) {
  std::ranges::replace(text, '\n', ' ');
  return text;
}

std::string methods(const Standing& standing) {
  return in_one_line(methods_text(standing, "1.2"));
}

bool has(const std::string& text, const std::string& part) {
  return text.find(part) != text.npos;
}

TEST(Methods, TheRecipeIsThatOfTheSettings) {
  const std::string text = methods(standing_at(Place::start));
  EXPECT_TRUE(
      text.starts_with("Series were cross-dated with Vorn 1.2. The ring widths of near.rwl were detrended"))
      << text;
  EXPECT_TRUE(has(text, "half of the amplitude at a period of 32 years")) << text;
  EXPECT_TRUE(has(text, "autoregressive models of an order of at most 11 (Burg 1975, Cook 1985)")) << text;
  EXPECT_TRUE(has(text, "transformed by natural logarithms")) << text;
  EXPECT_TRUE(has(text, "segments of 50 years; in the report of correlations one begins every 25 years"))
      << text;
}

TEST(Methods, StepsThatAreOffAreSaidToBe) {
  Situation now = situation_at(Place::start);
  now.settings.splineon = now.settings.logon = false;
  now.settings.jpr = 1;  // never a model
  EXPECT_TRUE(has(methods(standing_at(now)),
                  "The ring widths of near.rwl were not detrended, not prewhitened and not transformed by "
                  "logarithms."));
}

TEST(Methods, EveryChangeThatHoldsIsTold) {
  Standing standing = standing_at(Place::start);
  standing.decisions = {decision("Insert 1750 in T001", {"T001"}), decision("Stats Rep", {}),
                        decision("Delete T003 and T004", {"T003", "T004"}),
                        decision("Insert 1760 in T001", {"T001"})};
  standing.decisions[0].before = "1701 to 1850";
  standing.decisions[0].after = "1701 to 1851";
  standing.decisions[0].note = "narrow ring of 1749, no latewood";
  standing.taken = 3;
  const std::string text = methods_text(standing, "1.2");
  EXPECT_TRUE(has(text,
                  "\n1. Inserted 1750 in T001 (1701 to 1850 before, 1701 to 1851 after). Reason: narrow ring "
                  "of 1749, no\n"
                  "   latewood.\n2. Deleted T003 and T004.\n"))
      << text;
  EXPECT_FALSE(has(text, "1760")) << text;
  EXPECT_FALSE(has(text, "Stats Rep")) << text;
}

// The user gives the reason when the ring is inserted, and saves the change later.
TEST(Methods, AChangeOfAWorkingCopyIsToldOnceWithItsReasons) {
  Standing standing = standing_at(Place::start);
  standing.decisions = {decision("Insert 1750 in T001", {"T001"}),
                        decision("Slide T001 by +1 year", {"T001"}),
                        decision("Save Change: Change rings of T001", {"T001"})};
  standing.decisions[0].in_copy = standing.decisions[1].in_copy = true;
  standing.decisions[0].note = "a ring is missing";
  standing.decisions[2].note = "checked!";
  standing.taken = 3;
  EXPECT_TRUE(methods(standing).ends_with(
      " as follows.  1. Changed rings of T001. Reason: a ring is missing. Reason: checked! "))
      << methods(standing);
}

TEST(Methods, AChangeThatWasDroppedIsNotToldAndOneThatIsNotSavedIsSaidToBe) {
  Standing standing = standing_at(Place::start);
  standing.decisions = {decision("Insert 1750 in T001", {"T001"}),
                        decision("Drop the change of T001", {"T001"}),
                        decision("Slide T002 by +1 year", {"T002"})};
  for (Decision& made : standing.decisions) made.in_copy = true;
  standing.taken = 3;
  EXPECT_TRUE(
      methods(standing).ends_with(" as follows.  1. Moved T002 by +1 year, in the working copy, not saved. "))
      << methods(standing);
}

// The raw-data editor changes the cores themselves.
TEST(Methods, ADroppedCopyLeavesWhatWasDoneToTheCoreItself) {
  Standing standing = standing_at(Place::start);
  standing.decisions = {decision("Insert 1750 in T001", {"T001"}),
                        decision("Slide T001 by +1 year", {"T001"}),
                        decision("Drop the change of T001", {"T001"})};
  standing.decisions[1].in_copy = standing.decisions[2].in_copy = true;
  standing.taken = 3;
  EXPECT_TRUE(methods(standing).ends_with(" as follows.  1. Inserted 1750 in T001. ")) << methods(standing);
}

TEST(Methods, WithoutAChangeThatIsSaid) {
  EXPECT_TRUE(has(methods(standing_at(Place::start)), " No series was changed."));
  EXPECT_TRUE(has(methods(Standing()), " No series was changed."));
}

TEST(Methods, NoLineIsWiderThan100Columns) {
  Standing standing = standing_at(Place::start);
  standing.decisions = {decision("Insert 1750 in T001", {"T001"})};
  std::string umlauts;
  for (int k = 0; k < 150; ++k) umlauts += "ä";
  standing.decisions[0].note = std::string(250, 'x') + " and words " + umlauts;
  standing.taken = 1;
  const std::string text = methods_text(standing, "1.2");
  std::istringstream lines(text);
  std::size_t widest = 0;
  for (std::string line; std::getline(lines, line);) {
    const auto columns = std::ranges::count_if(line, [](char c) { return (c & 0xC0) != 0x80; });
    widest = std::max(widest, static_cast<std::size_t>(columns));
    EXPECT_TRUE(line.empty() || (line.back() & 0xC0) != 0xC0) << "broken within a character";
  }
  EXPECT_EQ(widest, 100u);
  EXPECT_EQ(std::ranges::count(text, 'x') >= 250, true);
}

}  // namespace
}  // namespace vorn
