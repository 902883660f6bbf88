// Sessions at random whose program is killed without warning, and sessions whose files are other ones on the
// next day. VORN_KILL_SEED takes other ones. Kills are counted in calls of the operating system, never
// timed, so that every one hits on any machine.
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <random>
#include <span>
#include <sstream>

#include "apps/whole_program.h"
#include "records/disk_files.h"
#include "records/memory_files.h"
#include "sessions/journal.h"
#include "sessions/session.h"
#include "support/menu_bench.h"
#include "support/os_faults.h"
#include "support/scratch_folder.h"
#include "walk/walker.h"
#include "workspace/fingerprint.h"
#include "workspace/vorndata.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

using Words = std::array<std::uint64_t, 2>;

std::uint32_t first_seed() {
  const char* const value = std::getenv("VORN_KILL_SEED");
  return value == nullptr ? 1 : static_cast<std::uint32_t>(std::strtoul(value, nullptr, 10));
}

void lay_out_files() {
  std::string oaks;
  for (const int k : {1, 2, 3, 4}) oaks += raw_core_text("OAK" + std::to_string(k), 1900, 60, 7u * k);
  ScratchFolder::write("oak.rwl", oaks);
  ScratchFolder::write("larch.rwl",
                       raw_core_text("LARCH1", 1880, 60, 101) + raw_core_text("LARCH2", 1880, 60, 103));
  ScratchFolder::write("Vorn.fil", "oak.rwl\nlarch.rwl\n");
}

// What a wait can be told by: the page and the store.
struct Sight {
  Words page{}, store{};
  bool operator==(const Sight&) const = default;
};

Words page_print(const Page& page) {
  std::ostringstream text;
  page.write_text(text);
  Fingerprint print;
  for (const char c : text.str()) print.add(static_cast<unsigned char>(c));
  return print.words();
}

Words store_print(const Workspace& w) {
  Fingerprint print;
  for (const int number : {w.nc, w.nd, w.cf, w.nfil, w.ss, w.jpr, w.seg, w.olap, w.fs, w.sl, w.tr1, w.tr2})
    print.add(static_cast<std::uint64_t>(number));
  for (int i = 1; i <= w.nd + 2 && i <= max_series; ++i) {
    print.add(static_cast<std::uint64_t>(w.fy(i)));
    print.add(static_cast<std::uint64_t>(w.yr(i)));
    for (int p = w.ad(i); p < w.ad(i) + w.yr(i); ++p) print.add(std::bit_cast<std::uint64_t>(w.x.at(p)));
  }
  return print.words();
}

// Where the mouse is when a key is pressed means nothing.
Words events_print(std::span<const TimelineStep> steps) {
  Fingerprint print;
  for (const TimelineStep& step : steps) {
    const bool has_place = step.event.code == Event::click || step.event.code == Event::help;
    print.add(static_cast<std::uint64_t>(has_place ? step.event.x : 0));
    print.add(static_cast<std::uint64_t>(has_place ? step.event.y : 0));
    print.add(static_cast<std::uint64_t>(step.event.code));
  }
  return print.words();
}

// What the program and its user saw, in memory that outlives the process: every wait that the user came to,
// and what he did there, told before the program goes on.
struct Report {
  struct Wait {
    Words events{};
    std::size_t steps = 0, taken = 0;
    Sight sight;
  };
  static constexpr std::size_t most_waits = 400;
  std::array<Wait, most_waits> waits;
  std::size_t count = 0;
  enum class Then { nothing, event, back } then = Then::nothing;  // behind the last wait
  Event event;
  bool ended = false;
  int calls = 0;  // of the operating system, of a session that was not killed
};

class SharedReport {
 public:
  SharedReport()
      : place_(mmap(nullptr, sizeof(Report), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)),
        report_(new (place_) Report) {}
  ~SharedReport() { munmap(place_, sizeof(Report)); }
  SharedReport(const SharedReport&) = delete;
  SharedReport& operator=(const SharedReport&) = delete;
  Report& operator*() const { return *report_; }
  Report* operator->() const { return report_; }

