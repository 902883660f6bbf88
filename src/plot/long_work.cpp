#include "plot/long_work.h"

#include "plot/plot.h"

namespace vorn {

LongWork::LongWork(Plot& plot, std::string_view what) : plot_(plot), whole_(plot.work_), what_(what) {
  plot_.work_ = this;
}

LongWork::~LongWork() {
  plot_.work_ = whole_;
}

void LongWork::at(double share) {
  if (whole_ != nullptr) return whole_->at(whole_->from_ + share * (whole_->to_ - whole_->from_));
  plot_.screen_.progress(what_, share);
}

void LongWork::part(double from, double to) {
  from_ = from;
  to_ = to;
  at(from);
}

}  // namespace vorn
