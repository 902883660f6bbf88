#include "batch/faithful_save.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <utility>

#include "batch/difference.h"
#include "batch/faithful_save_layout.h"
#include "batch/held_cores.h"
#include "batch/reading_check.h"
#include "records/memory_files.h"
#include "study/ring_alignment.h"

namespace vorn {
namespace {

const std::string in_memory = "what would be written";
constexpr double thousandths_of_a_mm = 1000;

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

// The lines of a file, to be copied with their ends.
class OriginalBytes {
 public:
  explicit OriginalBytes(std::string_view bytes) : bytes_(bytes), lines_(lines_of(bytes)) {}

  const std::vector<FileLine>& lines() const { return lines_; }
  std::string_view all() const { return bytes_; }
  // Of lines `from` to before `to`, counted from 0.
  std::string_view of(std::size_t from, std::size_t to) const {
    return from < to ? bytes_.substr(begin(from), end(to - 1) - begin(from)) : std::string_view();
  }
  // What stands behind the last line: Ctrl-Z.
  std::string_view behind() const { return lines_.empty() ? bytes_ : bytes_.substr(end(lines_.size() - 1)); }

 private:
  std::size_t begin(std::size_t line) const {
    return static_cast<std::size_t>(lines_[line].text.data() - bytes_.data());
  }
  std::size_t end(std::size_t line) const;

  std::string_view bytes_;
  std::vector<FileLine> lines_;
};

std::size_t OriginalBytes::end(std::size_t line) const {
  if (line + 1 < lines_.size()) return begin(line + 1);
  const std::size_t at = begin(line) + lines_[line].text.size();
  const LineEnd end = lines_[line].end;
  if (end == LineEnd::none) return at;
  return end == LineEnd::cr_cr_lf ? bytes_.find('\n', at) + 1 : at + bytes_of_end(end).size();
}

// A core as it is to be read back: its widths in mm, less than 0 where a ring is marked as missing.
struct ExpectedCore {
  std::string name;
  std::int64_t first = 0;
  std::vector<double> mm = {};
};

ExpectedCore expected(const NamedCore& core) {
  ExpectedCore all{std::string(core.name), core.widths.first};
  for (std::size_t k = 0; k < core.widths.values.size(); ++k)
    all.mm.push_back(core.widths.present[k] ? core.widths.values[k] : -1);
  return all;
}

bool is_read_as(const NamedCore& core, const ExpectedCore& expected) {
  const SeriesView& read = core.widths;
  if (core.name != expected.name || read.values.size() != expected.mm.size()) return false;
  if (read.first != expected.first && !expected.mm.empty()) return false;
  for (std::size_t k = 0; k < expected.mm.size(); ++k) {
    if (read.present[k] ? !(std::abs(read.values[k] - expected.mm[k]) < 1e-9) : !(expected.mm[k] < 0))
      return false;
  }
  return true;
}

// A core that is written anew, and what it should then be read as.
struct CoreAnew {
  SavedCore saved;
  ExpectedCore expected;
};

class Saving {
 public:
  // `was` and `is`: the cores of both, as they are to be compared.
  Saving(const Collection& original, std::string_view bytes, std::vector<NamedCore> was,
         std::vector<NamedCore> is)
      : original_(original), bytes_(bytes), was_(std::move(was)), is_(std::move(is)) {}

  // Rounds what changed to thousandths.
  void round() { is_rounded_ = true; }
  // Why nothing may be written, whatever it is.
  void distrust(const std::string& words) { distrust_ = words; }
  FaithfulSave run();

 private:
  void begin(std::span<const SeriesChange> changes);
  void refuse_what_was_not_read();
  void find_missing();
  void plan_change(const SeriesChange& change);
  std::optional<std::size_t> place_of(const SeriesChange& change) const;
  void plan_changed(std::size_t place, const NamedCore& core);
  void plan_new(const NamedCore& core);
  bool fits(const NamedCore& core, const StandingCore& manner) const;
  void find_manners();
  double width_of(const NamedCore& core, std::size_t ring) const;
  std::map<std::size_t, std::size_t> kept_rings(const NamedCore& was, const NamedCore& is) const;
  bool add_ring(const NamedCore& core, std::size_t ring, CoreAnew& anew);
  std::optional<CoreAnew> anew(const NamedCore& core, const StandingCore& manner, const NamedCore* before);
  void write();
  void write_lines(const CoreAnew& core);
  bool has_more_than_widths(const StandingCore& core) const;
  void check();
  void refuse_lines_of(std::string_view name) {
    refuse(std::string(name) + ": its lines are not those of the layout throughout, see vorn check");
  }
  void refuse(const std::string& words) { made_.refused.push_back(original_.path() + ": " + words); }

