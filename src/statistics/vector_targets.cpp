// Which kinds of vector instructions the machine at hand has, for the library that the kernels are written
// with.
//
// The library's own part that tells it also measures the machine's clock when it is loaded, which takes as
// long as all else that happens until the program's first page. So it is not linked; these take the place of
// its two functions that the kernels call, and of the one that tests call.
#include <cpuid.h>
#include <hwy/targets.h>

#include <atomic>
#include <cstdint>

namespace hwy {
namespace {

std::atomic<std::int64_t> only_these{0};  // 0: all

// The sets of instructions that the compiler uses for each kind, all of which the processor and the system
// have to know.
bool has_half_numbers() {
  unsigned a = 0, b = 0, c = 0, d = 0;
  return __get_cpuid(1, &a, &b, &c, &d) != 0 && (c & bit_F16C) != 0;
}
bool has_ssse3() {
  return __builtin_cpu_supports("ssse3");
}
bool has_sse4() {
  return has_ssse3() && __builtin_cpu_supports("sse4.1") && __builtin_cpu_supports("sse4.2") &&
         __builtin_cpu_supports("aes") && __builtin_cpu_supports("pclmul");
}
bool has_avx2() {
  return has_sse4() && __builtin_cpu_supports("avx") && __builtin_cpu_supports("avx2") &&
         __builtin_cpu_supports("fma") && __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2") &&
         has_half_numbers();
}
bool has_avx3() {
  return has_avx2() && __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl") &&
         __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512bw");
}

std::int64_t targets_of_machine() {
  __builtin_cpu_init();
  std::int64_t all = HWY_EMU128 | HWY_SCALAR;  // every machine has them
  if (has_ssse3()) all |= HWY_SSSE3;
  if (has_sse4()) all |= HWY_SSE4;
  if (has_avx2()) all |= HWY_AVX2;
  if (has_avx3()) all |= HWY_AVX3;
  return all;
}

}  // namespace

ChosenTarget& GetChosenTarget() {
  static ChosenTarget chosen;
  return chosen;
}

std::int64_t SupportedTargets() {
  static const std::int64_t of_machine = targets_of_machine();
  const std::int64_t only = only_these;
  return only != 0 ? only : of_machine;
}

void SetSupportedTargetsForTest(std::int64_t targets) {
  only_these = targets;
  GetChosenTarget().DeInit();
}

}  // namespace hwy
