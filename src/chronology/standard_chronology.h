// The standard chronology: the mean index of each calendar year.
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// Builds the chronology of the current file, cf, from the analysis values `ax` of the cores 1 to nc: crn(k,
// cf) is the mean over the rings present in calendar year cfy(cf) + k - 1, num(k, cf) their number; a year
// without any has 1.0 and 0. Years behind the last one hold 0 and 0. Sets cfy, cly and cyr of the file.
//
// Carefully a constant core (workspace/constant_core.h) counts for the years alone.
//
// Then divides `ax` of every core by the mean of all present values. The chronology keeps the scale from
// before.
//
// Without any core nothing is done. A chronology of more than 12,000 years (max_years) is told and ends the
// program: throws ProgramEnd(EndReason::cannot_go_on). A file without a present ring makes `ax` not a number.
//
// Source: Fritts (1976), Tree rings and climate, for the mean value function.
void std_crn(Workspace& w);

}  // namespace vorn
