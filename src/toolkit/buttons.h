// The numbers of the buttons and of the message lines, by what they are for. Every menu owns a range of each.
#pragma once

#include "workspace/capacity.h"
#include "workspace/numbers.h"

namespace vorn {

enum class ButtonNumber : int {
  none = 0,
#define VORN_BUTTON(name, number) name = number,  // NOLINT(bugprone-macro-parentheses): a list, no expression
#include "toolkit/button_list.inc"
#undef VORN_BUTTON
};

}  // namespace vorn

namespace vorn::button {

using enum ButtonNumber;

inline constexpr ButtonRange all{ButtonNumber{1}, ButtonNumber{max_buttons}};

// The cross-dating screen, and its rows of scroll buttons: both series, the sample, the reference.
inline constexpr ButtonRange crossdating{scroll_minus_50, save_reference};
inline constexpr ButtonRange scroll_row{scroll_minus_50, scroll_plus_50};
inline constexpr ButtonRange sample_row{sample_minus_50, sample_plus_50};
inline constexpr ButtonRange reference_row{reference_minus_50, reference_plus_50};

inline constexpr ButtonRange correlation{correlation_exit, correlation_choose};

inline constexpr ButtonRange chooser{chooser_list, bottom_of_pair};
inline constexpr ButtonRange chooser_modes{pick_cores, move_core};

inline constexpr ButtonRange start{spline_on, crn_column};
inline constexpr ButtonRange settings{spline_on, segment_overlap};
inline constexpr ButtonRange actions{crossdate, read_two_column};
inline constexpr ButtonRange raw_types{raw_tucson, raw_compact};
inline constexpr ButtonRange crn_types{crn_index, crn_column};

inline constexpr ButtonRange editor{editor_minus_50, editor_reset};
inline constexpr ButtonRange editor_row{editor_minus_50, editor_plus_50};
inline constexpr ButtonRange editor_columns{editor_column_1, editor_column_6};

}  // namespace vorn::button

namespace vorn::message {

inline constexpr MessageNumber summary_years{1};  // set by show_crns, as are the next three
inline constexpr MessageNumber current_chronology{2};
inline constexpr MessageNumber summary_cores{3}, summary_tree_to_crn{4}, summary_rbar{5};
inline constexpr MessageNumber ar_range{6};
inline constexpr MessageNumber pending_edit{8};  // set by the cross-dating menu
inline constexpr MessageNumber insert_mode{9};
inline constexpr MessageNumber parameter_options{11};
inline constexpr MessageNumber segment{13}, overlap{14}, start_year{15};
inline constexpr MessageNumber mean_tree_name{16};
inline constexpr MessageNumber select_insert{17}, select_delete{18};
inline constexpr MessageNumber move_caption{19};
inline constexpr MessageNumber raw_type{20},
    raw_name{21};  // raw_name: the raw output chosen, or written last
inline constexpr MessageNumber choose_chronology{29};
inline constexpr MessageNumber leave_program{30};
inline constexpr MessageNumber crn_type{31}, crn_name{32};
inline constexpr MessageNumber delete_mode{39};
inline constexpr MessageNumber keep_changes{40}, lose_changes{41}, undo_edits{42};
inline constexpr MessageNumber choose_tree{43}, editor_blank{44}, chooser_blank{45};
inline constexpr MessageNumber choose_pair{46}, choose_several{47};
inline constexpr MessageNumber line_or_skeleton{48}, indices_or_raw{49}, display_width{50};
inline constexpr MessageNumber crn_written{52};  // set by the chronology writer

inline constexpr MessageRange all{MessageNumber{1}, MessageNumber{max_messages}};
inline constexpr MessageRange summary{summary_years, summary_rbar};
// The captions of the start menu's settings (spline_on to segment_overlap) and actions (crossdate to
// read_two_column), in the order of their buttons.
inline constexpr MessageRange setting_captions{MessageNumber{22}, MessageNumber{28}};
inline constexpr MessageRange action_captions{MessageNumber{33}, MessageNumber{38}};
// Those that the help screen looks for under the cursor.
inline constexpr MessageRange with_help{raw_type, MessageNumber{37}};

}  // namespace vorn::message
