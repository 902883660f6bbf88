#include "platform/web/standing_fields.h"

#include <array>
#include <cstdio>

#include "desk/actions.h"
#include "panels/panel.h"
#include "platform/web/shown_text.h"
#include "plot/palette.h"
#include "situation/graph_axis.h"

namespace vorn {
namespace {

using Fields = nlohmann::ordered_json;

constexpr std::array menu_names = {"file", "edit", "view", "cores", "careful", "help"};
constexpr std::array wait_names = {"menu", "year", "number", "name", "message"};
constexpr std::array place_names = {"none",      "start",       "chronologies", "crossdating", "pick_year",
                                    "keep_edit", "correlation", "chooser",      "editor"};

template <class Names, class Number>
const char* name_in(const Names& names, Number number) {
  return names.at(static_cast<std::size_t>(number));
}

std::string hex(std::uint32_t shade) {
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "#%06X", static_cast<unsigned>(shade & 0xFFFFFF));
  return text.data();
}

Fields hex_of(const shades::Palette& palette) {
  Fields all = Fields::array();
  for (const std::uint32_t shade : palette) all.push_back(hex(shade));
  return all;
}

Fields fields_of_row(const ActionRow& row) {
  return {{"id", row.id},
          {"menu", name_in(menu_names, row.menu)},
          {"text", row.text},
          {"key", row.key},
          {"other_key", row.other_key},
          {"window", row.window_does_it},
          {"group", row.starts_group},
          {"switches", row.switches}};
}

Fields fields_of_decision(const Decision& decision) {
  return {{"what", shown_text(decision.what)},   {"before", shown_text(decision.before)},
          {"after", shown_text(decision.after)}, {"note", shown_text(decision.note)},
          {"wrote", shown_text(decision.wrote)}, {"final", decision.is_final}};
}

Fields fields_of_question(const Question& question) {
  Fields answers = Fields::array();
  for (const Question::Answer& answer : question.answers) answers.push_back(shown_text(answer.text));
  return {{"text", shown_text(question.text)}, {"more", shown_text(question.more)}, {"answers", answers}};
}

Fields states_of_actions(const Standing& standing) {
  Fields states = Fields::object();
  for (const ActionRow& row : action_rows()) {
    const ActionState state = state_of(row.id, standing);
    states[std::string(row.id)] = {{"can", state.can_be_done},
                                   {"chosen", state.is_chosen},
                                   {"now", shown_text(state.now)},
                                   {"why_not", shown_text(state.why_not)}};
  }
  return states;
}

void add_situation(Fields& fields, const Standing& standing) {
  const Situation& now = *standing.situation;
  fields["wait"] = name_in(wait_names, now.wait);
  fields["place"] = name_in(place_names, now.place);
  fields["file"] = shown_text(now.file);
  fields["raw_output"] = shown_text(now.raw_output);
  fields["sample"] = {{"name", shown_text(now.sample.name)},
                      {"first", now.sample.first_year},
                      {"last", now.sample.last_year}};
  fields["years_shown"] = now.years_shown;
  fields["may_drag"] = now.wait == Wait::menu && now.place == Place::crossdating &&
                       (move_sample_by(1, standing) || move_sample_by(-1, standing));
  Fields buttons = Fields::array();
  if (now.wait == Wait::menu || now.wait == Wait::year) {
    for (const ShownButton& button : now.buttons)
      buttons.push_back(
          {button.x1, button.y1, button.x2, button.y2, shown_text(button.label), button.number});
  }
  fields["buttons"] = buttons;
}

}  // namespace

Fields hello_fields(std::string_view program_version) {
  Fields actions = Fields::array();
  for (const ActionRow& row : action_rows()) actions.push_back(fields_of_row(row));
  Fields panels = Fields::array();
  for (const PanelName panel : all_panels)
    panels.push_back({{"name", id_of(panel)}, {"title", title_of(panel)}});
  return {{"is", "hello"},
          {"version", program_version},
          {"actions", actions},
          {"keys", keys_page()},
          {"palette",
           {{"areas", hex_of(shades::areas)},
            {"letters", hex_of(shades::letters)},
            {"grey_line", hex(shades::grey_lines)}}},
          {"graph", {graph_area.x1, graph_area.y1, graph_area.x2, graph_area.y2}},
          {"panels", panels}};
}

Fields standing_fields(const Standing& standing) {
  Fields decisions = Fields::array();
  for (const Decision& decision : standing.decisions) decisions.push_back(fields_of_decision(decision));
  Fields fields = {{"is", "stand"},
                   {"wait", ""},
                   {"place", ""},
                   {"actions", states_of_actions(standing)},
                   {"decisions", decisions},
                   {"taken", standing.taken},
                   {"can_undo", standing.can_undo},
                   {"can_redo", standing.can_redo},
                   {"undo_says", shown_text(standing.undo_says)},
                   {"question", nullptr},
                   {"journal_trouble", shown_text(standing.journal_trouble)},
                   {"to_take_up", standing.to_take_up},
                   {"unsaved", standing.unsaved()}};
  if (standing.question) fields["question"] = fields_of_question(*standing.question);
  if (standing.situation) add_situation(fields, standing);
  return fields;
}

Fields status_fields(const StatusLine& line) {
  return {{"waits_for", shown_text(line.waits_for)},
          {"year", shown_text(line.year)},
          {"values", shown_text(line.values)},
          {"changes", shown_text(line.changes)},
          {"written", shown_text(line.written)},
          {"warning", shown_text(line.warning)},
          {"careful", line.careful}};
}

Fields fields_of(const Play& play) {
  Fields steps = Fields::array();
  for (const PlayStep& step : play.steps) {
    steps.push_back({static_cast<int>(step.kind), static_cast<int>(step.button), step.year, step.number,
                     step.code, step.x, step.y});
  }
  return {{"steps", steps}, {"what", shown_text(play.what)}};
}

std::optional<Play> play_of(const Fields& fields) {
  constexpr std::size_t members = 7;
  Play play;
  if (!fields.is_object() || !fields.contains("steps") || !fields["steps"].is_array()) return {};
  for (const Fields& step : fields["steps"]) {
    if (!step.is_array() || step.size() != members) return {};
    for (const Fields& member : step) {
      if (!member.is_number_integer()) return {};
    }
    const int kind = step[0].get<int>();
    if (kind < 0 || kind > static_cast<int>(PlayStep::Kind::careful)) return {};
    play.steps.push_back({.kind = static_cast<PlayStep::Kind>(kind),
                          .button = static_cast<ButtonNumber>(step[1].get<int>()),
                          .year = step[2].get<int>(),
                          .number = step[3].get<int>(),
                          .code = step[4].get<int>(),
                          .x = step[5].get<int>(),
                          .y = step[6].get<int>()});
  }
  if (fields.contains("what") && fields["what"].is_string()) play.what = fields["what"].get<std::string>();
  return play;
}

}  // namespace vorn
