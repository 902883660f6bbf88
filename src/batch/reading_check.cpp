#include "batch/reading_check.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "workspace/capacity.h"

namespace vorn {
namespace {

constexpr std::size_t severity_column = 4;
constexpr std::array<std::string_view, 3> severity_words = {"note", "warning", "error"};

Cell known(std::int64_t place) {
  return place > 0 ? Cell(place) : Cell();
}

}  // namespace

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

}  // namespace

void check_rows(const Collection& collection, int this_year, const std::function<void(const Row&)>& add) {
  for (const Trouble& trouble : collection.troubles()) add(check_row(collection.path(), finding_of(trouble)));
  const auto bytes = collection.bytes();
  if (!bytes) return;
  for (const FileFinding& finding : findings_of(collection, *bytes, this_year))
    add(check_row(collection.path(), finding));
}

std::vector<FileFinding> findings_of(const Collection& collection, std::string_view bytes, int this_year) {
  const Workspace& w = collection.state();
  const std::vector<SeriesView> cores = collection.cores();
  FileTaken file{bytes, collection.recognition(), collection.decided(), cores};
  file.this_year = this_year;
  std::vector<double> indices;
  std::vector<std::int32_t> depths;
  if (collection.recognition().layout == Layout::tucson_index) {
    file.first_year = w.cfy(1);
    for (int k = 1; k <= std::clamp(w.cyr(1), 0, max_years); ++k) {
      indices.push_back(w.crn(k, 1));
      depths.push_back(w.num(k, 1));
    }
    file.indices = indices;
    file.depths = depths;
  }
  return file_findings(file);
}

Severity severity_of(const Row& row) {
  const auto* word = std::get_if<std::string>(&row.at(severity_column));
  const auto found = std::ranges::find(severity_words, word ? std::string_view(*word) : "note");
  return static_cast<Severity>(found - severity_words.begin());
}

}  // namespace vorn