 private:
  void* place_;
  Report* report_;
};

class Eyes : public Inbox {
 public:
  virtual void begin(const Workspace& w) { w_ = &w; }
  void show(const Page& page) override { page_ = &page; }
  void stand(const SharedStanding& standing) override { standing_ = standing; }
  void notice(std::string_view text) override { said += std::string(text) + "\n"; }
  Event next_event() override { throw ProgramEnd(EndReason::closed); }
  const Standing& standing() const { return *standing_; }
  Sight sight() const { return {page_print(*page_), store_print(*w_)}; }

  std::string said;

 private:
  const Workspace* w_ = nullptr;
  const Page* page_ = nullptr;
  SharedStanding standing_;
};

// Walks at random, now and then back and forth, and reports it all.
class Wanderer : public Eyes {
 public:
  Wanderer(Report& report, std::uint32_t seed, int steps, bool doubts)
      : report_(report), walker_(seed, steps, false), random_(seed), doubts_(doubts) {
    walker_.check_nothing();
  }
  void begin(const Workspace& w) override {
    Eyes::begin(w);
    walker_.begin(w);
  }
  void show(const Page& page) override {
    Eyes::show(page);
    walker_.show(page);
  }
  void forget_pending() override { walker_.forget_pending(); }
  Deed next_deed() override {
    const auto& steps = session->timeline().steps();
    report_.waits.at(report_.count) = {events_print(steps), steps.size(), standing().taken, sight()};
    report_.then = Report::Then::nothing;
    ++report_.count;
    if (walker_.done() || report_.count == Report::most_waits) return Close{};
    const auto one_in = [this](unsigned many) { return doubts_ && random_() % many == 0; };
    report_.then = Report::Then::back;
    if (standing().can_undo && one_in(10)) return Undo{};
    if (standing().can_redo && one_in(4)) return Redo{};
    report_.event = walker_.next_event();
    report_.then = Report::Then::event;
    return report_.event;
  }

  const Session* session = nullptr;

 private:
  Report& report_;
  Walker walker_;
  std::mt19937 random_;
  bool doubts_;
};

// Takes up what there is, and looks.
class NextDay : public Eyes {
 public:
  Deed next_deed() override {
    if (!offered && standing().situation->wait == Wait::menu && !standing().to_take_up.empty()) {
      offered = true;
      return TakeUp{standing().to_take_up};
    }
    if (!offered && !standing().to_take_up.empty()) return Event{0, 0, Event::enter};  // a message
    seen = sight();
    return Close{};
  }
  bool offered = false;
  Sight seen;
};

constexpr int steps_of_a_walk = 120;
constexpr int countless = 1'000'000'000;

// A session of the user, which is killed at that call of the operating system (0: never).
void wander(Report& report, std::uint32_t seed, bool doubts, int dies_at) {
  report.count = 0;
  report.ended = false;
  report.then = Report::Then::nothing;
  const int child = fork();
  if (child == 0) {
    faults = {};
    faults.passes_fsync_over = true;
    faults.dies_at = dies_at > 0 ? dies_at : countless;
    std::ostringstream log;
    DiskFiles disk;
    Journal journal("", "1");
    Wanderer user(report, seed, steps_of_a_walk, doubts);
    Session session(whole_program([&user](const Workspace& w) { user.begin(w); }), disk, log, user, nullptr,
                    &journal);
    user.session = &session;
    session.run();
    report.ended = true;
    report.calls = countless - faults.dies_at;
    _exit(0);
  }
  int ended = 0;
  waitpid(child, &ended, 0);
  ASSERT_TRUE(report.ended ? WIFEXITED(ended) : WIFSIGNALED(ended) && WTERMSIG(ended) == SIGKILL);
}

// What stands on the next day, when it has been taken up.
struct Morning {
  NextDay user;
  std::vector<TimelineStep> steps;
};

