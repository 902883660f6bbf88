// For tests: specimens of other layouts.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "support/imported_copy.h"

namespace vorn {

// What the bytes mean; their copy is held to be read back as it is meant.
inline Imported taken(std::string_view bytes) {
  auto one = imported(bytes, {2026});
  EXPECT_TRUE(one) << bytes.substr(0, 200);
  if (!one) return {};
  if (!one->tucson.empty()) {
    EXPECT_EQ(lost_in_copy(*one), "");
  }
  return *one;
}

inline std::string series_of(std::string_view bytes) {
  return shown(taken(bytes));
}

}  // namespace vorn
