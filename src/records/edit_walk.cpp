#include "records/edit_walk.h"

#include <algorithm>

namespace vorn {

const EditStep* EditWalk::next() {
  const auto steps = format_.steps();
  while (at_ < steps.size() && ++idle_ <= longest_record) {
    const EditStep& step = steps[at_];
    if (step.kind == EditStep::Kind::open) {
      left_[depth_++] = step.repeat;
      ++at_;
    } else if (step.kind == EditStep::Kind::close) {
      const bool again = --left_[depth_ - 1] > 0;
      if (!again) --depth_;
      at_ = again ? step.partner + 1 : at_ + 1;
    } else {
      if (++done_ == step.repeat) {
        done_ = 0;
        ++at_;
      }
      if (step.moves_data()) idle_ = 0;
      return &step;
    }
  }
  return nullptr;
}

std::size_t EditWalk::repeats(std::size_t most) {
  if (done_ == 0) return 0;  // that was the last time
  const int repeat = format_.steps()[at_].repeat;
  const std::size_t count = std::min(static_cast<std::size_t>(repeat - done_), most);
  done_ += static_cast<int>(count);
  if (done_ == repeat) {
    done_ = 0;
    ++at_;
  }
  return count;
}

bool EditWalk::start_again() {
  at_ = format_.repeated_from();
  return format_.moves_left_over_items() && idle_ <= longest_record;
}

}  // namespace vorn
