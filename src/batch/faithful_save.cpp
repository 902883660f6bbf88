#include "batch/faithful_save.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <utility>

#include "batch/difference.h"
#include "batch/reading_check.h"
#include "batch/tucson_text.h"
#include "formats/tucson_raw_layout.h"
#include "records/memory_files.h"
#include "study/ring_alignment.h"
#include "study/tucson_lines.h"

namespace vorn {
namespace {

const std::string in_memory = "what would be written";

constexpr auto start_of_widths = static_cast<std::size_t>(tucson_raw::fields.back().first) - 1;

std::string_view bytes_of_end(LineEnd end) {
  switch (end) {
    case LineEnd::cr_lf:
      return "\r\n";
    case LineEnd::cr_cr_lf:
      return "\r\r\n";
    case LineEnd::cr:
      return "\r";
    case LineEnd::lf:
    case LineEnd::none:
      break;
  }
  return "\n";
}

// A core of the original: its lines, and the digits that stand on them.
struct OriginalCore {
  std::size_t from = 0, to = 0;  // lines, counted from 0; `to` is behind the last
  Stretch stretch = {};
};

// The number that a ring marked as missing is written as: negative, or 0 where the original has no other way
// to say that a ring is absent.
std::int32_t missing_as(std::span<const OriginalCore> cores) {
  std::map<std::int32_t, std::size_t> count;
  bool any_zero = false;
  for (const OriginalCore& core : cores) {
    for (const std::int32_t value : core.stretch.values) {
      if (value < 0) ++count[value];
      any_zero = any_zero || value == 0;
    }
  }
  const auto commonest = std::ranges::max_element(count, {}, [](const auto& one) { return one.second; });
  if (commonest != count.end()) return commonest->first;
  return any_zero ? 0 : tucson_raw::missing_ring;
}

class Saving {
 public:
  Saving(const Collection& original, std::string_view bytes, const Collection& corrected)
      : original_(original),
        corrected_(corrected),
        bytes_(bytes),
        lines_(lines_of(bytes)),
        was_(original),
        is_(corrected) {}

  FaithfulSave run();

 private:
  bool can_begin();
  bool take_originals();
  void plan();
  void plan_change(const SeriesChange& change);
  std::optional<Stretch> corrected_stretch(std::size_t after, const OriginalCore* before);
  std::optional<std::int32_t> value_of(const NamedCore& core, std::size_t ring, const Stretch& stretch);
  void write();
  std::size_t begin_of(std::size_t line) const;
  std::size_t end_of(std::size_t line) const;
  std::size_t length_of_end(std::size_t line) const;
  bool has_more_than_widths(const OriginalCore& core) const;
  void add_lines(std::size_t from, std::size_t to);
  void add_stretch(const Stretch& stretch, LineEnd end, const OriginalCore* before);
  std::optional<std::size_t> same_line(const std::string& line, const OriginalCore& core) const;
  std::size_t common_length(const OriginalCore& core) const;
  void check();
  void refuse(const std::string& words) { made_.refused.push_back(original_.path() + ": " + words); }

