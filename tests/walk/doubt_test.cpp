// Walks at random of a user who doubts what he did: now and then he takes decisions back, takes them again
// and goes to others; in the end all is lost but the journal, and he takes the session up on another day.
#include <gtest/gtest.h>

#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "apps/whole_program.h"
#include "records/disk_files.h"
#include "records/memory_files.h"
#include "sessions/journal.h"
#include "sessions/session.h"
#include "support/scratch_folder.h"
#include "walk/sight.h"
#include "walk/walk_files.h"
#include "walk/walker.h"
#include "workspace/vorndata.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

constexpr int usual_steps = 300;
constexpr std::uint32_t usual_seed = 1;

class Doubter : public Inbox {
 public:
  Doubter(Walker& walker, std::uint32_t seed, bool careful)
      : walker_(walker), random_(seed), switches_(careful) {}

  void begin(const Workspace& w) {
    w_ = &w;
    walker_.begin(w);
  }
  void show(const Page& page) override {
    page_ = &page;
    walker_.show(page);
  }
  void forget_pending() override { walker_.forget_pending(); }
  void stand(const SharedStanding& standing) override { standing_ = standing; }
  void notice(std::string_view text) override { said.emplace_back(text); }

  Deed next_deed() override {
    if (std::exchange(switches_, false)) return CarefulSwitch{};
    look();
    const auto one_in = [this](unsigned many) { return random_() % many == 0; };
    if (standing_->can_undo && one_in(12)) return ++undone, went_back_ = true, Undo{};
    if (standing_->can_redo && one_in(4)) return ++redone, went_back_ = true, Redo{};
    if (standing_->decisions.size() > 2 && one_in(80)) {
      const auto to = random_() % (standing_->decisions.size() + 1);
      return went_back_ = true, GoTo{to};
    }
    if (!standing_->decisions.empty() && one_in(60))
      return went_back_ = true, TakeNote{random_() % standing_->decisions.size(), "since \\ it\tseems so\n"};
    went_back_ = false;
    const Event event = walker_.next_event();
    return event;
  }
  Event next_event() override { return {}; }

  const Standing& standing() const { return *standing_; }
  std::vector<Decision> decisions() const { return standing_->decisions; }

  const Session* session = nullptr;
  int undone = 0, redone = 0, compared = 0;
  std::vector<std::string> said;
  std::string complaint;
  Sight sight;  // the last

 private:
  // Behind a step back or forth everything is as it was when just these events had happened.
  void look() {
    Fingerprint events;
    for (const TimelineStep& step : session->timeline().steps()) {
      for (const int part : {step.event.x, step.event.y, step.event.code})
        events.add(static_cast<std::uint64_t>(part));
    }
    const Sight now = {text_of(*page_), fingerprint_of(*w_)};
    sight = now;
    const auto [before, is_new] = seen_.try_emplace(events.words(), now);
    if (went_back_ && complaint.empty()) {
      ++compared;
      if (is_new) {
        complaint = "came to where nobody was";
      } else if (before->second != now) {
        complaint = (before->second.store == now.store ? "another page" : "another store") +
                    std::string(" at step ") + std::to_string(standing_->steps);
      }
    }
  }

  Walker& walker_;
  std::mt19937 random_;
  bool switches_;  // to careful, before anything is done
  const Workspace* w_ = nullptr;
  const Page* page_ = nullptr;
  SharedStanding standing_;
  std::map<std::array<std::uint64_t, 2>, Sight> seen_;  // by the events that had happened
  bool went_back_ = false;
};

// Only what was taken up is looked at.
class Onlooker : public Inbox {
 public:
  void begin(const Workspace& w) { w_ = &w; }
  void show(const Page& page) override { page_ = &page; }
  void stand(const SharedStanding& standing) override { standing_ = standing; }
  void notice(std::string_view text) override { said += std::string(text) + "\n"; }
  Event next_event() override { throw ProgramEnd(EndReason::closed); }
  Deed next_deed() override {
    if (!asked_ && !standing_->to_take_up.empty()) {
      asked_ = true;
      return TakeUp{standing_->to_take_up};
    }
    sight = {text_of(*page_), fingerprint_of(*w_)};
    decisions = standing_->decisions;
    return Close{};
  }
  Sight sight;
  std::vector<Decision> decisions;
  std::string said;

