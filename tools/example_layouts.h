// The layouts of ring-width and chronology files, written as measuring programs and archives write them.
//
// Deliberately apart from the program's own writers: what reads these files has to agree with two authors.
#pragma once

#include <string>
#include <vector>

#include "made_up_trees.h"

namespace vorn::examples {

// `value` right-justified in `columns`; what does not fit stops the program.
std::string field(int value, int columns);

// Thousandths of a millimetre end in -9999, hundredths in 999.
enum class TucsonUnit { thousandths, hundredths };

// "(A8,I4,10I6)" a decade. Years before -999 put their minus sign into column 8, the last of the name.
std::string tucson_raw(const std::vector<Series>& all, TucsonUnit unit);
// Keyed headers, then "(10I6)" completed with zeros.
std::string heidelberg(const std::vector<Series>& all, const std::string& location);
// A header line that carries the edit format of its data, "(19F4.0)", thousandths of a millimetre.
std::string compact(const std::vector<Series>& all);
// "(A6,I4,10(I4,I3),A5)" a decade, thousandths of an index; 9990 where there is no year.
std::string tucson_index(const std::string& site, int first, const std::vector<IndexYear>& years);
// "(A14,I6,F7.3)" a year, millimetres.
std::string two_column(const Series& series);

}  // namespace vorn::examples
