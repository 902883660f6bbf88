#include "sessions/timeline.h"

#include <algorithm>

#include "base/loud_failure.h"

namespace vorn {
namespace {

template <class T>
void move_to_front(std::vector<T>& from, std::size_t first, std::size_t last, std::vector<T>& to) {
  const auto begin = from.begin();
  to.insert(to.begin(), std::make_move_iterator(begin + static_cast<std::ptrdiff_t>(first)),
            std::make_move_iterator(begin + static_cast<std::ptrdiff_t>(last)));
  from.resize(first);
}

template <class T>
void move_to_back(std::vector<T>& from, std::size_t count, std::vector<T>& to) {
  const auto end = from.begin() + static_cast<std::ptrdiff_t>(std::min(count, from.size()));
  to.insert(to.end(), std::make_move_iterator(from.begin()), std::make_move_iterator(end));
  from.erase(from.begin(), end);
}

}  // namespace

bool Timeline::is_untouched() const {
  return entries_.empty() &&
         std::ranges::all_of(steps_, [](const TimelineStep& step) { return step.careful.has_value(); });
}

void Timeline::decided(const Decision& decision, std::size_t from, bool only_wrote) {
  VORN_ASSERT(from <= steps_.size());
  entries_.resize(taken_);
  forget_tail();
  entries_.push_back({decision, from, steps_.size(), only_wrote});
  ++taken_;
}

void Timeline::went_on(const Decision& decision) {
  VORN_ASSERT(taken_ > 0 && taken_ == entries_.size());
  const std::string note = entries_.back().decision.note;
  entries_.back().decision = decision;
  entries_.back().decision.note = note;
  entries_.back().to = steps_.size();
  forget_tail();
}

void Timeline::note(std::size_t entry, const std::string& text) {
  if (entry < entries_.size()) entries_[entry].decision.note = text;
}

std::optional<std::size_t> Timeline::to_undo() const {
  for (std::size_t k = taken_; k > 0; --k) {
    if (entries_[k - 1].decision.is_final) return {};
    if (!entries_[k - 1].only_wrote) return k - 1;
  }
  return {};
}

std::optional<std::size_t> Timeline::to_redo() const {
  return taken_ < entries_.size() ? std::optional(taken_) : std::nullopt;
}

std::size_t Timeline::undo(std::vector<FileAnswer>& answers) {
  const auto entry = to_undo();
  VORN_ASSERT(entry);
  const std::size_t from = entries_[*entry].from;
  const std::size_t answers_left = steps_.at(from).answers;
  // What happened since the last step back and decided nothing is forgotten.
  if (!tail_.empty()) {
    answers.resize(std::min(answers.size(), tail_.front().answers));
    steps_.resize(base_);
  }
  move_to_front(answers, std::min(answers_left, answers.size()), answers.size(), tail_answers_);
  move_to_front(steps_, from, steps_.size(), tail_);
  base_ = from;
  taken_ = *entry;
  return answers_left;
}

void Timeline::redo(std::vector<FileAnswer>& answers) {
  VORN_ASSERT(to_redo() && !tail_.empty());
  answers.resize(std::min(answers.size(), tail_.front().answers));
  steps_.resize(base_);
  std::size_t last = taken_;
  while (last + 1 < entries_.size() && entries_[last + 1].only_wrote) ++last;
  const std::size_t to = entries_[last].to;
  move_to_back(tail_, to - base_, steps_);
  // The answers up to the step that follows; all, where none does.
  const std::size_t answers_then =
      tail_.empty() ? answers.size() + tail_answers_.size() : tail_.front().answers;
  move_to_back(tail_answers_, answers_then - answers.size(), answers);
  base_ = to;
  taken_ = last + 1;
  if (taken_ == entries_.size()) forget_tail();  // what decided nothing behind the last one
}

void Timeline::forget_tail() {
  tail_.clear();
  tail_answers_.clear();
}

std::size_t Timeline::cut(std::size_t count, std::size_t answers) {
  if (count >= steps_.size()) return answers;
  const std::size_t left = steps_[count].answers;
  steps_.resize(count);
  if (!tail_.empty() && count >= base_) return left;  // what was taken back still goes on at its place
  forget_tail();
  entries_.resize(taken_);
  while (!entries_.empty() && entries_.back().to > count) entries_.pop_back();
  taken_ = entries_.size();
  return left;
}

}  // namespace vorn
