#include "graphs/correlation_strip.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>

#include "plot/font_metrics.h"
#include "plot/plot.h"
#include "records/edit_format.h"
#include "statistics/correlation.h"
#include "statistics/pool_window.h"
#include "workspace/years.h"

namespace vorn {
namespace {

constexpr int strip_top = 1400, bar_height = 180;
constexpr int text_y = 1470, text_step = 36, text_height = 25;
constexpr int left_text = -200, right_text = 40;  // from the bar's left edge
constexpr int longest_lag = 2;
constexpr int shortest_stretch = 11;  // years

struct Lag {
  int years;
  std::string_view label;
};
constexpr std::array<Lag, 5> lags = {{{-2, "-2"}, {-1, "-1"}, {0, " 0"}, {1, "+1"}, {2, "+2"}}};

const EditFormat correlation_edit{"(F5.2)"};

// The correlation of these years of the reference with the sample's, read `lag` years later, as text.
std::string correlation_text(const SeriesStore& store, YearSpan years, int lag) {
  const int sample = store.nd + 1, reference = store.nd + 2;
  const int n = static_cast<int>(years.count());
  const PoolWindow a(store, store.ad(sample) + years.first + lag - store.fy(sample), n);
  const PoolWindow b(store, store.ad(reference) + years.first - store.fy(reference), n);
  Table<bool> both(n);
  mark_present(a.present(0, n), b.present(0, n), both.range(1, n));
  const MaskedCorrelation c = covmiss(a.values(0, n), b.values(0, n), both.range(1, n));
  return c.valid ? edit(correlation_edit, c.r) : " None";
}

// Below the bar, where nothing else stands.
void write_year(const Workspace& w, std::int64_t year, int middle) {
  const std::string text = std::to_string(year);
  const auto half = static_cast<int>(std::lround(text_width(text, text_height, Font::arial) / 2));
  w.plot.winfnt("Arial");
  w.plot.messag(text, middle - half, strip_top + bar_height + 12);
}

void captions(const Workspace& w) {
  w.plot.winfnt("Arial");
  w.plot.simplx();
  w.plot.messag("Correlation to", 660, 1480);
  w.plot.messag("  left of bar", 660, 1520);
  w.plot.messag("Correlation to", 2000, 1480);
  w.plot.messag(" right of bar", 2000, 1520);
}

}  // namespace

void cor_graph(const Workspace& w) {
  const int sample = w.nd + 1, reference = w.nd + 2;
  const std::int64_t bar = (std::int64_t{w.fs} + w.ls) / 2;
  const YearSpan both = common({w.fy(sample), w.ly(sample)}, {w.fy(reference), w.ly(reference)});
  if (both.last - both.first < 20 || bar + longest_lag < both.first || bar - longest_lag > both.last) return;
  // Two years are kept at the sample's ends, so that the shifted sample stays inside its data.
  const YearSpan left{std::max({both.first, std::int64_t{w.fy(sample)} + longest_lag, bar - w.seg}), bar};
  const YearSpan right{bar, std::min({both.last, std::int64_t{w.ly(sample)} - longest_lag, bar + w.seg - 1})};
  w.plot.setclr(colour::ink);
  const int x = static_cast<int>(std::lround(200 + static_cast<double>(bar - w.fs) * w.scx));
  const int width = static_cast<int>(std::lround(w.scx));
  w.plot.rectangle(x, strip_top, x + width, strip_top + bar_height);
  if (w.careful.has(Mend::bar_year)) write_year(w, bar, x + width / 2);
  w.plot.winfnt("Times New Roman");
  for (const Lag& lag : lags) {
    const int y = text_y + text_step * lag.years;
    if (left.count() >= shortest_stretch)
      w.plot.messag(correlation_text(w, left, lag.years) + " < " + std::string(lag.label), x + left_text, y);
  }
  for (const Lag& lag : lags) {
    const int y = text_y + text_step * lag.years;
    if (right.count() >= shortest_stretch)
      w.plot.messag(std::string(lag.label) + " > " + correlation_text(w, right, lag.years), x + right_text,
                    y);
  }
  captions(w);
}

}  // namespace vorn
