#include "batch/reading_check.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "formats/heidelberg_layout.h"
#include "import/width_unit.h"
#include "study/file_lines.h"
#include "workspace/capacity.h"

namespace vorn {
namespace {

constexpr std::size_t severity_column = 4;
constexpr std::array<std::string_view, 3> severity_words = {"note", "warning", "error"};

Cell known(std::int64_t place) {
  return place > 0 ? Cell(place) : Cell();
}

}  // namespace

std::vector<std::string_view> check_columns() {
  return {"file", "line", "series", "check", "severity", "from", "to", "value", "message", "column"};
}

Row check_row(const std::string& file, const FileFinding& finding) {
  return {file,
          known(finding.line),
          finding.series.empty() ? Cell() : Cell(finding.series),
          std::string(finding.kind->id),
          std::string(severity_words.at(static_cast<std::size_t>(severity_of(finding.kind->effect)))),
          known(finding.from),
          known(finding.to),
          finding.value,
          finding.words,
          known(finding.column)};
}

namespace {

FileFinding finding_of(const Trouble& trouble) {
  return {.kind = kind("read"),
          .line = trouble.line,
          .column = trouble.column,
          .series = trouble.series,
          .value = std::int64_t{trouble.status.number()},
          .words = words_of(trouble)};
}

// What is known of a collection whose file holds these bytes.
class TakenCollection {
 public:
  TakenCollection(const Collection& collection, std::string_view bytes, int this_year)
      : cores_(collection.cores()), file_{bytes, collection.recognition(), collection.decided(), cores_} {
    file_.this_year = this_year;
    if (collection.recognition().layout == Layout::tucson_index) take_chronology(collection.state());
  }
  const FileTaken& file() const { return file_; }

 private:
  void take_chronology(const FileTable& w) {
    file_.first_year = w.cfy(1);
    for (int k = 1; k <= std::clamp(w.cyr(1), 0, max_years); ++k) {
      indices_.push_back(w.crn(k, 1));
      depths_.push_back(w.num(k, 1));
    }
    file_.indices = indices_;
    file_.depths = depths_;
  }

  std::vector<SeriesView> cores_;
  std::vector<double> indices_;
  std::vector<std::int32_t> depths_;
  FileTaken file_;
};

}  // namespace

namespace {

// Whether importing it once more, with these wishes, finds what was found without any.
bool finds_the_same(const Imported& made, const ImportWishes& wishes) {
  if (wishes.unit || wishes.variable != RingVariable::whole) return false;
  return wishes.this_year <= 0 || std::ranges::none_of(made.series, [&](const ImportedSeries& series) {
           return series.first + std::ssize(series.widths) - 1 > wishes.this_year;
         });
}

void imported_findings(const Collection& collection, const ImportWishes& wishes,
                       const std::function<void(const FileFinding&)>& add) {
  add({.kind = kind("imported"), .words = "the program itself does not read this layout, but a copy of it"});
  if (finds_the_same(*collection.imported(), wishes)) {
    for (const FileFinding& finding : collection.imported()->findings) add(finding);
  } else if (const auto made = imported(collection.bytes().value_or(""), wishes)) {
    for (const FileFinding& finding : made->findings) add(finding);
  }
}

}  // namespace

void check_findings(const Collection& collection, int this_year,
                    const std::function<void(const FileFinding&)>& add, const ImportWishes& wishes) {
  if (collection.imported()) {
    ImportWishes all = collection.wishes(wishes);
    all.this_year = this_year;
    return imported_findings(collection, all, add);
  }
  const auto bytes = collection.bytes();
  for (const Trouble& trouble : collection.troubles()) {
    if (!bytes || !collection.is_no_loss(trouble)) add(finding_of(trouble));
  }
  if (!bytes) return;
  for (const FileFinding& finding : findings_of(collection, *bytes, this_year)) add(finding);
}

void check_rows(const Collection& collection, int this_year, const std::function<void(const Row&)>& add,
                const ImportWishes& wishes) {
  check_findings(
      collection, this_year, [&](const FileFinding& finding) { add(check_row(collection.path(), finding)); },
      wishes);
}

namespace {

// What stands behind the key of the unit in these lines; empty where it does not.
std::string_view unit_among(std::span<const FileLine> lines) {
  constexpr std::string_view key = "Unit";
  for (const FileLine& line : lines) {
    const std::size_t sign = line.text.find('=');
    if (heidelberg::data_key.begins(line.text)) break;
    if (line.text.starts_with(key) && sign != std::string_view::npos) return line.text.substr(sign + 1);
  }
  return {};
}

std::span<const FileLine> lines_of(const SeriesRead& series, std::span<const FileLine> lines) {
  const auto first =
      std::min(static_cast<std::size_t>(std::max<std::int64_t>(series.first_line - 1, 0)), lines.size());
  const auto last =
      std::min(static_cast<std::size_t>(std::max<std::int64_t>(series.last_line, 0)), lines.size());
  return lines.subspan(first, std::max(first, last) - first);
}

}  // namespace

std::vector<FileFinding> wrong_units(const Collection& collection, std::string_view bytes) {
  std::vector<FileFinding> all;
  const auto is_guess = [](const SeriesRead& series) {
    return series.unit_by == UnitBy::mean && series.rings > 0;
  };
  const auto& series = collection.decided().series;
  if (collection.recognition().layout != Layout::heidelberg || std::ranges::none_of(series, is_guess))
    return all;
  const std::vector<FileLine> lines = lines_of(bytes);
  for (const SeriesRead& one : series) {
    const std::string_view words = is_guess(one) ? unit_among(lines_of(one, lines)) : std::string_view();
    const auto said = unit_said(words);
    if (!said || *said == one.unit) continue;
    all.push_back({.kind = kind("wrong-unit"),
                   .line = one.first_line,
                   .from = one.first_line,
                   .to = one.last_line,
                   .series = std::string(without_blanks(one.name.view())),
                   .value = *said,
                   .words = "its widths are in " + std::string(unit_words(*said)) + ", and are read as " +
                            std::string(unit_words(one.unit))});
  }
  return all;
}

std::vector<FileFinding> findings_of(const Collection& collection, std::string_view bytes, int this_year) {
  std::vector<FileFinding> all = file_findings(TakenCollection(collection, bytes, this_year).file());
  for (FileFinding& unit : wrong_units(collection, bytes)) all.push_back(std::move(unit));
  if (collection.is_too_long())
    all.push_back({.kind = kind("too-many-years"), .words = "its cores span more than 12,000 years"});
  return all;
}

bool is_read_whole(const Collection& collection) {
  bool is_whole = collection.was_read();
  check_findings(collection, 0, [&](const FileFinding& finding) {
    is_whole = is_whole && severity_of(finding.kind->effect) != Severity::error;
  });
  return is_whole;
}

Severity severity_of(const Row& row) {
  const auto* word = std::get_if<std::string>(&row.at(severity_column));
  const auto found = std::ranges::find(severity_words, word ? std::string_view(*word) : "note");
  return static_cast<Severity>(found - severity_words.begin());
}

}  // namespace vorn
