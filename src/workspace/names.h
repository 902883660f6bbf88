// The texts of the tables: names of series and files, labels.
#pragma once

#include "records/text.h"

namespace vorn {

using Name = Text<8>;       // of a series
using FileName = Text<60>;  // of a file of the list; trailing blanks are no part of it
using Label = Text<60>;     // of a button, or a line of the message table

}  // namespace vorn