std::unique_ptr<Morning> next_day() {
  faults.passes_fsync_over = true;
  auto morning = std::make_unique<Morning>();
  std::ostringstream log;
  DiskFiles disk;
  Journal journal("", "1");
  Session session(whole_program([&morning](const Workspace& w) { morning->user.begin(w); }), disk, log,
                  morning->user, nullptr, &journal);
  session.run();
  EXPECT_EQ(journal.trouble(), "");
  morning->steps = session.timeline().steps();
  return morning;
}

class Kills : public ::testing::Test {
 protected:
  // What was taken up is events that the program has had, all but perhaps the one that it was at; and where
  // the user has been there, everything is as he saw it.
  void expect_all_taken_up() {
    const std::span waits(report_->waits.data(), report_->count);
    if (waits.empty()) return;
    const Report::Wait& last = waits.back();
    const auto morning = next_day();
    if (!morning->user.offered) {
      const bool had_work = last.taken > 0 && report_->then != Report::Then::back;
      EXPECT_FALSE(had_work) << "nothing is offered";
      return;
    }
    ++taken_up_;
    // An event at which a file was to be written is left off, with a word.
    const bool left_off = report_->then == Report::Then::event && morning->steps.size() == last.steps;
    if (!left_off) {
      EXPECT_EQ(morning->user.said, "");
    }
    const Words all = events_print(morning->steps);
    const auto been = std::ranges::find(waits, all, &Report::Wait::events);
    if (been != waits.end()) {
      ++compared_;
      EXPECT_TRUE(morning->user.seen.store == been->sight.store) << "another store";
      EXPECT_TRUE(morning->user.seen.page == been->sight.page) << "another page";
      EXPECT_TRUE(been->events == last.events || report_->then == Report::Then::back)
          << "less than there was";
      return;
    }
    // The program was at an event when it was killed.
    EXPECT_EQ(report_->then, Report::Then::event);
    ASSERT_EQ(morning->steps.size(), last.steps + 1);
    EXPECT_EQ(events_print(std::span(morning->steps).first(last.steps)), last.events);
    const Event& event = morning->steps.back().event;
    EXPECT_EQ(event.code, report_->event.code);
    ++at_an_event_;
    // The same user, when nothing killed the program, saw where that event led.
    const auto then = std::ranges::find(undisturbed_, all, &Report::Wait::events);
    ASSERT_NE(then, undisturbed_.end());
    EXPECT_TRUE(morning->user.seen.store == then->sight.store) << "another store";
    EXPECT_TRUE(morning->user.seen.page == then->sight.page) << "another page";
  }

  SharedReport report_;
  std::vector<Report::Wait> undisturbed_;
  int killed_ = 0, taken_up_ = 0, compared_ = 0, at_an_event_ = 0;
};

// The sanitizers, which are for builds with assertions, make each kill take twenty times as long.
#ifdef NDEBUG
constexpr std::uint32_t walks = 20;
#else
constexpr std::uint32_t walks = 4;
#endif
constexpr std::uint32_t few_walks = 8;
constexpr int kills_of_a_walk = 10;

TEST_F(Kills, LoseNothingOfWhatWasDone) {
  for (std::uint32_t seed = first_seed(); seed < first_seed() + walks; ++seed) {
    std::mt19937 random(seed);
    int calls = 0;
    for (int kill = 0; kill <= kills_of_a_walk; ++kill) {
      const int dies_at = kill == 0 ? 0 : 1 + static_cast<int>(random() % static_cast<unsigned>(calls));
      SCOPED_TRACE("seed " + std::to_string(seed) + ", call " + std::to_string(dies_at) + " of " +
                   std::to_string(calls));
      const ScratchFolder folder;
      lay_out_files();
      ASSERT_NO_FATAL_FAILURE(wander(*report_, seed, true, dies_at));
      if (kill == 0) {
        calls = report_->calls;
        undisturbed_.assign(report_->waits.begin(),
                            report_->waits.begin() + static_cast<std::ptrdiff_t>(report_->count));
        ASSERT_TRUE(report_->ended);
        continue;
      }
      ASSERT_FALSE(report_->ended);
      ++killed_;
      expect_all_taken_up();
      if (HasFailure()) return;
    }
  }
  std::cout << killed_ << " kills, " << taken_up_ << " taken up, " << compared_ << " compared, "
            << at_an_event_ << " at an event" << std::endl;
  EXPECT_EQ(killed_, static_cast<int>(walks) * kills_of_a_walk);
  EXPECT_GT(compared_, killed_ / 4);
}