  const Collection& original_;
  const Collection& corrected_;
  std::string_view bytes_;
  std::vector<FileLine> lines_;
  ComparableCores was_, is_;
  std::vector<OriginalCore> cores_;
  std::vector<bool> is_gone_;
  std::map<std::size_t, Stretch> anew_;  // by place among the original's cores
  std::vector<Stretch> behind_;          // new cores
  std::vector<Stretch> expected_;
  FaithfulSave made_;
};

bool Saving::can_begin() {
  if (original_.recognition().layout != Layout::tucson_raw || !original_.has_cores()) {
    refuse("no Tucson file of ring widths: only into such a file cores are put back");
    return false;
  }
  if (!is_read_whole(original_)) {
    refuse("is not read whole, see vorn check");
    return false;
  }
  if (corrected_.has_cores() && is_read_whole(corrected_)) return true;
  // A core that is not read is not one that is gone.
  made_.refused.push_back(corrected_.path() + ": its cores are not all read, see vorn check");
  return false;
}

// The cores as they stand in the file. Answers whether they are those that were read.
bool Saving::take_originals() {
  const auto& series = original_.decided().series;
  for (std::size_t k = 0; k < series.size(); ++k) {
    OriginalCore core{static_cast<std::size_t>(series[k].first_line) - 1,
                      static_cast<std::size_t>(series[k].last_line)};
    if (core.from >= core.to || core.to > lines_.size()) return false;
    const auto stands = cores_on(std::span(lines_).first(core.to), core.from);
    if (stands.size() != 1) return false;
    const CoreLines& read = stands.front();
    const std::string_view first_line = lines_[core.from].text;
    core.stretch = {
        std::string(first_line.substr(0, Name::length)), read.decades.front().year, {}, series[k].unit};
    if (core.stretch.first < 0 && core.stretch.name.back() == '-') core.stretch.name.back() = ' ';
    for (std::size_t place = 0; place < read.decades.size(); ++place) {
      for (std::size_t ring = 0; ring < read.rings_on(place); ++ring)
        core.stretch.values.push_back(read.decades[place].fields[ring].number);
    }
    if (!holds_stretch(original_, static_cast<int>(k) + 1, core.stretch)) return false;
    cores_.push_back(std::move(core));
  }
  is_gone_.assign(cores_.size(), false);
  return true;
}

// The width of a ring in the unit of a stretch; nothing where it does not fit, which is said.
std::optional<std::int32_t> Saving::value_of(const NamedCore& core, std::size_t ring,
                                             const Stretch& stretch) {
  if (!core.widths.present[ring]) return missing_as(cores_);
  const double value = core.widths.values[ring] * stretch.unit, whole = std::round(value);
  const std::int64_t year = core.widths.first + static_cast<std::int64_t>(ring);
  if (std::abs(value - whole) < 1e-6 && whole < 1e6) return static_cast<std::int32_t>(whole);
  refuse(std::string(core.name) + ": its ring " + std::to_string(year) + ", " +
         plain_text(number(core.widths.values[ring])) + " mm, does not fit into " +
         (stretch.unit == 1000 ? "thousandths" : "hundredths") + " of a millimetre in six columns");
  return std::nullopt;
}

// A corrected core in the way of the one before, whose digits stay where its rings do.
std::optional<Stretch> Saving::corrected_stretch(std::size_t after, const OriginalCore* before) {
  const NamedCore& core = is_.cores()[after];
  Stretch stretch{std::string(core.name),
                  core.widths.first,
                  {},
                  before ? before->stretch.unit : cores_.back().stretch.unit};
  if (before && without_blanks(before->stretch.name) == core.name) stretch.name = before->stretch.name;
  if (stretch.name.size() > Name::length ||
      (stretch.first < -999 && trimmed(stretch.name).size() > Name::length - 1)) {
    refuse("the name " + stretch.name + " is too long");
    return std::nullopt;
  }
  std::map<std::size_t, std::int32_t> kept;  // by place in the corrected core
  if (before) {
    const NamedCore& old = was_.cores()[static_cast<std::size_t>(before - cores_.data())];
    const auto steps = aligned_rings({old.widths.values, old.widths.present, old.unit},
                                     {core.widths.values, core.widths.present, core.unit},
                                     old.widths.first - core.widths.first);
    for (const RingStep& step : steps.value_or(std::vector<RingStep>())) {
      if (step.kind == RingStep::Kind::kept) kept[step.after] = before->stretch.values[step.before];
    }
  }
  int zeros_for_missing = 0;
  for (std::size_t ring = 0; ring < core.widths.values.size(); ++ring) {
    const auto digits = kept.find(ring);
    const auto value = digits != kept.end() ? digits->second : value_of(core, ring, stretch);
    if (!value) return std::nullopt;
    stretch.values.push_back(*value);
    zeros_for_missing += digits == kept.end() && !core.widths.present[ring] && *value == 0;
  }
  if (zeros_for_missing > 0)
    made_.done.push_back(std::string(core.name) +
                         ": rings marked as missing are written as 0, as absent ones are there");
  return stretch;
}

void Saving::plan_change(const SeriesChange& change) {
  if (!change.after) {
    is_gone_[*change.before] = true;
    return;
  }
  // One of the same name that too little is left of is gone and new at once: it stays in its place.
  std::optional<std::size_t> place = change.before;
  for (std::size_t k = 0; !place && k < cores_.size(); ++k) {
    if (is_gone_[k] && was_.cores()[k].name == is_.cores()[*change.after].name && !anew_.contains(k))
      place = k;
  }
  auto stretch = corrected_stretch(*change.after, place ? &cores_[*place] : nullptr);
  if (!stretch) return;
  if (place) {
    is_gone_[*place] = false;
    anew_[*place] = std::move(*stretch);
  } else {
    behind_.push_back(std::move(*stretch));
  }
}

// Changes come first of cores that were, then of new ones.
void Saving::plan() {
  for (const SeriesChange& change : changes_between(was_.cores(), is_.cores())) plan_change(change);
}

// Where a line begins among the bytes, and where its end ends.
std::size_t Saving::begin_of(std::size_t line) const {
  return static_cast<std::size_t>(lines_[line].text.data() - bytes_.data());
}

std::size_t Saving::end_of(std::size_t line) const {
  return line + 1 < lines_.size() ? begin_of(line + 1)
                                  : begin_of(line) + lines_[line].text.size() + length_of_end(line);
}

std::size_t Saving::length_of_end(std::size_t line) const {
  const LineEnd end = lines_[line].end;
  if (end == LineEnd::none) return 0;
  if (end != LineEnd::cr_cr_lf) return bytes_of_end(end).size();
  const std::size_t at = begin_of(line) + lines_[line].text.size();
  return bytes_.find('\n', at) + 1 - at;
}

// The bytes of some lines, with their ends.
void Saving::add_lines(std::size_t from, std::size_t to) {
  if (from < to) made_.bytes += bytes_.substr(begin_of(from), end_of(to - 1) - begin_of(from));
}

// The line of a core that says the same, in whatever way its digits are written.
std::optional<std::size_t> Saving::same_line(const std::string& line, const OriginalCore& core) const {
  const auto numbers = [](const DecadeField& field) { return field.number; };
  const auto wanted = decade_of(line, 0);
  for (std::size_t k = core.from; wanted && k < core.to; ++k) {
    if (lines_[k].text.substr(0, start_of_widths) != std::string_view(line).substr(0, start_of_widths))
      continue;
    const auto stands = decade_of(lines_[k].text, 0);
    if (stands && std::ranges::equal(stands->fields, wanted->fields, {}, numbers, numbers)) return k;
  }
  return std::nullopt;
}

// How long each line of a core is; 0 where they differ.
std::size_t Saving::common_length(const OriginalCore& core) const {
  const std::size_t length = lines_[core.from].text.size();
  for (std::size_t k = core.from; k < core.to; ++k) {
    if (lines_[k].text.size() != length) return 0;
  }
  return length;
}

// Lines that are as they were stay so, and others are filled up with blanks where all of the core's were.
void Saving::add_stretch(const Stretch& stretch, LineEnd end, const OriginalCore* before) {
  if (!made_.bytes.empty() && made_.bytes.back() != '\n' && made_.bytes.back() != '\r')
    made_.bytes += bytes_of_end(end);
  const std::size_t length = before ? common_length(*before) : 0;
  for (std::string& line : tucson_lines(stretch)) {
    const auto same = before ? same_line(line, *before) : std::nullopt;
    if (same && lines_[*same].end != LineEnd::none) {
      add_lines(*same, *same + 1);
      continue;
    }
    line.resize(std::max(line.size(), length), ' ');
    made_.bytes += line + std::string(bytes_of_end(end));
  }
  expected_.push_back(stretch);
}

// Whether something stands behind the columns of its lines that is written nowhere else.
bool Saving::has_more_than_widths(const OriginalCore& core) const {
  const auto last_column = static_cast<std::size_t>(tucson_raw::fields.back().last);
  return std::any_of(lines_.begin() + static_cast<std::ptrdiff_t>(core.from),
                     lines_.begin() + static_cast<std::ptrdiff_t>(core.to),
                     [&](const FileLine& line) { return trimmed(line.text).size() > last_column; });
}

void Saving::write() {
  std::size_t done = 0;
  const LineEnd end = lines_[cores_.front().from].end;
  for (std::size_t k = 0; k < cores_.size(); ++k) {
    add_lines(done, cores_[k].from);
    done = cores_[k].to;
    const std::string name(without_blanks(cores_[k].stretch.name));
    if (const auto anew = anew_.find(k); anew != anew_.end()) {
      add_stretch(anew->second, end, &cores_[k]);
      made_.done.push_back(
          name + " written anew" +
          (has_more_than_widths(cores_[k]) ? ", without what stood behind its columns" : ""));
    } else if (is_gone_[k]) {
      made_.done.push_back(name + " left out");
    } else {
      add_lines(cores_[k].from, cores_[k].to);
      expected_.push_back(cores_[k].stretch);
    }
  }
  for (const Stretch& stretch : behind_) {
    add_stretch(stretch, end, nullptr);
    made_.done.push_back(std::string(without_blanks(stretch.name)) + " added");
  }
  add_lines(done, lines_.size());
  made_.bytes += bytes_.substr(end_of(lines_.size() - 1));  // Ctrl-Z
  made_.is_changed = true;
}

// Whether what is written is read back.
void Saving::check() {
  MemoryFiles files;
  files.put(in_memory, made_.bytes);
  const Collection back(files, in_memory, untreated());
  bool same = back.words().empty() && static_cast<std::size_t>(back.state().nc) == expected_.size();
  for (std::size_t k = 0; same && k < expected_.size(); ++k)
    same = holds_stretch(back, static_cast<int>(k) + 1, expected_[k]);
  if (same) return;
  refuse(
      "would not be read back as it should: two stretches of one name that are read as one, or a year or a "
      "name that does not fit");
}

FaithfulSave Saving::run() {
  if (!can_begin()) return std::move(made_);
  if (!take_originals()) {
    refuse("its lines are not those of the layout throughout, see vorn check");
    return std::move(made_);
  }
  plan();
  if (made_.refused.empty() && anew_.empty() && behind_.empty() &&
      std::ranges::find(is_gone_, true) == is_gone_.end()) {
    made_.bytes = bytes_;
    return std::move(made_);
  }
  if (made_.refused.empty()) write();
  if (made_.refused.empty()) check();
  if (!made_.refused.empty()) made_.bytes.clear();
  return std::move(made_);
}

}  // namespace

FaithfulSave saved(const Collection& original, std::string_view bytes, const Collection& corrected) {
  return Saving(original, bytes, corrected).run();
}

}  // namespace vorn
