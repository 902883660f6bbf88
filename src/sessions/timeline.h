// What was done in a session, step by step, and the decisions that came of it: what undo and redo work on.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "plot/screen.h"
#include "sessions/file_answers.h"
#include "sessions/standing.h"
#include "workspace/careful.h"

namespace vorn {

// What a switch is for the program, unless it is made before the start: a click that hits nothing, behind
// which the page is drawn anew.
inline constexpr Event beside_everything{-1, -1, Event::click};

// One event that was handed to the program, or something that was switched in between.
struct TimelineStep {
  Event event;
  std::size_t answers = 0;                    // how many answers of files had been given before it
  std::optional<CarefulSwitch> careful = {};  // is switched before the event, which then hits nothing
};

// The steps that hold, each with the answers of files that it led to; what was taken back follows them until
// something else is decided.
class Timeline {
 public:
  // A decision and the steps from which it came, as places among the steps: from its first one up to, but
  // without, `to`.
  struct Entry {
    Decision decision;
    std::size_t from = 0, to = 0;
    bool only_wrote = false;  // a file was written and nothing else changed: passed over by undo and redo
  };

  const std::vector<TimelineStep>& steps() const { return steps_; }
  const std::vector<Entry>& entries() const { return entries_; }
  std::size_t taken() const { return taken_; }  // how many of the entries hold

  void happened(const Event& event, std::size_t answers) { steps_.push_back({event, answers}); }
  void switched(const CarefulSwitch& careful, std::size_t answers) {
    steps_.push_back({beside_everything, answers, careful});
  }
  // Whether nothing but switches was done, which then hold from the start on.
  bool is_untouched() const;
  // A decision came of the steps from place `from` on. What was taken back can no longer be done again.
  void decided(const Decision& decision, std::size_t from, bool only_wrote = false);
  // The last entry goes on: the steps since belong to it too, and this is what it says now.
  void went_on(const Decision& decision);
  void note(std::size_t entry, const std::string& text);

  // The entry that undo would take back, or redo do again; nothing where there is none, or where the last one
  // is final.
  std::optional<std::size_t> to_undo() const;
  std::optional<std::size_t> to_redo() const;
  // Takes back the steps from that entry on; `answers` are all that were given. Answers how many of them
  // stay.
  std::size_t undo(std::vector<FileAnswer>& answers);
  // Puts back the steps of the entry, and of those behind it that only wrote. `answers` gets theirs.
  void redo(std::vector<FileAnswer>& answers);
  // Forgets all steps from place `count` on, with the decisions that came of them. `answers` have been given;
  // answers how many of them stay.
  std::size_t cut(std::size_t count, std::size_t answers);

 private:
  void forget_tail();

  std::vector<TimelineStep> steps_;
  std::vector<Entry> entries_;
  std::size_t taken_ = 0;
  // What was taken back: it goes on at place `base_` of the steps.
  std::vector<TimelineStep> tail_;
  std::vector<FileAnswer> tail_answers_;
  std::size_t base_ = 0;
};

}  // namespace vorn
