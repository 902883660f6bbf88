#include "base/parallel_for.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <vector>

#ifdef __linux__
#include <sched.h>
#endif

namespace vorn {
namespace {

TEST(ParallelFor, DoesEachPieceOnceWithAnyNumberOfThreads) {
  for (const std::size_t threads : {0u, 1u, 2u, 3u, 7u, 200u}) {
    std::vector<int> times(100, 0);
    parallel_for(times.size(), threads, [&](std::size_t k) { ++times[k]; });
    EXPECT_EQ(times, std::vector<int>(100, 1)) << threads;
  }
}

TEST(ParallelFor, DoesNothingWhereThereIsNothing) {
  parallel_for(0, 4, [](std::size_t) { FAIL(); });
}

TEST(ParallelFor, TakesThemInTheirOrderOnOneThread) {
  std::vector<std::size_t> order;
  parallel_for(5, 1, [&](std::size_t k) { order.push_back(k); });
  EXPECT_EQ(order, (std::vector<std::size_t>{0, 1, 2, 3, 4}));
}

// Each of two pieces waits for the other.
TEST(ParallelFor, RunsOnSeveralThreadsAtATime) {
  std::mutex mutex;
  std::condition_variable came;
  int here = 0;
  parallel_for(2, 2, [&](std::size_t) {
    std::unique_lock lock(mutex);
    ++here;
    came.notify_all();
    came.wait(lock, [&] { return here == 2; });
  });
  EXPECT_EQ(here, 2);
}

TEST(ParallelFor, TellsOnTheCallingThreadHowMuchIsDone) {
  for (const std::size_t threads : {1u, 3u}) {
    std::vector<std::size_t> told;
    const auto caller = std::this_thread::get_id();
    parallel_for(
        50, threads, [](std::size_t) {},
        [&](std::size_t all) {
          EXPECT_EQ(std::this_thread::get_id(), caller);
          told.push_back(all);
        });
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    if (threads == 1) {
      EXPECT_EQ(told.size(), 50u);
    }
  }
}

TEST(ParallelFor, ThrowsWhatAPieceThrowsAndBeginsNoMore) {
  for (const std::size_t threads : {1u, 2u, 4u}) {
    std::atomic<int> begun{0};
    EXPECT_THROW(parallel_for(100'000, threads,
                              [&](std::size_t k) {
                                ++begun;
                                if (k == 3) throw std::runtime_error("no");
                              }),
                 std::runtime_error);
    EXPECT_LT(begun, 100'000);
  }
}

// The other thread leaves a piece to the calling one.
TEST(ParallelFor, ThrowsWhatIsThrownWhereItTells) {
  const auto caller = std::this_thread::get_id();
  std::atomic<bool> begun{false};
  const auto piece = [&](std::size_t) {
    if (std::this_thread::get_id() == caller) begun = true;
    while (!begun) std::this_thread::yield();
  };
  EXPECT_THROW(parallel_for(10, 2, piece, [](std::size_t) { throw std::runtime_error("closed"); }),
               std::runtime_error);
}

TEST(ParallelFor, KnowsHowManyThreadsThereAre) {
  EXPECT_GE(threads_here(), 1u);
  EXPECT_LE(threads_here(), 8u);
}

#ifdef __linux__
TEST(ParallelFor, CountsTheProcessorsThatTheThreadMayRunOn) {
  std::size_t all = 0, with_one = 0;
  std::jthread([&] {
    all = threads_here();
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(static_cast<std::size_t>(sched_getcpu()), &one);
    ASSERT_EQ(sched_setaffinity(0, sizeof one, &one), 0);
    with_one = threads_here();
  }).join();
  EXPECT_EQ(with_one, 1u);
  EXPECT_EQ(threads_here(), all);
}
#endif

}  // namespace
}  // namespace vorn
