#include "locator_measures.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ostream>
#include <stdexcept>
#include <utility>

#include "formats/layouts.h"
#include "formats/recognition.h"
#include "records/disk_files.h"
#include "seeded_random.h"

namespace vorn::measures {
namespace {

constexpr double least_r = 0.4;
constexpr int least_years = 60;
constexpr int from_the_ends = 5;    // years at either end in which nothing is planted
constexpr int around_an_error = 3;  // years that the others must have on either side of it
constexpr int pair_years = 80;      // of a core that two errors are planted in
constexpr int pair_apart = 20;      // least years between the two
constexpr int near_enough = 5;      // years, for an error of a pair

class Untold : public Troubles {
 public:
  void tell(const Trouble&) override {}
};

Core core_of(const SeriesStore& w, int i) {
  const auto presence = w.presence(i);
  const auto widths = std::as_const(w).widths(i);
  const auto present = std::make_shared<bool[]>(presence.size());
  std::copy(presence.begin(), presence.end(), present.get());
  return {std::string(w.nam(i).trimmed()), w.fy(i), {widths.begin(), widths.end()}, present};
}

// The flags of a core into which a ring was put, or out of which one was taken, at k.
std::shared_ptr<const bool[]> flags_of(const Core& core, std::size_t k, std::size_t new_size) {
  auto present = std::make_shared<bool[]>(new_size);
  const std::size_t old_size = core.widths.size();
  for (std::size_t i = 0; i < new_size; ++i) {
    present[i] = core.present[i < k ? i : std::min(i + old_size - new_size, old_size - 1)];
  }
  return present;
}

std::int64_t years_from(std::int64_t a, std::int64_t b) {
  return std::abs(a - b);
}

double percent(int part, int all) {
  return all > 0 ? 100.0 * part / all : 0;
}

Planted& operator+=(Planted& a, const Planted& b) {
  a.errors += b.errors;
  a.kind_right += b.kind_right;
  a.in_set += b.in_set;
  for (std::size_t k = 0; k < distances.size(); ++k) a.within[k] += b.within[k];
  for (std::size_t k = 0; k < gains.size(); ++k) a.found[k] += b.found[k];
  return a;
}

// --- One site.

class Trial {
 public:
  Trial(const Site& site, const MeasureOptions& options)
      : site_(site), options_(options), random_(options.seed) {
    for (const Core& core : site.cores) views_.push_back(core.view());
  }

  Measures run() {
    const auto start = std::chrono::steady_clock::now();
    const StudiedCores cores(views_, settings_);
    std::vector<Reference> others;
    std::vector<RingErrors> found;
    for (std::size_t i = 0; i < cores.size(); ++i) {
      others.emplace_back(cores.compared(), i);
      found.push_back(ring_errors(cores.core(i), others.back().view(), {.pairs = options_.pairs}));
    }
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
    measures_.timed = static_cast<int>(cores.size());
    measures_.milliseconds = taken.count();
    for (std::size_t i = 0; i < cores.size(); ++i) try_core(site_.cores[i], others[i].view(), found[i]);
    return measures_;
  }

 private:
  void try_core(const Core& core, const SeriesView& others, const RingErrors& found) {
    if (found.r < least_r || found.years < least_years || found.candidates.empty()) return;
    ++measures_.cores;
    const ErrorCandidate& best = found.candidates.front();
    for (std::size_t k = 0; k < gains.size(); ++k) measures_.alarms[k] += worth_a_look(found, best, gains[k]);
    if (worth_a_look(found, best)) return;
    measures_.pair_alarms += found.pair.has_value();
    for (int plant = 0; plant < options_.plants; ++plant) {
      plant_missing(core, others);
      plant_absent(core, others);
      plant_false(core, others);
      if (options_.pairs) plant_pair(core, others);
    }
  }

  RingErrors look(const Core& core, const SeriesView& others, const RingErrorSwitches& switches) const {
    const SeriesView view = core.view();
    const StudiedCores studied({&view, 1}, settings_);
    return ring_errors(studied.core(0), others, switches);
  }

