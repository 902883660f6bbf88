// Years along a panel.
#pragma once

#include <cstdint>

#include "panels/panel.h"
#include "panels/pen.h"
#include "situation/situation.h"
#include "workspace/years.h"

namespace vorn {

// Where years stand in a panel: under those of the page where the panel stands above or below it, else those
// of `whole` from edge to edge.
class YearAxis {
 public:
  YearAxis(const PanelView& view, const Situation* page, YearSpan whole);

  YearSpan years() const { return years_; }
  double left() const { return left_; }
  double right() const { return right_; }
  double unit() const { return unit_; }  // panel units a year
  double x_of(std::int64_t year) const { return left_ + static_cast<double>(year - years_.first) * unit_; }
  double middle_of(std::int64_t year) const { return x_of(year) + unit_ / 2; }
  bool shows(std::int64_t year) const { return year >= years_.first && year <= years_.last; }

  // Ticks and years below y.
  void draw(Pen& pen, double y) const;

 private:
  YearSpan years_;
  double left_, right_, unit_;
};

}  // namespace vorn
