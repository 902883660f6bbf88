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

void StudyWorker::look_at(std::shared_ptr<Files> files, int this_year, const Careful& careful) {
  {
    const std::lock_guard lock(mutex_);
    if (files_ && careful_ == reading_of(careful)) return;
    if (!files_) files_ = std::move(files);
    this_year_ = this_year;
    careful_ = reading_of(careful);
    has_looked_ = false;
    looks_anew_ = true;
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
      came_.wait(lock, [this] { return is_new_ || stops_ || (files_ && !has_looked_); });
      if (stops_) return;
      if (std::exchange(is_new_, false)) situation = wanted_;
      studies_.read_from(files_.get());
    }
    situation ? study_now(situation) : look_now();
  }
}

void StudyWorker::study_now(const SharedSituation& situation) {
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

// The list, or one file: a situation that comes meanwhile waits no longer than for that.
void StudyWorker::look_now() {
  Careful careful;
  {
    const std::lock_guard lock(mutex_);
    if (std::exchange(looks_anew_, false)) look_.reset();
    careful = careful_;
  }
  look_ ? look_->look() : void(look_ = std::make_unique<FolderLook>(*files_, this_year_, careful));
  {
    const std::lock_guard lock(mutex_);
    if (looks_anew_) return;
    has_looked_ = look_->is_done();
    state_.files = look_->reports();
    state_.files_working = look_->working();
  }
  const auto now = Clock::now();
  if (!look_->is_done() && now - told_ < between_tellings) return;
  told_ = now;
  news_();
}

}  // namespace vorn
