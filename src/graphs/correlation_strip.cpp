#include "graphs/correlation_strip.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>

#include "plot/plot.h"
#include "records/edit_format.h"
#include "statistics/correlation.h"
#include "statistics/pool_window.h"

namespace vorn {
namespace {

constexpr int strip_top = 1400, bar_height = 180;
constexpr int text_y = 1470, text_step = 36;
constexpr int left_text = -200, right_text = 40;  // from the bar's left edge
constexpr int longest_lag = 2;
constexpr std::string_view lag_labels = "-2-1 0+1+2";

// Years come from files and may be anything that 32 bits hold; sums of them are formed in 64.
using Years = std::int64_t;

const EditFormat correlation_edit{"(F5.2)"};

std::string_view lag_label(int lag) {
  return lag_labels.substr(static_cast<std::size_t>(lag + longest_lag) * 2, 2);
}

// The correlation of the reference's years first to last with the sample's, read `lag` years later, as text.
std::string correlation_text(const Workspace& w, Years first, Years last, int lag) {
  const int sample = w.nd + 1, reference = w.nd + 2;
  const int n = static_cast<int>(last - first + 1);
  const PoolWindow a(w, w.ad(sample) + first + lag - w.fy(sample), n);
  const PoolWindow b(w, w.ad(reference) + first - w.fy(reference), n);
  Table<bool> both(n);
  mark_present(a.present(0, n), b.present(0, n), both.range(1, n));
  const MaskedCorrelation c = covmiss(a.values(0, n), b.values(0, n), both.range(1, n));
  return c.valid ? edit(correlation_edit, c.r) : " None";
}

void captions(Workspace& w) {
  w.plot.winfnt("Arial");
  w.plot.simplx();
  w.plot.messag("Correlation to", 660, 1480);
  w.plot.messag("  left of bar", 660, 1520);
  w.plot.messag("Correlation to", 2000, 1480);
  w.plot.messag(" right of bar", 2000, 1520);
}

}  // namespace

void cor_graph(Workspace& w) {
  const int sample = w.nd + 1, reference = w.nd + 2;
  const Years bar = (Years{w.fs} + w.ls) / 2;
  const Years first = std::max(w.fy(sample), w.fy(reference));
  const Years last = std::min(w.ly(sample), w.ly(reference));
  if (last - first < 20 || bar + longest_lag < first || bar - longest_lag > last) return;
  // Two years are kept at the sample's ends, so that the shifted sample stays inside its data.
  const Years left = std::max({first, Years{w.fy(sample)} + longest_lag, bar - w.seg});
  const Years right = std::min({last, Years{w.ly(sample)} - longest_lag, bar + w.seg - 1});
  w.plot.setclr(colour::ink);
  const int x = static_cast<int>(std::lround(200 + static_cast<double>(bar - w.fs) * w.scx));
  w.plot.rectangle(x, strip_top, x + static_cast<int>(std::lround(w.scx)), strip_top + bar_height);
  w.plot.winfnt("Times New Roman");
  for (int lag = -longest_lag; lag <= longest_lag && bar - 9 > left; ++lag) {
    const std::string text = correlation_text(w, left, bar, lag) + " < " + std::string(lag_label(lag));
    w.plot.messag(text, x + left_text, text_y + text_step * lag);
  }
  for (int lag = -longest_lag; lag <= longest_lag && right - 9 > bar; ++lag) {
    const std::string text = std::string(lag_label(lag)) + " > " + correlation_text(w, bar, right, lag);
    w.plot.messag(text, x + right_text, text_y + text_step * lag);
  }
  captions(w);
}

}  // namespace vorn
