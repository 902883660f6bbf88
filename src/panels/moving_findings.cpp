#include "panels/moving_findings.h"

#include <algorithm>
#include <memory>

#include "batch/collection.h"

namespace vorn {
namespace {

bool marks_cores_to_move(const Situation& now) {
  return now.place == Place::chooser && now.mode == button::move_core && !now.marked.empty();
}

std::vector<std::size_t> places_of(const std::vector<std::string>& names,
                                   const std::vector<SharedStudied>& cores) {
  std::vector<std::size_t> places;
  for (std::size_t k = 0; k < cores.size(); ++k) {
    if (std::ranges::find(names, cores[k]->series().name) != names.end()) places.push_back(k);
  }
  return places;
}

bool treat_alike(const Settings& a, const Settings& b) {
  return a.splineon == b.splineon && a.aron == b.aron && a.logon == b.logon && a.ss == b.ss &&
         a.jpr == b.jpr && a.careful == b.careful;
}

}  // namespace

// The cores of the file, as they were when their pairs were correlated.
struct MovingStudy::Own {
  std::vector<SharedStudied> cores;
  Settings settings;
  AgreeingFile file;
};

struct MovingStudy::Joined {
  std::string name;
  Settings settings;
  Collection read;
  std::optional<AgreeingCollection> cores;

  Joined(Files& files, const std::string& file, const Settings& by)
      : name(file), settings(by), read(files, file, by) {
    if (read.has_cores()) cores.emplace(read.cores(), by);
  }
};

const AgreeingFile& MovingStudy::own(const Situation& now, const std::vector<SharedStudied>& cores) {
  if (own_ && own_->cores == cores && treat_alike(own_->settings, now.settings)) return own_->file;
  std::vector<SeriesView> widths, compared;
  for (const SharedStudied& core : cores) {
    widths.push_back(core->widths());
    compared.push_back(core->core().compared);
  }
  // A move writes the other file.
  joined_.reset();
  own_ = std::make_shared<Own>(
      Own{cores, now.settings, AgreeingFile(those_that_count(widths, compared, now.settings.careful))});
  return own_->file;
}

void MovingStudy::join(const Situation& now, std::span<const SeriesView> moving, MovingFindings& found) {
  if (now.destination.empty()) return;
  if (!files_) {
    found.why_not_joined = now.destination + " is not read here";
    return;
  }
  if (!joined_ || joined_->name != now.destination || !treat_alike(joined_->settings, now.settings))
    joined_ = std::make_shared<Joined>(*files_, now.destination, now.settings);
  if (!joined_->cores) {
    found.why_not_joined = now.destination + " holds no ring widths that can be read";
    return;
  }
  const AgreeingFile& file = joined_->cores->file();
  found.joined = MovedFile{now.destination, file.now(), file.with(moving)};
}

std::shared_ptr<const MovingFindings> MovingStudy::study(const Situation& now,
                                                         const std::vector<SharedStudied>& cores,
                                                         const PairFindings* pair) {
  const bool marked = marks_cores_to_move(now);
  if (!marked && !pair) return nullptr;
  auto found = std::make_shared<MovingFindings>();
  std::vector<std::size_t> leaving;
  if (marked)
    leaving = places_of(now.marked, cores);
  else
    leaving = {static_cast<std::size_t>(pair->entry) - 1};
  if (leaving.empty() || leaving.back() >= cores.size()) return nullptr;
  const AgreeingFile& file = own(now, cores);
  std::vector<SeriesView> moving;
  for (const std::size_t k : leaving) {
    found->cores.push_back(cores[k]->series().name);
    moving.push_back(file.core(k));
  }
  found->left = {now.cores_file, file.now(), file.without(leaving)};
  if (marked) join(now, moving, *found);
  return found;
}

}  // namespace vorn
