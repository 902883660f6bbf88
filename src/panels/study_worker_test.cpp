#include "panels/study_worker.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <thread>

#include "desk/specimens_for_tests.h"
#include "records/memory_files.h"

namespace vorn {
namespace {

using namespace std::chrono_literals;

SharedSituation site_of(int cores, int first_year) {
  Situation now = situation_at(Place::start);
  now.sample = now.reference = {};
  now.cores.clear();
  for (int c = 0; c < cores; ++c) {
    std::vector<double> widths;
    for (int k = 0; k < 110; ++k) widths.push_back(1.5 + std::sin(k * k * 0.37 + 0.1 * c));
    now.cores.push_back(core("C" + std::to_string(c), first_year, widths));
  }
  return std::make_shared<const Situation>(now);
}

// Waits until it holds, at most half a minute.
template <class Holds>
bool comes(Holds holds) {
  for (int k = 0; k < 6'000; ++k) {
    if (holds()) return true;
    std::this_thread::sleep_for(5ms);
  }
  return false;
}

TEST(StudyWorker, FindsWhatTheStudiesFind) {
  std::atomic<int> news = 0;
  StudyWorker worker([&] { ++news; });
  EXPECT_FALSE(worker.state().findings);
  worker.study(site_of(5, 1900));
  EXPECT_TRUE(comes([&] { return worker.state().findings && worker.state().findings->site; }));
  EXPECT_EQ(worker.state().findings->site->cores.size(), 5u);
  EXPECT_GT(news, 0);
}

TEST(StudyWorker, GivesUpWhatIsOlderAndEndsAtOnce) {
  const auto begun = std::chrono::steady_clock::now();
  {
    StudyWorker worker([] {});
    worker.study(site_of(2'000, 1900));
    std::this_thread::sleep_for(50ms);
    const SharedSituation newer = site_of(4, 1950);
    worker.study(newer);
    EXPECT_TRUE(comes([&] { return worker.state().findings && worker.state().findings->site; }));
    EXPECT_EQ(worker.state().findings->of, newer);
    worker.study(site_of(2'000, 1960));
    std::this_thread::sleep_for(50ms);
  }
  EXPECT_LT(std::chrono::steady_clock::now() - begun, 20s);
}

TEST(StudyWorker, SaysWhatItWorksOnWhenThatTakesLong) {
  StudyWorker worker([] {});
  worker.study(site_of(3'000, 1900));
  EXPECT_TRUE(comes([&] { return worker.state().working.find(" of 3000") != std::string::npos; }));
}

TEST(StudyWorker, LooksAtTheFilesBesideItsStudies) {
  const auto files = std::make_shared<MemoryFiles>();
  files->put("Vorn.fil", "oaks.rwl\nelms.rwl\n");
  for (const char* name : {"oaks.rwl", "elms.rwl"})
    files->put(
        name,
        "OAK1    1990   101   102   103   104   105   106   107   108   109   110\nOAK1    2000   999\n");
  StudyWorker worker([] {});
  worker.study(site_of(5, 1900));
  worker.look_at(files, 2026, {});
  const auto looked = [&] {
    const StudyWorker::State now = worker.state();
    return now.files && now.files_working.empty();
  };
  EXPECT_TRUE(comes(looked));
  EXPECT_EQ(worker.state().files->size(), 2u);
  EXPECT_TRUE(comes([&] { return worker.state().findings && worker.state().findings->site; }));
  const SharedReports once = worker.state().files;
  worker.look_at(files, 2026, {});
  worker.study(site_of(4, 1900));
  EXPECT_TRUE(comes(
      [&] { return worker.state().findings->site && worker.state().findings->site->cores.size() == 4; }));
  EXPECT_EQ(worker.state().files, once);
}

}  // namespace
}  // namespace vorn
