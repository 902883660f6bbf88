#include "platform/web/web_desk.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <utility>

#include "desk/actions.h"
#include "desk/file_list.h"
#include "desk/methods.h"
#include "desk/page_words.h"
#include "platform/web/page_bytes.h"
#include "platform/web/shown_text.h"
#include "platform/web/standing_fields.h"
#include "sessions/key_codes.h"

namespace vorn {
namespace {

using Fields = nlohmann::ordered_json;
using Step = PageCursor::Step;

constexpr std::array<std::pair<std::string_view, Step>, 8> cursor_steps{{{"next", Step::next},
                                                                         {"previous", Step::previous},
                                                                         {"left", Step::left},
                                                                         {"right", Step::right},
                                                                         {"up", Step::up},
                                                                         {"down", Step::down},
                                                                         {"page_left", Step::page_left},
                                                                         {"page_right", Step::page_right}}};

std::optional<Step> step_named(std::string_view name) {
  const auto at = std::ranges::find(cursor_steps, name, &std::pair<std::string_view, Step>::first);
  return at == cursor_steps.end() ? std::nullopt : std::optional(at->second);
}

bool takes_clicks(const SharedSituation& situation) {
  return situation && (situation->wait == Wait::menu || situation->wait == Wait::year);
}

// Whether a key of this code is handed to the program: no key can pose as a click.
bool is_key_code(int code) {
  constexpr std::array named = {Event::help, Event::backspace, Event::enter, Event::escape};
  return is_printable_key(code) || std::ranges::find(named, code) != named.end();
}

// One line, as a note is.
std::string on_one_line(std::string text) {
  std::ranges::replace_if(
      text, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return text;
}

}  // namespace

WebDesk::WebDesk(WebPort& port, Files& files, std::string program_version)
    : port_(port),
      files_(files),
      version_(std::move(program_version)),
      mailbox_([this] { tell_page(); }, [this] { tell_news(); }, [this] { serve(port_.next()); }),
      gate_(mailbox_) {}

void WebDesk::greet() {
  port_.tell(hello_fields(version_));
}

// --- What the page is told.

SharedSituation WebDesk::situation() const {
  const SharedStanding standing = mailbox_.standing();
  return standing ? standing->situation : nullptr;
}

void WebDesk::tell_page() {
  const NumberedPage now = mailbox_.page();
  port_.tell({{"is", "page"}, {"number", now.number}}, "marks", bytes_of(*now.page));
}

void WebDesk::tell_news() {
  if (std::string progress = mailbox_.progress(); progress != told_progress_)
    port_.tell({{"is", "progress"}, {"text", shown_text(told_progress_ = std::move(progress))}});
  if (std::string subject = mailbox_.subject(); subject != told_subject_)
    port_.tell({{"is", "subject"}, {"file", shown_text(told_subject_ = std::move(subject))}});
  if (mailbox_.standing() != told_) tell_standing();
  if (std::vector<std::string> all = notices(); all != told_notices_) {
    Fields texts = Fields::array();
    for (const std::string& notice : all) texts.push_back(shown_text(notice));
    port_.tell({{"is", "notices"}, {"all", texts}});
    told_notices_ = std::move(all);
  }
}

std::vector<std::string> WebDesk::notices() const {
  const SharedStanding standing = mailbox_.standing();
  return standing ? all_notices(mailbox_.notices(), *standing) : mailbox_.notices();
}

// The situation goes with it where it is another one: it is what panels live on.
void WebDesk::tell_standing(bool whole) {
  told_ = mailbox_.standing();
  if (whole) writer_ = SituationWriter();
  if (!takes_clicks(situation())) cursor_.hide();
  Fields fields = standing_fields(*told_);
  add_status(fields);
  const bool is_asked = told_->question.has_value();
  const bool is_new =
      told_->situation && (whole || told_->situation != told_situation_ || is_asked != told_asked_);
  fields["whole"] = whole;
  if (is_new) {
    told_situation_ = told_->situation;
    told_asked_ = is_asked;
    port_.tell(fields, "situation", writer_.write(*told_));
  } else {
    port_.tell(fields);
  }
  gate_.go_on();
}

void WebDesk::tell_status() {
  Fields fields = {{"is", "status"}};
  add_status(fields);
  port_.tell(fields);
}

void WebDesk::add_status(Fields& fields) const {
  const SharedStanding standing = mailbox_.standing();
  fields["status"] = status_fields(standing ? status_line(*standing, mouse_) : StatusLine());
  fields["description"] = standing ? shown_text(page_in_words(*standing, cursor_)) : std::string();
  fields["mark"] = nullptr;
  const auto now = situation();
  if (!now) return;
  if (const auto mark = cursor_.mark(*now)) fields["mark"] = {mark->x1, mark->y1, mark->x2, mark->y2};
}

// --- What the page asks for.

void WebDesk::serve(const WebRequest& request) {
  if (!serve_gate(request)) serve_asked(request);
}

// What the user does with the program.
bool WebDesk::serve_gate(const WebRequest& request) {
  const std::string what = request.what();
  const SharedStanding now = mailbox_.standing();
  if (what == "click") return put_event(request, Event::click), true;
  if (what == "help") return put_event(request, Event::help), true;
  if (what == "key") return put_key(request), true;
  if (what == "act") return act(request.text("id"), request.yes("repeated")), true;
  if (what == "scroll") return gate_.scroll(request.number("years")), true;
  if (what == "go_to") return put(GoTo{request.place("decisions")}), true;
  if (what == "note")
    return put(TakeNote{request.place("decision"), on_one_line(request.text("text"))}), true;
  if (what == "take_up") return put(TakeUp{request.text("journal")}), true;
  if (what == "close") return put(Close{}), true;
  if (what == "choose") return put(Choose{request.place("answer")}), true;
  if (what == "move_sample" && now) return put(move_sample_by(request.number("years"), *now)), true;
  if (what == "begin_sample" && now) return put(begin_sample_in(request.number("year"), *now)), true;
  if (what != "play" || !request.has("play")) return false;
  if (auto play = play_of(request.fields["play"])) put(std::move(*play));
  return true;
}

// What it only asks.
void WebDesk::serve_asked(const WebRequest& request) {
  const std::string what = request.what();
  if (what == "mouse") return point_at(request);
  if (what == "situation" && mailbox_.standing()) return tell_standing(true);
  if (what == "methods") return tell_methods();
  if (what == "use_corrected") return use_corrected_file();
  if (what == "page_text") tell_page_text();
}

void WebDesk::point_at(const WebRequest& request) {
  mouse_ = request.has("x") ? std::optional(PointAt{request.number("x"), request.number("y")}) : std::nullopt;
  tell_status();
}

void WebDesk::put(std::optional<Deed> deed, bool repeated) {
  if (deed) gate_.put(std::move(*deed), mailbox_.page().number, repeated);
}

void WebDesk::put_event(const WebRequest& request, int code) {
  const Event event{std::clamp(request.number("x"), 0, Page::width),
                    std::clamp(request.number("y"), 0, Page::height), code};
  gate_.put(event, request.place("seen"), request.yes("repeated"));
}

// Before a key becomes that of a menu. Help is the program's always; what is typed where it waits for typing
// or where a message stands is too, and letters that are typed ahead of what a click brings.
bool WebDesk::is_programs_key(int code) const {
  if (code == Event::help) return true;
  const auto now = situation();
  return now && (now->wait != Wait::menu || (gate_.is_under_way() && code != 0));
}

void WebDesk::put_key(const WebRequest& request) {
  const int code = request.number("code");
  const std::string action = request.text("action");
  if (!action.empty() && !is_programs_key(code)) return act(action, request.yes("repeated"));
  if (serve_cursor(request, code)) return;
  if (is_key_code(code)) put_event(request, code);
}

// Whether the key was the page cursor's.
bool WebDesk::serve_cursor(const WebRequest& request, int code) {
  const auto now = situation();
  if (!takes_clicks(now)) return false;
  if (const auto step = step_named(request.text("step"))) {
    if (!cursor_.go(*step, *now)) return false;
    // What the mouse would be told of that place is told of the mark.
    if (const auto there = cursor_.click(*now)) mouse_ = PointAt{there->x, there->y};
    tell_status();
    return true;
  }
  const auto click = cursor_.click(*now);
  if (!click || code != Event::enter) return false;
  gate_.put(*click, request.place("seen"), request.yes("repeated"));
  return true;
}

void WebDesk::act(const std::string& id, bool repeated) {
  const auto row = std::ranges::find(action_rows(), id, &ActionRow::id);
  if (row == action_rows().end()) return;
  if (row->window_does_it) {
    if (!repeated) port_.tell({{"is", "act"}, {"id", id}});
    return;
  }
  if (const SharedStanding now = mailbox_.standing()) put(deed_of(id, *now), repeated);
}

void WebDesk::tell_methods() {
  const SharedStanding now = mailbox_.standing();
  port_.tell({{"is", "methods"}, {"text", now ? methods_text(*now, version_) : std::string()}});
}

void WebDesk::use_corrected_file() {
  const auto now = situation();
  const auto failure = now ? use_corrected(files_, now->file, now->raw_output) : std::nullopt;
  port_.tell({{"is", "used_corrected"}, {"trouble", shown_text(failure.value_or(std::string()))}});
}

void WebDesk::tell_page_text() {
  std::ostringstream out;
  if (const auto page = mailbox_.page().page) page->write_text(out);
  port_.tell({{"is", "page_text"}}, "bytes", out.str());
}

}  // namespace vorn
