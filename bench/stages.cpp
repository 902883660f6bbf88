#include "stages.h"

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
#include "editing/working_pair.h"
#include "floors.h"
#include "formats/compact.h"
#include "formats/heidelberg.h"
#include "formats/recognition.h"
#include "formats/tucson_raw.h"
#include "graphs/series_graph.h"
#include "measured_table.h"
#include "menus/choose.h"
#include "menus/main_program.h"
#include "page_picture.h"
#include "quiet_desk.h"
#include "statistics/best_match.h"
#include "statistics/correlation_report.h"
#include "statistics/lag_table.h"
#include "statistics/statistics_report.h"
#include "statistics/tree_correlations.h"
#include "toolkit/buttons.h"
#include "toolkit/scrolling.h"
#include "whole_process.h"

namespace vorn::bench {
namespace {

constexpr int repetitions = 9;
constexpr double shortest_measurement = 0.02;  // seconds
constexpr double click = 0.060;                // what a click on a menu may take

// One row of the table.
struct Stage {
  std::string name;
  char letter;
  std::function<void(Desk&)> work;
  std::function<double(const Floors&)> floor = {};
  double mark = 0, most = 0;  // see counter
  std::function<void(Desk&)> before = {}, after = {};
  int times = 1;
};

// --- The program at work.

Event click_on(const Workspace& w, int n) {
  const Button& button = w.b(n);
  return {(button.x1 + button.x2) / 2, (button.y1 + button.y2) / 2, Event::click};
}

// Starts the program in the current folder, and ends it when the start menu waits.
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

void read_all(Workspace& w) {
  for (w.cf = w.nfil; w.cf >= 1; --w.cf) {
    if (w.rftype(w.cf) == file_format::tucson_raw) read_raw(w);
    if (w.rftype(w.cf) == file_format::heidelberg) read_heidel(w);
    if (w.rftype(w.cf) == file_format::compact) read_compact(w);
  }
  w.cf = 1;
}

void recognise_all(Workspace& w) {
  for (w.cf = w.nfil; w.cf >= 1; --w.cf) find_rftyp(w);
  w.cf = 1;
}

void splines(Workspace& w) {
  for (int i = 1; i <= w.nc; ++i) spline(w.widths(i), w.ss, w.wk1.range(1, w.yr(i)));
}

void models(Workspace& w) {
  std::array<double, max_ar_order> coefficients{};
  for (int i = 1; i <= w.nc; ++i) armod2(w.index(i), w.wk1.range(1, w.yr(i)), coefficients, w.jpr);
}

void all_indices(Workspace& w) {
  for (int i = 1; i <= w.nc; ++i) data_man(w, i);
}

void switch_to(Workspace& w, bool spline, bool model, bool logarithm) {
  w.splineon = spline, w.aron = model, w.logon = logarithm;
}

void usual_state(Desk& desk) {
  switch_to(*desk.w, true, true, true);
  desk.w->ss = 32;
  data_man2(*desk.w);
}

// What a user does who tries another spline: a number typed, "Stats Rep" pressed.
void other_spline_and_report(Workspace& w) {
  w.ss = w.ss == 32 ? 40 : 32;
  data_man2(w);
  stats_rep(w);
}

// A core against the chronology of its file; the first two series where there are no more.
void set_a_pair(Desk& desk) {
  Workspace& w = *desk.w;
  w.tr1 = 1;
  w.tr2 = w.nc > 2 ? w.nc + w.cf : 2;
  set_chs(w);
}

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

// --- The rows.

std::vector<Stage> kernel_stages() {
  const auto on = [](void (*work)(Workspace&)) { return [work](Desk& desk) { work(*desk.w); }; };
  return {
      {"recognise (a)", 'a', on(recognise_all), &Floors::recognising},
      {"recognise (d)", 'd', on(recognise_all), &Floors::recognising},
      {"read, with estimates (a)", 'a', on(read_all), &Floors::reading, 0.040, 0, {}, usual_state},
      {"read, with estimates (f)", 'f', on(read_all), &Floors::reading, 0, 0, {}, usual_state},
      {"read, with estimates (c)", 'c', on(read_all), &Floors::reading, 0, 0, {}, usual_state},
      {"read, with estimates (d)", 'd', on(read_all), &Floors::reading, 0, 0, {}, usual_state},
      {"missing-ring estimates (a)", 'a', [](Desk& desk) { mdet_miss(*desk.w, 1, desk.w->nc); },
       &Floors::estimates},
      {"spline (a)", 'a', on(splines), &Floors::spline},
      {"autoregressive model (a)", 'a', on(models), &Floors::model},
      {"spline and model, into the store (a)", 'a', on(all_indices),
       [](const Floors& floors) { return floors.spline() + floors.model(); }, 0.150, 0,
       [](Desk& desk) { switch_to(*desk.w, true, true, false); }, usual_state},
      {"spline and model, into the store (f)", 'f', on(all_indices),
       [](const Floors& floors) { return floors.spline() + floors.model(); }, 0, 0,
       [](Desk& desk) { switch_to(*desk.w, true, true, false); }, usual_state},
      {"logarithm and chronology (a)", 'a', on(data_man2), &Floors::logarithm, 0, 0,
       [](Desk& desk) { switch_to(*desk.w, false, false, true); }, usual_state},
  };
}

std::vector<Stage> statistics_stages() {
  const auto rbar_of = [](Desk& desk) { rbar(*desk.w, desk.w->wk1.range(1, max_series)); };
  const auto cbar_of = [](Desk& desk) { cbar(*desk.w, desk.w->wk1.range(1, max_series)); };
  const auto corr_prn = [](Desk& desk) {
    data_man2(*desk.w);
    cor_report(*desk.w);
  };
  const auto stats_prn = [](Desk& desk) { other_spline_and_report(*desk.w); };
  const auto lags = [](Desk& desk) { cor_tab(*desk.w, desk.w->fy(desk.w->nd + 1)); };
  const auto best = [](Desk& desk) {
    desk.plot.erase();
    cor_best(*desk.w);
  };
  return {
      {"`rbar` (a)", 'a', rbar_of, &Floors::pairs},
      {"`rbar` (f)", 'f', rbar_of, &Floors::pairs},
      {"`rbar` (b)", 'b', rbar_of, &Floors::pairs, 0, 3},
      {"`rbar` (c)", 'c', rbar_of, &Floors::pairs},
      {"`cbar` (a)", 'a', cbar_of, &Floors::with_rest},
      {"`Corr.prn` and its indices (a)", 'a', corr_prn, &Floors::segment_cells, 1.0, 0, {}, usual_state},
      {"`Corr.prn` and its indices (f)", 'f', corr_prn, &Floors::segment_cells, 0, 0, {}, usual_state},
      {"`Corr.prn` and its indices (c)", 'c', corr_prn, &Floors::segment_cells, 0, 0, {}, usual_state},
      {"other spline, `Stats.prn` (a)", 'a', stats_prn, &Floors::pairs, 0.5, 0, {}, usual_state},
      {"other spline, `Stats.prn` (b)", 'b', stats_prn, &Floors::pairs, 0, 0, {}, usual_state},
      {"`cor_tab` (a)", 'a', lags, &Floors::lag_table, click, 0, set_a_pair},
      {"`cor_tab` (c)", 'c', lags, &Floors::lag_table, click, 0, set_a_pair},
      {"`cor_tab` (e)", 'e', lags, &Floors::lag_table, click, 0, set_a_pair},
      {"`cor_best` (a)", 'a', best, &Floors::best_match, click, 0, set_a_pair},
      {"`cor_best` (c)", 'c', best, &Floors::best_match, click, 0, set_a_pair},
      {"`cor_best` (e)", 'e', best, &Floors::best_match, click, 0, set_a_pair},
  };
}

std::vector<Stage> page_stages() {
  const auto paint = [](Desk& desk) { paint_picture(desk.plot.page()); };
  // The sample moved by a year, and all drawn again.
  const auto graph = [](Desk& desk) {
    desk.w->mous = button::sample_first + 2;
    topbot(*desk.w, vv[(button::sample_first + 2) % 6]);
    plot_graph(*desk.w);
  };
  return {
      {"chooser page, a click (a)", 'a', turn_pages, {}, click, 0, set_a_pair, {}, pages_turned},
      {"chooser page, a click (f)", 'f', turn_pages, {}, click, 0, set_a_pair, {}, pages_turned},
      {"chooser page, painted (a)", 'a', paint, {}, click, 0, show_chooser},
      {"cross-dating page, a click (a)", 'a', graph, {}, click, 0, set_a_pair},
      {"cross-dating page, a click (f)", 'f', graph, {}, click, 0, set_a_pair},
      {"cross-dating page, a click (c)", 'c', graph, {}, click, 0, set_a_pair},
      {"cross-dating page, painted (a)", 'a', paint, {}, click, 0, show_graph},
  };
}

// Starts the program, and quits.
std::string start_script() {
  return "press " + std::to_string(button::quit) + "\n";
}

// A session in which every store is used: both reports, a pair, its lag table and best matches, a picture.
std::string long_session_script() {
  std::string script;
  for (const int n :
       {button::stats_report, button::correlation_report, button::crossdate, button::choose_cores,
        button::page_forward, button::chooser_exit, button::correlate, button::best_fit}) {
    script += "press " + std::to_string(n) + "\n";
  }
  script += "page page.png\n";
  for (const int n : {button::correlation_exit, button::exit_crossdating, button::quit}) {
    script += "press " + std::to_string(n) + "\n";
  }
  return script;
}

struct Process {
  std::string name;
  char letter;
  std::string script;
  double mark;
  bool floor_known;
};

std::vector<Process> processes() {
  return {
      {"whole start-up (a)", 'a', start_script(), 0.5, true},
      {"whole start-up (b)", 'b', start_script(), 1.3, true},
      {"whole start-up (c)", 'c', start_script(), 0.2, true},
      {"whole start-up (d)", 'd', start_script(), 0.5, true},
      {"whole session, with a picture (b)", 'b', long_session_script(), 0, false},
  };
}

// --- Running them.

class Laboratory {
 public:
  Laboratory(std::filesystem::path top, const MachineRates& rates) : top_(std::move(top)), rates_(rates) {}

