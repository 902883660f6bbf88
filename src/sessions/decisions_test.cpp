// Decisions in words.
#include "sessions/decisions.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

SharedSeries core(const std::string& name, int first_year = 1900, std::vector<double> widths = {1, 2, 3, 4}) {
  SeriesCopy copy;
  copy.name = name;
  copy.first_year = first_year;
  for (const double width : widths) {
    copy.widths.push_back(width);
    copy.presence.push_back(1);
  }
  return std::make_shared<const SeriesCopy>(std::move(copy));
}

class InWords : public ::testing::Test {
 protected:
  InWords() {
    before.file = "oak.rwl";
    before.cores = {core("A"), core("B"), core("C")};
    before.sample_entry = 1;
    before.reference_entry = 2;
    after = before;
  }
  std::string what() {
    decision = decision_between(before, after, pressed, destination);
    return decision ? decision->what : "nothing";
  }
  std::string years() { return decision->before + ", " + decision->after; }

  Decided before, after;
  std::vector<ButtonNumber> pressed;
  std::string destination;
  std::optional<Decision> decision;
};

TEST_F(InWords, NothingIsNothing) {
  EXPECT_EQ(what(), "nothing");
  pressed = {button::save_sample, button::chooser_do_it, button::read_two_column};
  destination = "larch.rwl";
  EXPECT_EQ(what(), "nothing") << "nothing came of it";
}

TEST_F(InWords, Files) {
  after.file = "larch.rwl";
  EXPECT_EQ(what(), "Open larch.rwl");
  after.file = before.file;
  after.loads = 1;
  EXPECT_EQ(what(), "Open oak.rwl");
  EXPECT_FALSE(decision->is_final);
  pressed = {button::read_two_column};
  EXPECT_EQ(what(), "Read TRW");
  EXPECT_TRUE(decision->is_final);
}

TEST_F(InWords, Slides) {
  after.sample = core("A", 1901);
  EXPECT_EQ(what(), "Slide A by +1 year");
  EXPECT_EQ(years(), "1900 to 1903, 1901 to 1904");
  after.sample = core("A", 1890);
  EXPECT_EQ(what(), "Slide A by -10 years");
  after.sample = nullptr;
  after.reference = core("B", 1899);
  EXPECT_EQ(what(), "Slide B by -1 year");
  EXPECT_EQ(decision->cores, std::vector<std::string>{"B"});
  after.reference_entry = before.reference_entry = 9;  // a chronology: not in the store
  after.reference_stored_from = before.reference_stored_from = 1897;
  EXPECT_EQ(what(), "Slide B by +2 years");
}

TEST_F(InWords, SlidesBackToWhatIsStored) {
  before.sample = core("A", 1901);
  EXPECT_EQ(what(), "Slide A by -1 year");
}

TEST_F(InWords, Rings) {
  after.sample = core("A", 1900, {1, 2, 7, 3, 4});
  EXPECT_EQ(what(), "Insert 1902 in A");
  EXPECT_EQ(years(), "1900 to 1903, 1900 to 1904");
  after.sample = core("A", 1900, {1, 2, 4});
  EXPECT_EQ(what(), "Delete 1902 of A");
  after.sample = core("A", 1900, {9, 8, 7});
  EXPECT_EQ(what(), "Change rings of A") << "no ring taken out leads there";
}

TEST_F(InWords, DroppedChanges) {
  before.sample = core("A", 1901);
  after.sample_entry = 3;
  EXPECT_EQ(what(), "Drop the change of A");
  before.sample = nullptr;
  after.sample_entry = 1;
  before.reference = core("B", 1901);
  after.reference_entry = 3;
  EXPECT_EQ(what(), "Drop the change of B");
}

TEST_F(InWords, CoresOfTheStore) {
  after.cores[0] = core("A", 1905);
  EXPECT_EQ(what(), "Slide A by +5 years");
  EXPECT_EQ(years(), "1900 to 1903, 1905 to 1908");
  pressed = {button::save_sample};
  EXPECT_EQ(what(), "Save Change: Slide A by +5 years");
  pressed = {button::save_reference};
  EXPECT_EQ(what(), "Save Change: Slide A by +5 years");
  pressed.clear();
  after.cores[0] = core("A", 1900, {1, 2, 9, 8});
  EXPECT_EQ(what(), "Change the width of 1902 and 1903 in A");
  after.cores[1] = core("B", 1905);
  EXPECT_EQ(what(), "Change A and B");
}

