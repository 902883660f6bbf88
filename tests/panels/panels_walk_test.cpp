// Random walks with all panels open: they are drawn at every wait and disturb nothing, and whatever is
// clicked on them the program goes on.
#include <gtest/gtest.h>

#include <iostream>
#include <random>
#include <sstream>

#include "apps/whole_program.h"
#include "panels/panel_desk.h"
#include "records/disk_files.h"
#include "sessions/session.h"
#include "support/scratch_folder.h"
#include "walk/sight.h"
#include "walk/walk_files.h"
#include "walk/walker.h"

namespace vorn {
namespace {

constexpr std::uint32_t usual_seed = 5;
#ifdef NDEBUG
constexpr std::uint32_t usual_steps = 100;
#else
constexpr std::uint32_t usual_steps = 30;  // under the sanitizers each takes ten times as long
#endif

// The walker's pages, one after the other.
class Watcher : public Inbox {
 public:
  explicit Watcher(Walker& walker) : walker_(walker) {}
  void show(const Page& page) override {
    pages.push_back(text_of(page));
    walker_.show(page);
  }
  void forget_pending() override { walker_.forget_pending(); }
  Event next_event() override { return walker_.next_event(); }

  std::vector<std::string> pages;

 protected:
  Walker& walker_;
};

// Draws all panels at every wait, in views of any size, and clicks on them now and then.
class PanelUser : public Watcher {
 public:
  PanelUser(Walker& walker, std::uint32_t seed, int clicks_in_100)
      : Watcher(walker), random_(seed), clicks_(clicks_in_100) {}

  void stand(const SharedStanding& standing) override {
    desk_.stand(standing);
    if (standing->situation->wait == Wait::menu) {
      studies_.study(
          standing->situation, [](const std::string&) { return true; },
          [this](const SharedFindings& findings) { desk_.found(findings, ""); });
    }
    spots_.clear();
    for (const PanelName name : all_panels) look_at(name);
  }
  void notice(std::string_view text) override { notices.emplace_back(text); }
  Deed next_deed() override {
    if (!spots_.empty() && below(100) < clicks_) {
      std::string trouble;
      ++clicked;
      const Spot spot = spots_[static_cast<std::size_t>(below(static_cast<int>(spots_.size())))];
      if (auto play = desk_.click(spot, trouble)) {
        ++played;
        return std::move(*play);
      }
    }
    if (clicks_ > 0 && below(100) < 3) {
      if (auto play = desk_.step_core(below(2) == 0 ? 1 : -1)) return std::move(*play);
    }
    return walker_.next_event();
  }

  std::vector<std::string> notices;
  int drawn = 0, clicked = 0, played = 0;

 private:
  int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random_); }

  void look_at(PanelName name) {
    PanelView view{
        .width = 200 + below(3000), .height = 60 + below(1500), .scroll = below(3) == 0 ? below(4000) : 0};
    if (below(3) == 0) view.axis = PanelView::Axis{view.width * 0.07, view.width * 0.91};
    const Panel panel = desk_.panel(name, view);
    ++drawn;
    EXPECT_EQ(panel.page.across(), view.width);
    EXPECT_EQ(panel.page.down(), view.height);
    EXPECT_GE(panel.content_height, 0);
    for (const Spot& spot : panel.spots) {
      EXPECT_LT(spot.place.x1, spot.place.x2) << id_of(name) << ": " << spot.tip;
      EXPECT_LT(spot.place.y1, spot.place.y2) << id_of(name) << ": " << spot.tip;
      EXPECT_FALSE(spot.tip.empty());
      if (spot.does()) spots_.push_back(spot);
    }
    EXPECT_TRUE(text_of(panel.page).starts_with("size "));
    EXPECT_NE(desk_.csv(name).find('\n'), std::string::npos);
  }

  std::mt19937 random_;
  int clicks_;
  PanelDesk desk_;
  Studies studies_;
  std::vector<Spot> spots_;
};

class PanelWalk : public ::testing::TestWithParam<WalkFiles> {
 protected:
  void SetUp() override {
    const std::string missing = GetParam().first_missing();
    if (!missing.empty()) GTEST_SKIP() << "no " << missing << " here";
    seed = number_from("VORN_WALK_SEED", usual_seed);
    steps = static_cast<int>(number_from("VORN_WALK_STEPS", usual_steps));
    std::cout << "panels " << GetParam().name << ", seed " << seed << ", " << steps << " steps" << std::endl;
  }
  // One run of the program, until it ends or the walk does.
  void run(Walker& walker, Inbox& inbox) {
    std::ostringstream log;
    DiskFiles disk;
    Session(whole_program([&](const Workspace& w) { walker.begin(w); }), disk, log, inbox).run();
  }
  std::uint32_t seed = 0;
  int steps = 0;
};

TEST_P(PanelWalk, ThePagesAreThoseWithoutPanels) {
  const ScratchFolder bare_folder;
  GetParam().lay_out();
  Walker alone(seed, steps, GetParam().undated_records);
  Watcher watcher(alone);
  run(alone, watcher);

  const ScratchFolder folder;
  GetParam().lay_out();
  Walker walker(seed, steps, GetParam().undated_records);
  PanelUser user(walker, seed, 0);
  run(walker, user);
  EXPECT_EQ(walker.complaint(), "");
  EXPECT_GT(user.drawn, 0);
  ASSERT_EQ(user.pages.size(), watcher.pages.size());
  EXPECT_TRUE(user.pages == watcher.pages);
}

TEST_P(PanelWalk, WhateverIsClickedOnPanelsTheProgramGoesOn) {
  Walker walker(seed, steps, GetParam().undated_records);
  walker.check_nothing();
  int clicked = 0, played = 0;
  for (std::uint32_t starts = 0; !walker.done() && starts < 50; ++starts) {
    const ScratchFolder folder;
    GetParam().lay_out();
    PanelUser user(walker, seed + starts, 30);
    run(walker, user);
    clicked += user.clicked;
    played += user.played;
    for (const std::string& notice : user.notices)
      EXPECT_EQ(notice.find(" stopped: "), std::string::npos) << notice;
  }
  std::cout << clicked << " clicks on panels, " << played << " played" << std::endl;
  EXPECT_EQ(walker.complaint(), "");
}

INSTANTIATE_TEST_SUITE_P(Files, PanelWalk, ::testing::ValuesIn(all_walk_files()),
                         [](const ::testing::TestParamInfo<WalkFiles>& walk) { return walk.param.name; });

}  // namespace
}  // namespace vorn