  void measure(benchmark::State& state, const Stage& stage) {
    Desk& desk = loaded(stage.letter);
    if (stage.before) stage.before(desk);
    if (stage.floor) state.counters[counter::floor] = stage.floor(Floors(*desk.w, rates_));
    for ([[maybe_unused]] auto _ : state) stage.work(desk);
    if (stage.after) stage.after(desk);
    state.counters[counter::mark] = stage.mark;
    state.counters[counter::multiple] = stage.most;
    state.counters[counter::times] = stage.times;
  }

  void measure(benchmark::State& state, const Process& process) {
    if (process.floor_known) state.counters[counter::floor] = floor_of_start(process.letter);
    forget_loaded();  // so that two do not share the caches
    std::filesystem::current_path(top_ / std::string(1, process.letter));
    for ([[maybe_unused]] auto _ : state) {
      const ProcessCost cost = run_program_with(process.script);
      state.SetIterationTime(cost.wall);
      state.counters[counter::cpu] = cost.cpu;
      state.counters[counter::memory] = cost.megabytes;
    }
    state.counters[counter::mark] = process.mark;
  }

 private:
  void forget_loaded() {
    desk_.reset();
    letter_ = '\0';
  }

  Desk& loaded(char letter) {
    if (letter_ == letter) return *desk_;
    forget_loaded();
    std::filesystem::current_path(top_ / std::string(1, letter));
    desk_ = std::make_unique<Desk>();
    load(*desk_);
    letter_ = letter;
    return *desk_;
  }

  // Each is worked out once.
  double floor_of_start(char letter) {
    const auto known = floors_of_start_.find(letter);
    if (known != floors_of_start_.end()) return known->second;
    return floors_of_start_[letter] = Floors(*loaded(letter).w, rates_).start();
  }

  std::filesystem::path top_;
  MachineRates rates_;
  std::unique_ptr<Desk> desk_;
  char letter_ = '\0';
  std::map<char, double> floors_of_start_;
};

}  // namespace

void register_stages(const std::filesystem::path& top, const MachineRates& rates) {
  const auto laboratory = std::make_shared<Laboratory>(top, rates);
  for (const auto& stages : {kernel_stages(), statistics_stages(), page_stages()}) {
    for (const Stage& stage : stages) {
      benchmark::RegisterBenchmark(
          stage.name.c_str(),
          [laboratory, stage](benchmark::State& state) { laboratory->measure(state, stage); })
          ->MinTime(shortest_measurement)
          ->Repetitions(repetitions);
    }
  }
  for (const Process& process : processes()) {
    benchmark::RegisterBenchmark(
        process.name.c_str(),
        [laboratory, process](benchmark::State& state) { laboratory->measure(state, process); })
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(repetitions);
  }
}

}  // namespace vorn::bench
