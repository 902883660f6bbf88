#include "desk/action_table.h"

#include <algorithm>
#include <deque>
#include <string>
#include <vector>

#include "workspace/careful.h"

namespace vorn {
namespace {

constexpr bool window = true;  // the window does it
constexpr bool line = true;    // a line is drawn above it
constexpr bool on_off = true;  // it switches something

constexpr Action table[] = {
    {{"open_folder", Menu::file, "Open Folder…", "Ctrl+O", window}},
    {{"recent_folders", Menu::file, "Recent Folders", "", window}},
    {{"open_files", Menu::file, "Open Files…", "Ctrl+Shift+O", window}},
    {{"take_up", Menu::file, "Take up the Earlier Session"}},
    {{"save_raw", Menu::file, "Save Raw", "Ctrl+Shift+S", !window, line}, {button::save_raw}},
    {{"save_corrected", Menu::file, "Save Corrected File…", "", window}},
    {{"what_changed", Menu::file, "What Did I Change?", "Ctrl+Shift+D", window}},
    {{"use_corrected", Menu::file, "Use the Corrected File from Now On", "", window}},
    {{"save_crn", Menu::file, "Save Crn"}, {button::save_crn}},
    {{"stats_report", Menu::file, "Tree Stats Report", "Ctrl+Shift+T"}, {button::stats_report}},
    {{"correlation_report", Menu::file, "Correlation Report", "Ctrl+Shift+R"}, {button::correlation_report}},
    {{"read_two_column", Menu::file, "Read TRW"}, {button::read_two_column}},
    {{"raw_tucson", Menu::file, "Raw Data as Tucson", "", !window, line, on_off}, {button::raw_tucson}},
    {{"raw_heidelberg", Menu::file, "Raw Data as Heidelberg", "", !window, !line, on_off},
     {button::raw_heidelberg}},
    {{"raw_compact", Menu::file, "Raw Data as Compact", "", !window, !line, on_off}, {button::raw_compact}},
    {{"crn_index", Menu::file, "Chronology as Tucson", "", !window, line, on_off}, {button::crn_index}},
    {{"crn_column", Menu::file, "Chronology as Column", "", !window, !line, on_off}, {button::crn_column}},
    {{"save_page", Menu::file, "Save the Page as a Picture…", "Ctrl+S", window, line}},
    {{"print_page", Menu::file, "Print the Page…", "Ctrl+P", window}},
    {{"quit", Menu::file, "Quit", "Ctrl+Q", !window, line}, {button::quit}},

    {{"undo", Menu::edit, "Undo", "Ctrl+Z"}},
    {{"redo", Menu::edit, "Redo", "Ctrl+Y", !window, !line, !on_off, "Ctrl+Shift+Z"}},
    {{"copy_page", Menu::edit, "Copy the Page as a Picture", "Ctrl+C", window}},
    {{"insert_ring", Menu::edit, "Insert a Ring", "Ins", !window, line},
     {button::insert_ring, button::editor_insert}},
    {{"delete_ring", Menu::edit, "Delete a Ring", "Del"}, {button::delete_ring, button::editor_delete}},
    {{"keep_change", Menu::edit, "Keep the Change", "Ctrl+K"}, {button::insertion_ok, button::deletion_ok}},
    {{"take_change_back", Menu::edit, "Take the Change Back", "Ctrl+T"},
     {button::insertion_not, button::deletion_not}},
    {{"save_sample", Menu::edit, "Save the Change of the Sample", "Ctrl+U"}, {button::save_sample}},
    {{"save_reference", Menu::edit, "Save the Change of the Reference", "Ctrl+L"}, {button::save_reference}},
    {{"move_sample", Menu::edit, "Move the Sample by…", "Ctrl+M", window, line}},
    {{"begin_sample", Menu::edit, "Begin the Sample in…", "Ctrl+B", window}},
    {{"sample_minus_1", Menu::edit, "Move the Sample 1 Year Back", "Left", !window, line},
     {button::sample_minus_1}},
    {{"sample_plus_1", Menu::edit, "Move the Sample 1 Year On", "Right"}, {button::sample_plus_1}},
    {{"sample_minus_10", Menu::edit, "Move the Sample 10 Years Back", "Shift+Left"},
     {button::sample_minus_10}},
    {{"sample_plus_10", Menu::edit, "Move the Sample 10 Years On", "Shift+Right"}, {button::sample_plus_10}},
    {{"sample_minus_50", Menu::edit, "Move the Sample 50 Years Back", "Ctrl+Left"},
     {button::sample_minus_50}},
    {{"sample_plus_50", Menu::edit, "Move the Sample 50 Years On", "Ctrl+Right"}, {button::sample_plus_50}},
    {{"reference_minus_1", Menu::edit, "Move the Reference 1 Year Back", "Alt+Left", !window, line},
     {button::reference_minus_1}},
    {{"reference_plus_1", Menu::edit, "Move the Reference 1 Year On", "Alt+Right"},
     {button::reference_plus_1}},
    {{"reference_minus_10", Menu::edit, "Move the Reference 10 Years Back", "Alt+Shift+Left"},
     {button::reference_minus_10}},
    {{"reference_plus_10", Menu::edit, "Move the Reference 10 Years On", "Alt+Shift+Right"},
     {button::reference_plus_10}},
    {{"reference_minus_50", Menu::edit, "Move the Reference 50 Years Back", "Alt+PgUp"},
     {button::reference_minus_50}},
    {{"reference_plus_50", Menu::edit, "Move the Reference 50 Years On", "Alt+PgDown"},
     {button::reference_plus_50}},
    {{"note", Menu::edit, "Note on the Last Decision…", "Ctrl+N", window, line}},
    {{"methods", Menu::edit, "Text for the Methods Section…", "Ctrl+Shift+M", window}},

    {{"scroll_minus_1", Menu::view, "Scroll 1 Year Back", "Up"}, {button::scroll_minus_1}},
    {{"scroll_plus_1", Menu::view, "Scroll 1 Year On", "Down"}, {button::scroll_plus_1}},
    {{"scroll_minus_10", Menu::view, "Scroll 10 Years Back", "Shift+Up"}, {button::scroll_minus_10}},
    {{"scroll_plus_10", Menu::view, "Scroll 10 Years On", "Shift+Down"}, {button::scroll_plus_10}},
    {{"scroll_minus_50", Menu::view, "Scroll 50 Years Back", "Ctrl+Up", !window, !line, !on_off, "PgUp"},
     {button::scroll_minus_50}},
    {{"scroll_plus_50", Menu::view, "Scroll 50 Years On", "Ctrl+Down", !window, !line, !on_off, "PgDown"},
     {button::scroll_plus_50}},
    {{"display_width", Menu::view, "Years Shown…", "Ctrl+D"}, {button::display_width}},
    {{"line_plot", Menu::view, "Line Plot", "", !window, line, on_off}, {button::line_plot}},
    {{"indices", Menu::view, "Indices", "Ctrl+I", !window, !line, on_off}, {button::indices}},
    {{"correlate", Menu::view, "Correlate", "F4", !window, line}, {button::correlate}},
    {{"correlation_table", Menu::view, "Table of Lags", "F5", !window, !line, on_off},
     {button::correlation_table}},
    {{"best_fit", Menu::view, "Best Fit", "F7", !window, !line, on_off}, {button::best_fit}},
    {{"correlation_start", Menu::view, "Start Year of the Table…"}, {button::correlation_start}},
    {{"site", Menu::view, "Site", "Alt+1", window, line, on_off}},
    {{"rings", Menu::view, "Rings", "Alt+2", window, !line, on_off}},
    {{"dates", Menu::view, "Dates", "Alt+3", window, !line, on_off}},
    {{"around", Menu::view, "Around a Year", "Alt+4", window, !line, on_off}},
    {{"pointers", Menu::view, "Pointer Years", "Alt+5", window, !line, on_off}},
    {{"files", Menu::view, "Files", "Alt+6", window, !line, on_off}},
    {{"recipe", Menu::view, "Other Programs", "Alt+8", window, !line, on_off}},
    {{"moving", Menu::view, "Moving Cores", "Alt+9", window, !line, on_off}},
    {{"journal", Menu::view, "Journal", "F9", window, line, on_off}},
    {{"notices", Menu::view, "Notices", "F6", window, !line, on_off}},
    {{"full_screen", Menu::view, "Full Screen", "F11", window, !line, on_off}},

    {{"current_chronology", Menu::cores, "Choose a Chronology", "Ctrl+F"}, {button::current_chronology}},
    {{"crossdate", Menu::cores, "Crossdate", "F2"}, {button::crossdate}},
    {{"choose_cores", Menu::cores, "Choose Cores", "F3"}, {button::choose_cores, button::correlation_choose}},
    {{"next_core", Menu::cores, "Next Core by Need", "N", window, line}},
    {{"previous_core", Menu::cores, "Previous Core by Need", "P", window}},
    {{"back", Menu::cores, "Back", "F8"},
     {button::exit_crossdating, button::correlation_exit, button::chooser_exit, button::editor_exit}},
    {{"pick_cores", Menu::cores, "Pick Cores", "Ctrl+1", !window, line, on_off}, {button::pick_cores}},
    {{"delete_core", Menu::cores, "Delete Core", "Ctrl+2", !window, !line, on_off}, {button::delete_core}},
    {{"mean_core", Menu::cores, "Mean Core", "Ctrl+3", !window, !line, on_off}, {button::mean_core}},
    {{"edit_core", Menu::cores, "Edit Core", "Ctrl+4", !window, !line, on_off}, {button::edit_core}},
    {{"move_core", Menu::cores, "Move Core", "Ctrl+5", !window, !line, on_off}, {button::move_core}},
    {{"do_it", Menu::cores, "Ok - Do It", "Ctrl+Return"}, {button::chooser_do_it}},
    {{"mean_name", Menu::cores, "Name of the Mean…"}, {button::mean_name}},
    {{"spline_on", Menu::cores, "Spline Detrending", "", !window, line, on_off}, {button::spline_on}},
    {{"spline_years", Menu::cores, "Spline 50% Cut Off…"}, {button::spline_years}},
    {{"ar_on", Menu::cores, "AR Modelling", "", !window, !line, on_off}, {button::ar_on}},
    {{"ar_order", Menu::cores, "AR Model Max Years…"}, {button::ar_order}},
    {{"log_on", Menu::cores, "Transform with Logs", "", !window, !line, on_off}, {button::log_on}},
    {{"segment_length", Menu::cores, "Segment Length…"},
     {button::segment_length, button::correlation_segment}},
    {{"segment_overlap", Menu::cores, "Segment Overlap…"},
     {button::segment_overlap, button::correlation_overlap}},
};

constexpr Action help_table[] = {
    {{"guide", Menu::help, "Guide", "Ctrl+H", window}},
    {{"help_here", Menu::help, "Help about What Is Pointed At", "F1", window}},
    {{"keys", Menu::help, "Keys", "Ctrl+Shift+H", window}},
    {{"about", Menu::help, "About Vorn", "", window, line}},
};

// The mends come from their own list: in the menu each is its sentence.
struct Rows {
  std::deque<std::string> texts;
  std::vector<Action> actions;
  std::vector<ActionRow> rows;

