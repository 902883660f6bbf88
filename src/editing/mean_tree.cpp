#include "editing/mean_tree.h"

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
  int years() const { return last - first + 1; }  // less than 1 of cores without rings
};

Span span_of_chosen(const Workspace& w) {
  Span span{w.fy(w.chc(1)), w.ly(w.chc(1))};
  for (int j = 2; j <= w.chs; ++j) {
    span.first = std::min(span.first, w.fy(w.chc(j)));
    span.last = std::max(span.last, w.ly(w.chc(j)));
  }
  return span;
}

// What was typed into the chooser's field; keys that are no characters count as blanks.
Label typed_name(const Workspace& w) {
  Label typed = w.b(button::mean_name).label;
  for (char& c : typed.characters()) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < ' ' || byte == 127) c = ' ';
  }
  return typed;
}

// The field's own text, "Mean Name" or "Mean Core", is too long to be taken for a name.
Name mean_name(const Workspace& w) {
  const Label field = typed_name(w);
  const std::string_view typed = field.trimmed();
  if (typed.size() >= 2 && typed.size() <= Name::length) return typed;
  const Name& first = w.nam(w.chc(1));
  const std::size_t length = std::clamp<std::size_t>(first.trimmed().size(), 2, Name::length - 1);
  return std::string(first.view().substr(0, length)) + "M";
}

// Opens entry m = nc + 1 for `n` rings: the chronology entries behind it move up by one number and n places.
void insert_entry(Workspace& w, int n) {
  const int end = w.ad(w.nd + 1) - 1;
  // Deliberate: [pair-keeps-numbers] tr1 and tr2 do not follow the chronologies, which move up by one.
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

// Makes the entry just opened, nc, one of all years of the span, without widths.
void start_mean(Workspace& w, const Name& name, const Span& span) {
  const int m = w.nc;
  w.nam(m) = name;
  w.fy(m) = span.first;
  w.ly(m) = span.last;
  w.yr(m) = span.years();
  std::ranges::fill(w.widths(m), 0.0);
  std::ranges::fill(w.presence(m), false);
  std::ranges::fill(w.iwk1.range(1, span.years()), 0);
}

// Adds one chosen core to the sums; iwk1 counts. Rings of a core whose length and years contradict each other
// may lie behind the span; they are passed over.
void add_core(Workspace& w, int core) {
  const int mean = w.nc;
  for (int j = 0; j < w.yr(core); ++j) {
    const int from = w.ad(core) + j;
    const int k = w.fy(core) - w.fy(mean) + 1 + j;
    if (k > w.yr(mean)) return;
    const int to = w.ad(mean) + k - 1;
    // Deliberate: [order-of-choice] the mean's own presence decides: the order of choice tells in the result.
    w.xok.put(to, w.xok.at(to) || w.xok.at(from));
    if (!w.xok.at(to)) continue;
    w.x.put(to, w.x.at(to) + w.x.at(from));
    ++w.iwk1(k);
  }
}

void divide_by_counts(Workspace& w) {
  const auto widths = w.widths(w.nc);
  const auto counts = w.iwk1.range(1, w.yr(w.nc));
  for (std::size_t k = 0; k < widths.size(); ++k) {
    if (counts[k] > 1) widths[k] /= counts[k];
  }
}

bool refuse(Workspace& w, std::string_view why) {
  out_err(w, why);
  return false;
}

}  // namespace

bool mean_create(Workspace& w) {
  constexpr std::string_view no_overlap = "Warning - trees do not overlap ?";
  if (w.nd >= entry_limit || w.nc >= max_series) return refuse(w, "Would be too many trees");
  if (w.chs < 2) return refuse(w, "Need more than one core");
  const Span span = span_of_chosen(w);
  const int n = span.years();
  if (n < 1) return refuse(w, no_overlap);
  // Deliberate: [long-mean] one longer than any chronology is refused, though the pool may have room.
  if (n > max_years || n + w.ad(w.nd + 1) - 1 >= max_pool) return refuse(w, "Would be too many rings");
  const Name name = mean_name(w);
  insert_entry(w, n);
  start_mean(w, name, span);
  // Deliberate: [twice-in-a-mean] a core marked twice counts twice.
  for (int j = 1; j <= w.chs; ++j) add_core(w, w.chc(j));
  // Deliberate: [mean-with-a-gap] the new core stays as it is, sums and all.
  if (std::ranges::count(w.iwk1.range(1, n), 0) > 0) return refuse(w, no_overlap);
  divide_by_counts(w);
  data_man2(w);
  set_chs(w);
  return true;
}

}  // namespace vorn
