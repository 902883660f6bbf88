#include "batch/repair.h"

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

#include "batch/difference.h"
#include "batch/imported_copy.h"
#include "batch/reading_check.h"
#include "batch/tucson_text.h"
#include "formats/tucson_index_layout.h"
#include "formats/tucson_raw_layout.h"
#include "records/memory_files.h"
#include "study/tucson_lines.h"

namespace vorn {
namespace {

const std::string in_memory = "the copy";
const std::string left_out_empty = ", empty, left out", no_data = ", no data, left out: ";
constexpr std::size_t most_header_lines = 3;

std::string at_line(std::int64_t line) {
  return "line " + std::to_string(line);
}

// --- Cores

bool is_full(const DecadeLine& decade) {
  return decade.fields.size() == static_cast<std::size_t>(decade.next_year() - decade.year);
}

bool has_bad_field(const DecadeLine& decade) {
  return std::ranges::find(decade.fields, DecadeField::Kind::bad, &DecadeField::kind) != decade.fields.end();
}

// The mark and the field before it are the same number.
bool has_several_marks(const CoreLines& core) {
  const auto& last = core.decades.back().fields;
  return core.mark && *core.mark > 0 && last[*core.mark - 1].number == last[*core.mark].number;
}

// Whether the reader takes the core whole, mark and all, once what stands around it is put right.
bool is_as_it_should_be(const CoreLines& core) {
  if (!core.mark || *core.mark + 1 != core.decades.back().fields.size()) return false;
  for (std::size_t k = 0; k < core.decades.size(); ++k) {
    const DecadeLine& decade = core.decades[k];
    if (!decade.in_columns || decade.name.empty() || has_bad_field(decade)) return false;
    const bool is_last = k + 1 == core.decades.size();
    const auto room = static_cast<std::size_t>(decade.next_year() - decade.year);
    if (is_last ? decade.fields.size() > room : !is_full(decade)) return false;
    if (!is_last && core.decades[k + 1].year != decade.next_year()) return false;
  }
  return true;
}

std::vector<Stretch> stretches_of(const CoreLines& core, double unit) {
  std::vector<Stretch> all;
  std::int64_t next = 0;
  for (std::size_t k = 0; k < core.decades.size(); ++k) {
    const DecadeLine& decade = core.decades[k];
    if (all.empty() || decade.year != next) all.push_back({core.name, decade.year, {}, unit});
    for (std::size_t place = 0; place < core.rings_on(k); ++place)
      all.back().values.push_back(decade.fields[place].number);
    next = decade.year + static_cast<std::int64_t>(core.rings_on(k));
  }
  std::erase_if(all, [](const Stretch& stretch) { return stretch.values.empty(); });
  return all;
}

std::string text_of(const Stretch& stretch) {
  std::string text;
  for (const std::string& line : tucson_lines(stretch)) text += line + "\n";
  return text;
}

// --- A file of ring widths

// A stretch as the copy has it.
struct CopiedStretch {
  Stretch rings;
  std::string text = {};
};

// The year of the line that the reader would take for the next one of the stretch.
std::int64_t year_behind(const Stretch& stretch) {
  const std::int64_t of_mark = stretch.first + static_cast<std::int64_t>(stretch.values.size());
  return of_mark + first_decade_end(static_cast<std::int32_t>(of_mark));
}

class RawRepair {
 public:
  RawRepair(std::span<const FileLine> lines, const RepairChoices& choices)
      : lines_(lines), choices_(choices) {}

  Repair run();
  const std::vector<CopiedStretch>& copied() const { return copied_; }

 private:
  void add_headers(std::size_t first_line_of_data);
  void add_core(const CoreLines& core);
  std::string kept_line(std::int64_t line);
  void write_anew(const CoreLines& core, double unit);
  void part_what_would_be_one();
  void say_what_is_left_out(std::span<const CoreLines> cores, std::size_t from);
  std::string why_not(const CoreLines& core) const;

