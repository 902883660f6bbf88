// Tucson ring widths: lines that are no data are left out, cores that are not taken whole are written anew.
#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

#include "batch/difference.h"
#include "batch/reading_check.h"
#include "batch/repair_parts.h"
#include "batch/repair_tucson_cores.h"
#include "batch/tucson_text.h"
#include "formats/tucson_raw_layout.h"
#include "records/memory_files.h"

namespace vorn {
namespace {

const std::string in_memory = "the copy";
constexpr std::size_t most_header_lines = 3;
constexpr double millimetres = 1, thousandths = 1000;

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

bool has_decimals(const CoreLines& core) {
  return std::ranges::any_of(core.decades, [](const DecadeLine& decade) {
    return std::ranges::find(decade.fields, DecadeField::Kind::decimal, &DecadeField::kind) !=
           decade.fields.end();
  });
}

std::size_t room_on(const DecadeLine& decade) {
  return static_cast<std::size_t>(decade.next_year() - decade.year);
}

// Whether the reader takes the core whole, mark and all, once what stands around it is put right.
bool is_as_it_should_be(const CoreLines& core) {
  if (!core.mark || *core.mark + 1 != core.decades.back().fields.size()) return false;
  for (std::size_t k = 0; k < core.decades.size(); ++k) {
    const DecadeLine& decade = core.decades[k];
    if (!decade.in_columns || decade.name.empty() || has_bad_field(decade)) return false;
    const bool is_last = k + 1 == core.decades.size();
    const auto room = room_on(decade);
    if (is_last ? decade.fields.size() > room : !is_full(decade)) return false;
    if (!is_last && core.decades[k + 1].year != decade.next_year()) return false;
  }
  return true;
}

// Whether numbers touch so that they fill another number of columns than the line has years: the columns
// that part them are not those of the layout.
bool is_cut_elsewhere(const CoreLines& core, std::size_t k) {
  const DecadeLine& decade = core.decades[k];
  const std::size_t fields = core.rings_on(k) + (core.mark && k + 1 == core.decades.size() ? 1 : 0);
  const bool is_full_line = k + 1 < core.decades.size() ? is_full(decade) : fields == decade.fields.size();
  return decade.touching > 1 && decade.run_together && !is_full_line;
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
  // `all_anew`: lines that would do as they stand are written anew as well.
  RawRepair(const TucsonText& text, const RepairChoices& choices, bool all_anew)
      : lines_(text.lines), choices_(choices), all_anew_(all_anew) {
    made_.done = text.done;
  }

  Repair run();
  const std::vector<CopiedStretch>& copied() const { return copied_; }

 private:
  void add_headers(std::size_t first_line_of_data);
  void add_core(CoreLines core);
  void leave_out_notes(CoreLines& core);
  void take_millimetres(CoreLines& core);
  std::string kept_line(std::int64_t line);
  void write_anew(const CoreLines& core, double unit);
  void part_what_would_be_one();
  void say_what_is_left_out(const OrderedCores& ordered, std::size_t from);
  std::string why_not(const CoreLines& core) const;

  std::span<const FileLine> lines_;
  const RepairChoices& choices_;
  bool all_anew_ = false;
  Repair made_;
  std::vector<CopiedStretch> copied_;
};

void RawRepair::add_headers(std::size_t first_line_of_data) {
  std::size_t kept = 0;
  for (std::size_t k = 0; k < first_line_of_data; ++k) {
    const bool is_kept = !is_blank(lines_[k]) && kept < most_header_lines && !may_hold_data(lines_[k].text);
    if (is_kept) {
      made_.bytes += std::string(lines_[k].text) + "\n";
      ++kept;
    } else {
      leave_out(lines_[k], static_cast<std::int64_t>(k) + 1, ", one header line too many, left out: ", made_);
    }
  }
}

// Why a core cannot be written anew without a guess; nothing where it can.
std::string RawRepair::why_not(const CoreLines& core) const {
  if (core.name.empty()) return "a series without a name";
  if (core.name.size() > Name::length) return "its name is too long";
  if (has_decimals(core))
    return at_line(core.decades.front().line) +
           ": widths with a decimal point: if all of them are in millimetres choose --unit millimetres";
  for (std::size_t k = 0; k < core.decades.size(); ++k) {
    const DecadeLine& decade = core.decades[k];
    if (k > 0 && decade.year < core.decades[k - 1].next_year())
      return at_line(decade.line) + " goes back to " + std::to_string(decade.year) +
             ", and which of its lines are right is not known";
    if (is_cut_elsewhere(core, k))
      return at_line(decade.line) + ": numbers that touch, in columns of another width: where do they part?";
    for (std::size_t place = 0; place < core.rings_on(k); ++place) {
      const DecadeField& field = decade.fields[place];
      if (field.kind != DecadeField::Kind::bad) continue;
      return at_line(decade.line) + ", column " + std::to_string(field.column) + ": what is its width?";
    }
  }
  if (!core.mark && (!choices_.unit || *choices_.unit == millimetres))
    return "no end mark: choose its unit by --unit";
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

// Words behind the last year that a line has room for.
void RawRepair::leave_out_notes(CoreLines& core) {
  for (DecadeLine& decade : core.decades) {
    const std::size_t fields = decade.fields.size();
    while (decade.fields.size() > room_on(decade) && decade.fields.back().kind == DecadeField::Kind::bad)
      decade.fields.pop_back();
    if (decade.fields.size() < fields)
      made_.done.push_back(at_line(decade.line) + ", what stands behind its last year left out");
  }
}

// Where the user says that widths with a point are millimetres, as thousandths: if each is a whole number of
// them, and a width with a point.
void RawRepair::take_millimetres(CoreLines& core) {
  if (!choices_.unit || *choices_.unit != millimetres || !has_decimals(core)) return;
  CoreLines whole = core;
  for (std::size_t k = 0; k < whole.decades.size(); ++k) {
    for (std::size_t place = 0; place < core.rings_on(k); ++place) {
      DecadeField& field = whole.decades[k].fields[place];
      const double value = field.decimal * thousandths;
      if (field.kind != DecadeField::Kind::decimal || std::abs(value - std::round(value)) > 1e-6 ||
          !(std::abs(value) < 1e6))
        return;
      field.kind = DecadeField::Kind::number;
      field.number = static_cast<std::int32_t>(std::round(value));
    }
    whole.decades[k].in_columns = false;  // so that it is written anew
  }
  core = std::move(whole);
  if (!core.mark) core.mark = core.decades.back().fields.size();
  core.unit = thousandths;
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

void RawRepair::add_core(CoreLines core) {
  leave_out_notes(core);
  take_millimetres(core);
  if (has_several_marks(core)) {
    made_.refused.push_back(core.name + ": which of the end marks on its last line ends it?");
    return;
  }
  if (!all_anew_ && is_as_it_should_be(core)) {
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
void RawRepair::say_what_is_left_out(const OrderedCores& ordered, std::size_t from) {
  std::vector<bool> is_kept(lines_.size() + 1);
  for (const CoreLines& core : ordered.cores) {
    for (const DecadeLine& decade : core.decades) is_kept[static_cast<std::size_t>(decade.line)] = true;
  }
  for (const std::int64_t line : ordered.twice) is_kept[static_cast<std::size_t>(line)] = true;
  for (std::size_t k = from; k < lines_.size(); ++k) {
    if (!is_kept[k + 1]) leave_out(lines_[k], static_cast<std::int64_t>(k) + 1, no_data, made_);
  }
}

Repair RawRepair::run() {
  const OrderedCores ordered = ordered_cores(cores_on(lines_, 0));
  if (ordered.cores.empty()) return {};
  made_.done.insert(made_.done.end(), ordered.done.begin(), ordered.done.end());
  std::int64_t first = ordered.cores.front().decades.front().line;
  for (const DecadeLine& decade : ordered.cores.front().decades) first = std::min(first, decade.line);
  const std::size_t from = static_cast<std::size_t>(first) - 1;
  add_headers(from);
  for (const CoreLines& core : ordered.cores) add_core(core);
  part_what_would_be_one();
  for (const CopiedStretch& copied : copied_) made_.bytes += copied.text;
  say_what_is_left_out(ordered, from);
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

// Nothing where a copy would not be read back as the file stands.
std::optional<Repair> copy_of(const TucsonText& text, const RepairChoices& choices, bool all_anew) {
  RawRepair repair(text, choices, all_anew);
  Repair made = repair.run();
  if (!made.refused.empty() || made.bytes.empty()) {
    made.bytes.clear();
    return made;
  }
  MemoryFiles files;
  files.put(in_memory, made.bytes);
  const Collection copy(files, in_memory, untreated());
  if (is_read_whole(copy) && holds(copy, repair.copied())) return made;
  return std::nullopt;
}

}  // namespace

Repair repaired_widths(std::string_view bytes, const RepairChoices& choices) {
  const std::vector<FileLine> lines = lines_of(bytes);
  const TucsonText text(lines);
  if (auto made = copy_of(text, choices, false)) return *made;
  if (auto made = copy_of(text, choices, true)) return *made;
  return {.refused = {"a copy would not be read back as the file stands"}};
}

}  // namespace vorn
