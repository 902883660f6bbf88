#include "batch/conversion.h"

#include <algorithm>
#include <array>
#include <deque>
#include <map>

#include "base/loud_failure.h"
#include "batch/difference.h"
#include "batch/written_tables.h"
#include "formats/compact.h"
#include "formats/layouts.h"
#include "import/source_text.h"
#include "records/memory_files.h"
#include "records/text_file.h"

namespace vorn {
namespace {

std::string as_commas(std::string_view, std::span<const NamedCore> cores) {
  return comma_table(cores);
}

std::string as_template(std::string_view site, std::span<const NamedCore> cores) {
  return template_text(site, cores);
}

std::string as_workbook(std::string_view, std::span<const NamedCore> cores) {
  return workbook_of(cores);
}

constexpr std::array targets = {
    TargetLayout{"tucson", Layout::tucson_raw},         TargetLayout{"heidelberg", Layout::heidelberg},
    TargetLayout{"compact", Layout::compact},           TargetLayout{.name = "csv", .write = as_commas},
    TargetLayout{.name = "noaa", .write = as_template}, TargetLayout{.name = "xlsx", .write = as_workbook}};

const std::string in_memory = "what would be written";

// Memory takes whatever is written.
class NoTroubles : public Troubles {
 public:
  void tell(const Trouble& trouble) override { VORN_ASSERT(trouble.status == status::ok); }
};

void write_cores(const Workspace& w, Layout layout, MemoryFiles& files) {
  NoTroubles none;
  TextOutput out;
  told(none, in_memory, out.create(files, in_memory), "Open");
  Careful careful = w.careful;
  careful.set(Mend::heidelberg_names, true);
  const Writing writing{in_memory, out, none, careful};
  const LayoutRow* row = row_of(layout);
  VORN_ASSERT(row && row->write_core);
  for (int i = 1; i <= w.nc; ++i) row->write_core(w, writing, i);
  told(none, in_memory, out.close(), "Close");
}

// --- What would not come back

std::string width_words(const std::optional<double>& width) {
  return width ? plain_text(number(*width)) + " mm" : "missing";
}

std::string ring_words(const RingChange& ring) {
  const std::string year = std::to_string(ring.year);
  switch (ring.kind) {
    case RingChange::Kind::inserted:
      return "there would be a ring " + year + " that is none";
    case RingChange::Kind::deleted:
      return "its ring " + year + " would be lost";
    case RingChange::Kind::changed:
      return "its ring " + year + ", " + width_words(ring.before) + ", would be " + width_words(ring.after);
  }
  return {};
}

std::string change_words(const SeriesChange& change, std::span<const NamedCore> cores,
                         std::span<const NamedCore> back) {
  if (!change.before)
    return "there would be a core " + std::string(back[*change.after].name) + " that is none";
  const std::string name(cores[*change.before].name);
  if (!change.after) return name + " would be lost";
  if (change.renamed) return name + " would be called " + std::string(back[*change.after].name);
  if (const auto& moved = change.redated)
    return name + ": its ring " + std::to_string(moved->before) + " would be dated " +
           std::to_string(moved->after);
  const std::size_t more = change.rings.size() - 1;
  return name + ": " + ring_words(change.rings.front()) +
         (more > 0 ? ", and " + std::to_string(more) + " more" : "");
}

// As written, so that no width counts as the same because it was read in hundredths.
std::vector<NamedCore> in_thousandths(const ComparableCores& read) {
  std::vector<NamedCore> cores(read.cores().begin(), read.cores().end());
  for (NamedCore& core : cores) core.unit = 1000;
  return cores;
}

// As the file written has them, not as its copy does.
std::vector<NamedCore> as_written(const Collection& written, const ComparableCores& back) {
  std::vector<NamedCore> cores(back.cores().begin(), back.cores().end());
  const Imported* imported = written.imported();
  for (std::size_t k = 0; imported && k < std::min(cores.size(), imported->series.size()); ++k)
    cores[k].name = imported->series[k].name;
  return cores;
}

// With their names in UTF-8, which live in `names`.
std::vector<NamedCore> named_in_utf_8(const ComparableCores& read, std::deque<std::string>& names) {
  std::vector<NamedCore> cores = in_thousandths(read);
  for (NamedCore& core : cores) core.name = names.emplace_back(as_utf_8(core.name));
  return cores;
}

void tell_names(const Collection& collection, Conversion& made) {
  const ComparableCores read(collection);
  for (const NamedCore& core : read.cores()) {
    if (!is_utf_8(core.name))
      made.lost.push_back(collection.path() + ": " + as_utf_8(core.name) +
                          ": its name is no UTF-8, and is read as Windows has it (1252)");
  }
}

Sentences not_read_back(const Collection& collection, const TargetLayout& target, MemoryFiles& files) {
  const Collection written(files, in_memory, untreated());
  if (written.imported() && written.imported()->layout == OtherLayout::refused)
    return {collection.path() +
            ": what would be written cannot be read back, and so not be held against the file: "
            "this edition of the program cannot read workbooks"};
  if (written.recognition().layout != target.layout || !written.has_cores())
    return {collection.path() + ": the layout would not be recognised by the first core, " +
            plain_name(collection.state(), 1)};
  const ComparableCores read(collection), again(written);
  std::deque<std::string> names;
  const std::vector<NamedCore> cores = target.write ? named_in_utf_8(read, names) : in_thousandths(read),
                               back = as_written(written, again);
  Sentences all;
  for (const SeriesChange& change : changes_between(cores, back))
    all.push_back(collection.path() + ": " + change_words(change, cores, back));
  if (all.empty()) {
    for (const std::string& words : written.words()) all.push_back(collection.path() + ": " + words);
  }
  return all;
}

Sentences too_wide(const Collection& collection) {
  const Workspace& w = collection.state();
  Sentences all;
  for (int i = 1; i <= w.nc; ++i) {
    if (!fits_compact(w, w.careful, i))
      all.push_back(collection.path() + ": " + plain_name(w, i) + ": widths of 10 mm or more do not fit");
  }
  return all;
}

// --- What the new file has not

// Lines of a file, by why they were not taken.
struct Lines {
  std::string_view words;  // none where other words tell of them
  bool hold_rings = false;
};

Lines lines_by(NotTaken why) {
  switch (why) {
    case NotTaken::header:
      return {" before the data"};
    case NotTaken::unknown_key:
      return {" with keywords that the program does not know"};
    case NotTaken::no_end_mark:
      return {" of series without an end mark", true};
    case NotTaken::no_name:
      return {" without a name", true};
    case NotTaken::no_decade:
      return {" of statistics"};
    case NotTaken::cut_header:
      return {" of a header without data", true};
    case NotTaken::behind_end:
    case NotTaken::long_header:
    case NotTaken::no_room:
    case NotTaken::series_limit:
    case NotTaken::year_limit:
      break;
  }
  return {};
}

void count_lines(const Collection& collection, Conversion& made) {
  std::map<NotTaken, std::int64_t> count;
  for (const LinesNotTaken& lines : collection.decided().not_taken) {
    if (lines.why == NotTaken::behind_end)
      made.not_read.push_back(collection.path() + ":" + std::to_string(lines.first) +
                              ": what follows is not read");
    if (!lines_by(lines.why).words.empty()) count[lines.why] += lines.last - lines.first + 1;
  }
  for (const auto& [why, number] : count) {
    const Lines lines = lines_by(why);
    (lines.hold_rings ? made.not_read : made.lost)
        .push_back(collection.path() + ": " + std::to_string(number) + (number == 1 ? " line" : " lines") +
                   std::string(lines.words) + (number == 1 ? " is" : " are") + " not " +
                   (lines.hold_rings ? "read" : "kept"));
  }
}

void find_lost(const Collection& collection, Conversion& made) {
  made.not_read = collection.words();
  count_lines(collection, made);
  for (const SeriesRead& series : collection.decided().series) {
    if (series.unit > 1000)
      made.lost.push_back(collection.path() + ": " + std::string(series.name.trimmed()) +
                          ": its widths are rounded to thousandths of a millimetre");
  }
}

}  // namespace

std::span<const TargetLayout> target_layouts() {
  return targets;
}

const TargetLayout* target_named(std::string_view name) {
  const auto* const found = std::ranges::find(targets, name, &TargetLayout::name);
  return found == targets.end() ? nullptr : found;
}

Conversion converted(const Collection& collection, const TargetLayout& target) {
  Conversion made;
  find_lost(collection, made);
  if (!collection.has_cores()) made.refused.push_back(collection.path() + ": no ring widths to write");
  if (target.layout == Layout::compact && made.refused.empty()) made.refused = too_wide(collection);
  if (!made.refused.empty()) return made;
  MemoryFiles files;
  if (target.write) {
    const ComparableCores read(collection);
    std::deque<std::string> names;
    files.put(in_memory, target.write(as_utf_8(site_name(collection.path())), named_in_utf_8(read, names)));
    tell_names(collection, made);
  } else {
    write_cores(collection.state(), target.layout, files);
  }
  made.refused = not_read_back(collection, target, files);
  if (!made.refused.empty()) return made;
  made.bytes = files.contents(in_memory).value();
  return made;
}

}  // namespace vorn
