#include "base/zero_memory.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vorn {
namespace {

TEST(ZeroMemory, IsZeroAlsoWhereOthersHaveWritten) {
  for (const std::size_t size : {1u, 1000u, 65535u, 65536u, 1000000u}) {
    for (int time = 0; time < 3; ++time) {
      auto* const bytes = static_cast<unsigned char*>(zero_memory(size));
      EXPECT_EQ(std::count(bytes, bytes + size, 0), static_cast<std::ptrdiff_t>(size));
      std::fill_n(bytes, size, 0xff);
      give_back_memory(bytes, size);
    }
  }
}

TEST(ZeroMemory, NothingIsGivenForNothing) {
  give_back_memory(zero_memory(0), 0);
}

}  // namespace
}  // namespace vorn
