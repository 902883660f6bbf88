// The screen of a session: beside pages and events it takes deeds, and is told how the session stands.
#pragma once

#include "plot/screen.h"
#include "sessions/deeds.h"
#include "sessions/standing.h"

namespace vorn {

class Inbox : public Screen {
 public:
  // How the session stands, of the page shown last. Told before each wait, and again when it changes during
  // one.
  virtual void stand(const SharedStanding& /*standing*/) {}
  // Waits until something is to be done with the page shown last. Throws ProgramEnd when the screen is closed
  // and nothing may be asked any more.
  virtual Deed next_deed() { return next_event(); }
};

}  // namespace vorn
