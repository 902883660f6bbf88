#include "walk/invariants.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "plot/plot.h"
#include "toolkit/buttons.h"

namespace vorn {
namespace {

std::string number(double value) {
  const auto whole = static_cast<long long>(value);
  return static_cast<double>(whole) == value ? std::to_string(whole) : std::to_string(value);
}

// "ad(3) is 120, not 121"
std::string differs(const std::string& what, double is, double should_be) {
  return what + " is " + number(is) + ", not " + number(should_be);
}
std::string differs(const char* table, int i, double is, double should_be) {
  return differs(std::string(table) + "(" + std::to_string(i) + ")", is, should_be);
}

std::string outside(const std::string& what, double is, double low, double high) {
  if (low <= is && is <= high) return "";
  return what + " is " + number(is) + ", outside " + number(low) + " to " + number(high);
}

std::string first_of(std::initializer_list<std::string> complaints) {
  for (const std::string& complaint : complaints) {
    if (!complaint.empty()) return complaint;
  }
  return "";
}

std::string counters(const Workspace& w, const WalkState& state) {
  if (!state.store_replaced && w.nd != w.nc + w.nfil) return differs("nd", w.nd, w.nc + w.nfil);
  return first_of({outside("nc", w.nc, 0, max_series), outside("nfil", w.nfil, 0, max_files),
                   outside("nraw", w.nraw, 0, w.nfil), outside("cf", w.cf, 1, std::max(w.nfil, 1)),
                   outside("chs", w.chs, 0, max_series)});
}

std::string entry(const Workspace& w, int i, bool undated_records) {
  if (w.yr(i) < 0) return outside("yr(" + std::to_string(i) + ")", w.yr(i), 0, max_pool);
  const bool years_count = !undated_records && w.yr(i) > 0;
  if (years_count && w.ly(i) != w.fy(i) + w.yr(i) - 1) {
    return differs("ly", i, w.ly(i), w.fy(i) + w.yr(i) - 1);
  }
  return "";
}

// The entries lie end to end in the pool, in their order, from its first place on.
std::string store(const Workspace& w, const WalkState& state) {
  if (w.ad(1) != 1) return differs("ad", 1, w.ad(1), 1);
  const int last = state.store_replaced ? w.nc : w.nd;
  for (int i = 1; i <= last; ++i) {
    if (i < last && w.ad(i + 1) != w.ad(i) + w.yr(i)) {
      return differs("ad", i + 1, w.ad(i + 1), w.ad(i) + w.yr(i));
    }
    const std::string complaint = entry(w, i, state.undated_records);
    if (!complaint.empty()) return complaint;
  }
  if (last < 1) return "";
  return outside("end of the store", w.ad(last) + w.yr(last) - 1, 0, max_pool);
}

std::string widths(const Workspace& w, const WalkState& state) {
  const int last = state.store_replaced ? w.nc : w.nd;
  if (w.nc < 1 || last < 1 || state.any_widths) return "";
  const int end = w.ad(w.nc) + w.yr(w.nc) - 1;
  for (int p = 1; p <= end; ++p) {
    if (!std::isfinite(w.x(p))) return "width at place " + std::to_string(p) + " is not finite";
  }
  return "";
}

// The slots lie behind the store, the sample's on its last value, but carefully.
std::string slots(const Workspace& w, const WalkState& state) {
  if (!state.pair_set) return "";
  const int sample = w.nd + 1, reference = w.nd + 2;
  const int begin = w.ad(w.nd) + w.yr(w.nd) - (w.careful.has(Mend::reference_end) ? 0 : 1);
  if (w.ad(sample) != begin) return differs("ad", sample, w.ad(sample), begin);
  if (w.ad(reference) != w.ad(sample) + w.yr(sample)) {
    return differs("ad", reference, w.ad(reference), w.ad(sample) + w.yr(sample));
  }
  if (w.nd < 2) return outside("nd with a pair set", w.nd, 2, max_series);
  return first_of({entry(w, sample, state.undated_records), entry(w, reference, state.undated_records),
                   outside("tr1", w.tr1, 1, w.nd), outside("tr2", w.tr2, 1, w.nd)});
}

// Where what is derived is up to date, the chronologies' entries show their columns. The sample's slot lies
// on the last value of the last entry; the current column of an index file may have been built from the cores
// of the store by a report.
std::string chronologies(const Workspace& w, const WalkState& state) {
  if (w.derived_stale || state.store_replaced || w.nfil < 1) return "";
  const int end = w.ad(w.nd) + w.yr(w.nd) - 1;
  for (int c = 1; c <= w.nfil; ++c) {
    if (c == w.cf && w.rftype(c) == Layout::tucson_index) continue;
    const int i = w.nc + c;
    for (int k = 1; k <= w.yr(i); ++k) {
      const int p = w.ad(i) + k - 1;
      if (p == end) continue;
      const double shown = w.ax(p), column = w.crn(k, c);
      if (shown != column && !(std::isnan(shown) && std::isnan(column))) {
        return "chronology " + std::to_string(c) + ": " + differs("year", k, shown, column);
      }
    }
  }
  return "";
}

std::string settings(const Workspace& w) {
  if (w.ls != w.fs + w.sl - 1) return differs("ls", w.ls, w.fs + w.sl - 1);
  if (w.scx != 2500.0 / w.sl) return differs("scx", w.scx, 2500.0 / w.sl);
  return first_of({outside("ss", w.ss, 3, 999), outside("jpr", w.jpr, 1, max_ar_order),
                   outside("seg", w.seg, 1, max_pool), outside("olap", w.olap, 1, max_pool),
                   outside("sl", w.sl, 21, max_years), outside("sccc", w.sccc, 0, max_series)});
}

int lit(const Workspace& w, ButtonRange buttons) {
  int count = 0;
  for (const ButtonNumber n : buttons) count += w.b(n).lit;
  return count;
}

std::string options(const Workspace& w, const WalkState& state) {
  const bool list_shown = w.b(button::chronology_list).on;
  const int one = list_shown ? 0 : 1;
  if (lit(w, button::raw_types) != one) return "not one raw output is lit";
  if (lit(w, button::crn_types) != one) return "not one chronology output is lit";
  if (state.chooser_shown && lit(w, button::chooser_modes) != 1) return "not one mode is lit";
  return "";
}

std::string page(const Workspace& w) {
  for (const Mark& mark : w.plot.page().marks()) {
    for (const PagePoint& point : mark.points) {
      if (!std::isfinite(point.x) || !std::isfinite(point.y)) return "a mark lies nowhere: " + mark.writing;
    }
  }
  return "";
}

}  // namespace

std::string broken_invariant(const Workspace& w, const WalkState& state) {
  return first_of({counters(w, state), store(w, state), widths(w, state), slots(w, state),
                   chronologies(w, state), settings(w), options(w, state), page(w)});
}

}  // namespace vorn
