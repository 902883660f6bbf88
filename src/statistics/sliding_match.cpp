#include "statistics/sliding_match.h"

#include <algorithm>
#include <cmath>
#include <limits>

// This file is compiled once for each kind of vector instructions; which one runs is chosen at run time.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "statistics/sliding_match.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>
// Behind it, since it is compiled as often.
#include <hwy/contrib/math/math-inl.h>

HWY_BEFORE_NAMESPACE();
namespace vorn::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using Floats = hn::ScalableTag<float>;

// Eight vectors of positions at a time stay in registers; each value of the sample meets all of them.
void sums_at_positions(const float* sample, std::size_t count, const float* reference, float* sums,
                       std::size_t positions) {
  const Floats d;
  const std::size_t lanes = hn::Lanes(d);
  for (std::size_t k = 0; k < positions; k += 8 * lanes) {
    const float* at = reference + k;
    auto s0 = hn::Zero(d), s1 = s0, s2 = s0, s3 = s0, s4 = s0, s5 = s0, s6 = s0, s7 = s0;
    for (std::size_t i = 0; i < count; ++i, ++at) {
      const auto x = hn::Set(d, sample[i]);
      s0 = hn::MulAdd(x, hn::LoadU(d, at), s0);
      s1 = hn::MulAdd(x, hn::LoadU(d, at + lanes), s1);
      s2 = hn::MulAdd(x, hn::LoadU(d, at + 2 * lanes), s2);
      s3 = hn::MulAdd(x, hn::LoadU(d, at + 3 * lanes), s3);
      s4 = hn::MulAdd(x, hn::LoadU(d, at + 4 * lanes), s4);
      s5 = hn::MulAdd(x, hn::LoadU(d, at + 5 * lanes), s5);
      s6 = hn::MulAdd(x, hn::LoadU(d, at + 6 * lanes), s6);
      s7 = hn::MulAdd(x, hn::LoadU(d, at + 7 * lanes), s7);
    }
    float* out = sums + k;
    hn::StoreU(s0, d, out);
    hn::StoreU(s1, d, out + lanes);
    hn::StoreU(s2, d, out + 2 * lanes);
    hn::StoreU(s3, d, out + 3 * lanes);
    hn::StoreU(s4, d, out + 4 * lanes);
    hn::StoreU(s5, d, out + 5 * lanes);
    hn::StoreU(s6, d, out + 6 * lanes);
    hn::StoreU(s7, d, out + 7 * lanes);
  }
}

// z from the sums of `positions` positions, +infinity where single precision does not tell it. All arrays
// reach to the end of a vector.
void z_of_sums(const float* n, const float* x, const float* xx, const float* y, const float* yy,
               const float* xy, float least, float effective, float* z, std::size_t positions) {
  constexpr float infinite = std::numeric_limits<float>::infinity();
  // In parts of the variance of the whole series: below, the sums have lost too many digits.
  constexpr float hardly_any = 1e-2F;
  constexpr float nearly_one = 0.999999F;
  const Floats d;
  for (std::size_t k = 0; k < positions; k += hn::Lanes(d)) {
    const auto count = hn::LoadU(d, n + k), sum_x = hn::LoadU(d, x + k), sum_y = hn::LoadU(d, y + k);
    const auto v_x = hn::NegMulAdd(sum_x, sum_x, hn::Mul(count, hn::LoadU(d, xx + k)));
    const auto v_y = hn::NegMulAdd(sum_y, sum_y, hn::Mul(count, hn::LoadU(d, yy + k)));
    const auto v_xy = hn::NegMulAdd(sum_x, sum_y, hn::Mul(count, hn::LoadU(d, xy + k)));
    const auto few = hn::Mul(hn::Mul(count, count), hn::Set(d, hardly_any));
    const auto is_told = hn::And(hn::Gt(v_x, few), hn::Gt(v_y, few));
    const auto r = hn::Div(v_xy, hn::Sqrt(hn::IfThenElse(is_told, hn::Mul(v_x, v_y), hn::Set(d, 1))));
    const auto within = hn::Min(hn::Max(r, hn::Set(d, -nearly_one)), hn::Set(d, nearly_one));
    const auto free = hn::Max(hn::MulSub(count, hn::Set(d, effective), hn::Set(d, 3)), hn::Zero(d));
    const auto told = hn::Mul(hn::Atanh(d, within), hn::Sqrt(free));
    const auto value = hn::IfThenElse(is_told, told, hn::Set(d, infinite));
    const auto is_long = hn::Ge(count, hn::Set(d, least));
    hn::StoreU(hn::IfThenElse(is_long, value, hn::Set(d, -infinite)), d, z + k);
  }
}

}  // namespace vorn::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace vorn {
namespace {

HWY_EXPORT(sums_at_positions);
HWY_EXPORT(z_of_sums);

constexpr float infinite = std::numeric_limits<float>::infinity();

// Each value and 0 for each that is none; their squares; 1 for each value.
void take_apart(std::span<const float> values, float* plain, float* squares, float* present) {
  for (std::size_t i = 0; i < values.size(); ++i) {
    const bool is_there = !std::isnan(values[i]);
    plain[i] = is_there ? values[i] : 0;
    squares[i] = plain[i] * plain[i];
    present[i] = is_there ? 1.0F : 0.0F;
  }
}

}  // namespace

