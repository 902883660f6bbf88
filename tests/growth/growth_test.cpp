// A large collection must feel like a small one: no click may take longer because there are more series, and
// nothing but the pairs of trees may grow faster than the series.
//
// The whole program runs on a small collection and on one of sixteen times as many series. Compared is the
// processor time from each click to the next wait, the shortest of several, so that what else the machine
// does hardly counts. The limits leave room for that and for small caches: what should stay the same may take
// 4 times as long, where 16 would be growth with the series; what should take 16 times as long at most may
// take 32, where 256 would be growth with their square. What is over its limit is measured again, up to
// `most_rounds` times: a disturbance passes, growth does not.
#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <limits>
#include <map>
#include <string>

#include "support/whole_program.h"

namespace vorn {
namespace {

constexpr int small = 250, large = 4'000;
constexpr int most_rounds = 10;
constexpr double same = 4, linear = 32;  // times as long that the large one may take at most

double processor_seconds() {
  std::timespec time{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

// `count` cores of 60 years, all over 9,000 years, so that the chronology is as long and the pairs are few.
// The first two, which are cross-dated, are the same in every collection.
std::string cores(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    const int decade = i < 2 ? i : i * 397 % 900;
    text += raw_core_text("C" + std::to_string(i + 1), 10 * decade, 60, static_cast<unsigned>(i) + 1);
  }
  return text;
}

using Times = std::map<std::string, double>;  // seconds, by what was done; the shortest

class TimedProgram : public WholeProgram {
 public:
  explicit TimedProgram(int count) {
    ScratchFolder::write("cores.rwl", cores(count));
    ScratchFolder::write("Vorn.fil", "cores.rwl\n");
  }
  void TestBody() override {}

  // Starts the program, goes through its screens and reports some times, and ends it.
  void run(Times& times) {
    const double start = processor_seconds();
    look([&times, start] { keep(times, "Start", processor_seconds() - start); });
    for (int round = 0; round < 3; ++round) {
      timed(times, "Heidelberg", button::raw_heidelberg);
      timed(times, "Tucson", button::raw_tucson);
      timed(times, "Correlation Report", button::correlation_report);
      timed(times, "Stats Report", button::stats_report);
      timed(times, "Save Raw", button::save_raw);
      timed(times, "Crossdate", button::crossdate);
      timed(times, "Move the sample", button::sample_minus_50);
      timed(times, "Move it back", button::sample_plus_50);
      timed(times, "Choose Cores", button::choose_cores);
      timed(times, "A page on", button::page_forward);
      timed(times, "A page back", button::page_back);
      timed(times, "Mean Core", button::mean_core);
      timed(times, "Leave the chooser", button::chooser_exit);
      timed(times, "Correlate", button::correlate);
      timed(times, "Best Fit", button::best_fit);
      timed(times, "Leave the correlations", button::correlation_exit);
      timed(times, "Leave the cross-dating", button::exit_crossdating);
    }
    EXPECT_EQ(play(), EndReason::closed);
    EXPECT_EQ(screen.steps_left(), 0u);
    EXPECT_EQ(told(), "");
  }

 private:
  static void keep(Times& times, const std::string& what, double seconds) {
    const auto known = times.emplace(what, seconds).first;
    known->second = std::min(known->second, seconds);
  }

  void timed(Times& times, const std::string& what, ButtonNumber n) {
    look([this] { before_ = processor_seconds(); });
    press(n);
    look([this, &times, what] { keep(times, what, processor_seconds() - before_); });
  }

  double before_ = 0;
};

// What takes longer on the large collection than it may, and how long.
std::string too_slow(const Times& of_small, const Times& of_large) {
  const std::map<std::string, double> limits = {
      {"Start", linear}, {"Correlation Report", linear}, {"Stats Report", linear}, {"Save Raw", linear}};
  std::string text;
  for (const auto& [what, seconds] : of_large) {
    const auto limit = limits.find(what);
    const double times_as_long = seconds / of_small.at(what);
    if (times_as_long < (limit == limits.end() ? same : limit->second)) continue;
    text +=
        what + ": " + std::to_string(seconds * 1e3) + " ms, " + std::to_string(times_as_long) + " times\n";
  }
  return text;
}

TEST(Growth, OfACollectionMakesNoClickSlowerAndNothingGrowWithItsSquare) {
  Times of_small, of_large;
  std::string complaint;
  for (int round = 1; round <= most_rounds && (round == 1 || !complaint.empty()); ++round) {
    TimedProgram(small).run(of_small);
    TimedProgram(large).run(of_large);
    ASSERT_EQ(of_small.size(), 18u);
    complaint = too_slow(of_small, of_large);
  }
  EXPECT_EQ(complaint, "");
}

}  // namespace
}  // namespace vorn
