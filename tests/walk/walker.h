// A user who does not know what he is doing: clicks and keys at random over the whole program.
#pragma once

#include <cstdint>
#include <ctime>
#include <deque>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "plot/page.h"
#include "plot/screen.h"
#include "walk/invariants.h"
#include "workspace/vorndata.h"

namespace vorn {

// A screen that makes up its events: mostly clicks on buttons that are shown, numbers and names typed into
// fields, now and then a click anywhere, a key or a request for help. The same seed makes the same walk.
// Between two events it checks what must hold; the first complaint ends the walk, as does the last step.
class Walker : public Screen {
 public:
  Walker(std::uint32_t seed, int steps, bool undated_records);

  // The program starts anew on `w`.
  void begin(const Workspace& w);
  bool done() const { return step_ == steps_ || !complaint_.empty(); }

  // What must hold is not checked: of a walk on which steps are taken back behind the walker's back.
  void check_nothing() { checks_ = false; }
  int step() const { return step_; }
  // Empty, or what did not hold and the events that led there.
  std::string complaint() const;
  // How often each button was hit.
  const std::map<ButtonNumber, int>& hits() const { return hits_; }

  void show(const Page& page) override { page_ = &page; }
  void forget_pending() override { message_shown_ = true; }
  Event next_event() override;

 private:
  void look_around();
  void check();
  void look_for_dead_end();
  Event choose();
  Event click_on(ButtonNumber n);
  Event click_in_list(const Rectangle& area, int columns, int names);
  bool is_field(ButtonNumber n) const;
  void plan_entry(ButtonNumber n);
  ButtonNumber pick_button();
  bool shown(ButtonNumber n) const;
  bool hits(const Event& event, ButtonNumber n) const;
  int up_to(int most);  // 0 to most
  bool in(int percent) { return up_to(99) < percent; }

  std::mt19937 random_;
  int steps_, step_ = 0;
  const Workspace* w_ = nullptr;
  const Page* page_ = nullptr;
  bool message_shown_ = false;
  bool checks_ = true;
  WalkState state_;
  std::vector<ButtonNumber> shown_;  // numbers of the buttons on the page
  std::deque<int> planned_;          // codes of keys
  std::deque<std::string> trail_;
  std::map<ButtonNumber, int> hits_;
  std::string complaint_;
  std::vector<Mark> page_before_;
  int steps_on_page_ = 0;  // that changed nothing to be seen
  static constexpr std::clock_t not_asked = -1;
  std::clock_t asked_ = not_asked;
};

}  // namespace vorn
