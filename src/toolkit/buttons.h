// The numbers of the buttons and of the message lines, by what they are for. Every menu owns a range of each.
#pragma once

namespace vorn::button {

// The cross-dating screen: three rows of six scroll buttons (both series, the sample, the reference).
inline constexpr int scroll_first = 1, scroll_last = 6;
inline constexpr int sample_first = 7, sample_last = 12;
inline constexpr int reference_first = 13, reference_last = 18;
inline constexpr int insert_ring = 19, delete_ring = 20;
inline constexpr int insertion_ok = 21, insertion_not = 22;
inline constexpr int deletion_ok = 23, deletion_not = 24;
inline constexpr int upper_plot = 25, lower_plot = 26;
inline constexpr int leave_pick = 27;
inline constexpr int choose_cores = 28, exit_crossdating = 29, correlate = 30;
inline constexpr int display_width = 31, line_plot = 32, indices = 33;
inline constexpr int save_sample = 34, save_reference = 35;
inline constexpr int crossdating_first = 1, crossdating_last = 35;

// The correlation screen.
inline constexpr int correlation_exit = 46;
inline constexpr int correlation_segment = 47, correlation_overlap = 48;
inline constexpr int correlation_table = 49, correlation_start = 50, best_fit = 51, correlation_choose = 52;
inline constexpr int correlation_first = 46, correlation_last = 52;

// The series chooser.
inline constexpr int chooser_list = 60, chooser_exit = 61, chooser_do_it = 62;
inline constexpr int pick_cores = 63, delete_core = 64, mean_core = 65, edit_core = 66, move_core = 67;
inline constexpr int mean_name = 69;
inline constexpr int page_back = 70, page_forward = 71;
inline constexpr int top_of_pair = 72, bottom_of_pair = 73;
inline constexpr int chooser_first = 60, chooser_last = 73;

// The start menu.
inline constexpr int spline_on = 94, ar_on = 95, log_on = 96;
inline constexpr int spline_years = 97, ar_order = 98, segment_length = 99, segment_overlap = 100;
inline constexpr int current_chronology = 101, quit = 102;
inline constexpr int chronology_list = 104;
inline constexpr int crossdate = 105, save_raw = 106, save_crn = 107;
inline constexpr int stats_report = 108, correlation_report = 109, read_two_column = 110;
inline constexpr int raw_tucson = 111, raw_heidelberg = 112, raw_compact = 113;
inline constexpr int crn_index = 114, crn_column = 115;
inline constexpr int start_first = 94, start_last = 115;

// The raw-data editor.
inline constexpr int editor_scroll_first = 120, editor_scroll_last = 125;
inline constexpr int editor_column_first = 126, editor_column_last = 131;
inline constexpr int editor_table = 132, editor_insert = 133, editor_delete = 134;
inline constexpr int editor_exit = 135, editor_quit = 136, editor_reset = 137;
inline constexpr int editor_first = 120, editor_last = 137;

}  // namespace vorn::button

namespace vorn::message {

inline constexpr int summary_years = 1;  // set by show_crns, as are the next three
inline constexpr int current_chronology = 2;
inline constexpr int summary_cores = 3, summary_tree_to_crn = 4, summary_rbar = 5;
inline constexpr int ar_range = 6;
inline constexpr int pending_edit = 8;  // set by the cross-dating menu
inline constexpr int insert_mode = 9;
inline constexpr int parameter_options = 11;
inline constexpr int segment = 13, overlap = 14, start_year = 15;
inline constexpr int mean_tree_name = 16;
inline constexpr int select_insert = 17, select_delete = 18;
inline constexpr int move_caption = 19;
inline constexpr int raw_type = 20, raw_name = 21;  // raw_name: the raw output chosen, or written last
inline constexpr int choose_chronology = 29;
inline constexpr int leave_program = 30;
inline constexpr int crn_type = 31, crn_name = 32;
inline constexpr int delete_mode = 39;
inline constexpr int keep_changes = 40, lose_changes = 41, undo_edits = 42;
inline constexpr int choose_tree = 43, editor_blank = 44, chooser_blank = 45;
inline constexpr int choose_pair = 46, choose_several = 47;
inline constexpr int line_or_skeleton = 48, indices_or_raw = 49, display_width = 50;
inline constexpr int crn_written = 52;  // set by the chronology writer
// The caption of button n of the start menu, 94 to 100 and 105 to 110, is message n - caption_offset.
inline constexpr int caption_offset = 72;

}  // namespace vorn::message
