#include "support/places.h"

namespace vorn {

std::filesystem::path source_folder() {
  return VORN_SOURCE_DIR;
}

std::filesystem::path real_files_folder() {
  return VORN_REAL_FILES_DIR;
}

}  // namespace vorn
