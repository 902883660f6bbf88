// Walks at random over every screen of the program, on the examples, on real files and on files with little
// sense in them. VORN_WALK_STEPS makes each walk longer, VORN_WALK_SEED takes another way, VORN_WALK_TRACE
// tells every step.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <random>
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

constexpr int usual_steps = 2'000, usual_careful_steps = 400;
constexpr std::uint32_t usual_seed = 1;

std::uint32_t number_from(const char* variable, std::uint32_t usual) {
  const char* const value = std::getenv(variable);
  return value == nullptr ? usual : static_cast<std::uint32_t>(std::strtoul(value, nullptr, 10));
}

// The program is started as often as it ends, each time on files as they were. Returns how often.
int walk_over(const WalkFiles& files, Walker& walker, int steps, const Careful& careful) {
  int starts = 0;
  for (; !walker.done(); ++starts) {
    const ScratchFolder folder;
    files.lay_out();
    Plot plot(walker);
    DiskFiles disk;
    const auto w = std::make_unique<Workspace>(plot, disk);
    std::ostringstream log;
    w->log = &log;
    w->careful = careful;
    walker.begin(*w);
    try {
      run_program(*w);
    } catch (const ProgramEnd&) {  // of whatever kind: it is started again
    }
    if (starts >= steps) ADD_FAILURE() << "ends at every start";
    if (starts >= steps) break;
  }
  return starts;
}

class Walk : public ::testing::TestWithParam<WalkFiles> {};

TEST_P(Walk, EndsWhereverItIsStoppedWithEverythingInOrder) {
  const WalkFiles& files = GetParam();
  const std::string missing = files.first_missing();
  if (!missing.empty()) GTEST_SKIP() << "no " << missing << " here";
  const std::uint32_t seed = number_from("VORN_WALK_SEED", usual_seed);
  const int steps = static_cast<int>(number_from("VORN_WALK_STEPS", usual_steps));
  std::cout << "walk " << files.name << ", seed " << seed << ", " << steps << " steps" << std::endl;

  Walker walker(seed, steps, files.undated_records);
  const int starts = walk_over(files, walker, steps, {});
  EXPECT_EQ(walker.complaint(), "");
  std::cout << walker.hits().size() << " buttons, " << starts << " starts" << std::endl;
  // The walk came through all the screens.
  for (const ButtonNumber n : {button::crossdate, button::chooser_do_it})
    EXPECT_TRUE(walker.hits().contains(n)) << plain(n);
  EXPECT_GE(walker.hits().size(), 45u);
}

INSTANTIATE_TEST_SUITE_P(Files, Walk, ::testing::ValuesIn(all_walk_files()),
                         [](const ::testing::TestParamInfo<WalkFiles>& walk) { return walk.param.name; });

// --- Carefully: on all files with all mends, and on the first with some at random.

struct CarefulWalk {
  std::string name;
  WalkFiles files;
  std::uint32_t seed = usual_seed;
  Careful careful;
};

std::ostream& operator<<(std::ostream& out, const CarefulWalk& walk) {
  return out << walk.name;
}

std::vector<CarefulWalk> careful_walks() {
  std::vector<CarefulWalk> walks;
  for (const WalkFiles& files : all_walk_files())
    walks.push_back({files.name, files, usual_seed, Careful::everything()});
  for (std::uint32_t seed = 1; seed <= 8; ++seed) {
    walks.push_back({"some" + std::to_string(seed), all_walk_files().front(), seed,
                     Careful::of_bits(static_cast<std::uint32_t>(std::mt19937(seed)()))});
  }
  return walks;
}

class Carefully : public ::testing::TestWithParam<CarefulWalk> {};

TEST_P(Carefully, AWalkEndsWithEverythingInOrder) {
  const CarefulWalk& walk = GetParam();
  const std::string missing = walk.files.first_missing();
  if (!missing.empty()) GTEST_SKIP() << "no " << missing << " here";
  const std::uint32_t seed = number_from("VORN_WALK_SEED", walk.seed);
  const int steps = static_cast<int>(number_from("VORN_WALK_STEPS", usual_careful_steps));
  Walker walker(seed, steps, walk.files.undated_records);
  walk_over(walk.files, walker, steps, walk.careful);
  EXPECT_EQ(walker.complaint(), "") << names_of(walk.careful);
}

INSTANTIATE_TEST_SUITE_P(Walks, Carefully, ::testing::ValuesIn(careful_walks()),
                         [](const ::testing::TestParamInfo<CarefulWalk>& walk) { return walk.param.name; });

}  // namespace
}  // namespace vorn
