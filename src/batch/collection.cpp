#include "batch/collection.h"

#include <algorithm>
#include <ostream>
#include <system_error>

#include "batch/reading_check.h"
#include "batch/written_tables.h"
#include "chronology/index_pipeline.h"
#include "formats/layouts.h"
#include "import/source_text.h"
#include "plot/plot.h"
#include "records/file_name.h"
#include "records/memory_files.h"
#include "statistics/chronology_entries.h"

namespace vorn {
namespace {

class KeptTroubles : public Troubles {
 public:
  explicit KeptTroubles(std::vector<Trouble>& all) : all_(all) {}
  void tell(const Trouble& trouble) override { all_.push_back(trouble); }

 private:
  std::vector<Trouble>& all_;
};

// Nobody is there to answer: a message is gone on from.
class NobodysScreen : public Screen {
 public:
  void show(const vorn::Page&) override {}
  Event next_event() override { return {0, 0, Event::enter}; }
};

std::string one_line(const Trouble& trouble) {
  std::string text = words_of(trouble);
  if (!trouble.series.empty()) text = trouble.series + ": " + text;
  return (trouble.line > 0 ? ":" + std::to_string(trouble.line) : "") + ": " + text;
}

// Records of a Heidelberg file that hold them.
std::int64_t records_of_pairs(std::string_view bytes) {
  return std::ranges::count_if(lines_of(bytes), [](const FileLine& line) { return says_pairs(line.text); });
}

// Findings of an imported file as words of the collection.
std::vector<std::string> sentences_on(const Imported* imported, const std::string& path, Severity severity) {
  std::vector<std::string> all;
  if (!imported) return all;
  for (const FileFinding& finding : imported->findings) {
    if (severity_of(finding.kind->effect) != severity) continue;
    const std::string line = finding.line > 0 ? ":" + std::to_string(finding.line) : "";
    const std::string series = finding.series.empty() ? "" : finding.series + ": ";
    all.push_back(path + line + ": " + series + finding.words);
  }
  return all;
}

// What is told behind a file that could not be opened follows from that alone.
void keep_what_matters(std::vector<Trouble>& troubles) {
  const auto unopened = std::ranges::find_if(
      troubles, [](const Trouble& trouble) { return trimmed(trouble.label) == "Open" && trouble.status; });
  if (unopened != troubles.end()) troubles.erase(unopened + 1, troubles.end());
}

}  // namespace

// A label is what a message begins with, "Open"; what follows it there is a number.
std::string words_of(const Trouble& trouble) {
  if (!trouble.words.empty()) return trouble.words;
  const std::string label(trimmed(trouble.label));
  if (status::of_system(trouble.status))
    return label + ": " + std::generic_category().message(trouble.status.number());
  if (trouble.status == status::not_a_number) return label + ": a field is no number";
  if (trouble.status == status::number_too_large) return label + ": a number is too large";
  if (trouble.status == status::end_of_file) return label + ": the file ends before its data do";
  if (trouble.status == status::format_unusable) return label + ": the format of its fields is none";
  return label + " fails with status " + std::to_string(trouble.status.number());
}

Status read_whole(Files& files, const std::string& name, std::string& bytes) {
  constexpr std::size_t block_size = std::size_t{1} << 16;
  bytes.clear();
  const auto path = path_of(name);
  if (!path) return status::no_such_file;
  std::unique_ptr<ByteSource> source;
  if (const Status failed = files.open(*path, source)) return failed;
  for (;;) {
    const std::size_t filled = bytes.size();
    bytes.resize(filled + block_size);
    std::size_t count = 0;
    if (const Status failed = source->read(std::span(bytes).subspan(filled), count)) return failed;
    bytes.resize(filled + count);
    if (count == 0) return source->close();
  }
}

bool is_free_for(Files& files, const std::string& name, const std::string& bytes) {
  FileKind kind{};
  if (files.look_at(name, kind)) return false;
  if (kind == FileKind::missing) return true;
  std::string there;
  return kind == FileKind::regular && !read_whole(files, name, there) && there == bytes;
}

struct Collection::Page {
  NobodysScreen screen;
  Plot plot{screen};
  std::ostream nowhere{nullptr};
};

Collection::~Collection() = default;

Collection::Collection(Files& files, const std::string& path, const Settings& settings)
    : path_(path), page_(std::make_unique<Page>()), w_(std::make_unique<Workspace>(page_->plot, files)) {
  if (path_ != "-") name_ = as_utf_8(site_name(path_));
  w_->log = &page_->nowhere;
  static_cast<Settings&>(*w_) = settings;
  w_->nfil = w_->cf = 1;
  w_->cnam(1) = path;
  KeptTroubles troubles(troubles_);
  recognition_ = find_rftyp(files, path, troubles);
  w_->rftype(1) = recognition_.layout;
  w_->rfhead(1) = recognition_.header_lines;
  if (const LayoutRow* row = row_of(recognition_.layout)) {
    read(files, *row, troubles);
  } else {
    keep_what_matters(troubles_);
    import(files);
  }
}

void Collection::read(Files& files, const LayoutRow& row, Troubles& troubles) {
  w_->rawok(1) = true;
  const Reading reading{files, path_, w_->rfhead(1), troubles, w_->careful};
  decided_ = row.read_cores ? row.read_cores(*w_, reading) : row.read_chronology(*w_, 1, reading);
  try {
    if (row.read_cores) data_man2(*w_);
    w_->nraw = row.read_cores ? 1 : 0;
    place_chronologies(*w_, *w_);
  } catch (const ProgramEnd&) {
    is_too_long_ = true;
  }
}

// The end of a file is told as a trouble where the reader waits for a further header.
bool Collection::is_no_loss(const Trouble& trouble) const {
  if (trouble.status != status::end_of_file) return false;
  const std::string all = bytes().value_or("");
  return ends_in_blank_lines({all, recognition_, decided_, {}});
}

// What the reader told of the original says that it is not the program's: the importers tell the rest.
void Collection::import(Files& files) {
  std::string all;
  if (read_whole(files, path_, all)) return;
  imported_ = vorn::imported(all, wishes({}));
  if (!imported_) return;
  troubles_.clear();
  if (imported_->tucson.empty()) return;
  MemoryFiles copy;
  copy.put(path_, imported_->tucson);
  KeptTroubles troubles(troubles_);
  const Recognition recognised = find_rftyp(copy, path_, troubles);
  w_->rftype(1) = recognised.layout;
  w_->rfhead(1) = recognised.header_lines;
  if (const LayoutRow* row = row_of(recognised.layout)) read(copy, *row, troubles);
}

bool is_recognised(Files& files, const std::string& path) {
  std::vector<Trouble> untold;
  KeptTroubles troubles(untold);
  return row_of(find_rftyp(files, path, troubles).layout) != nullptr;
}

std::optional<std::string> Collection::bytes() const {
  std::string all;
  if (read_whole(w_->files, path_, all)) return std::nullopt;
  return all;
}

bool Collection::has_cores() const {
  return w_->nc > 0 && !is_too_long_;
}

bool Collection::was_read() const {
  const Layout layout = w_->rftype(1);
  return holds_ring_widths(layout) ? has_cores() : row_of(layout) != nullptr;
}

std::vector<SeriesView> Collection::cores() const {
  const SeriesStore& w = *w_;
  std::vector<SeriesView> all;
  for (int i = 1; i <= w.nc; ++i) all.push_back({w.fy(i), w.widths(i), w.presence(i)});
  return all;
}

std::vector<std::string> Collection::series() const {
  std::vector<std::string> all;
  for (const SeriesRead& one : decided_.series) all.emplace_back(without_blanks(one.name.view()));
  for (const Trouble& trouble : troubles_) {
    if (!trouble.series.empty()) all.emplace_back(without_blanks(trouble.series));
  }
  return all;
}

std::vector<std::string> Collection::words() const {
  std::vector<std::string> all;
  for (const Trouble& trouble : troubles_) {
    if (!is_no_loss(trouble)) all.push_back(path_ + one_line(trouble));
  }
  if (!row_of(recognition_.layout) && !imported_ && troubles_.empty())
    all.push_back(path_ + ": no layout that is known");
  for (const std::string& lost : sentences_on(imported(), path_, Severity::error)) all.push_back(lost);
  if (recognition_.layout == Layout::heidelberg) {
    if (const std::int64_t pairs = records_of_pairs(bytes().value_or("")); pairs > 0)
      all.push_back(path_ + ": " + std::to_string(pairs) +
                    (pairs == 1 ? " record of pairs of numbers is" : " records of pairs of numbers are") +
                    " read as if all were widths: vorn check --repair writes a copy of the widths");
  }
  for (const FileFinding& unit :
       wrong_units(*this, recognition_.layout == Layout::heidelberg ? bytes().value_or("") : ""))
    all.push_back(path_ + ":" + std::to_string(unit.line) + ": " + unit.series + ": " + unit.words);
  for (const std::string& limit : limits_passed(decided_, path_)) all.push_back(limit);
  if (is_too_long_) all.push_back(path_ + ": its cores span more than 12,000 years");
  return all;
}

ImportWishes Collection::wishes(ImportWishes of_user) const {
  of_user.file = name_;
  return of_user;
}

std::vector<std::string> Collection::doubts(const ImportWishes& of_user) const {
  if ((of_user.unit || of_user.variable != RingVariable::whole) && imported_) {
    const auto as_chosen = vorn::imported(bytes().value_or(""), wishes(of_user));
    return sentences_on(as_chosen ? &*as_chosen : nullptr, path_, Severity::warning);
  }
  return sentences_on(imported(), path_, Severity::warning);
}

std::string recipe_of(const Settings& settings) {
  const std::string spline = settings.splineon ? "spline " + std::to_string(settings.ss) : "no spline";
  const std::string ar = settings.aron ? "ar " + std::to_string(settings.jpr) : "no ar";
  return spline + ", " + ar + (settings.logon ? ", log" : ", no log") +
         (settings.careful.any() ? ", careful " + names_of(settings.careful) : "");
}

}  // namespace vorn
