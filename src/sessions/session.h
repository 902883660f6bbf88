// A session: the program at work for a user, with all that he did kept, so that it can be taken back, done
// again, and taken up another day.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "sessions/decisions.h"
#include "sessions/deeds.h"
#include "sessions/file_answers.h"
#include "sessions/inbox.h"
#include "sessions/timeline.h"
#include "situation/observer.h"
#include "workspace/careful.h"

namespace vorn {

struct Workspace;

// The whole program, from its start to its end: shows itself on the screen, works on the files, logs its
// messages, hands out its state when it has one, and returns the exit status. It lets through what a wait
// throws, but ProgramEnd.
using WholeProgram =
    std::function<int(Screen&, Files&, std::ostream& log, const std::function<void(Workspace&)>& started)>;

// Who asks before work is lost (see desk/questions.h).
class Gate {
 public:
  virtual ~Gate() = default;
  // The question to ask before the deed, an event or Close, is done; nothing where nothing would be lost.
  virtual std::optional<Question> before(const Deed& deed, const Situation& situation) = 0;
  // The user gives up what the last question named.
  virtual void given_up(const Situation& situation) = 0;
};

// Who keeps what happens (see journal.h). Nothing that it does can fail the session.
class Keeper {
 public:
  virtual ~Keeper() = default;
  virtual void happened(const Event& /*event*/) {}
  // Something is done carefully from now on, or no longer; before the first event: from the start on.
  virtual void switched(const CarefulSwitch& /*careful*/) {}
  // What is done carefully now, whatever led there: to be kept for the folder.
  virtual void careful(const Careful& /*now*/) {}
  virtual void answered(std::size_t /*place*/, const FileAnswer& /*answer*/) {}
  virtual void decided(const Timeline::Entry& /*entry*/) {}
  virtual void went_on(const Timeline::Entry& /*entry*/) {}
  virtual void noted(std::size_t /*entry*/, const std::string& /*text*/) {}
  virtual void undone() {}
  virtual void redone() {}
  virtual void cut(std::size_t /*steps*/) {}
  // Nothing of what was done can be gone through: the session begins anew.
  virtual void begun_anew() {}
  // What was taken up has been gone through.
  virtual void landed() {}
  // The program has ended; `by_event` when the event that happened last made it do so.
  virtual void ended(bool /*by_event*/, bool /*unsaved*/) {}
  // Why nothing can be kept; empty where it is.
  virtual std::string trouble() const { return {}; }
  // The journal of an earlier session whose work may be taken up, by a name that take_up() knows; empty for
  // none.
  virtual std::string to_take_up() { return {}; }
  // Reads it. Sets what it holds, or what is wrong with it.
  struct TakenUp {
    Timeline timeline = {};
    std::vector<FileAnswer> answers = {};
    std::string trouble = {};
  };
  virtual TakenUp take_up(const std::string& /*journal*/) { return {.trouble = "no journal is kept here"}; }
};

class Session : public Screen {
 public:
  // All must live as long as the session. Without a gate nothing is asked, without a keeper nothing is kept
  // beyond the session.
  Session(WholeProgram program, Files& files, std::ostream& log, Inbox& inbox, Gate* gate = nullptr,
          Keeper* keeper = nullptr);

  // Runs the program until it ends and returns its exit status.
  int run();
  // Does this carefully from the start on. To be called before run(), if at all.
  void begin_carefully(const Careful& careful);
  // Goes through what was taken up first, instead of beginning anew.
  void begin_with(Keeper::TakenUp taken_up, Files* replayed = nullptr);

  const Timeline& timeline() const { return timeline_; }

  void show(const Page& page) override;
  Event next_event() override;
  void forget_pending() override;
  void progress(std::string_view what, double share) override;
  void subject(std::string_view file) override;
  void notice(std::string_view text) override;

 private:
  // Thrown by a wait: the program is to be gone through anew, up to the last of the steps that hold.
  struct GoBack {};
  // What is still to be played: a step, or the deed behind the steps of an answer.
  struct Queued {
    std::optional<PlayStep> step = {};
    std::optional<Deed> deed = {};
    bool asked = false;   // the user was asked before
    bool as_one = false;  // with the steps behind it it is one decision
  };

  int run_once();
  void leave_off_last(const std::string& why);
  void start(Workspace& w);
  bool replays() const { return replayed_steps_ < timeline_.steps().size(); }
  Event replay_next();
  void replay_switches();
  void land();

  // What is seen at a wait.
  void look();
  void look_at_disk(Situation& seen) const;
  void show_at_last(bool message);
  Decided decided_now() const;
  void notice_decision();
  void keep(const Decision& decision, bool only_wrote);
  void keep_new_files();
  void say_how_written(const std::string& file);
  bool rests() const;
  void note_press(const Event& event);

  // What is done at a wait.
  bool plays() const;
  bool awaits_yes() const;
  void heed_yes(const Event& event);
  void drop_awaited();
  std::optional<Event> next_queued();
  std::optional<ButtonNumber> page_to_series(int entry) const;
  std::optional<Event> series_event(int entry);
  std::optional<Event> event_of(const PlayStep& step);
  std::optional<Event> way_to_start();
  void stop_playing(const std::string& why);
  std::optional<Event> do_deed(Deed deed, bool asked);
  bool is_asked(const Deed& deed);
  std::optional<Event> answer(std::size_t choice);
  void undo();
  void redo();
  void go_to(std::size_t decisions);
  void take_up(const std::string& journal);
  bool is_one_way() const;
  [[noreturn]] void cut_to_rest();
  [[noreturn]] void go_back();
  std::optional<Event> switch_careful(const CarefulSwitch& to);
  void note(const TakeNote& note);
  Event hand_in(const Event& event);
  std::string what_stays() const;
  void publish();
  bool may_go_back() const;

  WholeProgram program_;
  AnsweredFiles files_;
  Files& disk_;
  std::ostream& log_;
  std::ostream program_log_;  // the same, but silent while something is gone through again
  Inbox& inbox_;
  Gate* gate_;
  Keeper* keeper_;
  Keeper no_keeper_;

  Timeline timeline_;
  std::vector<FileAnswer> kept_answers_;  // of what is gone through again
  Files* replayed_ = nullptr;
  std::size_t replayed_steps_ = 0;  // of the timeline's, those handed in to the program at work
  bool goes_back_ = false;          // the next run of the program goes through what was done before
  bool is_replaying_ = false;
  std::string replay_name_;
  bool takes_up_ = false;

  Workspace* w_ = nullptr;
  std::unique_ptr<Observer> observer_;
  SharedSituation situation_;
  std::optional<Decided> rest_;        // how things stood at the last rest
  std::size_t rest_step_ = 0;          // and how many steps there were
  std::vector<ButtonNumber> pressed_;  // since
  std::string destination_;
  std::set<std::string> session_files_;  // that this session wrote, also what was taken back
  std::vector<std::string> new_files_;   // those of them since the last rest
  std::size_t files_looked_at_ = 0;      // of the answers
  std::string written_;

  bool message_waits_ = false;
  bool waits_ = false;  // for a deed: what ends the program now is no event
  std::string subject_;
  const Page* page_ = nullptr;
  std::deque<Queued> queue_;
  std::string playing_;
  std::optional<Question> question_;
  Deed questioned_;
  std::string to_take_up_;
  std::optional<CarefulSwitch> switching_;  // with the event that is handed in next
};

}  // namespace vorn
