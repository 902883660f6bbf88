// Walks at random over every screen of the program, on the examples, on real files and on files with little
// sense in them. VORN_WALK_STEPS makes each walk longer, VORN_WALK_SEED takes another way, VORN_WALK_TRACE
// tells every step.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "menus/main_program.h"
#include "plot/plot.h"
#include "records/disk_files.h"
#include "support/scratch_folder.h"
#include "toolkit/buttons.h"
#include "walk/walk_files.h"
#include "walk/walker.h"
#include "workspace/vorndata.h"

namespace vorn {
namespace {

constexpr int usual_steps = 2'000;
constexpr std::uint32_t usual_seed = 1;

std::uint32_t number_from(const char* variable, std::uint32_t usual) {
  const char* const value = std::getenv(variable);
  return value == nullptr ? usual : static_cast<std::uint32_t>(std::strtoul(value, nullptr, 10));
}

class Walk : public ::testing::TestWithParam<WalkFiles> {};

// The program is started as often as it ends, each time on files as they were.
TEST_P(Walk, EndsWhereverItIsStoppedWithEverythingInOrder) {
  const WalkFiles& files = GetParam();
  const std::string missing = files.first_missing();
  if (!missing.empty()) GTEST_SKIP() << "no " << missing << " here";
  const std::uint32_t seed = number_from("VORN_WALK_SEED", usual_seed);
  const int steps = static_cast<int>(number_from("VORN_WALK_STEPS", usual_steps));
  std::cout << "walk " << files.name << ", seed " << seed << ", " << steps << " steps" << std::endl;

  Walker walker(seed, steps, files.undated_records);
  int starts = 0;
  for (; !walker.done(); ++starts) {
    const ScratchFolder folder;
    files.lay_out();
    Plot plot(walker);
    DiskFiles disk;
    const auto w = std::make_unique<Workspace>(plot, disk);
    std::ostringstream log;
    w->log = &log;
    walker.begin(*w);
    try {
      run_program(*w);
    } catch (const ProgramEnd&) {  // of whatever kind: it is started again
    }
    ASSERT_LT(starts, steps);
  }
  EXPECT_EQ(walker.complaint(), "");
  std::cout << walker.hits().size() << " buttons, " << starts << " starts" << std::endl;
  // The walk came through all the screens.
  for (const ButtonNumber n : {button::crossdate, button::chooser_do_it})
    EXPECT_TRUE(walker.hits().contains(n)) << plain(n);
  EXPECT_GE(walker.hits().size(), 45u);
}

INSTANTIATE_TEST_SUITE_P(Files, Walk, ::testing::ValuesIn(all_walk_files()),
                         [](const ::testing::TestParamInfo<WalkFiles>& walk) { return walk.param.name; });

}  // namespace
}  // namespace vorn
