#include "import/zip_library.h"

#ifdef VORN_ZIP_LOADED
#include <dlfcn.h>
#endif

namespace vorn {
namespace {

#ifdef VORN_ZIP_LOADED

template <class Function>
bool find(void* library, const char* name, Function*& function) {
  function = reinterpret_cast<Function*>(::dlsym(library, name));
  return function != nullptr;
}

// It stays until the program ends.
const ZipLibrary* loaded() {
  void* const library = ::dlopen(VORN_ZIP_LOADED, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return nullptr;
  static ZipLibrary all{};
  const bool are_all =
      find(library, "zip_discard", all.discard) && find(library, "zip_fclose", all.fclose) &&
      find(library, "zip_fopen_index", all.fopen_index) && find(library, "zip_fread", all.fread) &&
      find(library, "zip_get_num_entries", all.get_num_entries) &&
      find(library, "zip_name_locate", all.name_locate) &&
      find(library, "zip_open_from_source", all.open_from_source) &&
      find(library, "zip_source_buffer_create", all.source_buffer_create) &&
      find(library, "zip_source_free", all.source_free) && find(library, "zip_stat_index", all.stat_index);
  return are_all ? &all : nullptr;
}

#else

const ZipLibrary* loaded() {
  static constexpr ZipLibrary all = {
      ::zip_discard,         ::zip_fclose,      ::zip_fopen_index,      ::zip_fread,
      ::zip_get_num_entries, ::zip_name_locate, ::zip_open_from_source, ::zip_source_buffer_create,
      ::zip_source_free,     ::zip_stat_index};
  return &all;
}

#endif

}  // namespace

const ZipLibrary* zip_library() {
  static const ZipLibrary* const library = loaded();
  return library;
}

}  // namespace vorn
