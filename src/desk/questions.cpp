#include "desk/questions.h"

#include <algorithm>

#include "desk/words.h"
#include "toolkit/lists.h"
#include "workspace/capacity.h"

namespace vorn {
namespace {

using Steps = std::vector<PlayStep>;
using Names = std::vector<std::string>;
using Copies = std::vector<PairMember>;

PlayStep press(ButtonNumber n) {
  return {.kind = PlayStep::Kind::press, .button = n};
}
PlayStep key(int code) {
  return {.kind = PlayStep::Kind::key, .code = code};
}

PlayStep careful(Mend mend) {
  return {.kind = PlayStep::Kind::careful, .number = static_cast<int>(mend)};
}

void add(Steps& steps, const Steps& more) {
  steps.insert(steps.end(), more.begin(), more.end());
}

// --- The work that stands.

bool same_curve(const PairMember& a, const PairMember& b) {
  if (!a.curve || !b.curve || a.curve == b.curve) return true;  // one was not looked at
  return a.curve->values == b.curve->values && a.curve->presence == b.curve->presence;
}

bool same_copy(const PairMember& a, const PairMember& b) {
  return a.entry == b.entry && a.name == b.name && a.first_year == b.first_year &&
         a.last_year == b.last_year && same_curve(a, b);
}

bool same_core(const SharedSeries& a, const SharedSeries& b) {
  return a == b || (a && b && *a == *b);
}

// Behind the start menu there are working copies; on it none is at work any more.
bool has_working_copies(Place place) {
  return place != Place::none && place != Place::start && place != Place::chronologies;
}

Copies changed_copies(const Situation& now) {
  Copies changed;
  if (!has_working_copies(now.place)) return changed;
  for (const PairMember& member : {now.sample, now.reference}) {
    if (member.changed) changed.push_back(member);
  }
  return changed;
}

Questions::Work work_of(const Situation& now) {
  Questions::Work work = {changed_copies(now), now.unwritten};
  for (const SharedSeries& core : now.cores) {
    if (std::ranges::find(now.unwritten, core->name) != now.unwritten.end()) work.cores.push_back(core);
  }
  return work;
}

Names names_of(const Copies& copies) {
  Names names;
  for (const PairMember& copy : copies) names.push_back(copy.name);
  return names;
}

// --- What a deed does.

struct Effect {
  bool drops_copies = false;                 // the working copies
  bool drops_cores = false;                  // the cores at work
  bool ends = false;                         // the program, by a missing list
  ButtonNumber button = ButtonNumber::none;  // that is clicked
};

bool loads_cores(const Event& click, const ShownButton& list, const Situation& now) {
  const int k = entry_at(list, click.x, click.y);
  return k >= 1 && k <= static_cast<int>(now.chronologies.size()) &&
         now.chronologies[static_cast<std::size_t>(k) - 1].has_cores;
}

Effect effect_of(const Event& event, const Situation& now) {
  if (event.code != Event::click || now.wait != Wait::menu) return {};
  const ShownButton* button = now.at(event.x, event.y);
  if (!button) return {};
  Effect effect = {.button = button->number};
  switch (button->number) {
    case button::exit_crossdating:
    case button::choose_cores:
    case button::correlation_choose:
    case button::chooser_exit:
      effect.drops_copies = true;
      break;
    case button::chooser_do_it:
      effect.drops_copies = now.mode != button::edit_core;
      break;
    case button::quit:
      effect.drops_cores = true;
      break;
    case button::chronology_list:
      effect.drops_cores = loads_cores(event, *button, now);
      break;
    case button::read_two_column:
      effect.ends = now.two_column_list_missing && !now.settings.careful.has(Mend::read_trw);
      effect.drops_cores = effect.ends || !now.two_column_list_missing;
      break;
    default:
      break;
  }
  return effect;
}

Effect effect_of(const Deed& deed, const Situation& now) {
  if (std::holds_alternative<Close>(deed)) return {.drops_copies = true, .drops_cores = true};
  const Event* event = std::get_if<Event>(&deed);
  return event ? effect_of(*event, now) : Effect();
}

// --- Saving first.

// The program waits for a button again. Escape passes over a message, and takes no number; of a name it would
// become a part.
Steps to_a_menu(const Situation& now) {
  switch (now.wait) {
    case Wait::message:
    case Wait::number:
      return {key(Event::escape)};
    case Wait::name:
      return {key(Event::enter)};
    case Wait::year:
      return {{.kind = PlayStep::Kind::to_menu}};
    default:
      return {};
  }
}

bool can_reach_saves(const Situation& now) {
  return now.place == Place::crossdating || now.place == Place::correlation ||
         now.place == Place::keep_edit || now.place == Place::pick_year;
}

bool can_save(const PairMember& copy, const Situation& now) {
  return copy.can_be_saved && can_reach_saves(now);
}

// Saves the changed working copies that can be saved; on the cross-dating screen in the end.
Steps save_copies(const Situation& now) {
  Steps steps;
  if (now.place == Place::correlation) steps.push_back(press(button::correlation_exit));
  if (now.place == Place::keep_edit)
    steps.push_back(press(now.shown(button::deletion_ok) ? button::deletion_ok : button::insertion_ok));
  if (now.sample.changed && can_save(now.sample, now)) steps.push_back(press(button::save_sample));
  if (now.reference.changed && can_save(now.reference, now)) steps.push_back(press(button::save_reference));
  return steps;
}

// The last core can be saved carefully alone. Sliding it there and back has its change offered; where it
// could be stopped on the way it would be saved in another year.
bool is_unsaved_last_core(const PairMember& copy, const Situation& now) {
  return copy.is_core && copy.changed && !copy.can_be_saved && can_reach_saves(now) &&
         copy.entry == static_cast<int>(now.cores.size()) && !now.settings.careful.has(Mend::last_core);
}

bool has_room_to_slide(const Situation& now) {
  constexpr int room = 10;
  int first = std::min(now.sample.first_year, now.reference.first_year);
  int last = std::max(now.sample.last_year, now.reference.last_year);
  const auto take = [&](int from, std::size_t years) {
    first = std::min(first, from);
    last = std::max(last, from + static_cast<int>(years));
  };
  for (const SharedSeries& core : now.cores) take(core->first_year, core->widths.size());
  for (const SharedChronology& one : now.references) take(one->values.first_year, one->values.values.size());
  return last - first + room < max_years;
}

Copies lost_all_the_same(const Copies& copies, const Situation& now) {
  Copies lost = copies;
  std::erase_if(lost, [&now](const PairMember& copy) { return can_save(copy, now); });
  return lost;
}

// "Save Raw First", or with what is lost all the same where the user is not asked again for that.
std::string saving(std::string_view what, const Copies& lost) {
  return std::string(what) + (lost.empty() ? " First" : ", Drop the Change of " + named(names_of(lost)));
}

// Beside what can be saved as things are.
void offer_being_careful(Question& question, const Copies& copies, const Situation& now) {
  const bool is_in_reach =
      now.wait == Wait::menu && now.place == Place::crossdating && has_room_to_slide(now);
  if (copies.size() != 1 || !is_unsaved_last_core(copies.front(), now) || !is_in_reach) return;
  const bool sample = copies.front().entry == now.sample.entry;
  question.text += " The last core cannot be saved as things are: be careful?";
  Steps steps = {careful(Mend::last_core)};
  steps.push_back(press(sample ? button::sample_plus_1 : button::reference_plus_1));
  steps.push_back(press(sample ? button::sample_minus_1 : button::reference_minus_1));
  steps.push_back(press(sample ? button::save_sample : button::save_reference));
  question.answers.push_back({"Be Careful and Save Change First", true, steps});
}

// What cannot be saved is asked for again when the deed comes behind the saving.
void offer_saving_copies(Question& question, const Copies& copies, const Situation& now,
                         const Effect& effect) {
  const Copies lost = lost_all_the_same(copies, now);
  if (lost.size() == copies.size()) return;
  Question::Answer answer = {"Save Change First", true, to_a_menu(now)};
  add(answer.first, save_copies(now));
  // What was clicked on the correlation screen is no longer shown where the saving ends.
  if (effect.button == button::correlation_choose) {
    answer.first.push_back(press(button::choose_cores));
    answer.text = saving("Save Change", lost);
    answer.does_it = false;
  }
  question.answers.push_back(answer);
}

void offer_saving_cores(Question& question, const Copies& copies, const Situation& now,
                        const Effect& effect) {
  const Copies lost = lost_all_the_same(copies, now);
  Question::Answer answer = {saving("Save Raw", lost), true, to_a_menu(now)};
  if (lost.size() < copies.size()) add(answer.first, save_copies(now));
  if (now.place != Place::start || now.wait != Wait::menu)
    answer.first.push_back({.kind = PlayStep::Kind::to_start_menu});
  answer.first.push_back(press(button::save_raw));
  // The name that was clicked is in the list.
  if (effect.button == button::chronology_list) answer.first.push_back(press(button::current_chronology));
  question.answers.push_back(answer);
}

// --- The questions.

constexpr const char* stay = "Stay";

std::string copies_in_words(const Copies& copies) {
  return named(names_of(copies)) + (copies.size() == 1 ? " was changed and the change is not saved"
                                                       : " were changed and the changes are not saved");
}

std::string cores_in_words(const Names& unwritten) {
  return named(unwritten) + " changed and " + (unwritten.size() == 1 ? "is" : "are") + " not written";
}

std::string what_is_lost(const Questions::Work& work) {
  if (work.unwritten.empty()) return work.copies.size() == 1 ? "it is" : "they are";
  return work.copies.empty() ? "what is not written is" : "what is neither saved nor written is";
}

// Whoever ends the program must have a core that is saved written too.
bool is_to_be_written(const Questions::Work& work, const Situation& now, const Effect& effect) {
  return !work.unwritten.empty() ||
         (effect.drops_cores && std::ranges::any_of(work.copies, [&now](const PairMember& copy) {
            return copy.is_core && can_save(copy, now);
          }));
}

// What the work at stake is, without what the user gave up.
Question about_work(const Questions::Work& work, const Situation& now, const Effect& effect) {
  const bool copies = !work.copies.empty(), cores = !work.unwritten.empty();
  Question question;
  if (copies) question.text = copies_in_words(work.copies);
  if (cores) question.text += (copies ? ", and " : "") + cores_in_words(work.unwritten);
  question.text += ".";
  question.more = "If you go on " + what_is_lost(work) + " lost.";
  if (is_to_be_written(work, now, effect)) {
    offer_saving_cores(question, work.copies, now, effect);
  } else {
    offer_saving_copies(question, work.copies, now, effect);
  }
  offer_being_careful(question, work.copies, now);
  const char* drop = work.copies.size() == 1 ? "Drop the Change" : "Drop the Changes";
  question.answers.push_back({cores ? "Go on Without" : drop, true});
  question.answers.push_back({stay, false});
  return question;
}

// What is to be confirmed though no work of the session is lost by it; nothing for most clicks.
std::optional<Question> to_confirm(const Effect& effect, const Situation& now) {
  const std::string them = now.marked.size() == 1 ? "It" : "Them";
  if (effect.ends) {
    return Question{"TRW.fil is missing.",
                    "Read TRW has nothing to read without it, and the program would end.",
                    {{"Be Careful and Go on", true, {careful(Mend::read_trw)}},
                     {"End the Program", true},
                     {stay, false}}};
  }
  if (effect.button == button::save_raw && now.replaces_other_file) {
    return Question{now.raw_output + " is there already, and was not written in this session.",
                    "Save Raw puts the cores at work in its place.",
                    {{"Replace It", true}, {stay, false}}};
  }
  if (effect.button != button::chooser_do_it || now.marked.empty()) return {};
  if (now.mode == button::delete_core) {
    return Question{"Delete Core takes " + named(now.marked) + " out of the cores at work.",
                    "Files stay as they are.",
                    {{"Delete " + them, true}, {stay, false}}};
  }
  if (now.mode == button::move_core && !now.destination.empty()) {
    return Question{"Move Core appends " + named(now.marked) + " to " + now.destination +
                        " at once and takes " + (now.marked.size() == 1 ? "it" : "them") +
                        " out of the cores at work.",
                    "This cannot be taken back.",
                    {{"Move " + them, true}, {stay, false}}};
  }
  return {};
}

// What is asked for as it is.
const Question::Answer& going_on(const Question& confirmed) {
  return *std::ranges::find_if(confirmed.answers, [](const auto& answer) { return answer.first.empty(); });
}

// Both at once: the work is told, then what is to be confirmed, and who goes on agrees to both.
Question joined(Question work, const Question& confirmed) {
  work.text += " " + work.more + " " + confirmed.text;
  work.more = confirmed.more;
  for (Question::Answer& answer : work.answers) {
    if (answer.does_it && answer.first.empty()) answer.text = going_on(confirmed).text;
  }
  return work;
}

}  // namespace

void Questions::forget_what_changed(const Work& work) {
  if (work.copies.empty() || !std::ranges::equal(work.copies, given_up_.copies, same_copy))
    given_up_.copies.clear();
  const bool same =
      work.unwritten == given_up_.unwritten && std::ranges::equal(work.cores, given_up_.cores, same_core);
  if (same) return;
  given_up_.unwritten.clear();
  given_up_.cores.clear();
}

std::optional<Question> Questions::before(const Deed& deed, const Situation& situation) {
  const std::string allowed = std::exchange(allowed_, {});
  Work work = work_of(situation);
  forget_what_changed(work);
  const Effect effect = effect_of(deed, situation);
  if (!effect.drops_copies || !given_up_.copies.empty()) work.copies.clear();
  if (!effect.drops_cores || !given_up_.unwritten.empty()) {
    work.unwritten.clear();
    work.cores.clear();
  }
  asked_ = work;
  std::optional<Question> confirmed = to_confirm(effect, situation);
  confirmed_ = confirmed ? confirmed->text : "";
  if (confirmed && confirmed_ == allowed) confirmed.reset();
  if (work.copies.empty() && work.unwritten.empty()) return confirmed;
  const Question about = about_work(work, situation, effect);
  return confirmed ? joined(about, *confirmed) : about;
}

void Questions::given_up(const Situation& /*situation*/) {
  if (!asked_.copies.empty()) given_up_.copies = asked_.copies;
  if (!asked_.unwritten.empty()) {
    given_up_.unwritten = asked_.unwritten;
    given_up_.cores = asked_.cores;
  }
  allowed_ = confirmed_;
}

}  // namespace vorn
