// The made-up collections that are measured. The same to the byte on every machine.
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

namespace vorn::bench {

// A folder of files, with the list that names them.
struct Collection {
  char letter;
  std::string_view what;
};

const std::vector<Collection>& all_collections();

// Writes the files of a collection, and Vorn.fil, into `folder`, which is made.
void write_collection(char letter, const std::filesystem::path& folder);

}  // namespace vorn::bench
