#include <benchmark/benchmark.h>

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "chronology/burg_model.h"
#include "chronology/index_pipeline.h"
#include "chronology/missing_rings.h"
#include "chronology/spline.h"
#include "editing/ring_edits.h"
#include "editing/working_pair.h"
#include "floors.h"
#include "formats/layouts.h"
#include "graphs/best_match.h"
#include "graphs/series_graph.h"
#include "loading/chronology_summary.h"
#include "loading/startup.h"
#include "measured_table.h"
#include "menus/choose.h"
#include "menus/cor_menu.h"
#include "menus/cross_menu.h"
#include "menus/main_program.h"
#include "page_picture.h"
#include "quiet_desk.h"
#include "records/text_file.h"
#include "seeded_random.h"
#include "stage.h"
#include "statistics/best_match.h"
#include "statistics/correlation.h"
#include "statistics/correlation_report.h"
#include "statistics/lag_table.h"
#include "statistics/pair_correlations.h"
#include "statistics/sliding_match.h"
#include "statistics/statistics_report.h"
#include "statistics/tree_correlations.h"
#include "toolkit/buttons.h"
#include "toolkit/page_troubles.h"
#include "toolkit/scrolling.h"

namespace vorn::bench {
namespace {

constexpr double click = 0.060;  // what a click on a menu may take

// On a collection four times as large: what does not depend on it, and what grows with its rings. Caches and
// other programs may cost the rest; growth with the square would be 16 times.
constexpr double same = 2, linear = 6;

Stage growing(double most, Stage stage) {
  stage.growth = most;
  return stage;
}

// --- The program at work.

Event click_on(const Workspace& w, ButtonNumber n) {
  const Button& button = w.b(n);
  return {(button.x1 + button.x2) / 2, (button.y1 + button.y2) / 2, Event::click};
}

void read_all(Workspace& w) {
  PageTroubles troubles(w);
  for (w.cf = w.nfil; w.cf >= 1; --w.cf) {
    if (!holds_ring_widths(w.rftype(w.cf))) continue;
    const FileName name = w.cnam(w.cf);
    row_of(w.rftype(w.cf))->read_cores(w, {w.files, name.view(), w.rfhead(w.cf), troubles});
  }
  w.cf = 1;
}

void recognise_all(Workspace& w) {
  for (w.cf = w.nfil; w.cf >= 1; --w.cf) find_rftyp(w);
  w.cf = 1;
}

void splines(Workspace& w) {
  SplineFactor factor(w.ss);
  for (int i = 1; i <= w.nc; ++i) spline(w.widths(i), factor, w.wk1.range(1, w.yr(i)));
}

void models(Workspace& w) {
  std::array<double, max_ar_order> coefficients{};
  for (int i = 1; i <= w.nc; ++i) armod2(w.index(i), w.wk1.range(1, w.yr(i)), coefficients, w.jpr);
}

void switch_to(Workspace& w, bool spline, bool model, bool logarithm) {
  w.splineon = spline, w.aron = model, w.logon = logarithm;
}

void usual_state(Desk& desk) {
  switch_to(*desk.w, true, true, true);
  desk.w->ss = 32;
  data_man2(*desk.w);
}

// Nothing fails here.
struct NoTroubles : Troubles {
  void tell(const Trouble& trouble) override { throw std::runtime_error(trouble.label + trouble.shown); }
};

// What a user does who tries another spline: a number typed, "Stats Rep" pressed.
void other_spline_and_report(Workspace& w) {
  w.ss = w.ss == 32 ? 40 : 32;
  data_man2(w);
  NoTroubles none;
  stats_rep(w, none);
}

// A core against the chronology of its file; the first two series where there are no more.
void set_a_pair(Desk& desk) {
  Workspace& w = *desk.w;
  w.tr1 = 1;
  w.tr2 = w.nc > 2 ? w.nc + w.cf : 2;
  set_chs(w);
}

// Presses buttons, one at each wait, while `menu` runs.
void play(Desk& desk, const std::function<void(Workspace&)>& menu, const std::vector<ButtonNumber>& buttons) {
  std::size_t next = 0;
  desk.screen.answer = [&] { return click_on(*desk.w, buttons.at(next++)); };
  menu(*desk.w);
  desk.screen.answer = {};
}

void crossdate_and_back(Desk& desk) {
  play(desk, cross_menu, {button::exit_crossdating});
}

void see_correlations(Desk& desk) {
  play(desk, cor_menu, {button::best_fit, button::correlation_exit});
}

void choose_and_back(Desk& desk) {
  play(desk, choose, {button::chooser_exit});
}

// A ring put into the first core and saved; then taken out again.
void save_a_ring(Workspace& w) {
  w.insdel = w.fy(1) + 50;
  ins_year(w, w.nd + 1, false);
  save_tree(w, w, 1);
  del_year(w, w.nd + 1);
  save_tree(w, w, 1);
}

void delete_a_core(Desk& desk) {
  play(desk, choose, {button::delete_core, button::chooser_do_it, button::chooser_exit});
}

void load_the_file(Desk& desk) {
  Workspace& w = *desk.w;
  init_raw(w, w.rftype(w.cf));
  show_crns(w);
}

// --- What the plain definitions take, which the fast ways are tested against.

std::vector<SeriesView> trees(const Workspace& w) {
  std::vector<SeriesView> all;
  for (int i = 1; i <= w.nc; ++i) all.push_back({w.fy(i), w.ax.range(w.ad(i), w.yr(i))});
  return all;
}

void match_every_place(Desk& desk) {
  const Workspace& w = *desk.w;
  const int sample = w.nd + 1, reference = w.nd + 2;
  const int length = std::max(w.seg, w.yr(sample) / 8);
  for (int at = 0; at + length <= w.yr(sample); at += length - 1) {
    const auto values = w.ax.range(w.ad(sample) + at, length);
    for (int place = 0; place + length <= w.yr(reference); ++place) {
      benchmark::DoNotOptimize(covmiss(values, w.ax.range(w.ad(reference) + place, length),
                                       w.xok.range(w.ad(reference) + place, length)));
    }
  }
}

// Reads all lines of the file; `how` reads one.
template <class How>
void read_lines(const Workspace& w, How how) {
  TextInput file;
  Name name;
  std::int32_t year = 0;
  std::array<std::int32_t, 10> values{};
  if (file.open(w.files, w.cnam(1).view()) != status::ok) throw std::runtime_error("no such file");
  while (how(file, name, year, values) == status::ok) benchmark::DoNotOptimize(values);
}

const EditFormat line_edit("(A8,I4,10I6)");

void read_row_by_row(Desk& desk) {
  read_lines(*desk.w, [](TextInput& file, Name& name, std::int32_t& year, auto& v) {
    return file.read(line_edit, name, year, std::span<std::int32_t>(v));
  });
}

void read_item_by_item(Desk& desk) {
  read_lines(*desk.w, [](TextInput& file, Name& name, std::int32_t& year, auto& v) {
    return file.read(line_edit, name, year, v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8], v[9]);
  });
}

// --- What is seen.

constexpr int pages_turned = 20;

// Opens the chooser, turns its pages to and fro, and leaves it.
void turn_pages(Desk& desk) {
  Workspace& w = *desk.w;
  int turns = 0;
  desk.screen.answer = [&w, &turns] {
    if (++turns == pages_turned) return click_on(w, button::chooser_exit);
    return click_on(w, turns % 2 == 1 ? button::page_forward : button::page_back);
  };
  choose(w);
  desk.screen.answer = {};
}

// The chooser's page as it is left behind.
void show_chooser(Desk& desk) {
  set_a_pair(desk);
  desk.screen.answer = [&desk] { return click_on(*desk.w, button::chooser_exit); };
  choose(*desk.w);
  desk.screen.answer = {};
}

void show_graph(Desk& desk) {
  set_a_pair(desk);
  plot_graph(*desk.w);
}

void show_all_years(Desk& desk) {
  desk.w->sl = max_years;
  show_graph(desk);
}

// --- A sample on the references of a folder.

constexpr std::size_t references = 9'000, years_of_reference = 300, years_of_sample = 150, least_overlap = 40;

std::vector<double> noise(std::size_t years, std::uint64_t seed) {
  examples::Random random(seed);
  std::vector<double> values(years);
  for (double& value : values) value = random.between(-10'000, 10'000) / 1e4;
  return values;
}

// The sums of products alone, in single precision, of the years that are in common: all of the sample's where
// it lies within the reference, fewer at either end.
double floor_of_references(const Floors& floors) {
  constexpr double within = years_of_reference - years_of_sample + 1;
  double years = within * years_of_sample;
  for (std::size_t common = least_overlap; common < years_of_sample; ++common)
    years += 2 * static_cast<double>(common);
  return floors.single_precision(references * years);
}

void date_on_references(Desk&) {
  static const std::vector<std::vector<float>> all = [] {
    std::vector<std::vector<float>> made;
    for (std::uint64_t k = 0; k < references; ++k)
      made.push_back(standardised(noise(years_of_reference, k + 1)));
    return made;
  }();
  SlidingMatch match(noise(years_of_sample, 0), 0.1, least_overlap);
  for (const auto& reference : all) benchmark::DoNotOptimize(match.best_on(reference, 0.1));
}

// --- The rows.

std::vector<Stage> kernel_stages() {
  const auto on = [](void (*work)(Workspace&)) { return [work](Desk& desk) { work(*desk.w); }; };
  const auto indices = [](Desk& desk) { data_man_cores(*desk.w); };
  return {
      {"recognise (a)", 'a', on(recognise_all), &Floors::recognising},
      {"recognise (d)", 'd', on(recognise_all), &Floors::recognising},
      growing(linear,
              {"read, with estimates (a)", 'a', on(read_all), &Floors::reading, 0.040, 0, {}, usual_state}),
      {"read, with estimates (f)", 'f', on(read_all), &Floors::reading, 0, 0, {}, usual_state},
      {"read, with estimates (c)", 'c', on(read_all), &Floors::reading, 0, 0, {}, usual_state},
      {"read, with estimates (d)", 'd', on(read_all), &Floors::reading, 0, 0, {}, usual_state},
      growing(linear, {"missing-ring estimates (a)", 'a',
                       [](Desk& desk) { mdet_miss(*desk.w, 1, desk.w->nc); }, &Floors::estimates}),
      {"missing-ring estimates (f)", 'f', [](Desk& desk) { mdet_miss(*desk.w, 1, desk.w->nc); },
       &Floors::estimates},
      {"spline (a)", 'a', on(splines), &Floors::spline},
      {"autoregressive model (a)", 'a', on(models), &Floors::model},
      growing(linear, {"spline and model, into the store (a)", 'a', indices,
                       [](const Floors& floors) { return floors.spline() + floors.model(); }, 0.150, 0,
                       [](Desk& desk) { switch_to(*desk.w, true, true, false); }, usual_state}),
      {"spline and model, into the store (f)", 'f', indices,
       [](const Floors& floors) { return floors.spline() + floors.model(); }, 0, 0,
       [](Desk& desk) { switch_to(*desk.w, true, true, false); }, usual_state},
      growing(linear, {"logarithm and chronology (a)", 'a', on(data_man2), &Floors::logarithm, 0, 0,
                       [](Desk& desk) { switch_to(*desk.w, false, false, true); }, usual_state}),
      {"logarithm and chronology (f)", 'f', on(data_man2), &Floors::logarithm, 0, 0,
       [](Desk& desk) { switch_to(*desk.w, false, false, true); }, usual_state},
  };
}

std::vector<Stage> statistics_stages() {
  const auto rbar_of = [](Desk& desk) {
    desk.w->rbar_kept.valid = false;
    rbar(*desk.w, desk.w->wk1.range(1, max_series));
  };
  const auto cbar_of = [](Desk& desk) { cbar(*desk.w, *desk.w, *desk.w, desk.w->wk1.range(1, max_series)); };
  const auto corr_prn = [](Desk& desk) {
    data_man2(*desk.w);
    NoTroubles none;
    cor_report(*desk.w, none);
  };
  // With what an earlier measurement had of that spline nothing would be left to do.
  const auto stats_prn = [](Desk& desk) {
    desk.w->rbar_kept.valid = false;
    other_spline_and_report(*desk.w);
  };
  const auto lags = [](Desk& desk) { cor_tab(*desk.w, *desk.w, *desk.w, desk.w->fy(desk.w->nd + 1)); };
  const auto best = [](Desk& desk) {
    desk.plot.erase();
    cor_best(*desk.w);
  };
  return {
      {"`rbar` (a)", 'a', rbar_of, &Floors::pairs},
      {"`rbar` (f)", 'f', rbar_of, &Floors::pairs},
      {"`rbar` (b)", 'b', rbar_of, &Floors::pairs, 0, 0.2},
      {"`rbar` (c)", 'c', rbar_of, &Floors::pairs},
      growing(linear, {"`cbar` (a)", 'a', cbar_of, &Floors::with_rest}),
      {"`cbar` (f)", 'f', cbar_of, &Floors::with_rest},
      growing(
          linear,
          {"`Corr.prn` and its indices (a)", 'a', corr_prn, &Floors::segment_cells, 1.0, 0, {}, usual_state}),
      {"`Corr.prn` and its indices (f)", 'f', corr_prn, &Floors::segment_cells, 0, 0, {}, usual_state},
      {"`Corr.prn` and its indices (c)", 'c', corr_prn, &Floors::segment_cells, 0, 0, {}, usual_state},
      {"other spline, `Stats.prn` (a)", 'a', stats_prn, &Floors::pairs, 0.5, 0, {}, usual_state},
      {"other spline, `Stats.prn` (b)", 'b', stats_prn, &Floors::pairs, 0, 0, {}, usual_state},
      growing(same, {"`cor_tab` (a)", 'a', lags, &Floors::lag_table, click, 0, set_a_pair}),
      {"`cor_tab` (f)", 'f', lags, &Floors::lag_table, click, 0, set_a_pair},
      {"`cor_tab` (c)", 'c', lags, &Floors::lag_table, click, 0, set_a_pair},
      {"`cor_tab` (e)", 'e', lags, &Floors::lag_table, click, 0, set_a_pair},
      growing(same, {"`cor_best` (a)", 'a', best, &Floors::best_match, click, 0, set_a_pair}),
      {"`cor_best` (f)", 'f', best, &Floors::best_match, click, 0, set_a_pair},
      {"`cor_best` (c)", 'c', best, &Floors::best_match, click, 0, set_a_pair},
      {"`cor_best` (e)", 'e', best, &Floors::best_match, click, 0, set_a_pair},
  };
}

std::vector<Stage> page_stages() {
  const auto paint = [](Desk& desk) { paint_picture(desk.plot.page()); };
  // The sample moved by a year, and all drawn again.
  const auto graph = [](Desk& desk) {
    topbot(*desk.w, 1, -1);
    plot_graph(*desk.w);
  };
  return {
      growing(same,
              {"chooser page, a click (a)", 'a', turn_pages, {}, click, 0, set_a_pair, {}, pages_turned}),
      {"chooser page, a click (f)", 'f', turn_pages, {}, click, 0, set_a_pair, {}, pages_turned},
      {"chooser page, painted (a)", 'a', paint, {}, click, 0, show_chooser},
      growing(same, {"cross-dating page, a click (a)", 'a', graph, {}, click, 0, set_a_pair}),
      {"cross-dating page, a click (f)", 'f', graph, {}, click, 0, set_a_pair},
      {"cross-dating page, a click (c)", 'c', graph, {}, click, 0, set_a_pair},
      growing(same,
              {"Crossdate and back, a click (a)", 'a', crossdate_and_back, {}, click, 0, set_a_pair, {}, 2}),
      {"Crossdate and back, a click (f)", 'f', crossdate_and_back, {}, click, 0, set_a_pair, {}, 2},
      growing(same,
              {"Choose Cores and back, a click (a)", 'a', choose_and_back, {}, click, 0, set_a_pair, {}, 2}),
      {"Choose Cores and back, a click (f)", 'f', choose_and_back, {}, click, 0, set_a_pair, {}, 2},
      growing(
          same,
          {"Correlate and Best Fit, a click (a)", 'a', see_correlations, {}, click, 0, set_a_pair, {}, 3}),
      {"Correlate and Best Fit, a click (f)", 'f', see_correlations, {}, click, 0, set_a_pair, {}, 3},
      {"a ring more, a click on Save Change (a)",
       'a',
       [](Desk& desk) { save_a_ring(*desk.w); },
       {},
       click,
       0,
       set_a_pair,
       {},
       2},
      {"a core deleted, the chooser left (a)", 'a', delete_a_core, {}, 0.5, 0, set_a_pair, load_the_file},
      {"another chronology, of that size (a)", 'a', load_the_file, {}, 0.5, 0},
      {"cross-dating page, painted (a)", 'a', paint, {}, click, 0, show_graph},
      {"cross-dating page, all years painted (e)", 'e', paint, {}, click, 0, show_all_years},
  };
}

// The fast ways and what they took the place of.
std::vector<Stage> plain_stages() {
  const auto told = [](Desk& desk, auto kernel) { benchmark::DoNotOptimize(kernel(trees(*desk.w))); };
  const auto plain_pairs = [told](Desk& desk) {
    told(desk, [](const auto& all) { return pair_correlations_plain(all, fewest_common_years); });
  };
  return {
      {"lines read row by row (a)", 'a', read_row_by_row, &Floors::reading},
      {"lines read item by item, plainly (a)", 'a', read_item_by_item, &Floors::reading},
      {"pairs in tiles (a)", 'a',
       [told](Desk& desk) {
         told(desk, [](const auto& all) { return pair_correlations_tiled(all, fewest_common_years); });
       },
       &Floors::pairs},
      {"pairs in tiles (b)", 'b',
       [told](Desk& desk) {
         told(desk, [](const auto& all) {
           return pair_correlations_tiled(all, fewest_common_years, {.threads = 1});
         });
       },
       &Floors::pairs, 0, 1.5},
      {"pairs one by one, plainly (a)", 'a', plain_pairs, &Floors::pairs},
      {"pairs in the way that is chosen (c)", 'c',
       [told](Desk& desk) {
         told(desk, [](const auto& all) { return pair_correlations(all, fewest_common_years); });
       },
       &Floors::pairs},
      {"pairs one by one, plainly (c)", 'c', plain_pairs, &Floors::pairs},
      {"150 rings on 9,000 references (g)", 'g', date_on_references, floor_of_references, 0.050, 0,
       date_on_references},
      {"best matches by estimates (e)", 'e', [](Desk& desk) { best_matches(*desk.w); }, &Floors::best_match,
       0, 0, set_a_pair},
      {"best matches at every place, plainly (e)", 'e', match_every_place, &Floors::best_match, 0, 0,
       set_a_pair},
  };
}

std::string press(ButtonNumber n) {
  return "press " + std::to_string(plain(n)) + "\n";
}

// Starts the program, and quits.
std::string start_script() {
  return press(button::quit);
}

// A session in which every store is used: both reports, a pair, its lag table and best matches, a picture.
std::string long_session_script() {
  std::string script;
  for (const ButtonNumber n :
       {button::stats_report, button::correlation_report, button::crossdate, button::choose_cores,
        button::page_forward, button::chooser_exit, button::correlate, button::best_fit}) {
    script += press(n);
  }
  script += "page page.png\n";
  for (const ButtonNumber n : {button::correlation_exit, button::exit_crossdating, button::quit}) {
    script += press(n);
  }
  return script;
}

}  // namespace

