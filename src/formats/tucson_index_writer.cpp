#include <algorithm>
#include <vector>

#include "formats/tucson_index.h"
#include "formats/tucson_index_layout.h"

namespace vorn {
namespace {

using namespace tucson_index;

// The first year of the decade that a year lies in: -20 of -15.
std::int32_t decade_of(std::int32_t year) {
  const std::int32_t rest = year % years_a_line;
  return rest < 0 ? year - rest - years_a_line : year - rest;
}

// Where the lines begin, and how many years of the first one lie before the chronology's first year.
struct FirstDecade {
  std::int32_t label = 0;
  int leading = 0;
};

// Deliberate: [early-labels] of years 0, -10, -20 … a whole line of fillers leads, and the labels of years
// of 0 and below are what the rule for later ones gives, ten years late; carefully they are the years.
FirstDecade first_decade(const Careful& careful, std::int32_t first_year) {
  if (careful.has(Mend::early_years)) return {decade_of(first_year), first_year - decade_of(first_year)};
  const std::int32_t label = first_year / 10 * 10;
  return {label, first_year - label + (first_year > 0 ? 0 : 10)};
}

// Labels below -999 have no room for their minus sign, which stands in the last column of the site; a name
// that has one there would make all years negative.
Status write_decade(const Writing& writing, Text<6> site, std::int32_t label,
                    std::span<const Integer> decade) {
  const bool careful = writing.careful.has(Mend::early_years), is_early = careful && label < -999;
  if (careful && (is_early || site(6) == '-')) site(6) = is_early ? '-' : ' ';
  return writing.out.write(decade_line, site, is_early ? -label : label, decade);
}

// Index and depth of each year, with fillers before the first and behind the last: `leading` + `years` + 10
// pairs.
std::vector<Integer> filled_decades(const FileTable& w, int f, int leading, int years) {
  std::vector<Integer> pairs;
  const auto add = [&pairs](Integer index, std::int32_t depth) {
    pairs.push_back(index);
    pairs.emplace_back(depth);
  };
  for (int k = 1; k <= leading; ++k) add(no_data, 0);
  for (int k = 1; k <= years; ++k) {
    const std::int32_t depth = w.num(k, f);
    // Deliberate: [negative-depth] without data here, with it in the table of three columns.
    add(depth > 0 ? thousandths(w.crn(k, f)) : Integer(no_data), depth);
  }
  for (int k = 1; k <= years_a_line; ++k) add(no_data, 0);
  return pairs;
}

}  // namespace

void write_indcrn(const FileTable& w, int f, const Writing& writing) {
  const FileName name = w.cnam(f);
  told(writing.troubles, writing.file, writing.out.write(title_line, name), "Write");

  const std::int32_t first_year = w.cfy(f);
  const int years = w.cyr(f);
  const auto [first_label, leading] = first_decade(writing.careful, first_year);
  const std::vector<Integer> pairs = filled_decades(w, f, leading, years);
  const int lines = (years + leading) / 10 + 1;  // none where a record without a length left years below 0
  for (int line = 1; line <= lines; ++line) {
    const std::int32_t label = first_label + 10 * (line - 1) + (line == 1 ? leading : 0);
    const auto decade =
        std::span(pairs).subspan(static_cast<std::size_t>(line - 1) * fields_a_line, fields_a_line);
    const Status answer = write_decade(writing, Text<6>(name.view().substr(0, 6)), label, decade);
    told(writing.troubles, writing.file, answer, "Write");
  }
}

}  // namespace vorn
