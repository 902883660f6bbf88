// TRiDaS files (XML): measured series of projects, trees, samples and radii (docs/formats/tridas.md).
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "import/imported.h"

namespace vorn {

// What values of a series are, by the words of its variable as letters_of gives them.
enum class TridasVariable { ring, earlywood, latewood, other };

struct TridasVariableWords {
  std::string_view letters;
  TridasVariable variable;
};

inline constexpr std::array tridas_variables = {
    TridasVariableWords{"ringwidth", TridasVariable::ring},
    TridasVariableWords{"treeringwidth", TridasVariable::ring},
    TridasVariableWords{"totalringwidth", TridasVariable::ring},
    TridasVariableWords{"earlywoodwidth", TridasVariable::earlywood},
    TridasVariableWords{"earlywood", TridasVariable::earlywood},
    TridasVariableWords{"latewoodwidth", TridasVariable::latewood},
    TridasVariableWords{"latewood", TridasVariable::latewood}};

// Units of the standard: a value times `times` is one of `unit` values a millimetre.
struct TridasUnit {
  std::string_view word;
  double unit, times;
};

inline constexpr std::array tridas_units = {
    TridasUnit{"micrometres", 1000, 1},        TridasUnit{"1/100th millimetres", 100, 1},
    TridasUnit{"1/50th millimetres", 100, 2},  TridasUnit{"1/20th millimetres", 100, 5},
    TridasUnit{"1/10th millimetres", 100, 10}, TridasUnit{"millimetres", 1, 1},
    TridasUnit{"centimetres", 1, 10},          TridasUnit{"metres", 1, 1000}};

// Whether the text looks like one.
bool looks_like_tridas(std::string_view text);

// Nothing where the text does not look like one. One that is no XML, or passes the bounds, is not read, and
// an error says why. A program that was built without what reads XML says that.
std::optional<Imported> import_tridas(std::string_view bytes, bool is_utf_16, const ImportWishes& wishes);

}  // namespace vorn