  std::span<const FileLine> lines_;
  const RepairChoices& choices_;
  Repair made_;
  std::vector<CopiedStretch> copied_;
};

void RawRepair::add_headers(std::size_t first_line_of_data) {
  std::size_t kept = 0;
  for (std::size_t k = 0; k < first_line_of_data; ++k) {
    const auto line = static_cast<std::int64_t>(k) + 1;
    if (trimmed(lines_[k].text).empty()) {
      made_.done.push_back(at_line(line) + left_out_empty);
    } else if (kept < most_header_lines) {
      made_.bytes += std::string(lines_[k].text) + "\n";
      ++kept;
    } else {
      made_.done.push_back(at_line(line) + ", one header line too many, left out: " +
                           std::string(trimmed(lines_[k].text).substr(0, 40)));
    }
  }
}

// Why a core cannot be written anew without a guess; nothing where it can.
std::string RawRepair::why_not(const CoreLines& core) const {
  if (core.name.empty()) return "a series without a name";
  if (core.name.size() > Name::length) return "its name is too long";
  if (!core.mark && !choices_.unit) return "no end mark: choose its unit by --unit";
  for (std::size_t k = 0; k < core.decades.size(); ++k) {
    const DecadeLine& decade = core.decades[k];
    for (std::size_t place = 0; place < core.rings_on(k); ++place) {
      const DecadeField& field = decade.fields[place];
      if (field.kind != DecadeField::Kind::bad) continue;
      return at_line(decade.line) + ", column " + std::to_string(field.column) + ": what is its width?";
    }
  }
  return "";
}

void RawRepair::write_anew(const CoreLines& core, double unit) {
  const std::vector<Stretch> stretches = stretches_of(core, unit);
  for (const Stretch& stretch : stretches) copied_.push_back({stretch, text_of(stretch)});
  made_.done.push_back(
      core.name + ", " + at_line(core.decades.front().line) + " to " +
      std::to_string(core.decades.back().line) + ", written anew" +
      (stretches.size() > 1 ? " in " + std::to_string(stretches.size()) + " stretches" : "") +
      (core.mark ? "" : ", in the unit chosen"));
}

// Where the next stretch of a name begins in the decade behind that of the end mark the reader goes on; so
// such stretches come in the opposite order.
void RawRepair::part_what_would_be_one() {
  const auto follows = [](const CopiedStretch& one, const CopiedStretch& next) {
    return next.rings.name == one.rings.name && next.rings.first == year_behind(one.rings);
  };
  for (auto first = copied_.begin(); first != copied_.end();) {
    auto last = first + 1;
    while (last != copied_.end() && follows(*(last - 1), *last)) ++last;
    if (last - first > 1)
      made_.done.push_back(first->rings.name + ", " + std::to_string(last - first) +
                           " stretches, the last one first: they would be read as one");
    std::reverse(first, last);
    first = last;
  }
}

// As it stands, but no longer than a line of widths may be.
std::string RawRepair::kept_line(std::int64_t line) {
  constexpr std::size_t length_of_indices = 80;
  std::string_view text = lines_[static_cast<std::size_t>(line) - 1].text;
  if (trimmed(text).size() >= length_of_indices) {
    const auto last_column = static_cast<std::size_t>(tucson_raw::fields.back().last);
    made_.done.push_back(at_line(line) + ", what stands behind column " + std::to_string(last_column) +
                         " left out: " + std::string(trimmed(text.substr(last_column)).substr(0, 40)));
    text = text.substr(0, last_column);
  }
  return std::string(text) + "\n";
}

void RawRepair::add_core(const CoreLines& core) {
  if (has_several_marks(core)) {
    made_.refused.push_back(core.name + ": which of the end marks on its last line ends it?");
    return;
  }
  if (is_as_it_should_be(core)) {
    std::string text;
    for (const DecadeLine& decade : core.decades) text += kept_line(decade.line);
    for (Stretch& stretch : stretches_of(core, *core.unit)) copied_.push_back({std::move(stretch), text});
    return;
  }
  if (const std::string reason = why_not(core); !reason.empty()) {
    made_.refused.push_back(core.name + ": " + reason);
    return;
  }
  write_anew(core, core.mark ? *core.unit : *choices_.unit);
}

// Lines among the data that are none.
void RawRepair::say_what_is_left_out(std::span<const CoreLines> cores, std::size_t from) {
  std::vector<bool> is_kept(lines_.size() + 1);
  for (const CoreLines& core : cores) {
    for (const DecadeLine& decade : core.decades) is_kept[static_cast<std::size_t>(decade.line)] = true;
  }
  for (std::size_t k = from; k < lines_.size(); ++k) {
    if (is_kept[k + 1]) continue;
    const std::string_view text = trimmed(lines_[k].text);
    made_.done.push_back(at_line(static_cast<std::int64_t>(k) + 1) +
                         (text.empty() ? left_out_empty : no_data + std::string(text.substr(0, 40))));
  }
}

Repair RawRepair::run() {
  const std::vector<CoreLines> cores = cores_on(lines_, 0);
  if (cores.empty()) return {};
  const auto from = static_cast<std::size_t>(cores.front().decades.front().line) - 1;
  add_headers(from);
  for (const CoreLines& core : cores) add_core(core);
  part_what_would_be_one();
  for (const CopiedStretch& copied : copied_) made_.bytes += copied.text;
  say_what_is_left_out(cores, from);
  return std::move(made_);
}

// --- Whether the copy holds what the file does

bool holds(const Collection& copy, std::span<const CopiedStretch> expected) {
  if (static_cast<std::size_t>(copy.state().nc) != expected.size()) return false;
  for (std::size_t k = 0; k < expected.size(); ++k) {
    if (!holds_stretch(copy, static_cast<int>(k) + 1, expected[k].rings)) return false;
  }
  return true;
}

Repair repaired_widths(std::string_view bytes, const RepairChoices& choices) {
  const std::vector<FileLine> lines = lines_of(bytes);
  RawRepair repair(lines, choices);
  Repair made = repair.run();
  if (!made.refused.empty() || made.bytes.empty()) {
    made.bytes.clear();
    return made;
  }
  MemoryFiles files;
  files.put(in_memory, made.bytes);
  const Collection copy(files, in_memory, untreated());
  if (is_read_whole(copy) && holds(copy, repair.copied())) return made;
  return {.refused = {"a copy would not be read back as the file stands"}};
}

// --- Other files: lines are left out

// `why` says of a line, by its number, why it is left out, or nothing.
Repair without_lines(std::string_view bytes,
                     const std::function<std::string(std::string_view, std::int64_t)>& why) {
  Repair made;
  std::int64_t number = 0;
  for (const FileLine& line : lines_of(bytes)) {
    const std::string reason = why(line.text, ++number);
    if (reason.empty())
      made.bytes += std::string(line.text) + "\n";
    else
      made.done.push_back(at_line(number) + reason);
  }
  if (made.done.empty()) return {};
  MemoryFiles files;
  files.put(in_memory, made.bytes);
  const Collection copy(files, in_memory, untreated());
  return is_read_whole(copy) ? made : Repair{};
}

Repair repaired_chronology(std::string_view bytes, int header_lines) {
  return without_lines(bytes, [header_lines](std::string_view text, std::int64_t number) -> std::string {
    if (number <= header_lines) return "";
    if (trimmed(text).empty()) return left_out_empty;
    Text<6> site;
    std::int32_t year = 0;
    std::array<std::int32_t, tucson_index::fields_a_line> pairs{};
    const bool is_decade =
        edit_read(text, tucson_index::first_line_edit, site, year, std::span(pairs)) == status::ok;
    return is_decade ? "" : no_data + std::string(trimmed(text).substr(0, 40));
  });
}

Repair without_empty_start(std::string_view bytes) {
  bool any = false;
  return without_lines(bytes, [&any](std::string_view text, std::int64_t) -> std::string {
    any = any || !trimmed(text).empty();
    return any ? "" : left_out_empty;
  });
}

}  // namespace

Repair repaired(const Collection& collection, std::string_view bytes, const RepairChoices& choices) {
  if (collection.imported()) return repair_of(*collection.imported());
  const std::vector<FileFinding> findings = findings_of(collection, bytes, 0);
  const bool is_unread = std::ranges::any_of(
      collection.troubles(), [](const Trouble& trouble) { return status::of_system(trouble.status); });
  if (is_unread || is_read_whole(collection)) return {};
  Repair made;
  const Recognition& recognition = collection.recognition();
  const bool holds_series = std::ranges::any_of(
      findings, [](const FileFinding& finding) { return finding.kind == kind("lost-series"); });
  if (recognition.layout == Layout::tucson_index) made = repaired_chronology(bytes, recognition.header_lines);
  if (recognition.layout == Layout::not_recognised) made = without_empty_start(bytes);
  const bool may_hold_widths =
      recognition.layout == Layout::tucson_raw || (recognition.layout != Layout::heidelberg && holds_series);
  if (made.bytes.empty() && may_hold_widths) made = repaired_widths(bytes, choices);
  if (made.bytes.empty()) {
    if (const auto other = imported(bytes, 0); other && !other->tucson.empty()) return repair_of(*other);
  }
  if (made.bytes.empty() && made.refused.empty())
    made.refused.emplace_back("nothing of it can be put right without a guess");
  return made;
}

}  // namespace vorn
