// What is asked before work is lost.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "sessions/session.h"

namespace vorn {

// Decides, before each deed, whether the user is to be asked. What was given up once is not asked for again
// as long as it stays as it was.
class Questions : public Gate {
 public:
  // The question to ask before the deed is done; nothing where nothing would be lost. `deed` is an event or
  // Close; others lose nothing, since they are played as events or can be taken back. It is to be called with
  // every click and with Close, so that what was given up is forgotten when it changes.
  std::optional<Question> before(const Deed& deed, const Situation& situation) override;
  // The user's answer to the last one: that he gives up what it named, and nothing else.
  void given_up(const Situation& situation) override;

  // What may be lost, as it stands.
  struct Work {
    std::vector<PairMember> copies = {};      // changed and not saved
    std::vector<std::string> unwritten = {};  // cores changed and not written
    std::vector<SharedSeries> cores = {};     // those of them that are there
  };

 private:
  void forget_what_changed(const Work& work);

  Work given_up_, asked_;            // asked_: what the last question named
  std::string confirmed_, allowed_;  // what else it asked, and what of that may be done once
};

}  // namespace vorn
