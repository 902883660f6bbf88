#include "batch/folder_look.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <functional>
#include <utility>

#include "batch/collection.h"
#include "batch/difference.h"
#include "batch/listed_files.h"
#include "batch/reading_check.h"
#include "formats/layouts.h"

namespace vorn {
namespace {

const std::string list_name = "Vorn.fil";

void sort_by_gravity(std::vector<FileFinding>& findings) {
  std::ranges::stable_sort(findings, std::ranges::greater(),
                           [](const FileFinding& finding) { return severity_of(finding.kind->effect); });
}

void take_years(FileReport& report, const Collection& collection) {
  const Workspace& w = collection.state();
  if (collection.has_cores()) {
    const auto cores = collection.cores();
    report.cores = cores.size();
    const auto first = [](const SeriesView& core) { return core.years().first; };
    const auto last = [](const SeriesView& core) { return core.years().last; };
    report.first_year = static_cast<int>(first(*std::ranges::min_element(cores, {}, first)));
    report.last_year = static_cast<int>(last(*std::ranges::max_element(cores, {}, last)));
  } else if (collection.recognition().layout == Layout::tucson_index) {
    report.first_year = w.cfy(1);
    report.last_year = w.cfy(1) + std::max(w.cyr(1), 1) - 1;
  }
}

// Widths with a decimal point are millimetres; of others nobody knows.
bool is_unit_a_guess(const Collection& collection) {
  return collection.imported() &&
         std::ranges::any_of(collection.imported()->findings, [](const FileFinding& finding) {
           const auto* unit = std::get_if<double>(&finding.value);
           return finding.kind == kind("unit-guessed") && unit && *unit != 1;
         });
}

// Without a guess if that can be had, else with each of the guesses there are.
void offer_copies(FileReport& report, const Collection& collection, const std::string& bytes) {
  const Repair plain = repaired(collection, bytes, {});
  if (!plain.bytes.empty() && !is_unit_a_guess(collection)) {
    report.copies.push_back({{}, plain.done});
    return;
  }
  for (const double unit : {100.0, 1000.0, 1.0}) {
    const RepairChoices choices{.unit = unit};
    const bool is_wanted = !plain.bytes.empty() || !plain.refused.empty();
    const Repair made = is_wanted ? repaired(collection, bytes, choices) : Repair();
    if (!made.bytes.empty()) report.copies.push_back({choices, made.done});
  }
  if (report.copies.empty()) report.no_copy = plain.refused;
}

FileReport report_on(Files& files, const std::string& name, int this_year, const Careful& careful) {
  FileReport report{.file = name};
  const Collection collection(files, name, untreated(careful));
  const Imported* imported = collection.imported();
  report.layout = imported ? imported->layout_name : std::string(name_of(collection.recognition().layout));
  check_findings(collection, this_year,
                 [&](const FileFinding& finding) { report.findings.push_back(finding); });
  sort_by_gravity(report.findings);
  report.was_read = collection.was_read() && !imported;
  report.is_whole = report.was_read && report.count(Severity::error) == 0;
  take_years(report, collection);
  if (const auto bytes = collection.bytes()) offer_copies(report, collection, *bytes);
  return report;
}

}  // namespace

std::size_t FileReport::count(Severity severity) const {
  return static_cast<std::size_t>(std::ranges::count_if(findings, [severity](const FileFinding& finding) {
    return severity_of(finding.kind->effect) == severity;
  }));
}

FolderLook::FolderLook(Files& files, int this_year, const Careful& careful)
    : files_(files), this_year_(this_year), careful_(careful) {
  std::vector<SharedReport> begun;
  std::string bytes;
  if (!read_whole(files, list_name, bytes)) {
    ListedFiles listed = listed_files(files, bytes);
    names_ = std::move(listed.files);
    if (!listed.findings.empty()) {
      FileReport list{.file = list_name, .was_read = true, .findings = std::move(listed.findings)};
      sort_by_gravity(list.findings);
      list.is_whole = list.count(Severity::error) == 0;
      begun.push_back(std::make_shared<const FileReport>(std::move(list)));
    }
  }
  reports_ = std::make_shared<const std::vector<SharedReport>>(std::move(begun));
}

std::string FolderLook::working() const {
  if (is_done()) return "";
  return "file " + std::to_string(next_ + 1) + " of " + std::to_string(names_.size()) + ": " + names_[next_];
}

void FolderLook::look() {
  if (is_done()) return;
  const std::string& name = names_[next_++];
  FileReport report{.file = name};
  try {
    report = report_on(files_, name, this_year_, careful_);
  } catch (const std::exception& failure) {
    report.findings.push_back({.kind = kind("read"), .words = failure.what()});
  }
  auto reports = *reports_;
  reports.push_back(std::make_shared<const FileReport>(std::move(report)));
  reports_ = std::make_shared<const std::vector<SharedReport>>(std::move(reports));
}

std::string words_on_loss(const std::vector<SharedReport>& reports) {
  constexpr std::size_t most_named = 3;
  std::vector<std::string> lost;
  for (const SharedReport& report : reports) {
    if (!report->is_whole) lost.push_back(report->file);
  }
  if (lost.empty()) return "";
  std::string words = lost.front();
  for (std::size_t k = 1; k < std::min(lost.size(), most_named); ++k) words += ", " + lost[k];
  if (lost.size() > most_named) words += " and " + std::to_string(lost.size() - most_named) + " more";
  return words + (lost.size() > 1 ? " are" : " is") + " not read whole: the panel Files says what is missing";
}

int year_of_today() {
  const auto today = std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now());
  return static_cast<int>(std::chrono::year_month_day(today).year());
}

}  // namespace vorn
