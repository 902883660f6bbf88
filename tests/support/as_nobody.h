// Permissions, for a test that may be run by root, who is above them.
#pragma once

#include <unistd.h>

#include <cstdlib>

namespace vorn {

// The rights of nobody, if this test has those of root.
class AsNobody {
 public:
  AsNobody() : before_(geteuid()) {
    if (before_ == 0) changed_ = seteuid(65'534) == 0;
  }
  ~AsNobody() {
    if (changed_ && seteuid(before_) != 0) std::abort();
  }
  AsNobody(const AsNobody&) = delete;
  AsNobody& operator=(const AsNobody&) = delete;
  bool mighty() const { return before_ == 0 && !changed_; }

 private:
  uid_t before_;
  bool changed_ = false;
};

}  // namespace vorn
