// For tests: what the program reads of a copy.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "formats/layouts.h"
#include "formats/recognition.h"
#include "formats/tucson_raw.h"
#include "import/imported.h"
#include "records/memory_files.h"
#include "workspace/series_store.h"

namespace vorn {

class KeptWords : public Troubles {
 public:
  void tell(const Trouble& trouble) override { all += trouble.label + trouble.words + "; "; }
  std::string all;
};

// What is not in the copy as it is in the series; empty where all is, with names, years, rings and widths to
// within half of the copy's unit.
inline std::string lost_in_copy(const Imported& one) {
  MemoryFiles files;
  files.put("copy.rwl", one.tucson);
  KeptWords told;
  const Recognition found = find_rftyp(files, "copy.rwl", told);
  if (found.layout != Layout::tucson_raw) return "the copy is not recognised as Tucson ring widths";
  if (found.header_lines != 0) return "lines of the copy are taken for header lines";
  // Millions of copies are read in one run: what a store held is gone where others are read into it.
  static const auto store = std::make_unique<SeriesStore>();
  SeriesStore& w = *store;
  const ReadDecisions decided = read_raw(w, {files, "copy.rwl", 0, told});
  if (!told.all.empty()) return "told: " + told.all;
  if (w.nc != static_cast<int>(one.series.size()))
    return std::to_string(w.nc) + " series are read of " + std::to_string(one.series.size());
  for (int i = 1; i <= w.nc; ++i) {
    const ImportedSeries& series = one.series[static_cast<std::size_t>(i) - 1];
    std::string name(trimmed(w.nam(i).view()));
    // The sign of a year before -999 stays in the name, unless later lines follow.
    if (series.first < -999 && name.ends_with('-')) name.pop_back();
    name = name.substr(0, name.find_last_not_of(' ') + 1);
    if (name != series.taken_as) return "\"" + name + "\" is read for \"" + series.taken_as + "\"";
    if (w.fy(i) != series.first) return name + " begins in " + std::to_string(w.fy(i));
    if (static_cast<std::size_t>(w.yr(i)) != series.widths.size()) return name + " has another length";
    if (decided.series[static_cast<std::size_t>(i) - 1].unit != series.unit)
      return name + " has another unit";
    for (std::size_t k = 0; k < series.widths.size(); ++k) {
      const bool present = w.presence(i)[k];
      if (present != (series.presence[k] != 0)) return name + " has a ring too many or too few";
      const double off = present ? w.widths(i)[k] - series.widths[k] : 0;
      if (!(off <= 0.5 / series.unit + 1e-9 && off >= -0.5 / series.unit - 1e-9))
        return name + " has another width";
    }
  }
  return "";
}

// The ids of findings that are warnings or errors, each with its line, "no-number:3 year-twice:7".
inline std::string doubts(const Imported& one) {
  std::string all;
  for (const FileFinding& finding : one.findings) {
    if (severity_of(finding.kind->effect) == Severity::note) continue;
    all += (all.empty() ? "" : " ") + std::string(finding.kind->id) +
           (finding.line > 0 ? ":" + std::to_string(finding.line) : "");
  }
  return all;
}

// The same of notes.
inline std::string notes(const Imported& one) {
  std::string all;
  for (const FileFinding& finding : one.findings) {
    if (severity_of(finding.kind->effect) != Severity::note) continue;
    all += (all.empty() ? "" : " ") + std::string(finding.kind->id);
  }
  return all;
}

// "A 1900: 1 1.5 - 0.8", a line a series; "-" where there is no ring.
inline std::string shown(const Imported& one) {
  std::string all;
  for (const ImportedSeries& series : one.series) {
    all += series.taken_as + " " + std::to_string(series.first) + ":";
    for (std::size_t k = 0; k < series.widths.size(); ++k) {
      char text[32];
      std::snprintf(text, sizeof text, " %g", series.widths[k]);
      all += series.presence[k] ? text : " -";
    }
    all += "\n";
  }
  return all;
}

}  // namespace vorn