 private:
  const Workspace* w_ = nullptr;
  const Page* page_ = nullptr;
  SharedStanding standing_;
  bool asked_ = false;
};

struct DoubtedWalk {
  WalkFiles files;
  bool careful = false;
};

std::ostream& operator<<(std::ostream& out, const DoubtedWalk& walk) {
  return out << walk.files;
}

class Doubt : public ::testing::TestWithParam<DoubtedWalk> {};

TEST_P(Doubt, IsServedAndNothingIsLostOfWhatWasDone) {
  const WalkFiles& files = GetParam().files;
  const std::string missing = files.first_missing();
  if (!missing.empty()) GTEST_SKIP() << "no " << missing << " here";
  const std::uint32_t seed = number_from("VORN_WALK_SEED", usual_seed);
  const int steps = static_cast<int>(number_from("VORN_WALK_STEPS", usual_steps));
  std::cout << "doubt " << files.name << ", seed " << seed << ", " << steps << " steps" << std::endl;

  Walker walker(seed, steps, files.undated_records);
  walker.check_nothing();
  int compared = 0, taken_up = 0;
  for (std::uint32_t starts = 0; !walker.done(); ++starts) {
    const ScratchFolder folder;
    files.lay_out();
    std::ostringstream log;
    DiskFiles disk;
    Doubter doubter(walker, seed + starts, GetParam().careful);
    {
      Journal journal("", "0");
      Session session(whole_program([&](const Workspace& w) { doubter.begin(w); }), disk, log, doubter,
                      nullptr, &journal);
      doubter.session = &session;
      session.run();
      ASSERT_EQ(journal.trouble(), "");
    }
    ASSERT_EQ(doubter.complaint, "") << "seed " << seed << ", start " << starts;
    compared += doubter.compared;
    if (!walker.done() || !fs::exists(".vorn")) continue;
    // Another day: whatever was read is gone, but for what it takes to start.
    for (const auto& file : fs::directory_iterator(".")) {
      if (file.is_regular_file() && file.path().filename() != "Vorn.fil") fs::remove(file.path());
    }
    Onlooker onlooker;
    Journal journal("", "0");
    Session session(whole_program([&](const Workspace& w) { onlooker.begin(w); }), disk, log, onlooker,
                    nullptr, &journal);
    session.run();
    if (doubter.standing().decisions.empty() || !doubter.standing().unsaved()) continue;
    ++taken_up;
    EXPECT_TRUE(onlooker.sight == doubter.sight);
    ASSERT_EQ(onlooker.decisions.size(), doubter.decisions().size());
    for (std::size_t k = 0; k < onlooker.decisions.size(); ++k) {
      EXPECT_EQ(onlooker.decisions[k].what, doubter.decisions()[k].what);
      EXPECT_EQ(onlooker.decisions[k].note, doubter.decisions()[k].note);
    }
  }
  EXPECT_EQ(walker.complaint(), "");
  std::cout << compared << " times back or forth, " << taken_up << " taken up" << std::endl;
  EXPECT_GT(compared, 0);
}

std::vector<DoubtedWalk> doubted_walks() {
  std::vector<DoubtedWalk> walks;
  for (const WalkFiles& files : all_walk_files()) walks.push_back({files});
  // And the first three carefully.
  for (std::size_t k = 0; k < 3; ++k) walks.push_back({all_walk_files()[k], true});
  return walks;
}

INSTANTIATE_TEST_SUITE_P(Files, Doubt, ::testing::ValuesIn(doubted_walks()),
                         [](const ::testing::TestParamInfo<DoubtedWalk>& walk) {
                           return walk.param.files.name + (walk.param.careful ? "Carefully" : "");
                         });

}  // namespace
}  // namespace vorn
