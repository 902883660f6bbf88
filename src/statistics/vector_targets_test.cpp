#include <dlfcn.h>
#include <gtest/gtest.h>
#include <hwy/highway.h>

#include <cstdint>

namespace vorn {
namespace {

// Beside the kinds that the library knows and the kernels are not compiled for.
std::int64_t of_kernels(std::int64_t targets) {
  return targets & (HWY_AVX3 | HWY_AVX2 | HWY_SSE4 | HWY_SSSE3 | HWY_EMU128 | HWY_SCALAR);
}

TEST(VectorTargets, AreThoseThatTheLibraryTells) {
  void* const library = dlopen(VORN_HIGHWAY_LIBRARY, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(library, nullptr) << dlerror();
  auto* const told = reinterpret_cast<std::int64_t (*)()>(dlsym(library, "_ZN3hwy16SupportedTargetsEv"));
  ASSERT_NE(told, nullptr) << dlerror();
  ASSERT_NE(told, &hwy::SupportedTargets);
  EXPECT_EQ(of_kernels(hwy::SupportedTargets()), of_kernels(told()));
  EXPECT_EQ(HWY_TARGETS & ~of_kernels(HWY_TARGETS), 0)
      << "the kernels are compiled for kinds that are not told";
}

}  // namespace
}  // namespace vorn