void sliding_sums(std::span<const float> sample, const float* reference, std::span<float> sums) {
  HWY_DYNAMIC_DISPATCH(sums_at_positions)
  (sample.data(), sample.size(), reference, sums.data(), sums.size());
}

std::vector<float> standardised(std::span<const double> values) {
  double n = 0, sum = 0, squares = 0;
  for (const double value : values) {
    if (!std::isfinite(value)) continue;
    n += 1;
    sum += value;
  }
  const double mean = n > 0 ? sum / n : 0;
  for (const double value : values) {
    if (std::isfinite(value)) squares += (value - mean) * (value - mean);
  }
  const double deviation = n > 0 ? std::sqrt(squares / n) : 0;
  const bool varies = deviation > 1e-12 * std::abs(mean) && std::isfinite(deviation);
  std::vector<float> all;
  all.reserve(values.size());
  for (const double value : values) {
    all.push_back(!std::isfinite(value) ? std::numeric_limits<float>::quiet_NaN()
                  : varies              ? static_cast<float>((value - mean) / deviation)
                                        : 0.0F);
  }
  return all;
}

SlidingMatch::SlidingMatch(std::span<const double> sample, double a, std::size_t least)
    : least_(least),
      margin_(sample.size() - std::min(sample.size(), least)),
      a_(a),
      sample_(sample.size()),
      squares_(sample.size()),
      present_(sample.size()) {
  take_apart(standardised(sample), sample_.data(), squares_.data(), present_.data());
  has_gaps_ = std::ranges::find(present_, 0.0F) != present_.end();
}

// Room for all positions of a reference of so many years, the years outside it without a ring.
void SlidingMatch::lay_out(std::size_t years) {
  years_ = years;
  positions_ = std::min(sample_.size(), years) < least_ ? 0 : years + sample_.size() - 2 * least_ + 1;
  for (Floats* of_positions : {&n_, &x_, &xx_, &y_, &yy_, &xy_, &z_})
    of_positions->resize(positions_ + sliding_slack);
  for (Floats* of_years : {&padded_, &padded_squares_, &padded_present_, &sums_, &square_sums_})
    of_years->assign(years + 2 * margin_ + 1 + sliding_slack, 0.0F);
  sum_sample();
}

// Without gaps the sample's part of the sums depends on nothing but the length of the reference.
void SlidingMatch::sum_sample() {
  const std::size_t m = sample_.size();
  Floats x(m + 1), xx(m + 1);
  for (std::size_t i = 0; i < m; ++i) {
    x[i + 1] = x[i] + sample_[i];
    xx[i + 1] = xx[i] + squares_[i];
  }
  for (std::size_t k = 0; k < positions_; ++k) {
    const std::size_t from = margin_ - std::min(k, margin_), to = std::min(m, years_ + margin_ - k);
    n_[k] = static_cast<float>(to - from);
    x_[k] = x[to] - x[from];
    xx_[k] = xx[to] - xx[from];
  }
}

