#include "desk/methods.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>
#include <vector>

#include "desk/words.h"

namespace vorn {
namespace {

constexpr std::size_t widest = 100;  // columns

std::size_t columns_of(std::string_view text) {
  return static_cast<std::size_t>(
      std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

// Where so many columns end; within no character.
std::size_t bytes_of(std::string_view text, std::size_t columns) {
  std::size_t bytes = 0;
  while (bytes < text.size() && columns_of(text.substr(0, bytes + 1)) <= columns) ++bytes;
  return bytes;
}

// A paragraph in lines, broken at blanks and within words that are longer than a line; those behind the first
// begin with `indent` blanks.
std::string in_lines(std::string_view text, std::size_t indent) {
  std::string lines, line;
  const auto end_line = [&] {
    lines += line + "\n";
    line = std::string(indent, ' ');
  };
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(' '), text.size());
    std::string_view word = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    bool begins = line.find_first_not_of(' ') == std::string::npos;
    if (!begins && columns_of(line) + 1 + columns_of(word) > widest) {
      end_line();
      begins = true;
    }
    if (!begins) line += ' ';
    while (columns_of(line) + columns_of(word) > widest) {
      const std::size_t piece = bytes_of(word, widest - columns_of(line));
      line += word.substr(0, piece);
      word.remove_prefix(piece);
      end_line();
    }
    line += word;
  }
  end_line();
  return lines;
}

// --- The recipe.

std::string detrending(const Settings& settings) {
  if (!settings.splineon) return "were not detrended";
  return "were detrended by division by a smoothing spline that passes half of the amplitude at a period "
         "of " +
         counted(settings.ss, "year") + " (Reinsch 1967, Cook and Peters 1981)";
}

// A model of order 1 at most is none.
std::string prewhitening(const Settings& settings) {
  if (!settings.aron || settings.jpr < 2) return "not prewhitened";
  return "prewhitened by autoregressive models of an order of at most " + std::to_string(settings.jpr) +
         " (Burg 1975, Cook 1985)";
}

std::string transformation(const Settings& settings) {
  return settings.logon ? "transformed by natural logarithms, after one sixth of the series' mean was added"
                        : "not transformed by logarithms";
}

// "blank-line, last-core".
std::string spaced(const std::string& names) {
  std::string text;
  for (const char c : names) text += c == ',' ? std::string(", ") : std::string(1, c);
  return text == every_mend ? "in all places" : text;
}

std::string recipe(const Situation& now, std::string_view version) {
  const Settings& settings = now.settings;
  std::string text = "Series were cross-dated with Vorn " + std::string(version) + ". The ring widths";
  if (!now.file.empty()) text += " of " + now.file;
  text += " " + detrending(settings) + ", " + prewhitening(settings) + " and " + transformation(settings) +
          ". Chronologies are the mean of their cores, year by year over the rings present (Fritts 1976). "
          "A core was compared with the chronology of its site without that core. "
          "Correlations (Pearson 1896) were computed over segments of " +
          counted(settings.seg, "year") + "; in the report of correlations one begins every " +
          counted(settings.olap, "year") + " (Holmes 1983).";
  if (settings.careful.any()) text += " Vorn worked carefully (" + spaced(names_of(settings.careful)) + ").";
  return in_lines(text, 0);
}

// --- The changes.

struct Change {
  Decision decision;
  std::vector<std::string> reasons;
  bool saved = true;
};

// A paper tells what was done: "Inserted 1868 in NOW07".
std::string as_done(std::string what) {
  constexpr std::array<std::pair<std::string_view, std::string_view>, 6> verbs{{{"Insert ", "Inserted "},
                                                                                {"Delete ", "Deleted "},
                                                                                {"Slide ", "Moved "},
                                                                                {"Move ", "Moved "},
                                                                                {"Change ", "Changed "},
                                                                                {"Make ", "Made "}}};
  for (const auto& [verb, done] : verbs) {
    if (what.starts_with(verb)) return what.replace(0, verb.size(), done);
  }
  return what;
}

std::string as_sentence(std::string text) {
  constexpr std::string_view ends = ".!?";
  if (!text.empty() && ends.find(text.back()) == std::string_view::npos) text += '.';
  return text;
}

void add_reason(Change& change, const std::string& note) {
  if (!note.empty()) change.reasons.push_back(note);
}

// The changes that hold. What was done to a working copy is told by the saving of it, with the reasons that
// were given before, and by itself while it is not saved.
std::vector<Change> changes_of(std::span<const Decision> decisions) {
  std::vector<Change> changes, in_copies;
  for (const Decision& decision : decisions) {
    if (decision.cores.empty()) continue;
    const auto concerns = [&decision](const Change& change) {
      return change.decision.cores == decision.cores;
    };
    Change change = {decision, {}, !decision.in_copy};
    if (decision.in_copy && decision.what.starts_with("Drop ")) {
      std::erase_if(in_copies, concerns);
      continue;
    }
    if (!decision.in_copy) {
      for (const Change& before : in_copies) {
        if (concerns(before))
          change.reasons.insert(change.reasons.end(), before.reasons.begin(), before.reasons.end());
      }
      std::erase_if(in_copies, concerns);
    }
    add_reason(change, decision.note);
    (decision.in_copy ? in_copies : changes).push_back(std::move(change));
  }
  changes.insert(changes.end(), in_copies.begin(), in_copies.end());
  return changes;
}

std::string in_words(const Change& change, std::size_t number) {
  constexpr std::string_view saving = "Save Change: ";
  const Decision& decision = change.decision;
  const std::string what =
      decision.what.starts_with(saving) ? decision.what.substr(saving.size()) : decision.what;
  std::string text = std::to_string(number) + ". ";
  // The names stand in the words of most decisions already.
  const bool is_named = std::ranges::all_of(
      decision.cores, [&what](const std::string& core) { return what.find(core) != std::string::npos; });
  if (!is_named) text += named(decision.cores) + ": ";
  text += as_done(what);
  if (!decision.before.empty() && !decision.after.empty() && decision.before != decision.after)
    text += " (" + decision.before + " before, " + decision.after + " after)";
  if (!change.saved) text += ", in the working copy, not saved";
  text += ".";
  for (const std::string& reason : change.reasons) text += " Reason: " + as_sentence(reason);
  return in_lines(text, 3);
}

std::string changes_in_words(std::span<const Decision> decisions) {
  std::string text;
  std::size_t number = 0;
  for (const Change& change : changes_of(decisions)) text += in_words(change, ++number);
  return text.empty() ? "No series was changed.\n" : "Series were changed as follows.\n\n" + text;
}

}  // namespace

std::string methods_text(const Standing& standing, std::string_view program_version) {
  const std::size_t taken = std::min(standing.taken, standing.decisions.size());
  std::string text = recipe(standing.situation ? *standing.situation : Situation(), program_version);
  return text + "\n" + changes_in_words(std::span(standing.decisions).first(taken));
}

}  // namespace vorn