TEST_F(InWords, CoresThatComeAndGo) {
  after.cores.push_back(core("M"));
  EXPECT_EQ(what(), "Make the mean M");
  after.cores = {before.cores[0]};
  EXPECT_EQ(what(), "Delete B and C");
  destination = "larch.rwl";
  EXPECT_EQ(what(), "Delete B and C") << "they were not moved by that button";
  pressed = {button::chooser_do_it};
  EXPECT_EQ(what(), "Move B and C to larch.rwl");
  EXPECT_TRUE(decision->is_final);
  after.cores.clear();
  EXPECT_EQ(what(), "Move A, B and C to larch.rwl");
}

TEST_F(InWords, NamesTenAndCountsTheRest) {
  after.cores.clear();
  before.cores.clear();
  for (int k = 1; k <= 13; ++k) before.cores.push_back(core("T" + std::to_string(k)));
  EXPECT_EQ(what(), "Delete T1, T2, T3, T4, T5, T6, T7, T8, T9, T10 and 3 more");
  before.cores.resize(10);
  EXPECT_EQ(what(), "Delete T1, T2, T3, T4, T5, T6, T7, T8, T9 and T10");
}

TEST_F(InWords, AllSettings) {
  after.settings.splineon = !before.settings.splineon;
  EXPECT_EQ(what(), after.settings.splineon ? "Spline on" : "Spline off");
  after.settings.aron = !before.settings.aron;
  after.settings.logon = !before.settings.logon;
  const auto on = [](bool is) { return std::string(is ? "on" : "off"); };
  EXPECT_EQ(what(), "Spline " + on(after.settings.splineon) + ", AR model " + on(after.settings.aron) +
                        ", Logarithms " + on(after.settings.logon));
  after.settings = before.settings;
  after.settings.ss = before.settings.ss + 1;
  const auto from = [](int to, int was) { return std::to_string(to) + ", not " + std::to_string(was); };
  const auto years = [](int to, int was) {
    return std::to_string(to) + " years, not " + std::to_string(was);
  };
  EXPECT_EQ(what(), "Spline of " + years(after.settings.ss, before.settings.ss));
  after.settings = before.settings;
  after.settings.jpr = before.settings.jpr + 1;
  EXPECT_EQ(what(), "AR order " + from(after.settings.jpr, before.settings.jpr));
  after.settings = before.settings;
  after.settings.seg = before.settings.seg + 2;
  EXPECT_EQ(what(), "Segments of " + years(after.settings.seg, before.settings.seg));
  after.settings = before.settings;
  after.settings.olap = before.settings.olap + 2;
  EXPECT_EQ(what(), "Overlap " + years(after.settings.olap, before.settings.olap));
}

TEST_F(InWords, SlidesOfTheSameSeriesGoOn) {
  const auto slide = [](const std::string& words, bool is_final = false) {
    return Decision{.what = words,
                    .cores = {"A by B"},
                    .before = words + " before",
                    .after = words + " after",
                    .is_final = is_final};
  };
  const Decision three = slide("Slide A by B by +3 years"), back = slide("Slide A by B by -2 years");
  EXPECT_TRUE(goes_on(three, back));
  EXPECT_EQ(both(three, back).what, "Slide A by B by +1 year");
  EXPECT_EQ(both(three, back).before, "Slide A by B by +3 years before");
  EXPECT_EQ(both(three, back).after, "Slide A by B by -2 years after");
  EXPECT_EQ(both(three, three).what, "Slide A by B by +6 years");
  EXPECT_EQ(both(back, slide("Slide A by B by +1 year")).what, "Slide A by B by -1 year");
  EXPECT_EQ(both(back, slide("Slide A by B by +2 years")).what, "Slide A by B by 0 years");

  Decision other = back;
  other.cores = {"B"};
  EXPECT_FALSE(goes_on(three, other));
  EXPECT_FALSE(goes_on(three, {.what = "Insert 1930 in A", .cores = three.cores}));
  EXPECT_FALSE(goes_on({.what = "Insert 1930 in A", .cores = three.cores}, three));
  EXPECT_FALSE(goes_on(slide("Slide A by B by +3 years", true), back));
}

}  // namespace
}  // namespace vorn
