// Which of the four layouts a file is read with, decided from its first lines.
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// Sets rftype and rfhead of the current file, cf, from the first lines of the file cnam(cf).
//
//   Heidelberg     its first line begins "HEADER:"
//   compact        its first line has "(" in column 72 and ")" in column 79
//   Tucson raw     one of its first four lines is the first line of a series: 18 to 79
//                  columns long, as long as the last digit of the year in columns 9-12
//                  asks for, and all numbers
//   Tucson index   one of its first four lines has 80 columns or more and reads as a decade of indices
//   not recognised otherwise
//
// The tests come in this order; between raw and index the length of the line alone decides. rfhead is the
// number of lines before the one that passed, 0 to 3 (Tucson layouts; otherwise 0).
//
// A file that cannot be opened or read is told as "Open" or "Read" and is not recognised.
void find_rftyp(Workspace& w);

}  // namespace vorn
