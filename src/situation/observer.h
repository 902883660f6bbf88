// Looks at the state, on the program's thread, whenever the program waits.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "situation/situation.h"
#include "workspace/vorndata.h"

namespace vorn {

class Observer {
 public:
  // The state that is looked at, which must live as long.
  explicit Observer(const Workspace& state) : w(state) {}

  // How things stand at a wait. At other waits than menus the store may be half loaded: then it is not looked
  // at, and what was seen of it at the last menu stays. `message` tells that a message stands on the page.
  Situation look(bool message);

  // The cores that were at work at the last menu are now in a file, all that its layout can hold.
  void cores_written();

  // How often cores were loaded.
  int loads() const { return loads_; }
  // The working copies that differ from what is stored, as they stand; empty for those that do not.
  const SharedSeries& changed_sample() const { return changed_[0]; }
  const SharedSeries& changed_reference() const { return changed_[1]; }

 private:
  bool is_held(std::size_t i) const;
  void look_at_store();
  void look_at_references();
  void look_at_pair();
  void look_at_menu();
  void look_at_chooser();
  PairMember member(int k);
  bool shows_pair() const;

  const Workspace& w;
  Situation now_;
  std::vector<SharedSeries> written_;  // the cores as they were last read or written
  SharedSeries changed_[2];
  int loads_ = 0;
};

}  // namespace vorn
