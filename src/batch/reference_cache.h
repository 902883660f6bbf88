// References as they are slid along, kept from one run to the next: what of a folder has not changed is not
// read again.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "records/os_file.h"

namespace vorn {

// One file of the folder, whether or not it gives a reference.
struct KeptReference {
  std::string file;  // below the folder, parts separated by "/"
  os::Stamp stamp = {};
  bool is_whole = true;            // everything that the file says was taken
  double autocorrelation = 0;      // of the first order
  std::vector<float> values = {};  // standardised, year by year; empty where the file gives no reference
};

// `recipe`: what the values were made by; what was made by another one, or by another version of the program,
// is no use.
std::string packed(const std::vector<KeptReference>& all, std::string_view recipe);

// Nothing where the bytes are not, to the last one, what `packed` gives with this recipe.
std::optional<std::vector<KeptReference>> unpacked(std::string_view bytes, std::string_view recipe);

}  // namespace vorn
