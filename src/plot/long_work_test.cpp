#include "plot/long_work.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "plot/plot.h"

namespace vorn {
namespace {

// Keeps what it is told.
class ListeningScreen : public Screen {
 public:
  void show(const Page&) override { ++shown; }
  Event next_event() override { throw ProgramEnd(EndReason::closed); }
  void progress(std::string_view what, double share) override { told.emplace_back(what, share); }

  std::vector<std::pair<std::string, double>> told;
  int shown = 0;
};

using Told = std::vector<std::pair<std::string, double>>;

struct LongWorks : testing::Test {
  ListeningScreen screen;
  Plot plot{screen};
};

TEST_F(LongWorks, TellTheScreenHowFarTheyAre) {
  LongWork work(plot, "Stats.prn");
  work.at(0.25);
  work.at(1);
  EXPECT_EQ(screen.told, (Told{{"Stats.prn", 0.25}, {"Stats.prn", 1}}));
}

TEST_F(LongWorks, ArePartsOfTheWorkAroundThem) {
  LongWork whole(plot, "Loading");
  whole.part(0.5, 0.75);
  {
    LongWork indices(plot, "Indices");
    indices.at(0.5);
    indices.part(0.5, 1);
    LongWork cores(plot, "cores");
    cores.at(1);
  }
  whole.at(0.875);
  EXPECT_EQ(
      screen.told,
      (Told{
          {"Loading", 0.5}, {"Loading", 0.625}, {"Loading", 0.625}, {"Loading", 0.75}, {"Loading", 0.875}}));
}

TEST_F(LongWorks, StandAloneAgainWhenTheWorkAroundThemHasEnded) {
  try {
    LongWork whole(plot, "Loading");
    plot.csrpos();
  } catch (const ProgramEnd&) {
  }
  LongWork(plot, "Indices").at(0.5);
  EXPECT_EQ(screen.told, (Told{{"Indices", 0.5}}));
}

TEST_F(LongWorks, ChangeNothingOnThePageAndShowNothing) {
  LongWork work(plot, "Stats.prn");
  work.at(0.5);
  EXPECT_TRUE(plot.page().marks().empty());
  EXPECT_EQ(screen.shown, 0);
}

}  // namespace
}  // namespace vorn
