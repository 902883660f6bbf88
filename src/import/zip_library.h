// The library that archives are read with.
#pragma once

#include <zip.h>

namespace vorn {

// Its functions, by their names without "zip_".
struct ZipLibrary {
  decltype(&::zip_discard) discard;
  decltype(&::zip_fclose) fclose;
  decltype(&::zip_fopen_index) fopen_index;
  decltype(&::zip_fread) fread;
  decltype(&::zip_get_num_entries) get_num_entries;
  decltype(&::zip_name_locate) name_locate;
  decltype(&::zip_open_from_source) open_from_source;
  decltype(&::zip_source_buffer_create) source_buffer_create;
  decltype(&::zip_source_free) source_free;
  decltype(&::zip_stat_index) stat_index;
};

// Loaded when it is first asked for, where the system can do that: with all that it needs itself it would
// make every start of the program a third longer. Null where it is not installed, or lacks a function.
const ZipLibrary* zip_library();

}  // namespace vorn
