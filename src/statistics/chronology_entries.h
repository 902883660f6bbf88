// The chronologies as entries of the series store.
#pragma once

#include "workspace/file_table.h"
#include "workspace/names.h"
#include "workspace/series_store.h"

namespace vorn {

// Makes every file's chronology an entry behind the cores (nc + 1 to nc + nfil) and sets nd.
//
// A value is present where its depth is above 0. A chronology that would pass the pool's end becomes an entry
// without years. Chronologies must be up to date.
//
// Returns: how many chronologies found no room.
int place_chronologies(SeriesStore& store, const FileTable& files);

// The series name of a chronology, from the name of its file: the last four characters (the extension)
// dropped, then what follows the last "/" or "\", cut or padded to eight characters.
Name chronology_name(const FileName& file);

}  // namespace vorn
