// Sheffield files, also known as D-format: a header of one datum a line, then one value a line in hundredths
// of a millimetre (docs/formats/sheffield.md).
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

#include "import/imported.h"
#include "study/file_lines.h"

namespace vorn {

// Lines of the header, in their order.
struct SheffieldLine {
  std::string_view content;
  std::string_view kept_as = {};  // what it is called where it is told and not kept; nothing where it is used
};

inline constexpr std::array sheffield_header = {
    SheffieldLine{"name"},
    SheffieldLine{"number of rings"},
    SheffieldLine{"`A`, dated, or `R`, relative"},
    SheffieldLine{"first year; where it is dated 10,000 more than the year"},
    SheffieldLine{"`R`, widths of one series, or a letter for a mean: `W`, `T`, `C`, `M`, `U`"},
    SheffieldLine{"rings of sapwood, of a mean the number of its series", "sapwood or series"},
    SheffieldLine{"edge: bark, sapwood and the like, of a mean what it is made of", "edge"},
    SheffieldLine{"author and comment", "comment"},
    SheffieldLine{"pith: how many rings to it", "pith"},
    SheffieldLine{"place on the national grid", "grid"},
    SheffieldLine{"latitude and longitude", "place"},
    SheffieldLine{"period", "period"},
    SheffieldLine{"species, four letters", "species"},
    SheffieldLine{"notes on the wood", "notes"},
    SheffieldLine{"what was measured"}};

// What was measured, by the letter of the last line.
struct SheffieldVariable {
  char letter;
  std::string_view content;
  bool are_widths;  // of rings, or of a part of them
};

inline constexpr std::array sheffield_variables = {
    SheffieldVariable{'D', "ring widths", true},
    SheffieldVariable{'E', "earlywood widths", true},
    SheffieldVariable{'L', "latewood widths", true},
    SheffieldVariable{'R', "earlywood and latewood, in the order of measuring backwards", false},
    SheffieldVariable{'S', "earlywood and latewood in turns", false},
    SheffieldVariable{'M', "several kinds", false},
    SheffieldVariable{'I', "minimum densities", false},
    SheffieldVariable{'A', "maximum densities", false}};

// Nothing where the second to fifth lines are not those of a header.
std::optional<Imported> import_sheffield(std::span<const FileLine> lines, bool is_utf_16,
                                         const ImportWishes& wishes);

}  // namespace vorn