  static void judge(Planted& planted, const RingErrors& found, Correction kind, std::int64_t year) {
    ++planted.errors;
    if (found.candidates.empty()) return;
    const ErrorCandidate& best = found.candidates.front();
    for (std::size_t k = 0; k < gains.size(); ++k) planted.found[k] += worth_a_look(found, best, gains[k]);
    if (best.kind != kind) return;
    ++planted.kind_right;
    planted.in_set += best.from <= year && year <= best.to;
    for (std::size_t k = 0; k < distances.size(); ++k)
      planted.within[k] += years_from(best.year, year) <= distances[k];
  }

  // Whether the others tell anything about ring k.
  static bool can_tell(const Core& core, const SeriesView& others, std::size_t k) {
    const std::int64_t year = core.first + static_cast<std::int64_t>(k);
    return others.has(year - around_an_error) && others.has(year + around_an_error);
  }
  std::size_t any_ring(const Core& core) {
    return static_cast<std::size_t>(
        random_.between(from_the_ends, static_cast<int>(core.widths.size()) - from_the_ends - 1));
  }
  KeptEnd any_end() { return random_.between(0, 1) == 0 ? KeptEnd::inner : KeptEnd::outer; }
  double any_share() { return random_.between(300, 700) / 1000.0; }
  static std::int64_t year_of(const Core& core, std::size_t k) {
    return core.first + static_cast<std::int64_t>(k);
  }

  void plant_missing(const Core& core, const SeriesView& others) {
    const std::size_t k = any_ring(core);
    if (!can_tell(core, others, k)) return;
    judge(measures_.missing,
          look(without_ring(core, k, any_end()), others, {.narrow_years = false, .pairs = false}),
          Correction::insert, year_of(core, k));
  }

  void plant_absent(const Core& core, const SeriesView& others) {
    std::vector<std::size_t> zeros;
    for (std::size_t k = around_an_error; k + around_an_error < core.widths.size(); ++k) {
      if (core.widths[k] == 0 && can_tell(core, others, k)) zeros.push_back(k);
    }
    if (zeros.empty()) return;
    const std::size_t k =
        zeros[static_cast<std::size_t>(random_.between(0, static_cast<int>(zeros.size()) - 1))];
    judge(measures_.absent, look(without_ring(core, k, any_end()), others, {.pairs = false}),
          Correction::insert, year_of(core, k));
  }

  void plant_false(const Core& core, const SeriesView& others) {
    const std::size_t k = any_ring(core);
    if (!can_tell(core, others, k) || core.widths[k] == 0) return;
    judge(measures_.false_rings,
          look(with_split_ring(core, k, any_share(), any_end()), others, {.pairs = false}), Correction::merge,
          year_of(core, k));
  }

  // The pith's end keeps its years; the later error is planted first, so that the earlier ring stays in
  // place.
  void plant_pair(const Core& core, const SeriesView& others) {
    const int n = static_cast<int>(core.widths.size());
    if (n < pair_years) return;
    const int early = random_.between(10, n - pair_apart - 31);
    const int late = random_.between(early + pair_apart, n - 11);
    Core wrong = core;
    for (const int k : {late, early}) {
      const auto ring = static_cast<std::size_t>(k);
      wrong = random_.between(0, 1) == 0 ? without_ring(wrong, ring, KeptEnd::inner)
                                         : with_split_ring(wrong, ring, any_share(), KeptEnd::inner);
    }
    const RingErrors found = look(wrong, others, {});
    ++measures_.pairs;
    if (!found.pair) return;
    ++measures_.pairs_told;
    measures_.pairs_found += years_from(found.pair->years[0], core.first + early) <= near_enough &&
                             years_from(found.pair->years[1], core.first + late) <= near_enough;
  }

