#include "chronology/mean_tree.h"

#include <algorithm>
#include <string>

#include "chronology/index_pipeline.h"
#include "editing/working_pair.h"
#include "toolkit/buttons.h"
#include "toolkit/messages.h"

namespace vorn {
namespace {

// The limit as the program states it; the tables end sooner, at max_series cores.
constexpr int entry_limit = 11'999;

struct Span {
  int first, last;
  int years() const { return last - first + 1; }
};

Span span_of_chosen(const Workspace& w) {
  Span span{w.fy(w.chc(1)), w.ly(w.chc(1))};
  for (int j = 2; j <= w.chs; ++j) {
    span.first = std::min(span.first, w.fy(w.chc(j)));
    span.last = std::max(span.last, w.ly(w.chc(j)));
  }
  return span;
}

Name mean_name(const Workspace& w) {
  const std::string_view typed = w.b(button::mean_name).label.trimmed();
  if (typed.size() >= 2 && typed.size() <= 8) return typed;
  const Name& first = w.nam(w.chc(1));
  const std::size_t length = std::clamp<std::size_t>(first.trimmed().size(), 2, 7);
  return std::string(first.view().substr(0, length)) + "M";
}

// Opens entry m = nc + 1 for `n` rings: the chronology entries behind it move up by one number and n places.
void insert_entry(Workspace& w, int n) {
  const int end = w.ad(w.nd + 1) - 1;
  ++w.nc;
  w.nd = w.nfil + w.nc;
  const int m = w.nc;
  w.x.move(w.ad(m), end, n);
  w.xok.move(w.ad(m), end, n);
  w.tx.move(w.ad(m), end, n);
  w.ax.move(w.ad(m), end, n);
  for (int k = w.nd; k >= m; --k) w.ad(k + 1) = w.ad(k) + n;
  for (int k = w.nd - 1; k >= m; --k) {
    w.nam(k + 1) = w.nam(k);
    w.fy(k + 1) = w.fy(k);
    w.ly(k + 1) = w.ly(k);
    w.yr(k + 1) = w.yr(k);
  }
}

// Adds one chosen core to the sums; iwk1 counts.
void add_core(Workspace& w, int core, int first_year) {
  for (int j = 0; j < w.yr(core); ++j) {
    const int from = w.ad(core) + j;
    const int k = w.fy(core) - first_year + 1 + j;
    const int to = w.ad(w.nc) + k - 1;
    // The mean's own presence decides, meant so: the order of choice tells in the result.
    w.xok.put(to, w.xok.at(to) || w.xok.at(from));
    if (!w.xok.at(to)) continue;
    w.x.put(to, w.x.at(to) + w.x.at(from));
    ++w.iwk1(k);
  }
}

}  // namespace

void mean_create(Workspace& w) {
  if (w.nd >= entry_limit || w.nc >= max_series) return out_err(w, "Would be too many trees");
  if (w.chs < 2) return out_err(w, "Need more than one core");
  const Span span = span_of_chosen(w);
  const int n = span.years();
  if (n > max_years || n + w.ad(w.nd + 1) - 1 >= max_pool) return out_err(w, "Would be too many rings");
  const Name name = mean_name(w);
  insert_entry(w, n);
  const int m = w.nc;
  w.nam(m) = name;
  w.fy(m) = span.first;
  w.ly(m) = span.last;
  w.yr(m) = n;
  const auto widths = w.widths(m);
  const auto present = w.presence(m);
  const auto counts = w.iwk1.range(1, n);
  std::fill(widths.begin(), widths.end(), 0.0);
  std::fill(present.begin(), present.end(), false);
  std::fill(counts.begin(), counts.end(), 0);
  for (int j = 1; j <= w.chs; ++j) add_core(w, w.chc(j), span.first);
  if (std::count(counts.begin(), counts.end(), 0) > 0) return out_err(w, "Warning - trees do not overlap ?");
  for (int k = 0; k < n; ++k) {
    if (counts[k] > 1) widths[k] /= counts[k];
  }
  data_man2(w);
  set_chs(w);
}

}  // namespace vorn
