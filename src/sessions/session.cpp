#include "sessions/session.h"

#include <algorithm>
#include <system_error>
#include <utility>
#include <vector>

#include "sessions/careful_neighbour.h"
#include "situation/graph_axis.h"
#include "situation/name_lists.h"
#include "workspace/vorndata.h"

namespace vorn {
namespace {

constexpr std::string_view exchange_file = "Edit.raw";  // written whenever the editor is opened
constexpr std::size_t longest_note = 2'000;

bool is_click(const Deed& deed) {
  const auto* event = std::get_if<Event>(&deed);
  return event && event->code == Event::click;
}

// One line of plain text, so that a journal can hold it.
std::string one_line(std::string text) {
  if (text.size() > longest_note) {
    std::size_t end = longest_note;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
      --end;  // no part of a character
    text.resize(end);
  }
  for (char& c : text) {
    if (static_cast<unsigned char>(c) < ' ' || c == 127) c = ' ';
  }
  return text;
}

}  // namespace

Session::Session(WholeProgram program, Files& files, std::ostream& log, Inbox& inbox, Gate* gate,
                 Keeper* keeper)
    : program_(std::move(program)),
      files_(files),
      disk_(files),
      log_(log),
      program_log_(log.rdbuf()),
      inbox_(inbox),
      gate_(gate),
      keeper_(keeper ? keeper : &no_keeper_) {
  files_.kept = [this](std::size_t place) { keeper_->answered(place, files_.answers()[place]); };
}

void Session::begin_carefully(const Careful& careful) {
  timeline_ = {};
  const auto begin = [this](const CarefulSwitch& on) {
    timeline_.switched(on, 0);
    keeper_->switched(on);
  };
  if (careful == Careful::everything()) return begin({});
  for (const MendRow& row : mends()) {
    if (careful.has(row.mend)) begin({.mend = row.mend});
  }
}

void Session::begin_with(Keeper::TakenUp taken_up, Files* replayed) {
  timeline_ = std::move(taken_up.timeline);
  kept_answers_ = std::move(taken_up.answers);
  replayed_ = replayed;
  replay_name_ = "Take up";
  goes_back_ = true;
}

int Session::run() {
  to_take_up_ = keeper_->to_take_up();
  for (;;) {
    try {
      const int status = run_once();
      if (!is_replaying_) return status;
      leave_off_last("the program ended");
    } catch (const GoBack&) {
      // The program is run again, up to where it is to be.
    }
  }
}

// The step that was handed in last cannot be gone through again. Where not even the start can, all is given
// up.
void Session::leave_off_last(const std::string& why) {
  const std::size_t steps = timeline_.steps().size();
  inbox_.notice(replay_name_ + ": " + why + " at step " + std::to_string(replayed_steps_) + " of " +
                std::to_string(steps) + ", which is left off with all behind it");
  goes_back_ = replayed_steps_ > 0;
  if (goes_back_) {
    const std::size_t good = replayed_steps_ - 1;
    kept_answers_.resize(timeline_.cut(good, kept_answers_.size()));
    keeper_->cut(good);
  } else {
    timeline_ = {};
    kept_answers_.clear();
    replayed_ = nullptr;
    takes_up_ = false;
    keeper_->begun_anew();
  }
}

int Session::run_once() {
  files_.begin_again(kept_answers_, replayed_);
  replayed_steps_ = 0;
  is_replaying_ = std::exchange(goes_back_, false);
  if (!is_replaying_) files_.go_live();
  files_looked_at_ = 0;
  rest_.reset();
  pressed_.clear();
  destination_.clear();
  message_waits_ = false;
  page_ = nullptr;
  program_log_.rdbuf(is_replaying_ ? nullptr : log_.rdbuf());
  const int status = program_(*this, files_, program_log_, [this](Workspace& w) { start(w); });
  w_ = nullptr;
  observer_.reset();
  if (!is_replaying_) keeper_->ended(!waits_, situation_ && situation_->unsaved());
  return status;
}

void Session::start(Workspace& w) {
  w_ = &w;
  observer_ = std::make_unique<Observer>(w);
  replay_switches();
}

void Session::replay_switches() {
  for (const auto& steps = timeline_.steps(); replays() && steps[replayed_steps_].careful; ++replayed_steps_)
    steps[replayed_steps_].careful->apply(w_->careful);
}

// --- The screen of the program.

// What is gone through again, and what is played, is not shown on the way.
void Session::show(const Page& page) {
  page_ = &page;
  if (!is_replaying_ && queue_.empty()) inbox_.show(page);
}

void Session::forget_pending() {
  message_waits_ = true;
  if (!is_replaying_ && queue_.empty()) inbox_.forget_pending();
}

void Session::progress(std::string_view what, double share) {
  if (!is_replaying_) inbox_.progress(what, share);
}

void Session::subject(std::string_view file) {
  subject_ = file;
  if (!is_replaying_) inbox_.subject(file);
}

void Session::notice(std::string_view text) {
  if (!is_replaying_) inbox_.notice(text);
}

Event Session::next_event() {
  waits_ = true;
  if (is_replaying_ && files_.is_astray()) {
    leave_off_last("the files were not asked for as before");
    throw GoBack();
  }
  look();
  const bool message = std::exchange(message_waits_, false);
  if (replays()) return replay_next();
  const bool is_unseen = is_replaying_ || !queue_.empty();
  if (is_replaying_) land();
  while (plays()) {
    if (const auto event = next_queued()) return hand_in(*event);
  }
  if (is_unseen) show_at_last(message);
  for (;;) {
    publish();
    Deed deed = inbox_.next_deed();
    if (const auto event = do_deed(std::move(deed), false)) {
      heed_yes(*event);
      return hand_in(*event);
    }
    while (plays()) {
      if (const auto event = next_queued()) return hand_in(*event);
    }
  }
}

Event Session::replay_next() {
  const TimelineStep& step = timeline_.steps()[replayed_steps_];
  if (step.careful) step.careful->apply(w_->careful);
  const Event event = step.event;
  inbox_.progress(replay_name_,
                  static_cast<double>(replayed_steps_) / static_cast<double>(timeline_.steps().size()));
  note_press(event);
  ++replayed_steps_;
  return event;
}

// The last step was gone through: from here on everything is new again.
void Session::land() {
  is_replaying_ = false;
  program_log_.rdbuf(log_.rdbuf());
  replayed_ = nullptr;
  files_.go_live();
  if (std::exchange(takes_up_, false)) keeper_->landed();
  keeper_->careful(w_->careful);
  inbox_.subject(subject_);
  auto seen = std::make_shared<Situation>(*situation_);
  look_at_disk(*seen);
  situation_ = std::move(seen);
}

// What was typed before the user saw a message is not its answer.
void Session::show_at_last(bool message) {
  if (page_) inbox_.show(*page_);
  if (message) inbox_.forget_pending();
}

// --- What is seen at a wait.

void Session::look() {
  // While a message stands a file may be half written.
  if (w_->offered.size() > 0) keep_new_files();
  auto seen = std::make_shared<Situation>(observer_->look(message_waits_));
  if (!is_replaying_) look_at_disk(*seen);
  situation_ = std::move(seen);
  if (rests() && (queue_.empty() || !queue_.front().as_one)) notice_decision();
}

void Session::look_at_disk(Situation& seen) const {
  if (seen.place != Place::start || seen.wait != Wait::menu) return;
  FileKind kind = FileKind::missing;
  const bool stands = !seen.raw_output.empty() && disk_.look_at(seen.raw_output, kind) == status::ok &&
                      kind != FileKind::missing;
  seen.replaces_other_file = stands && !session_files_.contains(seen.raw_output);
  seen.two_column_list_missing = !w_->careful.has(Mend::read_trw) &&
                                 disk_.look_at("TRW.fil", kind) == status::ok && kind == FileKind::missing;
}

bool Session::rests() const {
  const Place place = situation_->place;
  return situation_->wait == Wait::menu && place != Place::chronologies && place != Place::keep_edit;
}

// Which files were written since the last wait, and whether the cores were among them.
void Session::keep_new_files() {
  const auto& answers = files_.answers();
  for (; files_looked_at_ < files_.given(); ++files_looked_at_) {
    const FileAnswer& answer = answers[files_looked_at_];
    if (!answer.is_committed || answer.commit_status != status::ok || answer.name == exchange_file) continue;
    session_files_.insert(answer.name);
    new_files_.push_back(answer.name);
    if (!is_replaying_) say_how_written(answer.name);
    const bool saves = std::ranges::find(pressed_, button::save_raw) != pressed_.end();
    if (saves && situation_ && answer.name == situation_->raw_output) observer_->cores_written();
  }
}

void Session::say_how_written(const std::string& file) {
  if (const Status failed = write_careful_neighbour(disk_, file, w_->careful))
    inbox_.notice(file + ".careful cannot be written: " + std::generic_category().message(failed.number()));
}

Decided Session::decided_now() const {
  return {.settings = situation_->settings,
          .file = situation_->file,
          .loads = observer_->loads(),
          .cores = situation_->cores,
          .sample = observer_->changed_sample(),
          .reference = observer_->changed_reference(),
          .sample_entry = situation_->sample.entry,
          .reference_entry = situation_->reference.entry,
          .sample_stored_from = situation_->sample.stored_first_year,
          .reference_stored_from = situation_->reference.stored_first_year};
}

void Session::notice_decision() {
  Decided now = decided_now();
  if (rest_ && !is_replaying_) {
    auto decision = decision_between(*rest_, now, pressed_, destination_);
    const bool only_wrote = !decision && !new_files_.empty();
    if (!new_files_.empty()) {
      std::string names;
      for (const std::string& name : new_files_) names += (names.empty() ? "" : ", ") + name;
      written_ = "wrote " + names + ", " + std::to_string(situation_->cores.size()) + " cores";
      if (only_wrote) decision = Decision{.what = "Write " + names};
      if (decision) decision->wrote = names;
    }
    if (decision) keep(*decision, only_wrote);
  }
  new_files_.clear();
  rest_ = std::move(now);
  rest_step_ = is_replaying_ ? replayed_steps_ : timeline_.steps().size();
  pressed_.clear();
  destination_.clear();
}

// A slide that follows another of the same series goes on with it.
void Session::keep(const Decision& decision, bool only_wrote) {
  const auto& entries = timeline_.entries();
  const bool goes_on_with_last = !only_wrote && !entries.empty() && timeline_.taken() == entries.size() &&
                                 entries.back().to == rest_step_ &&
                                 goes_on(entries.back().decision, decision);
  if (goes_on_with_last) {
    timeline_.went_on(both(entries.back().decision, decision));
    keeper_->went_on(timeline_.entries().back());
  } else {
    timeline_.decided(decision, rest_step_, only_wrote);
    keeper_->decided(timeline_.entries().back());
  }
}

// The files written by what undo would take back.
std::string Session::what_stays() const {
  std::string names;
  for (std::size_t k = timeline_.to_undo().value_or(timeline_.taken()); k < timeline_.taken(); ++k) {
    const std::string& wrote = timeline_.entries()[k].decision.wrote;
    if (!wrote.empty()) names += (names.empty() ? "" : ", ") + wrote;
  }
  return names.empty() ? names : names + " stays as it was written";
}

void Session::publish() {
  auto standing = std::make_shared<Standing>();
  standing->situation = situation_;
  for (const Timeline::Entry& entry : timeline_.entries()) standing->decisions.push_back(entry.decision);
  standing->taken = timeline_.taken();
  standing->steps = timeline_.steps().size();
  const auto to_undo = timeline_.to_undo();
  standing->can_undo = to_undo && may_go_back();
  const auto to_redo = timeline_.to_redo();
  standing->can_redo = to_redo && may_go_back();
  if (to_redo) standing->to_redo = timeline_.entries()[*to_redo].decision.what;
  if (to_undo) {
    standing->to_undo = timeline_.entries()[*to_undo].decision.what;
    standing->undo_says = what_stays();
  } else if (timeline_.taken() > 0) {
    for (std::size_t k = timeline_.taken(); k > 0 && standing->undo_says.empty(); --k) {
      const Decision& decision = timeline_.entries()[k - 1].decision;
      if (decision.is_final)
        standing->undo_says = "\"" + decision.what + "\" changed files and cannot be taken back";
    }
  }
  standing->question = question_;
  standing->written = written_;
  standing->journal_trouble = keeper_->trouble();
  // With the first decision the session at hand is the one to be kept.
  if (timeline_.taken() == 0) standing->to_take_up = to_take_up_;
  inbox_.stand(standing);
}

// --- What is done at a wait.

Event Session::hand_in(const Event& event) {
  waits_ = false;
  note_press(event);
  if (const auto to = std::exchange(switching_, {})) {
    to->apply(w_->careful);
    timeline_.switched(*to, files_.answers().size());
    keeper_->switched(*to);
  } else {
    timeline_.happened(event, files_.answers().size());
    keeper_->happened(event);
  }
  replayed_steps_ = timeline_.steps().size();
  return event;
}

void Session::note_press(const Event& event) {
  if (event.code != Event::click) return;
  const ShownButton* hit = situation_->at(event.x, event.y);
  if (!hit) return;
  pressed_.push_back(hit->number);
  if (hit->number == button::chooser_do_it && situation_->mode == button::move_core)
    destination_ = situation_->destination;
}

std::optional<Event> Session::do_deed(Deed deed, bool asked) {
  if (const auto* choice = std::get_if<Choose>(&deed)) return answer(choice->answer);
  if (const auto* taken = std::get_if<TakeNote>(&deed)) return note(*taken), std::nullopt;
  if (question_) return {};  // nothing is done before it is answered
  if (auto* play = std::get_if<Play>(&deed)) {
    playing_ = play->what;
    drop_awaited();
    for (const PlayStep& step : play->steps) queue_.push_back({.step = step, .as_one = true});
    return {};
  }
  if (std::holds_alternative<Undo>(deed)) return undo(), std::nullopt;
  if (std::holds_alternative<Redo>(deed)) return redo(), std::nullopt;
  if (const auto* to = std::get_if<GoTo>(&deed)) return go_to(to->decisions), std::nullopt;
  if (const auto* up = std::get_if<TakeUp>(&deed)) return take_up(up->journal), std::nullopt;
  if (const auto* to = std::get_if<CarefulSwitch>(&deed)) return switch_careful(*to);
  if (!asked && is_asked(deed)) return {};
  if (std::holds_alternative<Close>(deed)) throw ProgramEnd(EndReason::closed);
  return std::get<Event>(deed);
}

// Whether a question now stands before the deed.
bool Session::is_asked(const Deed& deed) {
  const bool may_lose =
      std::holds_alternative<Close>(deed) ||
      (is_click(deed) && (situation_->wait == Wait::menu || situation_->wait == Wait::year));
  if (!gate_ || !may_lose) return false;
  question_ = gate_->before(deed, *situation_);
  questioned_ = deed;
  return question_.has_value();
}

std::optional<Event> Session::answer(std::size_t choice) {
  if (!question_) return {};
  const Question question = *std::exchange(question_, {});
  if (question.answers.empty() || choice >= question.answers.size() - 1) {
    queue_.clear();
    return {};
  }
  const Question::Answer& chosen = question.answers[choice];
  if (chosen.first.empty()) {
    gate_->given_up(*situation_);
    return chosen.does_it ? do_deed(questioned_, true) : std::nullopt;
  }
  playing_ = chosen.text;
  std::vector<Queued> steps;
  for (const PlayStep& step : chosen.first) {
    // Whether another file may be replaced was not asked yet.
    const bool asked = step.button != button::save_raw;
    steps.push_back({.step = step, .asked = asked});
  }
  // What could not be saved is asked for again: the deed behind the steps is not taken as asked.
  if (chosen.does_it) steps.push_back({.deed = questioned_});
  queue_.insert(queue_.begin(), steps.begin(), steps.end());
  return {};
}

// --- Playing.

bool Session::plays() const {
  return !question_ && !queue_.empty() && !awaits_yes();
}

// Whether playing goes on when the user has said whether a change stays.
bool Session::awaits_yes() const {
  return !queue_.empty() && queue_.front().step && queue_.front().step->kind == PlayStep::Kind::kept_edit &&
         situation_->place == Place::keep_edit;
}

void Session::heed_yes(const Event& event) {
  const ShownButton* hit = event.code == Event::click ? situation_->at(event.x, event.y) : nullptr;
  if (!hit || !awaits_yes()) return;
  if (hit->number == button::insertion_ok || hit->number == button::deletion_ok) {
    queue_.pop_front();
  } else {
    queue_.clear();
  }
}

void Session::drop_awaited() {
  if (situation_ && awaits_yes()) queue_.clear();
}

// The next event of what is played; nothing where a step is over, waits for an answer, or cannot be played.
std::optional<Event> Session::next_queued() {
  Queued next = std::move(queue_.front());
  queue_.pop_front();
  if (next.deed) {
    if (situation_->wait != Wait::menu) return stop_playing("a message came between"), std::nullopt;
    return do_deed(*next.deed, next.asked);
  }
  if (next.step->kind == PlayStep::Kind::to_menu) {
    if (is_one_way()) cut_to_rest();
    return {};
  }
  if (next.step->kind == PlayStep::Kind::careful) {
    return switch_careful({.mend = mends()[static_cast<std::size_t>(next.step->number)].mend});
  }
  if (next.step->kind == PlayStep::Kind::to_start_menu) {
    const auto event = way_to_start();
    if (event) queue_.push_front(std::move(next));
    return event;
  }
  if (next.step->kind == PlayStep::Kind::series) {
    const auto page = page_to_series(next.step->number);
    if (!page) return series_event(next.step->number);
    queue_.push_front(std::move(next));
    return event_of({.button = *page});
  }
  const auto event = event_of(*next.step);
  if (!event) return {};
  return do_deed(*event, next.asked);
}

// The button that brings the name nearer in the chooser's list; nothing where it is shown, or never will be.
std::optional<ButtonNumber> Session::page_to_series(int entry) const {
  const int all = static_cast<int>(situation_->cores.size() + situation_->references.size());
  const int first = situation_->first_listed, shown = static_cast<int>(situation_->listed.size());
  if (situation_->mode != button::pick_cores || entry < 1 || entry > all) return {};
  if (entry < first) return button::page_back;
  if (entry >= first + shown) return button::page_forward;
  return {};
}

std::optional<Event> Session::series_event(int entry) {
  const ShownButton* list = situation_->shown(button::chooser_list);
  const auto shown = list ? list_of(button::chooser_list, *situation_) : std::nullopt;
  const int cell = entry - situation_->first_listed;
  if (!shown || cell < 0 || cell >= shown->cells)
    return stop_playing("the list does not show it"), std::nullopt;
  const Rectangle at = cell_of(*list, *shown, cell);
  return Event{(at.x1 + at.x2) / 2, (at.y1 + at.y2) / 2, Event::click};
}

std::optional<Event> Session::event_of(const PlayStep& step) {
  const bool menu = situation_->wait == Wait::menu || situation_->wait == Wait::year;
  const auto press = [this](ButtonNumber n) -> std::optional<Event> {
    const ShownButton* button = situation_->shown(n);
    if (!button) return stop_playing("the button it needs is not shown"), std::nullopt;
    return Event{(button->x1 + button->x2) / 2, (button->y1 + button->y2) / 2, Event::click};
  };
  switch (step.kind) {
    case PlayStep::Kind::press:
      return press(step.button);
    case PlayStep::Kind::sample_year:
    case PlayStep::Kind::reference_year: {
      auto event = press(step.kind == PlayStep::Kind::sample_year ? button::upper_plot : button::lower_plot);
      const auto x = GraphAxis(*situation_).x_of(step.year);
      if (event && !x) return stop_playing("the year is not shown"), std::nullopt;
      if (event) event->x = *x;
      return event;
    }
    case PlayStep::Kind::key:
      if (menu) return stop_playing("nothing is typed here"), std::nullopt;
      return Event{0, 0, step.code};
    case PlayStep::Kind::click:
      if (!menu) return stop_playing("no click is waited for"), std::nullopt;
      return Event{step.x, step.y, Event::click};
    case PlayStep::Kind::kept_edit:
      return stop_playing("nothing was changed"), std::nullopt;
    case PlayStep::Kind::series:
    case PlayStep::Kind::to_menu:
    case PlayStep::Kind::to_start_menu:
    case PlayStep::Kind::careful:
      break;
  }
  return {};
}

// One event nearer to the start menu; nothing when it is reached.
std::optional<Event> Session::way_to_start() {
  if (situation_->wait == Wait::message) return Event{0, 0, Event::enter};
  if (situation_->wait == Wait::number) return Event{0, 0, Event::escape};  // abandons the entry
  if (situation_->wait == Wait::name) return Event{0, 0, Event::enter};
  if (is_one_way()) {
    queue_.push_front({.step = PlayStep{.kind = PlayStep::Kind::to_start_menu}});
    cut_to_rest();
  }
  const auto press = [this](ButtonNumber n) { return event_of({.button = n}); };
  switch (situation_->place) {
    case Place::crossdating:
      return press(button::exit_crossdating);
    case Place::keep_edit:
      return press(situation_->shown(button::insertion_ok) ? button::insertion_ok : button::deletion_ok);
    case Place::correlation:
      return press(button::correlation_exit);
    case Place::chooser:
      return press(button::chooser_exit);
    case Place::editor:
      return press(button::editor_exit);
    default:
      return {};
  }
}

// From these pages no click leads back.
bool Session::is_one_way() const {
  return situation_->place == Place::pick_year || situation_->place == Place::chronologies;
}

// As if the page had not been opened.
void Session::cut_to_rest() {
  kept_answers_ = files_.answers();
  kept_answers_.resize(timeline_.cut(rest_step_, kept_answers_.size()));
  keeper_->cut(rest_step_);
  replay_name_ = playing_;
  go_back();
}

void Session::stop_playing(const std::string& why) {
  queue_.clear();
  if (!playing_.empty()) inbox_.notice(playing_ + " stopped: " + why);
}

// --- Back and forth.

bool Session::may_go_back() const {
  return situation_ && (situation_->wait == Wait::menu || situation_->wait == Wait::year);
}

void Session::undo() {
  if (!may_go_back() || !timeline_.to_undo()) return;
  drop_awaited();
  replay_name_ = "Undo";
  written_ = what_stays();
  kept_answers_ = files_.answers();
  timeline_.undo(kept_answers_);
  keeper_->undone();
  go_back();
}

void Session::redo() {
  if (!may_go_back() || !timeline_.to_redo()) return;
  drop_awaited();
  replay_name_ = "Redo";
  kept_answers_ = files_.answers();
  timeline_.redo(kept_answers_);
  keeper_->redone();
  go_back();
}

void Session::go_to(std::size_t decisions) {
  if (!may_go_back()) return;
  drop_awaited();
  bool moved = false;
  kept_answers_ = files_.answers();
  while (timeline_.taken() > decisions && timeline_.to_undo()) {
    timeline_.undo(kept_answers_);
    keeper_->undone();
    moved = true;
  }
  while (timeline_.taken() < decisions && timeline_.to_redo()) {
    timeline_.redo(kept_answers_);
    keeper_->redone();
    moved = true;
  }
  replay_name_ = "Journal";
  if (moved) go_back();
}

void Session::take_up(const std::string& journal) {
  if (!may_go_back() || journal != to_take_up_ || timeline_.taken() > 0) return;
  Keeper::TakenUp taken_up = keeper_->take_up(journal);
  to_take_up_.clear();
  if (!taken_up.trouble.empty()) inbox_.notice(taken_up.trouble);
  if (taken_up.timeline.steps().empty()) return;
  begin_with(std::move(taken_up));
  takes_up_ = true;
  go_back();
}

// Where nothing was done yet the program begins anew, so that the files are read as is now wanted.
// Otherwise the page is drawn as it now is.
std::optional<Event> Session::switch_careful(const CarefulSwitch& to) {
  Careful careful = w_->careful;
  to.apply(careful);
  if (!may_go_back() || careful == w_->careful) return {};
  drop_awaited();
  keeper_->careful(careful);
  if (timeline_.is_untouched()) {
    keeper_->begun_anew();
    begin_carefully(careful);
    kept_answers_.clear();
    throw GoBack();
  }
  switching_ = to;
  return beside_everything;
}

void Session::go_back() {
  goes_back_ = true;
  throw GoBack();
}

void Session::note(const TakeNote& note) {
  const std::string text = one_line(note.text);
  timeline_.note(note.decision, text);
  keeper_->noted(note.decision, text);
}

}  // namespace vorn
