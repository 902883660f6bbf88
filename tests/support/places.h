// Where tests find what lies in the tree, and the real files beside it.
#pragma once

#include <filesystem>

namespace vorn {

std::filesystem::path source_folder();
// The folder of real files, which need not be there.
std::filesystem::path real_files_folder();

}  // namespace vorn