void load(Desk& desk) {
  desk.screen.answer = [&desk]() -> Event {
    if (desk.w->b(button::quit).on && desk.w->nc > 0) throw ProgramEnd(EndReason::closed);
    throw std::runtime_error("a message while loading");
  };
  try {
    run_program(*desk.w);
  } catch (const ProgramEnd&) {
  }
  desk.screen.answer = {};
}

std::vector<Stage> all_stages() {
  std::vector<Stage> all = kernel_stages();
  for (const auto& more : {statistics_stages(), page_stages(), plain_stages()})
    all.insert(all.end(), more.begin(), more.end());
  return all;
}

std::vector<Process> all_processes() {
  constexpr double small = 25;  // MB, of a session on one file
  // Of a call of vorn_replay for each of 1,000 files, as long as each took when the mark was set: 8.6 ms.
  constexpr double a_twentieth = 0.430;
  return {
      {"whole start-up (a)", 'a', start_script(), 0.3, true},
      {"whole start-up (b)", 'b', start_script(), 0.3, true},
      {"whole start-up (c)", 'c', start_script(), 0.05, true},
      {"whole start-up (d)", 'd', start_script(), 0.2, true},
      {"whole session, with a picture (b)", 'b', long_session_script(), 0, false},
      {"one file of an archive, its report (g)",
       'g',
       press(button::stats_report) + press(button::quit),
       0,
       false,
       small,
       {},
       1},
      {"1,000 files in one call (g)",
       'g',
       "",
       a_twentieth,
       false,
       small,
       {VORN, "stats", "--json", "-j", "1", "archive"},
       1'000},
  };
}

}  // namespace vorn::bench
