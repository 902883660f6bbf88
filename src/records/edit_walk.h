// Going through a parsed edit format, step by step, with its repeats and groups.
#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "records/edit_format.h"

namespace vorn {

// Groups within groups; deeper ones are taken for a damaged format.
inline constexpr std::size_t deepest_nesting = 32;

// The most that a record to be written may hold, and the most that a format may do between two items: no
// format that is meant does a thousandth of it, a damaged one could keep the program busy for years.
inline constexpr std::size_t longest_record = std::size_t{1} << 20;

class EditWalk {
 public:
  explicit EditWalk(const EditFormat& format) : format_(format) {}

  // The next descriptor that is no parenthesis, every one as often as it is repeated. Nothing at the end of
  // the format, or when it does too much between two items.
  const EditStep* next();

  // How many times more the descriptor answered last comes at once, at most `most`. These count as answered.
  std::size_t repeats(std::size_t most);

  // Goes back to where left-over items are continued. False when no item could ever be moved by doing so.
  bool start_again();

 private:
  const EditFormat& format_;
  std::size_t at_ = 0;                       // the step that is gone through
  int done_ = 0;                             // how often it has been answered
  std::array<int, deepest_nesting> left_{};  // for each open group, times still to go
  std::size_t depth_ = 0;
  std::size_t idle_ = 0;  // steps since the last one that moves data
};

}  // namespace vorn
