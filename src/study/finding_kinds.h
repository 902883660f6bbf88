// What can be found about a file, and how grave each is. docs/findings.md tells users the same, with what to
// do about it; tests/docs/ holds the two together.
#pragma once

#include <array>
#include <string_view>

#include "base/loud_failure.h"

namespace vorn {

// What a finding means for the figures.
enum class Effect {
  none,      // they are what the file says
  doubtful,  // they are what the file says, which may not be what is meant
  changed,   // they are not what the file says
  lost       // something that the file says is missing among them
};

enum class Severity { note, warning, error };

constexpr Severity severity_of(Effect effect) {
  if (effect == Effect::none) return Severity::note;
  return effect == Effect::doubtful ? Severity::warning : Severity::error;
}

// The names stay as they are: other tools read them.
struct FindingKind {
  std::string_view id;
  Effect effect = Effect::none;
};

inline constexpr std::array finding_kinds = {
    // The file as a whole.
    FindingKind{"layout", Effect::none},
    FindingKind{"layout", Effect::lost},  // none is known
    FindingKind{"imported", Effect::none},
    FindingKind{"series", Effect::none},
    FindingKind{"missing-rings", Effect::none},
    FindingKind{"more", Effect::doubtful},
    // How it is written.
    FindingKind{"line-ends", Effect::none},
    FindingKind{"mixed-line-ends", Effect::none},
    FindingKind{"no-last-line-end", Effect::none},
    FindingKind{"control-z", Effect::none},
    FindingKind{"control-z-inside", Effect::doubtful},
    FindingKind{"byte-order-mark", Effect::doubtful},
    FindingKind{"utf-8", Effect::none},
    FindingKind{"latin-1", Effect::none},
    FindingKind{"control-character", Effect::doubtful},
    FindingKind{"tab", Effect::doubtful},
    FindingKind{"template", Effect::none},
    // Lines that are not read.
    FindingKind{"header", Effect::none},
    FindingKind{"header-is-data", Effect::lost},
    FindingKind{"unknown-key", Effect::none},
    FindingKind{"long-header", Effect::lost},
    FindingKind{"cut-header", Effect::lost},
    FindingKind{"blank-end", Effect::none},
    FindingKind{"text-behind-end", Effect::doubtful},
    FindingKind{"behind-end", Effect::lost},
    FindingKind{"no-room", Effect::lost},
    FindingKind{"series-limit", Effect::lost},
    FindingKind{"year-limit", Effect::lost},
    FindingKind{"too-many-years", Effect::lost},
    FindingKind{"no-decade", Effect::doubtful},
    FindingKind{"behind-columns", Effect::none},
    // Series against what was read.
    FindingKind{"lost-series", Effect::lost},
    FindingKind{"lost-rings", Effect::lost},
    FindingKind{"changed-rings", Effect::changed},
    FindingKind{"invented-rings", Effect::changed},
    FindingKind{"wrong-years", Effect::changed},
    FindingKind{"five-digit-years", Effect::doubtful},
    FindingKind{"wrong-unit", Effect::changed},
    FindingKind{"split", Effect::doubtful},
    // Ring widths as they stand.
    FindingKind{"no-end-mark", Effect::doubtful},
    FindingKind{"unit-by-mean", Effect::doubtful},
    FindingKind{"two-end-marks", Effect::doubtful},
    FindingKind{"mark-inside", Effect::doubtful},
    FindingKind{"behind-mark", Effect::doubtful},
    FindingKind{"not-in-columns", Effect::doubtful},
    FindingKind{"shifted", Effect::doubtful},
    FindingKind{"run-together", Effect::doubtful},
    FindingKind{"bad-field", Effect::doubtful},
    FindingKind{"empty-field", Effect::doubtful},
    FindingKind{"decades-do-not-follow", Effect::doubtful},
    FindingKind{"years-out-of-order", Effect::doubtful},
    FindingKind{"name-twice", Effect::doubtful},
    FindingKind{"name-twice-same-years", Effect::doubtful},
    FindingKind{"gap", Effect::doubtful},
    FindingKind{"zeros", Effect::none},
    FindingKind{"zeros-at-the-end", Effect::doubtful},
    FindingKind{"negative", Effect::none},
    FindingKind{"years-before-0", Effect::none},
    FindingKind{"years-to-come", Effect::doubtful},
    FindingKind{"no-date", Effect::doubtful},
    FindingKind{"dates-disagree", Effect::doubtful},
    FindingKind{"behind-length", Effect::doubtful},
    FindingKind{"pairs", Effect::changed},
    // Chronologies.
    FindingKind{"statistics-line", Effect::changed},
    FindingKind{"blank-decade", Effect::doubtful},
    FindingKind{"other-label", Effect::changed},
    FindingKind{"year-0-first", Effect::lost},
    FindingKind{"filler-inside", Effect::doubtful},
    FindingKind{"filler-at-the-end", Effect::doubtful},
    // Lists of files.
    FindingKind{"list-missing", Effect::lost},
    FindingKind{"list-limit", Effect::lost},
    FindingKind{"list-long-name", Effect::doubtful},
    FindingKind{"list-twice", Effect::none},
    FindingKind{"list-empty-line", Effect::none},
    // Other layouts, of which a copy is made (src/import/).
    FindingKind{"utf-16", Effect::none},
    FindingKind{"comments", Effect::none},
    FindingKind{"name-column", Effect::none},
    FindingKind{"other-column", Effect::none},
    FindingKind{"parts-of-rings", Effect::doubtful},
    FindingKind{"missing-marks", Effect::none},
    FindingKind{"decimal-comma", Effect::none},
    FindingKind{"two-points", Effect::doubtful},
    FindingKind{"open-quote", Effect::doubtful},
    FindingKind{"no-names", Effect::doubtful},
    FindingKind{"unit-said", Effect::none},
    FindingKind{"unit-guessed", Effect::doubtful},
    FindingKind{"unit-chosen", Effect::none},
    FindingKind{"unit-unlikely", Effect::doubtful},
    FindingKind{"years-bp", Effect::none},
    FindingKind{"years-of-dates", Effect::none},
    FindingKind{"no-year-0", Effect::doubtful},
    FindingKind{"years-descend", Effect::none},
    FindingKind{"year-twice", Effect::doubtful},
    FindingKind{"year-twice", Effect::lost},
    FindingKind{"year-outside", Effect::lost},
    FindingKind{"no-year", Effect::none},
    FindingKind{"no-year", Effect::lost},
    FindingKind{"second-table", Effect::changed},
    FindingKind{"no-series", Effect::lost},
    FindingKind{"no-number", Effect::lost},
    FindingKind{"no-column", Effect::lost},
    FindingKind{"short-rows", Effect::doubtful},
    FindingKind{"too-large", Effect::lost},
    FindingKind{"too-wide", Effect::lost},
    FindingKind{"no-rings", Effect::none},
    FindingKind{"inner-gap", Effect::none},
    FindingKind{"rounded", Effect::doubtful},
    FindingKind{"taken-as", Effect::none},
    FindingKind{"copy-form", Effect::none},
    FindingKind{"no-copy", Effect::lost},
    FindingKind{"counts", Effect::none},
    FindingKind{"undated", Effect::doubtful},
    FindingKind{"missing-outside", Effect::none},
    FindingKind{"trailing-zeros", Effect::none},
    FindingKind{"short-data", Effect::doubtful},
    FindingKind{"data-kind", Effect::doubtful},
    FindingKind{"numbers-a-year", Effect::doubtful},
    FindingKind{"no-widths", Effect::lost},
    FindingKind{"not-kept", Effect::none},
    FindingKind{"not-understood", Effect::lost},
    FindingKind{"path-gap", Effect::none},
    FindingKind{"wood-points", Effect::none},
    FindingKind{"scale", Effect::doubtful},
    FindingKind{"mean-series", Effect::none},
    FindingKind{"years-bc", Effect::none},
    FindingKind{"variable", Effect::doubtful},
    FindingKind{"remark", Effect::doubtful},
    FindingKind{"sheet", Effect::none},
    FindingKind{"hidden-sheet", Effect::doubtful},
    FindingKind{"merged-cells", Effect::none},
    FindingKind{"no-stored-value", Effect::lost},
    // What failed while the file was read.
    FindingKind{"read", Effect::changed},
};

// The kind of that name; one that does not stand above is not compiled.
consteval const FindingKind* kind(std::string_view id) {
  for (const FindingKind& one : finding_kinds) {
    if (one.id == id) return &one;
  }
  stop_loudly("there is a finding of that name", __FILE__, __LINE__);
}

// Of a name that stands there twice, as a note and as something grave.
consteval const FindingKind* kind(std::string_view id, Effect effect) {
  for (const FindingKind& one : finding_kinds) {
    if (one.id == id && one.effect == effect) return &one;
  }
  stop_loudly("there is such a finding", __FILE__, __LINE__);
}

}  // namespace vorn