// --- Files that are other ones on the next day.

class OtherFiles : public ::testing::TestWithParam<std::string> {
 protected:
  static void spoil(const std::string& how) {
    for (const auto& file : fs::directory_iterator(".")) {
      if (!file.is_regular_file() || file.path().filename() == "Vorn.fil") continue;
      const std::string name = file.path().filename().string();
      if (how == "Removed") fs::remove(file);
      if (how == "SavedOver") ScratchFolder::write(name, raw_core_text("OTHER", 1700, 50, 1));
      if (how == "Changed") {
        std::string text = ScratchFolder::read(name);
        for (char& c : text) c = c == '7' ? '3' : c;
        ScratchFolder::write(name, text);
      }
    }
  }
};

TEST_P(OtherFiles, DoNotChangeWhatIsTakenUp) {
  const SharedReport report;
  int taken_up = 0;
  for (std::uint32_t seed = first_seed(); seed < first_seed() + few_walks; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const ScratchFolder folder;
    lay_out_files();
    ASSERT_NO_FATAL_FAILURE(wander(*report, seed, true, 0));
    ASSERT_GT(report->count, 0u);
    const Report::Wait& last = report->waits.at(report->count - 1);
    spoil(GetParam());
    const auto morning = next_day();
    if (!morning->user.offered) continue;
    EXPECT_EQ(events_print(morning->steps), last.events);
    EXPECT_TRUE(morning->user.seen.store == last.sight.store) << "another store";
    EXPECT_TRUE(morning->user.seen.page == last.sight.page) << "another page";
    ++taken_up;
  }
  EXPECT_GT(taken_up, 3);
  std::cout << taken_up << " taken up" << std::endl;
}

INSTANTIATE_TEST_SUITE_P(Day, OtherFiles, ::testing::Values("Changed", "SavedOver", "Removed"));

// What a session wrote is written again by its replay, to the byte, though the files are gone.
TEST(Replays, WriteWhatTheSessionWrote) {
  const SharedReport report;
  int files_compared = 0;
  for (std::uint32_t seed = first_seed(); seed < first_seed() + walks; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const ScratchFolder folder;
    lay_out_files();
    ASSERT_NO_FATAL_FAILURE(wander(*report, seed, false, 0));
    std::map<std::string, std::string> written;
    for (const auto& file : fs::directory_iterator(".")) {
      if (!file.is_regular_file()) continue;
      written[file.path().filename().string()] = ScratchFolder::read(file.path().filename().string());
      fs::remove(file);
    }
    if (!fs::exists(".vorn")) continue;
    Journal journal("", "1");
    std::string name;
    for (const auto& file : fs::directory_iterator(".vorn")) {
      if (file.path().extension() == ".vrs") name = file.path().filename().string();
    }
    Keeper::TakenUp taken_up = journal.take_up(name);
    ASSERT_EQ(taken_up.trouble, "");
    std::ostringstream log;
    DiskFiles disk;
    MemoryFiles replayed;
    NextDay user;
    const auto answers = taken_up.answers;
    Session session(whole_program([&user](const Workspace& w) { user.begin(w); }), disk, log, user);
    session.begin_with(std::move(taken_up), &replayed);
    session.run();
    EXPECT_EQ(user.said, "");
    for (const FileAnswer& answer : answers) {
      if (!answer.is_committed || answer.commit_status != status::ok) continue;
      ++files_compared;
      EXPECT_EQ(replayed.contents(answer.name), written.at(answer.name)) << answer.name;
      EXPECT_FALSE(fs::exists(answer.name)) << "the disk is left alone";
    }
  }
  EXPECT_GT(files_compared, 10);
  std::cout << files_compared << " files" << std::endl;
}

}  // namespace
}  // namespace vorn
