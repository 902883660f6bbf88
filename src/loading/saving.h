// What the start menu saves: the cores of the store and the chronology of the current file, in the layouts
// that its buttons show.
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// The buttons of the outputs follow raw_output and crn_output: of each kind the one chosen is lit.
void show_outputs(Controls& w, const Settings& settings);

// Chooses the output of button n, one of those from raw_tucson to crn_column, and shows its name in the
// message line of its kind.
void choose_output(Controls& w, Settings& settings, ButtonNumber n);

// Writes the cores of the store in the layout w.raw_output (vorn::write_raw of formats/) to output_name() of
// the current file, shown as message line 21. Troubles are told on the page.
//
// Without a core an older file stays, and "No cores to save" is told; where none stands an empty one is made.
// Which cores have rings too wide for the compact layout is said outside the page.
void write_raw(Workspace& w);

// Writes the chronology of the current file, cf, as w.crn_output says. The name is shown as message line 52.
void write_ind(Workspace& w);

}  // namespace vorn
