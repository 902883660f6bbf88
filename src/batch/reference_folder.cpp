#include "batch/reference_folder.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <limits>
#include <numeric>
#include <stdexcept>
#include <system_error>

#include "base/parallel_for.h"
#include "batch/files_below.h"
#include "statistics/sliding_match.h"
#include "study/agreement.h"
#include "study/studied_cores.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

std::string counted(std::size_t count, const std::string& one, const std::string& many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

// The values that count, year by year; not a number for the others.
std::vector<double> present_values(const SeriesView& series) {
  std::vector<double> all(series.values.begin(), series.values.end());
  for (std::size_t k = 0; k < all.size(); ++k) {
    if (!series.has(series.first + static_cast<std::int64_t>(k)))
      all[k] = std::numeric_limits<double>::quiet_NaN();
  }
  return all;
}

std::int64_t seconds_now() {
  using namespace std::chrono;
  return duration_cast<seconds>(system_clock::now().time_since_epoch()).count();
}

}  // namespace

// How well a core fits one of the references, by the quick way.
struct ReferenceFolder::Place {
  std::size_t number = 0;
  BestMatch best;
};

ReferenceFolder::ReferenceFolder(Files& files, FolderToSearch what,
                                 const std::function<void(std::size_t, std::size_t)>& read)
    : files_(files), what_(std::move(what)) {
  for (std::string& file : files_below(what_.folder)) {
    all_.push_back({.file = std::move(file)});
    // What cannot be looked at is read, and then said not to be there.
    if (os::stamp_of(path_to(all_.back()), all_.back().stamp) != 0) all_.back().stamp = {};
  }
  is_read_.assign(all_.size(), false);
  std::string bytes;
  if (!what_.cache.empty() && !read_whole(files_, what_.cache, bytes)) {
    if (auto kept = unpacked(bytes, what_.recipe)) take_kept(std::move(*kept));
  }
  read_others(read);
  sum_up();
}

std::string ReferenceFolder::path_to(const KeptReference& one) const {
  return (fs::path(what_.folder) / one.file).generic_string();
}

// Both are in the order of their names.
void ReferenceFolder::take_kept(std::vector<KeptReference>&& kept) {
  auto candidate = kept.begin();
  for (std::size_t k = 0; k < all_.size(); ++k) {
    KeptReference& one = all_[k];
    candidate = std::find_if(candidate, kept.end(),
                             [&](const KeptReference& other) { return other.file >= one.file; });
    if (candidate == kept.end()) return;
    if (candidate->file == one.file && candidate->stamp == one.stamp) {
      one = std::move(*candidate);
      is_read_[k] = true;
    }
  }
}

void ReferenceFolder::read_others(const std::function<void(std::size_t, std::size_t)>& read) {
  std::vector<std::size_t> unread;
  for (std::size_t k = 0; k < all_.size(); ++k) {
    if (!is_read_[k]) unread.push_back(k);
  }
  const std::int64_t begun = seconds_now();
  std::vector<std::vector<std::string>> said(unread.size());
  if (read && !unread.empty()) read(0, unread.size());
  parallel_for(
      unread.size(), what_.threads, [&](std::size_t k) { read_one(all_[unread[k]], said[k]); },
      [&](std::size_t done) {
        if (read) read(done, unread.size());
      });
  for (const auto& sentences : said) words_.insert(words_.end(), sentences.begin(), sentences.end());
  if (!unread.empty() && !what_.cache.empty()) keep(begun);
}

// What was written a moment ago may be written once more and look the same: it is read again the next time.
void ReferenceFolder::keep(std::int64_t begun) {
  constexpr std::int64_t moment = 2;  // seconds
  std::vector<KeptReference> settled;
  std::ranges::copy_if(all_, std::back_inserter(settled),
                       [&](const KeptReference& one) { return one.stamp.seconds + moment <= begun; });
  if (const Status failed = write_whole(files_, what_.cache, packed(settled, what_.recipe)))
    words_.push_back(what_.cache +
                     ": the references cannot be kept: " + std::generic_category().message(failed.number()));
}

void ReferenceFolder::read_one(KeptReference& one, std::vector<std::string>& said) const {
  try {
    Collection collection(files_, path_to(one), what_.settings);
    const DatingReference reference(collection);
    const SeriesView compared = reference.series().compared;
    one.values = standardised(present_values(compared));
    one.autocorrelation = autocorrelation(compared);
    said = collection.words();
    for (std::string& doubt : collection.doubts()) said.push_back(std::move(doubt));
    one.is_whole = said.empty();
    if (one.values.empty() && said.empty()) said.push_back(path_to(one) + ": no chronology to compare with");
  } catch (const std::exception& failure) {
    one.values.clear();
    said.push_back(path_to(one) + ": " + failure.what());
  }
}

void ReferenceFolder::sum_up() {
  const auto none = static_cast<std::size_t>(
      std::ranges::count_if(all_, [](const KeptReference& one) { return one.values.empty(); }));
  const auto parts = static_cast<std::size_t>(std::ranges::count_if(
      all_, [](const KeptReference& one) { return !one.values.empty() && !one.is_whole; }));
  size_ = all_.size() - none;
  std::string words = what_.folder + ": " + counted(size_, "reference", "references");
  if (none > 0) words += ", " + counted(none, "file", "files") + " without one";
  if (parts > 0)
    words += ", " + counted(parts, "file", "files") +
             (parts == 1 ? " not taken as it stands" : " not taken as they stand") + " (vorn check says why)";
  words_.push_back(words);
}

