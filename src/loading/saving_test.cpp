#include "loading/saving.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/file_bench.h"
#include "toolkit/button_table.h"
#include "toolkit/buttons.h"

namespace vorn {
namespace {

class Saving : public FileBench {
 protected:
  Saving() {
    set_up_graph(w);
    w.cnam(1) = "site.rwl";
  }
  void two_cores() {
    add_core(1953, {0.1, 0.2});
    add_core(1960, {0.3});
    w.nam(1) = "CORE01";
    w.nam(2) = "CORE02";
  }
  void chronology() {
    w.cfy(1) = 1950;
    w.cyr(1) = 1;
    w.crn(1, 1) = 1.0;
    w.num(1, 1) = 5;
  }
  std::vector<ButtonNumber> lit() const {
    std::vector<ButtonNumber> all;
    for (const ButtonNumber n : ButtonRange{button::raw_tucson, button::crn_column}) {
      if (w.b(n).lit) all.push_back(n);
    }
    return all;
  }
};

TEST_F(Saving, TheButtonsOfTheTablesShowWhatIsChosenAtFirst) {
  const std::vector<ButtonNumber> of_the_tables = lit();
  show_outputs(w, w);
  EXPECT_EQ(lit(), of_the_tables);
  EXPECT_EQ(lit(), (std::vector<ButtonNumber>{button::raw_tucson, button::crn_index}));
}

TEST_F(Saving, AnOutputChosenIsKeptAsAValueAndItsButtonFollows) {
  choose_output(w, w, button::raw_compact);
  EXPECT_EQ(w.raw_output, Layout::compact);
  EXPECT_EQ(w.mtext(message::raw_name).trimmed(), "Compact.prn");
  choose_output(w, w, button::crn_column);
  EXPECT_EQ(w.crn_output, ChronologyOutput::column);
  EXPECT_EQ(w.mtext(message::crn_name).trimmed(), "Column.prn");
  EXPECT_EQ(lit(), (std::vector<ButtonNumber>{button::raw_compact, button::crn_column}));
  choose_output(w, w, button::raw_heidelberg);
  EXPECT_EQ(lit(), (std::vector<ButtonNumber>{button::raw_heidelberg, button::crn_column}));
}

TEST_F(Saving, TheValueChoosesWhateverButtonIsLit) {
  two_cores();
  w.b(button::raw_tucson).lit = true;
  w.raw_output = Layout::heidelberg;
  write_raw(w);
  EXPECT_EQ(ScratchFolder::read("site.RWW").substr(0, 8), "HEADER:\n");
}

TEST_F(Saving, TheNameOfTheCoresIsShownAsMessageLine21) {
  two_cores();
  write_raw(w);
  EXPECT_EQ(w.mtext(message::raw_name).trimmed(), "site.RWW");
  EXPECT_EQ(w.ios, status::ok);
}

TEST_F(Saving, HowFarItIsIsToldOfManyCores) {
  while (w.nc < 128) add_core(1953, {0.1, 0.2});
  write_raw(w);
  EXPECT_EQ(screen.told, (std::vector<std::pair<std::string, double>>{{"site.RWW", 0.5}, {"site.RWW", 1}}));
}

TEST_F(Saving, TroublesAreToldOnThePageAndTheStatusStays) {
  two_cores();
  std::filesystem::create_symlink("/dev/full", "site.RWW");
  write_raw(w);
  EXPECT_EQ(messages(), Messages{"Closesite.RWW fail err =    28"});
  EXPECT_EQ(w.ios, Status(28));
}

TEST_F(Saving, WithoutACoreAnOlderFileStays) {
  ScratchFolder::write("site.RWW", "older");
  write_raw(w);
  EXPECT_EQ(messages(), Messages{"No cores to save"});
  EXPECT_EQ(ScratchFolder::read("site.RWW"), "older");
}

TEST_F(Saving, WithoutACoreOrAnOlderFileAnEmptyOneIsMade) {
  write_raw(w);
  EXPECT_EQ(messages(), Messages{});
  EXPECT_TRUE(ScratchFolder::exists("site.RWW"));
  EXPECT_EQ(ScratchFolder::read("site.RWW"), "");
}

TEST_F(Saving, CoresTooWideForTheCompactLayoutAreSaidOutsideThePage) {
  two_cores();
  add_core(1953, {9.9994, -1, 0.5});
  add_core(1953, {9.9995});  // rounded, 10 mm
  w.nam(3) = "FITS";
  w.nam(4) = "WIDE";
  write_raw(w);
  EXPECT_EQ(messages(), Messages{});  // nothing is too wide for the Tucson layout
  w.raw_output = Layout::compact;
  write_raw(w);
  EXPECT_EQ(messages(), Messages{"site.RWW: widths of 10 mm or more do not fit and are lost, in WIDE"});
  EXPECT_EQ(plot.page().marks().size(), 0u);
}

TEST_F(Saving, OfManySuchCoresTenAreNamed) {
  for (int k = 0; k < 12; ++k) add_core(1953, {10.0});
  for (int i = 1; i <= 12; ++i) w.nam(i) = "C" + std::to_string(i);
  w.raw_output = Layout::compact;
  write_raw(w);
  EXPECT_EQ(messages(),
            Messages{"site.RWW: widths of 10 mm or more do not fit and are lost, in C1 C2 C3 C4 C5 "
                     "C6 C7 C8 C9 C10 and 2 more"});
}

TEST_F(Saving, TheNameOfTheChronologyIsShownAsMessageLine52) {
  chronology();
  write_ind(w);
  EXPECT_EQ(w.mtext(message::crn_written).trimmed(), "Index.prn");
  w.crn_output = ChronologyOutput::column;
  write_ind(w);
  EXPECT_EQ(w.mtext(message::crn_written).trimmed(), "Column.prn");
  EXPECT_TRUE(ScratchFolder::exists("Column.prn"));
}

TEST_F(Saving, WithNoOutputOfTheChronologyNothingIsShownOrWritten) {
  chronology();
  w.crn_output = ChronologyOutput::none;
  write_ind(w);
  EXPECT_TRUE(w.mtext(message::crn_written).blank());
  EXPECT_FALSE(ScratchFolder::exists("Index.prn"));
}

TEST_F(Saving, CarefullyNoCoreIsTooWideForTheCompactLayout) {
  two_cores();
  add_core(1953, {12.5, 0.001});
  w.raw_output = Layout::compact;
  w.careful.set(Mend::compact_widths, true);
  write_raw(w);
  EXPECT_EQ(messages(), Messages{});
  EXPECT_EQ(ScratchFolder::read("site.RWW").find('*'), std::string::npos);
}

TEST_F(Saving, CarefullyNamesStandToTheLeftInHeidelbergFiles) {
  two_cores();
  w.nam(1) = "CORE0123";
  w.raw_output = Layout::heidelberg;
  w.careful.set(Mend::heidelberg_names, true);
  write_raw(w);
  EXPECT_NE(ScratchFolder::read("site.RWW").find("\nKeyCode=CORE0123    \n"), std::string::npos);
}

}  // namespace
}  // namespace vorn
