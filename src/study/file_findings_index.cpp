// Chronologies: each decade of the file against the ten years that were made of it.
#include <algorithm>
#include <array>
#include <optional>

#include "formats/tucson_index.h"
#include "formats/tucson_index_layout.h"
#include "study/file_findings_parts.h"

namespace vorn {
namespace {

using namespace tucson_index;
using Years = std::vector<std::int64_t>;

struct IndexDecade {
  std::int64_t line = 0;
  bool is_blank = false, is_bad = false;
  std::string site = {};
  std::int64_t label = 0;
  std::array<std::int32_t, fields_a_line> pairs{};  // index, depth, index, …

  std::int32_t index(int k) const { return pairs[2 * static_cast<std::size_t>(k)]; }
  bool has_data(int k) const { return index(k) != no_data; }
};

IndexDecade decade_on(std::string_view text, std::int64_t number) {
  IndexDecade decade{number};
  decade.is_blank = trimmed(text).empty();
  Text<6> site;
  std::int32_t year = 0;
  decade.is_bad = edit_read(text, first_line_edit, site, year, std::span(decade.pairs)) != status::ok;
  const bool is_negative = site(6) == '-';
  if (is_negative) site(6) = ' ';
  decade.site = site.trimmed();
  decade.label = is_negative ? -std::int64_t{year} : year;
  return decade;
}

// The first year of the decade that a label names.
std::int64_t decade_of_label(std::int64_t label) {
  const std::int64_t rest = label % years_a_line;
  return rest < 0 ? label - rest - years_a_line : label - rest;
}

// Whether the reader passes over the line that the chronology begins with.
bool passes_first_line_over(const FileTaken& file) {
  return file.first_year <= 0 && file.first_year % years_a_line == 0 &&
         !file.decided.careful.has(Mend::early_years);
}

FileFinding about(const IndexDecade& decade, const FindingKind* of) {
  return {.kind = of, .line = decade.line, .from = decade.line, .to = decade.line, .series = decade.site};
}

class IndexAudit {
 public:
  IndexAudit(const FileTaken& file, FindingList& found) : file_(file), found_(found) {}

  void look_at(const IndexDecade& decade, std::int64_t read_as);
  void end();

 private:
  bool is_taken(std::int64_t year) const {
    return year >= file_.first_year &&
           year - file_.first_year <
               static_cast<std::int64_t>(std::min(file_.indices.size(), file_.depths.size()));
  }
  std::size_t place(std::int64_t year) const { return static_cast<std::size_t>(year - file_.first_year); }
  void look_at_none(const IndexDecade& decade, std::int64_t read_as);
  void look_at_label(const IndexDecade& decade, std::int64_t read_as);
  void look_at_values(const IndexDecade& decade, std::int64_t read_as);

