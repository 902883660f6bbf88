#include "panels/corrected_file.h"

#include "batch/changes_in_words.h"
#include "batch/difference.h"
#include "batch/held_cores.h"
#include "batch/save_over.h"

namespace vorn {
namespace {

HeldCores held_cores(const Situation& now) {
  HeldCores held;
  for (const SharedSeries& core : now.cores)
    held.add(core->name, core->first_year, core->widths, core->presence);
  return held;
}

std::vector<std::string> sentences_on(const Collection& original, const HeldCores& cores) {
  std::vector<std::string> all;
  for (const ChangeInWords& change : changes_in_words(original, cores.cores()))
    all.push_back(change.sentence());
  return all;
}

// What was made of it since its oldest self was kept.
void look_at_oldest(CorrectedFile& corrected, Files& files, const Careful& as_read, const HeldCores& cores) {
  const std::string path = path_of_oldest(corrected.file);
  FileKind kind{};
  if (files.look_at(path, kind) || kind != FileKind::regular) return;
  const Collection oldest(files, path, untreated(as_read));
  if (!oldest.has_cores()) return;
  corrected.oldest = path;
  corrected.changes_since = sentences_on(oldest, cores);
}

using Lines = std::vector<std::string>;

void add(Lines& page, const std::string& title, const Lines& sentences) {
  if (!page.empty()) page.emplace_back();
  page.insert(page.end(), {title, ""});
  page.insert(page.end(), sentences.begin(), sentences.end());
  if (sentences.empty()) page.emplace_back("Nothing.");
}

}  // namespace

CorrectedFile corrected_file(Files& files, const Situation& now) {
  CorrectedFile corrected{.file = now.cores_file};
  const Collection original(files, corrected.file, untreated(now.read_as));
  const auto bytes = original.bytes();
  if (!bytes) {
    corrected.made.refused.push_back(corrected.file + " cannot be read any more");
    return corrected;
  }
  corrected.was = *bytes;
  const HeldCores cores = held_cores(now);
  corrected.made = saved(original, corrected.was, cores.cores());
  corrected.changes = sentences_on(original, cores);
  look_at_oldest(corrected, files, now.read_as, cores);
  for (const PairMember* member : {&now.sample, &now.reference}) {
    if (member->is_core && member->changed) corrected.not_yet.push_back(member->name);
  }
  return corrected;
}

std::vector<std::string> changes_page(const CorrectedFile& corrected) {
  Lines page;
  add(page, "What was changed since " + corrected.file + " was read", corrected.changes);
  for (const std::string& core : corrected.not_yet)
    page.push_back(core + ": its change on the page is not saved yet, and not among these");
  if (!corrected.oldest.empty())
    add(page, "Since " + corrected.oldest + ", its oldest self", corrected.changes_since);
  if (!corrected.made.refused.empty())
    add(page, "Why it cannot be put back into the file", corrected.made.refused);
  return page;
}

std::optional<std::string> save_over_original(Files& files, const CorrectedFile& corrected) {
  return save_over(files, corrected.file, corrected.was, corrected.made);
}

}  // namespace vorn
