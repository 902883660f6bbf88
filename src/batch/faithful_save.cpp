#include "batch/faithful_save.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "batch/difference.h"
#include "batch/faithful_save_layout.h"
#include "batch/faithful_save_lines.h"
#include "batch/faithful_save_plan.h"
#include "batch/held_cores.h"
#include "batch/reading_check.h"
#include "records/memory_files.h"

namespace vorn {
namespace {

const std::string in_memory = "what would be written";

// What is compared, and how.
struct Compared {
  std::vector<NamedCore> was, is;
  bool is_rounded = false;    // what changed is rounded to thousandths
  std::string distrust = {};  // why nothing may be written, whatever it is
};

class Saving {
 public:
  Saving(const Collection& original, std::string_view bytes, const Compared& compared)
      : original_(original),
        bytes_(bytes),
        compared_(compared),
        layout_(faithful_layout(original, bytes_.lines())) {}

  FaithfulSave run();

 private:
  void write(const SavePlan& plan);
  void write_core(const SavePlan& plan, std::size_t k);
  void write_behind(const SavePlan& plan);
  void write_lines(const CoreAnew& core);
  void copy_up_to(std::size_t line);
  bool has_more_than_widths(const StandingCore& core) const;
  void check();
  void refuse(const std::string& words) { made_.refused.push_back(original_.path() + ": " + words); }

  const Collection& original_;
  const OriginalBytes bytes_;
  const Compared& compared_;
  const std::unique_ptr<FaithfulLayout> layout_;
  std::size_t copied_ = 0;  // so many lines of the original are done with
  std::vector<ExpectedCore> expected_;
  FaithfulSave made_;
};

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

void Saving::copy_up_to(std::size_t line) {
  const std::size_t end = std::min(line, bytes_.lines().size());
  made_.bytes += bytes_.of(copied_, end);
  copied_ = std::max(copied_, end);
}

// One that stays is copied with what comes behind it.
void Saving::write_core(const SavePlan& plan, std::size_t k) {
  const NamedCore& was = compared_.was[k];
  const CoreAnew* anew = plan.anew(k);
  if (!anew && !plan.is_gone(k)) return expected_.push_back(expected(was));
  const StandingCore& standing = *plan.standing(k);
  copy_up_to(standing.from);
  copied_ = standing.to;
  if (!anew) return made_.done.push_back(std::string(was.name) + " left out");
  write_lines(*anew);
  made_.done.push_back(std::string(was.name) + " written anew" +
                       (has_more_than_widths(standing) ? ", without what stood behind its columns" : ""));
}

void Saving::write_behind(const SavePlan& plan) {
  if (plan.behind().empty()) return;
  copy_up_to(static_cast<std::size_t>(original_.decided().series.back().last_line));
  for (const CoreAnew& core : plan.behind()) {
    write_lines(core);
    made_.done.push_back(core.expected.name + " added");
  }
}

void Saving::write(const SavePlan& plan) {
  made_.done = plan.done();
  for (std::size_t k = 0; k < compared_.was.size(); ++k) write_core(plan, k);
  write_behind(plan);
  // A last line without an end is followed by one without.
  if (copied_ == bytes_.lines().size() && bytes_.lines().back().end == LineEnd::none)
    made_.bytes.resize(made_.bytes.find_last_not_of("\r\n") + 1);
  copy_up_to(bytes_.lines().size());
  made_.bytes += bytes_.behind();
  made_.is_changed = true;
}

// Whether what is written is read back.
void Saving::check() {
  MemoryFiles files;
  files.put(in_memory, made_.bytes);
  const Collection back(files, in_memory, untreated(original_.decided().careful));
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
  if (!layout_ || compared_.was.empty()) {
    refuse(
        "cores are put back only into ring widths in a layout of the program; tables are written by vorn "
        "convert");
    return std::move(made_);
  }
  if (!compared_.distrust.empty()) return {.refused = {compared_.distrust}};
  const std::vector<SeriesChange> changes = changes_between(compared_.was, compared_.is);
  if (changes.empty()) {
    made_.bytes = bytes_.all();
    return std::move(made_);
  }
  SavePlan plan(original_, *layout_, compared_.was, compared_.is, compared_.is_rounded);
  plan.take(changes);
  made_.refused = plan.refused();
  if (made_.refused.empty()) write(plan);
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
  Compared compared{copied(was.cores()), copied(is.cores())};
  // A core that is not read is neither gone nor as it was.
  if (!is_read_whole(corrected) && corrected.bytes() != bytes)
    compared.distrust = corrected.path() + ": its cores are not all read, see vorn check";
  return Saving(original, bytes, compared).run();
}

FaithfulSave saved(const Collection& original, std::string_view bytes, std::span<const NamedCore> cores) {
  if (cores.empty()) return {.refused = {original.path() + ": there are no cores to put back"}};
  const ComparableCores was(original);
  const Compared compared{compared_exactly(was.cores()), compared_exactly(cores), true};
  return Saving(original, bytes, compared).run();
}

}  // namespace vorn
