// Work that may take long: while it lasts the screen can tell the user what runs and how far it is.
#pragma once

#include <string>
#include <string_view>

namespace vorn {

class Plot;

// Lives as long as the work does. What it tells costs some nanoseconds and changes nothing on the page, so it
// may be told often; a few hundred times in all is plenty.
//
// Work may be part of other work: then the user sees the name of the whole, and how far that is.
class LongWork {
 public:
  // `what` is what the user knows it by, such as "Stats.prn".
  LongWork(Plot& plot, std::string_view what);
  ~LongWork();
  LongWork(const LongWork&) = delete;
  LongWork& operator=(const LongWork&) = delete;

  // This share of the work is done, 0 to 1.
  void at(double share);
  // What comes next, work of its own, takes this work from one share to another.
  void part(double from, double to);

 private:
  Plot& plot_;
  LongWork* const whole_;  // what this is part of, if anything
  const std::string what_;
  double from_ = 0, to_ = 1;
};

}  // namespace vorn
