#include "panels/study_worker.h"

#include <utility>

namespace vorn {

StudyWorker::StudyWorker(std::function<void()> news) : news_(std::move(news)), thread_([this] { work(); }) {}

StudyWorker::~StudyWorker() {
  {
    const std::lock_guard lock(mutex_);
    stops_ = true;
  }
  came_.notify_all();
}

void StudyWorker::study(const SharedSituation& situation) {
  {
    const std::lock_guard lock(mutex_);
    if (situation == wanted_) return;
    wanted_ = situation;
    is_new_ = true;
  }
  came_.notify_all();
}

StudyWorker::State StudyWorker::state() const {
  const std::lock_guard lock(mutex_);
  return state_;
}

void StudyWorker::say(const std::string& working) {
  {
    const std::lock_guard lock(mutex_);
    if (state_.working == working) return;
    state_.working = working;
  }
  news_();
}

// What takes no time worth telling is not told.
bool StudyWorker::go_on(const std::string& working) {
  {
    const std::lock_guard lock(mutex_);
    if (is_new_ || stops_) return false;
  }
  const auto now = Clock::now();
  if (now - begun_ >= worth_telling && now - told_ >= between_tellings) {
    told_ = now;
    say(working);
  }
  return true;
}

void StudyWorker::work() {
  for (;;) {
    SharedSituation situation;
    {
      std::unique_lock lock(mutex_);
      came_.wait(lock, [this] { return is_new_ || stops_; });
      if (stops_) return;
      is_new_ = false;
      situation = wanted_;
    }
    begun_ = Clock::now();
    studies_.study(
        situation, [this](const std::string& working) { return go_on(working); },
        [this](const SharedFindings& findings) {
          {
            const std::lock_guard lock(mutex_);
            state_.findings = findings;
          }
          news_();
        });
    say("");
  }
}

}  // namespace vorn
