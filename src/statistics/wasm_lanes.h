// Vectors of two numbers in a browser, in the place of Highway, which has none of doubles there: as much of
// it as pair_tiles.cpp and pair_rows.cpp use, by the same names and with the same meaning.
#pragma once

#include <wasm_simd128.h>

#include <cstddef>

namespace vorn::wasm_lanes {

struct Lanes2 {
  v128_t raw;
};
struct LaneMask {
  v128_t raw;
};
// Which kind of vectors: there is one.
template <class T, std::size_t most>
struct CappedTag {};
using Doubles = CappedTag<double, 8>;

inline std::size_t Lanes(Doubles) {
  return 2;
}
inline Lanes2 Zero(Doubles) {
  return {wasm_f64x2_splat(0.0)};
}
inline Lanes2 Set(Doubles, double value) {
  return {wasm_f64x2_splat(value)};
}
inline Lanes2 Iota(Doubles, double first) {
  return {wasm_f64x2_make(first, first + 1)};
}
inline Lanes2 LoadU(Doubles, const double* from) {
  return {wasm_v128_load(from)};
}
inline void StoreU(Lanes2 v, Doubles, double* to) {
  wasm_v128_store(to, v.raw);
}
inline Lanes2 Add(Lanes2 a, Lanes2 b) {
  return {wasm_f64x2_add(a.raw, b.raw)};
}
inline Lanes2 Sub(Lanes2 a, Lanes2 b) {
  return {wasm_f64x2_sub(a.raw, b.raw)};
}
inline Lanes2 Mul(Lanes2 a, Lanes2 b) {
  return {wasm_f64x2_mul(a.raw, b.raw)};
}
// Nothing is fused: browsers have no such instruction.
inline Lanes2 MulAdd(Lanes2 a, Lanes2 b, Lanes2 more) {
  return Add(Mul(a, b), more);
}
inline Lanes2 NegMulAdd(Lanes2 a, Lanes2 b, Lanes2 more) {
  return Sub(more, Mul(a, b));
}
inline Lanes2 Div(Lanes2 a, Lanes2 b) {
  return {wasm_f64x2_div(a.raw, b.raw)};
}
inline Lanes2 Sqrt(Lanes2 v) {
  return {wasm_f64x2_sqrt(v.raw)};
}
// Of years, which are numbers.
inline Lanes2 Min(Lanes2 a, Lanes2 b) {
  return {wasm_f64x2_pmin(a.raw, b.raw)};
}
inline Lanes2 Max(Lanes2 a, Lanes2 b) {
  return {wasm_f64x2_pmax(a.raw, b.raw)};
}
inline LaneMask Ge(Lanes2 a, Lanes2 b) {
  return {wasm_f64x2_ge(a.raw, b.raw)};
}
inline LaneMask Gt(Lanes2 a, Lanes2 b) {
  return {wasm_f64x2_gt(a.raw, b.raw)};
}
inline LaneMask And(LaneMask a, LaneMask b) {
  return {wasm_v128_and(a.raw, b.raw)};
}
inline LaneMask AndNot(LaneMask not_these, LaneMask these) {
  return {wasm_v128_andnot(these.raw, not_these.raw)};
}
inline bool AllFalse(Doubles, LaneMask mask) {
  return !wasm_v128_any_true(mask.raw);
}
inline Lanes2 IfThenElseZero(LaneMask mask, Lanes2 v) {
  return {wasm_v128_and(mask.raw, v.raw)};
}
inline double ExtractLane(Lanes2 v, std::size_t k) {
  return k == 0 ? wasm_f64x2_extract_lane(v.raw, 0) : wasm_f64x2_extract_lane(v.raw, 1);
}

}  // namespace vorn::wasm_lanes

#define HWY_NAMESPACE one_kind
#define HWY_BEFORE_NAMESPACE() static_assert(true)
#define HWY_AFTER_NAMESPACE() static_assert(true)
#define HWY_ONCE 1
#define HWY_EXPORT(procedure) static_assert(true)
#define HWY_DYNAMIC_DISPATCH(procedure) one_kind::procedure
