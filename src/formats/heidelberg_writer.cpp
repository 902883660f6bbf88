#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "formats/heidelberg.h"
#include "formats/heidelberg_layout.h"
#include "formats/width_fields.h"

namespace vorn {
namespace {

using namespace heidelberg;

// `number` in six columns, to their left.
std::string to_the_left(std::int32_t number) {
  std::string text = edit(year_edit, number);
  const std::size_t blanks = std::min(text.find_first_not_of(' '), text.size());
  return text.substr(blanks) + text.substr(0, blanks);
}

Status write_name(const Name& name, const Writing& writing) {
  // Deliberate: [name-to-the-right] the name stands in twelve columns, so that a reader meets four blanks.
  if (!writing.careful.has(Mend::heidelberg_names)) return writing.out.write(name_line, name);
  return writing.out.write(name_line, Text<12>(name.view()));
}

// Returns the status of the first line that could not be written.
Status write_header(const SeriesStore& w, const Writing& writing, int i) {
  TextOutput& out = writing.out;
  const std::array<Status, 6> answers = {out.write(header_line),
                                         write_name(w.nam(i), writing),
                                         out.write(unit_line),
                                         out.write(last_year_line, to_the_left(w.ly(i))),
                                         out.write(length_line, to_the_left(w.yr(i))),
                                         out.write(data_line)};
  for (const Status answer : answers) {
    if (answer != status::ok) return answer;
  }
  return status::ok;
}

// The widths of entry i, thousandths, filled up with zeros to whole lines.
std::vector<Integer> filled_values(const SeriesStore& w, int i) {
  std::vector<Integer> values = width_fields(w, i, missing_ring);
  while (values.size() % values_a_line != 0) values.emplace_back(0);
  return values;
}

}  // namespace

bool write_hrec(const SeriesStore& w, const Writing& writing, int i) {
  const Name name = w.nam(i);
  const Status header = write_header(w, writing, i);
  const std::vector<Integer> values = filled_values(w, i);
  const Status data = writing.out.write(values_line, std::span(values));
  const Status answer = header != status::ok ? header : data;  // told once, behind the data
  told_write(writing, answer, "Write ", name);
  return answer == status::ok;
}

}  // namespace vorn