std::shared_ptr<const DatingReference> ReferenceFolder::reference(std::size_t number) const {
  constexpr std::size_t most_kept = 2'000;
  {
    const std::lock_guard lock(mutex_);
    const auto known = wanted_.find(number);
    if (known != wanted_.end()) return known->second;
    if (wanted_.size() >= most_kept) wanted_.clear();
  }
  Collection collection(files_, path_to(all_[number]), what_.settings);
  auto made = std::make_shared<const DatingReference>(collection);
  const std::lock_guard lock(mutex_);
  wanted_[number] = made;
  return made;
}

// Whether each reference is of the sample's own file, or of a copy of it: the cores would be dated by
// themselves.
std::vector<bool> ReferenceFolder::references_of(const Collection& sample) const {
  std::vector<bool> is_own(all_.size(), false);
  const auto bytes = sample.bytes();
  for (std::size_t k = 0; bytes && k < all_.size(); ++k) {
    const KeptReference& one = all_[k];
    std::string others;
    is_own[k] = !one.values.empty() && one.stamp.size == bytes->size() &&
                !read_whole(files_, path_to(one), others) && others == *bytes;
  }
  return is_own;
}

// The best position on each reference by the quick way, the best first; `positions` becomes that of all that
// were tried.
std::vector<ReferenceFolder::Place> ReferenceFolder::places(const SeriesView& core,
                                                            const std::vector<bool>& is_own,
                                                            std::size_t& positions) const {
  SlidingMatch match(present_values(core), autocorrelation(core), least_years_in_common);
  std::vector<Place> all;
  for (std::size_t k = 0; k < all_.size(); ++k) {
    const KeptReference& one = all_[k];
    if (one.values.empty() || is_own[k]) continue;
    const BestMatch best = match.best_on(one.values, one.autocorrelation);
    positions += best.positions;
    if (best.positions > 0) all.push_back({k, best});
  }
  std::ranges::stable_sort(all, [](const Place& a, const Place& b) { return a.best.z > b.best.z; });
  return all;
}

// Those that may be among the best so many, by however little the quick way errs.
std::vector<ReferenceFolder::Place> ReferenceFolder::best_of(std::vector<Place> places) const {
  constexpr float error = 0.01F;
  if (places.size() <= what_.most_places) return places;
  const float least = places[what_.most_places - 1].best.z - error;
  places.erase(std::ranges::find_if(places, [&](const Place& place) { return place.best.z < least; }),
               places.end());
  return places;
}

std::vector<std::string> ReferenceFolder::date(Collection& sample,
                                               const std::function<bool(const std::string&)>& is_wanted,
                                               const std::function<void(const Row&)>& add) const {
  std::vector<std::string> said;
  if (!sample.has_cores()) return said;
  const std::vector<bool> is_own = references_of(sample);
  const auto own = static_cast<std::size_t>(std::ranges::count(is_own, true));
  if (own > 0)
    said.push_back(sample.path() + ": is in " + what_.folder + " too, and no reference for its own cores");
  const Workspace& w = sample.state();
  const auto cores = sample.cores();
  const StudiedCores studied(cores, w);
  std::size_t dated = 0, tried = 0;
  for (std::size_t i = 0; i < cores.size(); ++i) {
    const std::string name(w.nam(static_cast<int>(i) + 1).trimmed());
    if (!is_wanted(name)) continue;
    std::size_t positions = 0;
    const auto best = best_of(places(studied.core(i).compared, is_own, positions));
    date_core({studied.core(i).compared, cores[i].values}, best, positions,
              [&](const std::string& reference, const Dates& found) {
                add(date_row(sample.path(), name, reference, found));
              });
    ++dated;
    tried += positions;
  }
  if (dated > 0)
    said.push_back(sample.path() + ": " + counted(dated, "core", "cores") + ", " +
                   counted(tried, "position", "positions") + " tried on " +
                   counted(size_ - own, "reference", "references"));
  return said;
}

void ReferenceFolder::date_core(const SeriesToDate& core, const std::vector<Place>& best,
                                std::size_t positions,
                                const std::function<void(const std::string&, const Dates&)>& use) const {
  DatingReferences used;
  std::vector<SeriesToDate> series;
  auto further = static_cast<double>(positions);
  for (const Place& place : best) {
    used.push_back(reference(place.number));
    series.push_back(used.back()->series());
    further -= static_cast<double>(place.best.positions);
  }
  const auto found = dates(core, series, further);
  std::vector<std::size_t> order(found.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  const auto z = [&](std::size_t k) {
    return found[k].ranked.empty() ? -std::numeric_limits<double>::infinity() : found[k].ranked.front().z;
  };
  std::ranges::stable_sort(order, [&](std::size_t a, std::size_t b) { return z(a) > z(b); });
  order.resize(std::min(order.size(), what_.most_places));
  for (const std::size_t k : order) use(used[k]->name(), found[k]);
  if (order.empty()) use(what_.folder, {});
}

}  // namespace vorn
