// Ring widths in layouts that the program does not load: what such a file means, as series and findings, and
// a copy of it that the program loads whole.
//
// The layout is known from the bytes alone. What each looks like stands in docs/formats/: noaa-template.md,
// tables.md, heidelberg-variants.md, coordinates.md, sheffield.md, tridas.md and workbooks.md.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "study/file_findings.h"

namespace vorn {

enum class OtherLayout {
  noaa_template,
  wide_table,
  long_table,
  heidelberg,
  coordinates,
  sheffield,
  tridas,
  refused  // known, and not read: a finding of severity error says why and what to do
};

// Which widths are taken where a file has several of each ring.
enum class RingVariable {
  whole,  // the ring width, or else the sum of its parts
  earlywood,
  latewood
};

// Years that follow each other, of one core. A core with a longer gap than `longest_gap` (found_series.h) is
// several of them, each with a name of its own in the copy.
struct ImportedSeries {
  std::string name = {};                    // as the file has it, in UTF-8, without blanks around it
  std::string taken_as = {};                // of at most 8 characters, unique among those of the file
  std::int64_t line = 0;                    // where its name stands, or its first ring; from 1
  int column = 0;                           // from 1, in bytes
  std::int64_t first = 0;                   // year of widths[0]
  std::vector<double> widths = {};          // mm; 0 where there is none
  std::vector<std::uint8_t> presence = {};  // 1 where a ring is, 0 at a gap or a missing value
  double unit = 1000;                       // in which the copy writes it, values a millimetre (100 or 1000)
};

struct Imported {
  OtherLayout layout = OtherLayout::wide_table;
  std::string layout_name = {};  // in words
  std::string why = {};          // by what it is known
  // Each begins and ends in a ring; in the order of the copy.
  std::vector<ImportedSeries> series = {};
  // What was decided, and what was not taken, in the order of the lines. A field that holds a number and is
  // no ring of a series lies on a line that one of them names, unless it is a year.
  std::vector<FileFinding> findings = {};
  // All series as a file of Tucson ring widths that the program's reader takes whole. Empty where there is
  // none: a finding of severity error says why.
  std::string tucson = {};
};

// A file of more bytes than these is not looked at.
inline constexpr std::size_t most_imported_bytes = 256U << 20U;

struct ImportWishes {
  int this_year = 0;  // behind which no ring can have grown; 0 where nobody says
  std::optional<double> unit =
      {};  // values a millimetre of what says none: 1, 100 or 1000; else it is guessed
  RingVariable variable = RingVariable::whole;
  std::string_view file =
      {};  // its name without folder and ending, where its bytes hold no name; may be empty
};

// What the bytes, which may be any, mean. Nothing where they are none of these layouts, nor where they are a
// Heidelberg file that the program's own reader takes as it is meant.
std::optional<Imported> imported(std::string_view bytes, const ImportWishes& wishes);

}  // namespace vorn