  const Site& site_;
  MeasureOptions options_;
  examples::Random random_;
  Settings settings_;
  std::vector<SeriesView> views_;
  Measures measures_;
};

void write_planted(const char* what, const Planted& planted, std::ostream& out) {
  char line[160];
  std::snprintf(line, sizeof line, "%-34s %6d %7.1f %7.1f %7.1f %7.1f %9.1f %7.1f %7.1f %7.1f\n", what,
                planted.errors, percent(planted.within[0], planted.errors),
                percent(planted.within[1], planted.errors), percent(planted.within[2], planted.errors),
                percent(planted.within[3], planted.errors), percent(planted.in_set, planted.kind_right),
                percent(planted.found[0], planted.errors), percent(planted.found[1], planted.errors),
                percent(planted.found[2], planted.errors));
  out << line;
}

}  // namespace

Site read_site(const std::string& file) {
  DiskFiles disk;
  Untold troubles;
  const Recognition found = find_rftyp(disk, file, troubles);
  const LayoutRow* row = row_of(found.layout);
  if (!row || !row->read_cores) throw std::runtime_error(file + ": no file of ring widths");
  const auto store = std::make_unique<SeriesStore>();
  row->read_cores(*store, {disk, file, found.header_lines, troubles});
  Site site{file};
  for (int i = 1; i <= store->nc; ++i) site.cores.push_back(core_of(*store, i));
  return site;
}

Core without_ring(const Core& core, std::size_t k, KeptEnd kept) {
  Core wrong = core;
  wrong.widths.erase(wrong.widths.begin() + static_cast<std::ptrdiff_t>(k));
  wrong.present = flags_of(core, k, wrong.widths.size());
  if (kept == KeptEnd::outer) ++wrong.first;
  return wrong;
}

Core with_split_ring(const Core& core, std::size_t k, double share, KeptEnd kept) {
  Core wrong = core;
  const double width = core.widths[k];
  wrong.widths[k] = width * share;
  wrong.widths.insert(wrong.widths.begin() + static_cast<std::ptrdiff_t>(k) + 1, width * (1 - share));
  wrong.present = flags_of(core, k + 1, wrong.widths.size());
  if (kept == KeptEnd::outer) --wrong.first;
  return wrong;
}

Measures& Measures::operator+=(const Measures& other) {
  cores += other.cores;
  for (std::size_t k = 0; k < gains.size(); ++k) alarms[k] += other.alarms[k];
  pair_alarms += other.pair_alarms;
  missing += other.missing;
  absent += other.absent;
  false_rings += other.false_rings;
  pairs += other.pairs;
  pairs_told += other.pairs_told;
  pairs_found += other.pairs_found;
  milliseconds += other.milliseconds;
  timed += other.timed;
  return *this;
}

Measures measure(const Site& site, const MeasureOptions& options) {
  return Trial(site, options).run();
}

void write_tables(const Measures& m, std::ostream& out) {
  char line[160];
  out << "                                   errors  year ranked first, kind right, %   set 90    gain at "
         "least, %\n"
         "                                              +-0     +-1     +-2     +-5         %       5       "
         "7 "
         "     10\n";
  write_planted("missing, no prior", m.missing, out);
  write_planted("recorded absent, with prior", m.absent, out);
  write_planted("false", m.false_rings, out);
  std::snprintf(line, sizeof line, "%-34s %6d %51.1f %7.1f %7.1f\n", "alarms on cores as they are", m.cores,
                percent(m.alarms[0], m.cores), percent(m.alarms[1], m.cores), percent(m.alarms[2], m.cores));
  out << line;
  std::snprintf(line, sizeof line,
                "two errors: %d cores, told %.1f %%, both within 5 years %.1f %%; told of "
                "cores as they are: %d\n",
                m.pairs, percent(m.pairs_told, m.pairs), percent(m.pairs_found, m.pairs), m.pair_alarms);
  out << line;
  std::snprintf(line, sizeof line, "time: %.1f ms for 25 cores (mean over %d)\n",
                m.timed > 0 ? m.milliseconds * 25 / m.timed : 0, m.timed);
  out << line;
}

}  // namespace vorn::measures
