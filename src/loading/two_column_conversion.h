// From files of a year and a ring width a line to one file in the Tucson raw layout.
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// Converts the files that "TRW.fil" names: its first line is the name of the output, each of the up to 10,000
// lines behind it that of an input (40 characters), one core each.
//
// An input has the year in columns 15-20, read on its first line alone, and the ring width, mm, in columns
// 21-27 (three decimals where it has no point). A first year of 0 dates the core to end in 2009. A negative
// width is a missing ring. The core is named after the file: without its path, then without its last four
// characters.
//
// The cores replace those of the store (their indices are not computed: derived_stale is set); cnam(1)
// becomes the name of the output. An input that does not exist is told and uses up its number, which stays an
// entry without years. The first nc entries are written, nc being the number of inputs that exist: behind a
// missing one the last are not. Carefully it uses up none, and all
// that was read is written. Where no input exists at all, that is told and nothing is changed.
//
// Without TRW.fil: throws ProgramEnd(EndReason::cannot_go_on) after a message; carefully the message is all.
// Told, and gone on after: "Open", "Read2" and, for the output, "OpenW", "Write" and "Close"; when there is
// no first line, "Read1", nothing is changed. "Would be too many rings" ends the reading before the core that
// the pool has no room for.
void read_trw(Workspace& w);

}  // namespace vorn