  Rows() {
    actions.assign(std::begin(table), std::end(table));
    add_mend(every_mend, "everything carefully", !line);
    for (const MendRow& mend : mends()) add_mend(mend.name, mend.does, mend.mend == mends().front().mend);
    actions.insert(actions.end(), std::begin(help_table), std::end(help_table));
    for (const Action& action : actions) rows.push_back(action.row);
  }
  void add_mend(std::string_view name, std::string_view does, bool drawn_above) {
    texts.push_back(std::string(careful_ids) + std::string(name));
    const std::string_view id = texts.back();
    std::string& text = texts.emplace_back(does);
    if (text.front() >= 'a') text.front() = static_cast<char>(text.front() - 'a' + 'A');
    actions.push_back({{id, Menu::careful, text, "", !window, drawn_above, on_off}});
  }
};

const Rows& all_rows() {
  static const Rows rows;
  return rows;
}

}  // namespace

std::span<const Action> action_table() {
  return all_rows().actions;
}

std::span<const ActionRow> action_rows() {
  return all_rows().rows;
}

const Action* action_named(std::string_view id) {
  const auto all = action_table();
  const auto found = std::ranges::find_if(all, [id](const Action& action) { return action.row.id == id; });
  return found == all.end() ? nullptr : &*found;
}

}  // namespace vorn