// Answers how many years of the reference have a ring.
std::size_t SlidingMatch::put_in(std::span<const float> reference) {
  take_apart(reference, padded_.data() + margin_, padded_squares_.data() + margin_,
             padded_present_.data() + margin_);
  float sum = 0, squares = 0, rings = 0;
  for (std::size_t k = margin_; k < margin_ + years_; ++k) {
    sums_[k] = sum;
    square_sums_[k] = squares;
    sum += padded_[k];
    squares += padded_squares_[k];
    rings += padded_present_[k];
  }
  std::fill(sums_.begin() + static_cast<std::ptrdiff_t>(margin_ + years_), sums_.end(), sum);
  std::fill(square_sums_.begin() + static_cast<std::ptrdiff_t>(margin_ + years_), square_sums_.end(),
            squares);
  return static_cast<std::size_t>(rings);
}

void SlidingMatch::sum_whole() {
  for (std::size_t k = 0; k < positions_; ++k) {
    y_[k] = sums_[k + sample_.size()] - sums_[k];
    yy_[k] = square_sums_[k + sample_.size()] - square_sums_[k];
  }
}

void SlidingMatch::sum_with_gaps() {
  const auto slide = [&](const Floats& mine, const Floats& other, Floats& sums) {
    sliding_sums(mine, other.data(), std::span(sums).first(positions_));
  };
  slide(present_, padded_present_, n_);
  slide(sample_, padded_present_, x_);
  slide(squares_, padded_present_, xx_);
  slide(present_, padded_, y_);
  slide(present_, padded_squares_, yy_);
}

// Where one of the two hardly varies: in double precision, about the means.
float SlidingMatch::plain_z(std::size_t position) const {
  double n = 0, x = 0, y = 0, v_x = 0, v_y = 0, v_xy = 0;
  const auto each = [&](const auto& use) {
    for (std::size_t i = 0; i < sample_.size(); ++i) {
      if (present_[i] * padded_present_[position + i] > 0)
        use(double{sample_[i]}, double{padded_[position + i]});
    }
  };
  each([&](double a, double b) {
    n += 1;
    x += a;
    y += b;
  });
  each([&](double a, double b) {
    v_x += (a - x / n) * (a - x / n);
    v_y += (b - y / n) * (b - y / n);
    v_xy += (a - x / n) * (b - y / n);
  });
  constexpr double rounding = 1e-10, nearly_one = 0.999999;  // of values in single precision
  if (v_x <= n * rounding || v_y <= n * rounding) return 0;
  const double r = std::clamp(v_xy / std::sqrt(v_x * v_y), -nearly_one, nearly_one);
  return static_cast<float>(std::atanh(r) * std::sqrt(std::max(n * effective_ - 3, 0.0)));
}

BestMatch SlidingMatch::best_on(std::span<const float> reference, double b) {
  const bool follows_one_alike = reference.size() == years_ && !follows_gaps_;
  if (!follows_one_alike) lay_out(reference.size());
  BestMatch best{-infinite, 0, 0};
  if (positions_ == 0) return best;
  effective_ = std::min(1.0, (1 - a_ * b) / (1 + a_ * b));
  follows_gaps_ = put_in(reference) < years_ || has_gaps_;
  if (follows_gaps_) {
    sum_with_gaps();
  } else {
    sum_whole();
  }
  sliding_sums(sample_, padded_.data(), std::span(xy_).first(positions_));
  HWY_DYNAMIC_DISPATCH(z_of_sums)
  (n_.data(), x_.data(), xx_.data(), y_.data(), yy_.data(), xy_.data(), static_cast<float>(least_),
   static_cast<float>(effective_), z_.data(), positions_);
  for (std::size_t k = 0; k < positions_; ++k) {
    if (z_[k] == infinite) z_[k] = plain_z(k);
    best.positions += z_[k] > -infinite ? 1 : 0;
    if (z_[k] > best.z) best.z = z_[k], best.position = k;
  }
  return best;
}

}  // namespace vorn
#endif