  const Collection& original_;
  const OriginalBytes bytes_;
  const std::vector<NamedCore> was_, is_;
  bool is_rounded_ = false;
  std::string distrust_;
  std::unique_ptr<FaithfulLayout> layout_;
  std::vector<std::optional<StandingCore>> cores_;
  std::vector<StandingCore> manners_;   // in which a new core may be written, the best first
  std::optional<std::string> missing_;  // how the file writes a ring that is
  std::vector<bool> is_gone_;
  std::map<std::size_t, CoreAnew> anew_;  // by place among the original's cores
  std::vector<CoreAnew> behind_;          // new cores
  std::vector<ExpectedCore> expected_;
  FaithfulSave made_;
};

// --- What stands there

// An error about nothing but a core that stays as it is stays with it.
void Saving::refuse_what_was_not_read() {
  const auto& series = original_.decided().series;
  const auto is_about_what_stays = [&](const Row& row) {
    const auto* line = std::get_if<std::int64_t>(&row.at(1));
    const auto behind = std::ranges::upper_bound(series, line ? *line : 0, {}, &SeriesRead::first_line);
    if (behind == series.begin() || *line > (behind - 1)->last_line) return false;
    const auto k = static_cast<std::size_t>(behind - series.begin()) - 1;
    return !is_gone_[k] && !anew_.contains(k);
  };
  bool is_whole = true;
  check_rows(original_, 0, [&](const Row& row) {
    is_whole = is_whole && (severity_of(row) != Severity::error || is_about_what_stays(row));
  });
  if (!is_whole) refuse("is not read whole, see vorn check");
}

// A ring marked as missing is negative, or 0 where the original has no other way to say that one is absent.
void Saving::find_missing() {
  std::map<std::string_view, std::size_t> count;
  bool any_zero = false;
  for (std::size_t k = 0; k < cores_.size(); ++k) {
    for (std::size_t ring = 0; cores_[k] && ring < cores_[k]->fields.size(); ++ring) {
      const bool is_present = was_[k].widths.present[ring];
      if (!is_present) ++count[without_blanks(cores_[k]->fields[ring])];
      any_zero = any_zero || (is_present && was_[k].widths.values[ring] == 0);
    }
  }
  const auto commonest = std::ranges::max_element(count, {}, [](const auto& one) { return one.second; });
  if (commonest != count.end())
    missing_ = std::string(commonest->first);
  else if (any_zero)
    missing_ = "0";
}

// --- What is to stand there

double Saving::width_of(const NamedCore& core, std::size_t ring) const {
  const double mm = core.widths.values[ring];
  return is_rounded_ ? std::round(mm * thousandths_of_a_mm) / thousandths_of_a_mm : mm;
}

// By place in the corrected core, the rings that are as they were.
std::map<std::size_t, std::size_t> Saving::kept_rings(const NamedCore& was, const NamedCore& is) const {
  std::map<std::size_t, std::size_t> kept;
  const auto steps =
      aligned_rings({was.widths.values, was.widths.present, was.unit},
                    {is.widths.values, is.widths.present, is.unit}, was.widths.first - is.widths.first);
  for (const RingStep& step : steps.value_or(std::vector<RingStep>())) {
    if (step.kind == RingStep::Kind::kept) kept[step.after] = step.before;
  }
  return kept;
}

// A ring that is not as it was, in digits. Answers whether it fits, and says why not.
bool Saving::add_ring(const NamedCore& core, std::size_t ring, CoreAnew& anew) {
  const StandingCore& manner = anew.saved.manner;
  if (!core.widths.present[ring]) {
    const bool has_room = missing_ && missing_->size() <= layout_->width(manner);
    const std::string digits = has_room ? *missing_ : layout_->missing_ring(manner);
    anew.saved.rings.push_back({std::nullopt, digits});
    anew.expected.mm.push_back(digits == "0" ? 0 : -1);
    return true;
  }
  const double mm = width_of(core, ring);
  const auto digits = layout_->digits(mm, manner);
  if (!digits) {
    refuse(std::string(core.name) + ": its ring " +
           std::to_string(core.widths.first + static_cast<std::int64_t>(ring)) + ", " +
           plain_text(number(mm)) + " mm, does not fit into " +
           (manner.unit == 1000  ? "thousandths"
            : manner.unit == 100 ? "hundredths"
                                 : "the unit of its core, parts") +
           " of a millimetre in " + std::to_string(layout_->width(manner)) + " columns");
    return false;
  }
  anew.saved.rings.push_back({std::nullopt, *digits});
  anew.expected.mm.push_back(mm);
  return true;
}

std::optional<CoreAnew> Saving::anew(const NamedCore& core, const StandingCore& manner,
                                     const NamedCore* before) {
  CoreAnew all{{manner, before == nullptr, std::string(core.name), core.widths.first},
               {std::string(core.name), core.widths.first}};
  std::map<std::size_t, std::size_t> kept;
  if (before) kept = kept_rings(*before, core);
  bool any_zero_for_missing = false;
  for (std::size_t ring = 0; ring < core.widths.values.size(); ++ring) {
    if (const auto stays = kept.find(ring); stays != kept.end()) {
      all.saved.rings.push_back({stays->second, {}});
      const SeriesView& was = before->widths;
      all.expected.mm.push_back(was.present[stays->second] ? was.values[stays->second] : -1);
      continue;
    }
    if (!add_ring(core, ring, all)) return std::nullopt;
    any_zero_for_missing =
        any_zero_for_missing || (!core.widths.present[ring] && all.expected.mm.back() == 0);
  }
  if (const std::string words = layout_->why_not(all.saved); !words.empty()) {
    refuse(words);
    return std::nullopt;
  }
  if (any_zero_for_missing)
    made_.done.push_back(std::string(core.name) +
                         ": rings marked as missing are written as 0, as absent ones are there");
  return all;
}

// One of the same name that too little is left of is gone and new at once: it stays in its place.
std::optional<std::size_t> Saving::place_of(const SeriesChange& change) const {
  if (change.before) return change.before;
  for (std::size_t k = 0; k < cores_.size(); ++k) {
    if (is_gone_[k] && was_[k].name == is_[*change.after].name && !anew_.contains(k)) return k;
  }
  return std::nullopt;
}

void Saving::plan_changed(std::size_t place, const NamedCore& core) {
  is_gone_[place] = false;
  if (!cores_[place]) return refuse_lines_of(was_[place].name);
  if (auto core_anew = anew(core, *cores_[place], &was_[place])) anew_.emplace(place, std::move(*core_anew));
}

bool Saving::fits(const NamedCore& core, const StandingCore& manner) const {
  for (std::size_t ring = 0; ring < core.widths.values.size(); ++ring) {
    if (core.widths.present[ring] && !layout_->digits(width_of(core, ring), manner)) return false;
  }
  return true;
}

// The last core of each unit, the last of all first; behind them one in thousandths, where that may be.
void Saving::find_manners() {
  for (std::size_t k = cores_.size(); k-- > 0;) {
    const auto has_unit = [&](const StandingCore& core) { return cores_[k] && core.unit == cores_[k]->unit; };
    if (cores_[k] && std::ranges::none_of(manners_, has_unit)) manners_.push_back(*cores_[k]);
  }
  const auto is_thousandths = [](const StandingCore& core) { return core.unit == thousandths_of_a_mm; };
  if (manners_.empty() || !layout_->has_unit_of_its_own() || std::ranges::any_of(manners_, is_thousandths))
    return;
  manners_.push_back(manners_.front());
  manners_.back().unit = thousandths_of_a_mm;
  manners_.back().decimals = 0;
}

void Saving::plan_new(const NamedCore& core) {
  if (manners_.empty()) return refuse("its lines are not those of the layout throughout, see vorn check");
  const auto manner = std::ranges::find_if(manners_, [&](const auto& one) { return fits(core, one); });
  auto core_anew = anew(core, manner == manners_.end() ? manners_.front() : *manner, nullptr);
  if (core_anew) behind_.push_back(std::move(*core_anew));
}

void Saving::plan_change(const SeriesChange& change) {
  if (!change.after) {
    is_gone_[*change.before] = true;
  } else if (const auto place = place_of(change)) {
    plan_changed(*place, is_[*change.after]);
  } else {
    plan_new(is_[*change.after]);
  }
}

// Changes come first of cores that were, then of new ones.
void Saving::begin(std::span<const SeriesChange> changes) {
  if (!distrust_.empty()) made_.refused.push_back(distrust_);
  for (std::size_t k = 0; k < was_.size(); ++k) cores_.push_back(layout_->standing(k));
  is_gone_.assign(cores_.size(), false);
  find_missing();
  find_manners();
  for (const SeriesChange& change : changes) plan_change(change);
  for (std::size_t k = 0; k < cores_.size(); ++k) {
    if (is_gone_[k] && !cores_[k]) refuse_lines_of(was_[k].name);
  }
  refuse_what_was_not_read();
}

// --- Writing

// Whether something stands behind the columns of its lines that is written nowhere else.
bool Saving::has_more_than_widths(const StandingCore& core) const {
  const std::size_t last_column = layout_->last_column(core);
  return std::ranges::any_of(std::span(bytes_.lines()).subspan(core.values_from, core.to - core.values_from),
                             [&](const FileLine& line) { return trimmed(line.text).size() > last_column; });
}

void Saving::write_lines(const CoreAnew& core) {
  const LineEnd end = bytes_.lines()[core.saved.manner.from].end;
  if (!made_.bytes.empty() && made_.bytes.back() != '\n' && made_.bytes.back() != '\r')
    made_.bytes += bytes_of_end(end);
  for (const SavedLine& line : layout_->lines(core.saved)) {
    if (line.same && bytes_.lines()[*line.same].end != LineEnd::none)
      made_.bytes += bytes_.of(*line.same, *line.same + 1);
    else
      made_.bytes += (line.same ? std::string(bytes_.lines()[*line.same].text) : line.text) +
                     std::string(bytes_of_end(end));
  }
  expected_.push_back(core.expected);
}

void Saving::write() {
  std::size_t done = 0;
  for (std::size_t k = 0; k < cores_.size(); ++k) {
    const std::string name(was_[k].name);
    const auto anew = anew_.find(k);
    if (anew == anew_.end() && !is_gone_[k]) {
      expected_.push_back(expected(was_[k]));
      continue;
    }
    made_.bytes += bytes_.of(done, cores_[k]->from);
    done = cores_[k]->to;
    if (is_gone_[k]) {
      made_.done.push_back(name + " left out");
      continue;
    }
    write_lines(anew->second);
    made_.done.push_back(name + " written anew" +
                         (has_more_than_widths(*cores_[k]) ? ", without what stood behind its columns" : ""));
  }
  if (!behind_.empty()) {
    const auto end = static_cast<std::size_t>(original_.decided().series.back().last_line);
    made_.bytes += bytes_.of(done, end);
    done = std::max(done, end);
  }
  for (const CoreAnew& core : behind_) {
    write_lines(core);
    made_.done.push_back(core.expected.name + " added");
  }
  if (done == bytes_.lines().size() && bytes_.lines().back().end == LineEnd::none)
    made_.bytes.resize(made_.bytes.find_last_not_of("\r\n") + 1);
  made_.bytes += std::string(bytes_.of(done, bytes_.lines().size())) + std::string(bytes_.behind());
  made_.is_changed = true;
}

// Whether what is written is read back.
void Saving::check() {
  MemoryFiles files;
  files.put(in_memory, made_.bytes);
  const Collection back(files, in_memory, untreated());
  const ComparableCores cores(back);
  const bool same = back.recognition().layout == original_.recognition().layout &&
                    back.words().size() == original_.words().size() &&
                    std::ranges::equal(cores.cores(), expected_, is_read_as);
  if (same) return;
  refuse(
      "would not be read back as it should: two stretches of one name that are read as one, a year or a "
      "name that does not fit, or a unit that is known by the size of the values alone");
}

FaithfulSave Saving::run() {
  layout_ = faithful_layout(original_, bytes_.lines());
  if (!layout_ || was_.empty()) {
    refuse("no file of ring widths: only into such a file cores are put back");
    return std::move(made_);
  }
  const std::vector<SeriesChange> changes = changes_between(was_, is_);
  if (changes.empty() && distrust_.empty()) {
    made_.bytes = bytes_.all();
    return std::move(made_);
  }
  begin(changes);
  if (made_.refused.empty()) write();
  if (made_.refused.empty()) check();
  if (!made_.refused.empty()) made_.bytes.clear();
  return std::move(made_);
}

std::vector<NamedCore> copied(std::span<const NamedCore> cores) {
  return {cores.begin(), cores.end()};
}

}  // namespace

std::unique_ptr<FaithfulLayout> faithful_layout(const Collection& file, std::span<const FileLine> lines) {
  switch (file.recognition().layout) {
    case Layout::tucson_raw:
      return faithful_tucson(file, lines);
    case Layout::heidelberg:
      return faithful_heidelberg(file, lines);
    case Layout::compact:
      return faithful_compact(file, lines);
    default:
      return nullptr;
  }
}

FaithfulSave saved(const Collection& original, std::string_view bytes, const Collection& corrected) {
  const ComparableCores was(original), is(corrected);
  Saving saving(original, bytes, copied(was.cores()), copied(is.cores()));
  // A core that is not read is neither gone nor as it was.
  if (!is_read_whole(corrected) && corrected.bytes() != bytes)
    saving.distrust(corrected.path() + ": its cores are not all read, see vorn check");
  return saving.run();
}

FaithfulSave saved(const Collection& original, std::string_view bytes, std::span<const NamedCore> cores) {
  if (cores.empty()) return {.refused = {original.path() + ": there are no cores to put back"}};
  const ComparableCores was(original);
  Saving saving(original, bytes, compared_exactly(was.cores()), compared_exactly(cores));
  saving.round();
  return saving.run();
}

}  // namespace vorn
