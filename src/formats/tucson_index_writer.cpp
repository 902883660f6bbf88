#include <algorithm>
#include <vector>

#include "formats/tucson_index.h"
#include "formats/tucson_index_layout.h"

namespace vorn {
namespace {

using namespace tucson_index;

// Years of the first decade before the chronology's first year.
// Deliberate: [early-labels] of years 0, -10, -20 … it is 10, a whole line of fillers.
int leading_years(std::int32_t first_year) {
  if (first_year > 0) return first_year % 10;
  return 10 - first_year / 10 * 10 + first_year;
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
  const int years = w.cyr(f), leading = leading_years(first_year);
  const std::vector<Integer> pairs = filled_decades(w, f, leading, years);
  const int lines = (years + leading) / 10 + 1;  // none where a record without a length left years below 0
  for (int line = 1; line <= lines; ++line) {
    // The first line is labelled with the first year by this rule where that is positive; the labels of years
    // of 0 and below are what the same rule gives.
    const std::int32_t label = first_year / 10 * 10 + 10 * (line - 1) + (line == 1 ? leading : 0);
    const auto decade =
        std::span(pairs).subspan(static_cast<std::size_t>(line - 1) * fields_a_line, fields_a_line);
    const Status answer = writing.out.write(decade_line, name.view().substr(0, 6), label, decade);
    told(writing.troubles, writing.file, answer, "Write");
  }
}

}  // namespace vorn
