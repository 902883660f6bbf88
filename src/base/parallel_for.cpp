#include "base/parallel_for.h"

#include <algorithm>

#ifndef __EMSCRIPTEN__
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>
#ifdef __linux__
#include <sched.h>
#endif
#endif

namespace vorn {

#ifdef __EMSCRIPTEN__

std::size_t threads_here() {
  return 1;
}

void parallel_for(std::size_t count, std::size_t, const std::function<void(std::size_t)>& piece,
                  const std::function<void(std::size_t)>& done) {
  for (std::size_t k = 0; k < count; ++k) {
    piece(k);
    if (done) done(k + 1);
  }
}

#else

namespace {

constexpr std::size_t most_threads = 8;

class Pieces {
 public:
  using Call = std::function<void(std::size_t)>;

  Pieces(std::size_t count, const Call& piece) : count_(count), piece_(piece) {}

  // Takes pieces as long as there are any.
  void work(const Call& done) {
    try {
      for (std::size_t k = next_++; k < count_; k = next_++) {
        piece_(k);
        const std::size_t all = ++done_;
        if (done) done(all);
      }
    } catch (...) {
      fail();
    }
  }

  void throw_what_failed() const {
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  void fail() {
    const std::lock_guard lock(mutex_);
    if (!failure_) failure_ = std::current_exception();
    next_ = count_;
  }

  const std::size_t count_;
  const Call& piece_;
  std::atomic<std::size_t> next_{0}, done_{0};
  std::mutex mutex_;
  std::exception_ptr failure_;
};

// Threads beside this one, as many as the system gives.
std::vector<std::jthread> helpers(std::size_t wanted, Pieces& pieces) {
  std::vector<std::jthread> threads;
  threads.reserve(wanted);
  try {
    while (threads.size() < wanted) threads.emplace_back([&pieces] { pieces.work({}); });
  } catch (const std::system_error&) {
  }
  return threads;
}

std::size_t processors() {
#ifdef __linux__
  cpu_set_t own;
  if (sched_getaffinity(0, sizeof own, &own) == 0) return static_cast<std::size_t>(CPU_COUNT(&own));
#endif
  return std::thread::hardware_concurrency();
}

}  // namespace

std::size_t threads_here() {
  return std::clamp<std::size_t>(processors(), 1, most_threads);
}

void parallel_for(std::size_t count, std::size_t threads, const std::function<void(std::size_t)>& piece,
                  const std::function<void(std::size_t)>& done) {
  Pieces pieces(count, piece);
  const std::size_t wanted = std::min(threads, count);
  std::vector<std::jthread> others = helpers(wanted > 1 ? wanted - 1 : 0, pieces);
  pieces.work(done);
  others.clear();  // waits for what they have begun
  pieces.throw_what_failed();
}

#endif

}  // namespace vorn
