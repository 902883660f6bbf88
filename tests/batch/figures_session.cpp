#include "batch/figures_session.h"

#include <algorithm>

namespace vorn {
namespace {

constexpr int names_on_page = 210, names_in_column = 30, page_step = 180;

std::string press(const std::string& button) {
  return "press " + button + "\n";
}

std::string enter(const std::string& button, int value) {
  return press(button) + "type " + std::to_string(value) + "\nenter\n";
}

// Picks entry k from the pages of the chooser, of which `offset` names are scrolled by.
std::string pick(int k, int entries, int& offset) {
  std::string script;
  const int farthest = std::max(entries - names_on_page, 0);
  while (k <= offset) {
    script += press("page_back");
    offset = std::max(offset - page_step, 0);
  }
  while (k > offset + names_on_page) {
    script += press("page_forward");
    offset = std::min(offset + page_step, farthest);
  }
  const int place = k - 1 - offset;
  const int x = 200 + static_cast<int>(2500.0 / 7 * (place / names_in_column + 0.3));
  const int y = 240 + static_cast<int>(1400.0 / names_in_column * (place % names_in_column + 0.5));
  return script + "click " + std::to_string(x) + " " + std::to_string(y) + "\n";
}

std::string settings_script(const Settings& settings) {
  const Settings first;
  std::string script;
  if (settings.splineon != first.splineon) script += press("spline_on");
  if (settings.aron != first.aron) script += press("ar_on");
  if (settings.logon != first.logon) script += press("log_on");
  if (settings.ss != first.ss) script += enter("spline_years", settings.ss);
  if (settings.jpr != first.jpr) script += enter("ar_order", settings.jpr);
  if (settings.seg != first.seg) script += enter("segment_length", settings.seg);
  if (settings.olap != first.olap) script += enter("segment_overlap", settings.olap);
  // The chronology is made anew when the pair is set.
  if (!script.empty()) script += press("crossdate") + press("exit_crossdating");
  return script;
}

// The reference is the last entry.
std::string tables_script(int entries, const std::vector<CoreTables>& tables) {
  if (tables.empty()) return "";
  std::string script = press("crossdate");
  int offset = 0, core = 0;
  for (const CoreTables& table : tables) {
    ++core;
    script += press("choose_cores") + press("top_of_pair") + press("bottom_of_pair");
    script += pick(core, entries, offset) + pick(entries, entries, offset);
    script += press("chooser_exit") + press("correlate") + "page " + page_name(core, 0) + "\n";
    for (std::size_t k = 0; k < table.start_years.size(); ++k)
      script += enter("correlation_start", table.start_years[k]) + "page " + page_name(core, k + 1) + "\n";
    script += press("correlation_exit");
  }
  return script + press("exit_crossdating");
}

}  // namespace

std::string page_name(int core, std::size_t page) {
  return "lags" + std::to_string(core) + "-" + std::to_string(page) + ".txt";
}

std::string session(int cores, int files, const Settings& settings, const std::vector<CoreTables>& tables) {
  std::string script;
  if (cores > 0) script += settings_script(settings) + press("stats_report") + press("correlation_report");
  return script + press("crn_column") + press("save_crn") + tables_script(cores + files, tables) +
         press("quit");
}

}  // namespace vorn