  const FileTaken& file_;
  FindingList& found_;
  std::optional<std::int64_t> off_;  // by how many years the labels read last were not followed
  Years lost_, changed_, fillers_;
  std::int64_t lost_line_ = 0, last_with_data_ = 0;
  bool any_data_ = false, first_ = true;
};

// A line that is no decade gives ten years all the same.
void IndexAudit::look_at_none(const IndexDecade& decade, std::int64_t read_as) {
  if (!is_taken(read_as + years_a_line - 1) && !is_taken(read_as)) return;
  FileFinding one = about(decade, decade.is_blank ? kind("blank-decade") : kind("statistics-line"));
  one.series.clear();
  one.value = read_as;
  one.words = std::string(decade.is_blank ? "an empty line"
                                          : "a line that is no decade, of statistics more likely,") +
              " is read as ten years from " + std::to_string(read_as) + " on";
  found_.add(one);
}

void IndexAudit::look_at_label(const IndexDecade& decade, std::int64_t read_as) {
  const std::int64_t off = read_as - decade_of_label(decade.label);
  const std::int64_t before = off_.value_or(0);
  off_ = off;
  if (off == before || first_) return;
  FileFinding one = about(decade, kind("other-label"));
  one.value = decade.label;
  one.words = "the line says " + std::to_string(decade.label) + " and is read as the decade from " +
              std::to_string(read_as) + " on: labels behind the first line are not looked at";
  found_.add(one);
}

void IndexAudit::look_at_values(const IndexDecade& decade, std::int64_t read_as) {
  for (int k = 0; k < years_a_line; ++k) {
    const std::int64_t year = read_as + k;
    if (!is_taken(year)) {
      if (!decade.has_data(k)) continue;
      lost_.push_back(year);
      if (lost_line_ == 0) lost_line_ = decade.line;
      continue;
    }
    if (file_.indices[place(year)] != decade.index(k)) changed_.push_back(year);
    if (decade.has_data(k)) {
      last_with_data_ = any_data_ ? std::max(last_with_data_, year) : year;
      any_data_ = true;
    } else {
      fillers_.push_back(year);
    }
  }
}

void IndexAudit::look_at(const IndexDecade& decade, std::int64_t read_as) {
  if (decade.is_blank || decade.is_bad) return look_at_none(decade, read_as);
  look_at_label(decade, read_as);
  look_at_values(decade, read_as);
  first_ = false;
}

void IndexAudit::end() {
  const auto tell = [&](const FindingKind* of, const Years& years, std::int64_t line,
                        std::string_view words) {
    if (years.empty()) return;
    found_.add({.kind = of,
                .line = line,
                .from = line,
                .to = line,
                .value = static_cast<std::int64_t>(years.size()),
                .words = std::string(words) + spans_words(years)});
  };
  const bool passed_over = passes_first_line_over(file_);
  tell(passed_over ? kind("year-0-first") : kind("lost-rings"), lost_, lost_line_,
       passed_over
           ? "of a chronology that begins in year 0, -10, -20 and so on the first line is passed over: "
           : "years not read: ");
  tell(kind("changed-rings"), changed_, 0, "indices read otherwise than they stand there: ");
  Years inside, behind;
  for (const std::int64_t year : fillers_) {
    if (!any_data_ || year > last_with_data_)
      behind.push_back(year);
    else if (file_.depths[place(year)] > 0)  // otherwise no series is behind it, and it counts as absent
      inside.push_back(year);
  }
  tell(kind("filler-inside"), inside, 0, "9990, no data, is read as an index: ");
  tell(kind("filler-at-the-end"), behind, 0, "years without data at the end that are not cut off: ");
}

// Ring widths whose lines are as long as those of indices: the length alone tells them apart.
std::vector<CoreLines> widths_among(std::span<const FileLine> lines, std::size_t from) {
  std::vector<CoreLines> cores = cores_on(lines, from);
  std::size_t decades = 0;
  for (const CoreLines& core : cores) {
    for (const DecadeLine& decade : core.decades) {
      const bool is_good =
          decade.in_columns && !decade.is_shifted && !decade.run_together &&
          std::ranges::find(decade.fields, DecadeField::Kind::bad, &DecadeField::kind) == decade.fields.end();
      decades += is_good ? 1 : 0;
    }
  }
  if (2 * decades <= lines.size() - from) cores.clear();
  return cores;
}

}  // namespace

void add_index_findings(const FileTaken& file, std::span<const FileLine> lines, FindingList& found) {
  IndexAudit audit(file, found);
  const auto from = std::min(static_cast<std::size_t>(std::max(file.decided.header_lines, 0)), lines.size());
  if (from == lines.size()) return;
  if (const auto cores = widths_among(lines, from); !cores.empty()) return add_lost_cores(file, cores, found);
  // The reader counts decades from that of the first year on; of years of 0 and below that end in 0 it is the
  // one before.
  std::int64_t read_as = decade_of_label(file.first_year);
  if (passes_first_line_over(file)) read_as -= years_a_line;
  std::optional<IndexLines> behind_the_first;
  for (std::size_t k = from; k < lines.size(); ++k) {
    const IndexDecade decade = decade_on(lines[k].text, static_cast<std::int64_t>(k) + 1);
    if (!behind_the_first)
      behind_the_first.emplace(file.decided.careful, decade.label);
    else if (behind_the_first->kind_of(lines[k].text) != IndexLines::Kind::decade)
      continue;  // passed over
    audit.look_at(decade, read_as);
    read_as += years_a_line;
  }
  audit.end();
  CoreAsWritten written{"", static_cast<std::int64_t>(from) + 1, static_cast<std::int64_t>(lines.size())};
  for (std::size_t k = 0; k < file.indices.size() && k < file.depths.size(); ++k) {
    if (file.depths[k] <= 0) continue;
    written.years.push_back(file.first_year + static_cast<std::int64_t>(k));
    written.values.push_back(file.indices[k]);
  }
  add_value_findings(written, file.this_year, found);
}

}  // namespace vorn
