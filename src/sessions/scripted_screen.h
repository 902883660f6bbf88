// A screen without a window: a script acts for the user.
#pragma once

#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "plot/page.h"
#include "sessions/inbox.h"
#include "sessions/script.h"

namespace vorn {

// A page position.
struct PageSpot {
  int x = 0, y = 0;
};

// The buttons of the program as they stand at the wait at hand.
struct ButtonPlaces {
  std::function<PageSpot(int)> middle;
  std::function<bool(int)> shown;  // and a click on it is what the program waits for
};

// The panels beside the page, as scripts use them.
class ScriptPanels {
 public:
  virtual ~ScriptPanels() = default;
  // How the session stands at the wait at hand.
  virtual void stand(const SharedStanding& standing) = 0;
  // The panel, which must be one.
  virtual Page page(const std::string& panel) = 0;
  // Clicks the first spot of it whose text or tip contains `text`: what is then to be done, if anything, or
  // what is wrong.
  struct Picked {
    std::optional<Deed> deed = {};
    std::string wrong = {};
  };
  virtual Picked pick(const std::string& panel, const std::string& text) = 0;
};

// Thrown by a wait when the script cannot go on: the run has failed, whatever the program would do next.
class ScriptStop : public std::exception {
 public:
  static constexpr int failed = 1;  // an expectation failed, or a page could not be written
  static constexpr int ended = 3;   // the script ended while the program was waiting
  ScriptStop(int exit_status, std::string why) : exit_status_(exit_status), why_(std::move(why)) {}
  int exit_status() const { return exit_status_; }
  const char* what() const noexcept override { return why_.c_str(); }

 private:
  int exit_status_;
  std::string why_;
};

// Plays a valid script. Its statements act whenever the program waits, on the page as it then stands, up to
// the next click or key, which is what the program gets. Of a typed text it gets what a window would hand on:
// the characters 32 to 126.
class ScriptedScreen : public Inbox {
 public:
  // Writes a page to the file of this name and returns what went wrong, nothing when it is written.
  using PageWriter = std::function<std::optional<std::string>(const Page&, const std::string&)>;

  // `script_name` is for messages. A script with panels needs them.
  ScriptedScreen(std::vector<Statement> statements, std::string script_name, ButtonPlaces buttons,
                 PageWriter write_page, ScriptPanels* panels = nullptr);

  // What is careful with what the script switches before all else; to be asked for once, before the program
  // starts.
  Careful careful_at_start(Careful careful = {});

  void show(const Page& page) override { page_ = page; }
  Event next_event() override;  // passes over undo and redo, for which a session is needed
  Deed next_deed() override;
  void stand(const SharedStanding& standing) override;
  // Only messages ask for this, right before they wait; a script has nothing to forget.
  void forget_pending() override { message_waits_ = true; }

  // The line of the first statement that was not reached; 0 when all were.
  int first_line_not_reached() const;

 private:
  void act(const Statement& statement);
  void press(const Statement& statement);
  void check(const Statement& statement) const;
  [[noreturn]] void stop_at_the_end() const;
  [[noreturn]] void stop(const Statement& statement, const std::string& why) const;
  void go_back(const Statement& statement);
  void write_panel(const Statement& statement);
  void pick(const Statement& statement);
  void press_key(int code) { pending_.emplace_back(Event{mouse_.x, mouse_.y, code}); }
  void click(PageSpot spot, int code);

  std::vector<Statement> statements_;
  std::string script_name_;
  ButtonPlaces buttons_;
  PageWriter write_page_;
  ScriptPanels* panels_;
  std::size_t next_ = 0;        // of the statements
  std::deque<Deed> pending_;    // what the last statement still has to hand on
  PageSpot mouse_;              // where the last click was: keys carry it
  bool message_waits_ = false;  // the wait at hand is that of a message
  Page page_;
  SharedStanding standing_;
};

}  // namespace vorn
