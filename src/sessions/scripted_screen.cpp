#include "sessions/scripted_screen.h"

#include <algorithm>
#include <utility>

#include "plot/visible_text.h"
#include "sessions/key_codes.h"

namespace vorn {
namespace {

// The texts, one a line, each once.
std::string listed(const std::vector<std::string>& texts) {
  std::string result;
  for (auto text = texts.begin(); text != texts.end(); ++text) {
    if (std::find(texts.begin(), text, *text) == text) result += "\n    " + *text;
  }
  return texts.empty() ? " nothing" : result;
}

}  // namespace

ScriptedScreen::ScriptedScreen(std::vector<Statement> statements, std::string script_name,
                               ButtonPlaces buttons, PageWriter write_page, ScriptPanels* panels)
    : statements_(std::move(statements)),
      script_name_(std::move(script_name)),
      buttons_(std::move(buttons)),
      write_page_(std::move(write_page)),
      panels_(panels) {}

Careful ScriptedScreen::careful_at_start(Careful careful) {
  for (; next_ < statements_.size() && statements_[next_].kind == Statement::Kind::careful; ++next_) {
    if (const auto on = careful_switch(statements_[next_].text)) on->apply(careful);
  }
  return careful;
}

void ScriptedScreen::stand(const SharedStanding& standing) {
  standing_ = standing;
  if (panels_) panels_->stand(standing);
}

Event ScriptedScreen::next_event() {
  for (;;) {
    const Deed deed = next_deed();
    if (const auto* event = std::get_if<Event>(&deed)) return *event;
  }
}

Deed ScriptedScreen::next_deed() {
  while (pending_.empty()) {
    if (next_ == statements_.size()) stop_at_the_end();
    act(statements_[next_++]);
  }
  message_waits_ = false;
  Deed deed = std::move(pending_.front());
  pending_.pop_front();
  return deed;
}

void ScriptedScreen::click(PageSpot spot, int code) {
  mouse_ = spot;
  pending_.emplace_back(Event{spot.x, spot.y, code});
}

void ScriptedScreen::act(const Statement& statement) {
  switch (statement.kind) {
    case Statement::Kind::click:
      return click({statement.x, statement.y}, Event::click);
    case Statement::Kind::help:
      return click({statement.x, statement.y}, Event::help);
    case Statement::Kind::press:
      return press(statement);
    case Statement::Kind::key:
      // Keys beyond the printable ones are dropped, as the window drops them.
      if (statement.number <= 126) press_key(statement.number);
      return;
    case Statement::Kind::enter:
      return press_key(Event::enter);
    case Statement::Kind::type:
      for (const char letter : statement.text) {
        if (const int code = static_cast<unsigned char>(letter); is_printable_key(code)) press_key(code);
      }
      return;
    case Statement::Kind::page:
      if (const auto wrong = write_page_(page_, statement.text)) stop(statement, *wrong);
      return;
    case Statement::Kind::expect:
    case Statement::Kind::refuse:
      return check(statement);
    case Statement::Kind::undo:
    case Statement::Kind::redo:
      return go_back(statement);
    case Statement::Kind::panel:
      return write_panel(statement);
    case Statement::Kind::pick:
      return pick(statement);
    case Statement::Kind::careful:
      if (const auto on = careful_switch(statement.text)) pending_.emplace_back(*on);
      return;
  }
}

void ScriptedScreen::write_panel(const Statement& statement) {
  if (!panels_) stop(statement, "there are no panels here");
  if (const auto wrong = write_page_(panels_->page(statement.panel), statement.text)) stop(statement, *wrong);
}

void ScriptedScreen::pick(const Statement& statement) {
  if (!panels_) stop(statement, "there are no panels here");
  auto picked = panels_->pick(statement.panel, statement.text);
  if (!picked.wrong.empty()) stop(statement, picked.wrong);
  if (picked.deed) pending_.push_back(std::move(*picked.deed));
}

void ScriptedScreen::go_back(const Statement& statement) {
  const bool undo = statement.kind == Statement::Kind::undo;
  if (!standing_ || !(undo ? standing_->can_undo : standing_->can_redo)) {
    const std::string why = undo && standing_ ? standing_->undo_says : "";
    stop(statement, (undo ? "nothing can be taken back here" : "nothing can be taken again here") +
                        (why.empty() ? "" : "; " + why));
  }
  pending_.push_back(undo ? Deed(Undo{}) : Deed(Redo{}));
}

// A button that has its number is clicked wherever it stands.
void ScriptedScreen::press(const Statement& statement) {
  if (!statement.text.empty() && !buttons_.shown(statement.number)) {
    stop(statement,
         "the button \"" + statement.text + "\" is not shown; on the page:" + listed(visible_texts(page_)));
  }
  click(buttons_.middle(statement.number), Event::click);
}

void ScriptedScreen::check(const Statement& statement) const {
  const bool wanted = statement.kind == Statement::Kind::expect;
  const std::vector<std::string> texts = visible_texts(page_);
  const bool found = std::any_of(texts.begin(), texts.end(), [&](const std::string& text) {
    return text.find(statement.text) != std::string::npos;
  });
  if (found == wanted) return;
  stop(statement,
       (wanted ? "expected \"" : "refused \"") + statement.text + "\"; on the page:" + listed(texts));
}

void ScriptedScreen::stop(const Statement& statement, const std::string& why) const {
  throw ScriptStop(ScriptStop::failed, script_name_ + ":" + std::to_string(statement.line) + ": " + why);
}

void ScriptedScreen::stop_at_the_end() const {
  const std::vector<std::string> texts = visible_texts(page_);
  const std::string wait = message_waits_ ? "a key or click that dismisses the message \"" +
                                                (texts.empty() ? "" : texts.back()) + "\""
                                          : "a click or key; on the page:" + listed(texts);
  throw ScriptStop(ScriptStop::ended,
                   script_name_ + ": the script ended while the program was waiting for " + wait);
}

int ScriptedScreen::first_line_not_reached() const {
  return next_ < statements_.size() ? statements_[next_].line : 0;
}

}  // namespace vorn
