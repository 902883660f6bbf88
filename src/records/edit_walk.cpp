#include "records/edit_walk.h"

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

bool EditWalk::start_again() {
  at_ = format_.repeated_from();
  depth_ = 0;
  return format_.moves_left_over_items() && idle_ <= longest_record;
}

}  // namespace vorn
