#include "chronology/burg_model.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "base/loud_failure.h"

namespace vorn {
namespace {

double mean_of(std::span<const double> values) {
  double sum = 0;
  for (const double value : values) sum += value;
  return sum / static_cast<double>(values.size());
}

// The corrected Akaike criterion. With no years to spare the correction divides by zero or turns negative;
// what the floating-point rules make of that is left to the comparisons.
double criterion(double n, double error_variance, int order) {
  const double k = order;
  return n * std::log(error_variance) + 2 * (k + 1) + 2 * (k + 1) * (k + 2) / (n - k - 2);
}

// Deliberate: [order-0] it carries no correction: a model of order 1 has to beat this one.
double criterion_of_no_model(double n, double variance) {
  return n * std::log(variance) + 2;
}

// Sums of products of the errors forward and backward, and of their squares.
struct Sums {
  double product = 0, power = 0;

  void add(double forward, double backward) {
    product += forward * backward;
    power += forward * forward + backward * backward;
  }
};

// What is left of the series when each year is foretold from the years before it, and from those after it. A
// sum goes from year to year, and each addition waits for the one before it: so all sums of a year are added
// to at once.
class PredictionErrors {
 public:
  PredictionErrors(std::span<const double> series, double mean) : forward_(series.begin(), series.end()) {
    for (double& value : forward_) value -= mean;
    if (forward_.empty()) return;
    backward_.assign(forward_.begin() + 1, forward_.end());
    add_up();
    forward_.pop_back();
  }

  // The sum of the squares of the series about its mean.
  double squares() const { return squares_; }

  // The weight of the year that the next order adds. Not a number where no years are left to compare.
  double reflection() const { return 2 * sums_.product / sums_.power; }

  // Goes on to the errors of the next order; they are one year fewer.
  void take_out(double reflection) {
    if (forward_.empty()) return;
    const std::size_t fewer = forward_.size() - 1;
    go_on(reflection, fewer);
    forward_.resize(fewer);
    backward_.resize(fewer);
  }

 private:
  // Not inlined, since sums are kept in registers only where no logarithm is taken between them.
  [[gnu::noinline]] void add_up() {
    double squares = 0;
    Sums sums;
    for (std::size_t j = 0; j < backward_.size(); ++j) {
      squares += forward_[j] * forward_[j];
      sums.add(forward_[j], backward_[j]);
    }
    squares_ = squares + forward_.back() * forward_.back();
    sums_ = sums;
  }
  [[gnu::noinline]] void go_on(double reflection, std::size_t fewer) {
    double* const forward = forward_.data();
    double* const backward = backward_.data();
    Sums sums;
    double before = forward[0];  // of the order before
    for (std::size_t j = 0; j < fewer; ++j) {
      const double taken = before - reflection * backward[j];
      before = forward[j + 1];
      forward[j] = taken;
      backward[j] = backward[j + 1] - reflection * before;
      sums.add(taken, backward[j]);
    }
    sums_ = sums;
  }

  std::vector<double> forward_, backward_;
  double squares_ = 0;
  Sums sums_;  // of the errors
};

// The coefficients of the next order, from those of the order before and the new last one.
void levinson_step(std::vector<double>& coefficients, double reflection) {
  const std::vector<double> before = coefficients;
  for (std::size_t i = 0; i < before.size(); ++i) {
    coefficients[i] = before[i] - reflection * before[before.size() - 1 - i];
  }
  coefficients.push_back(reflection);
}

// memcof2 of a series whose mean is known.
BurgModel model_about(double mean, std::span<const double> series, int max_order,
                      std::span<double> coefficients) {
  PredictionErrors errors(series, mean);
  const auto n = static_cast<double>(series.size());
  const double variance = errors.squares() / n;
  const double no_model = criterion_of_no_model(n, variance);
  double error_variance = variance;
  double best = no_model;
  std::vector<double> kept;  // of the last order that was accepted
  bool dropped = false;

  for (int order = 1;; ++order) {
    const double reflection = errors.reflection();
    error_variance = error_variance * (1 - reflection * reflection);
    const double tried = criterion(n, error_variance, order);
    // Deliberate: [order-1] never rejected.
    if (order > 1 && tried > best) {
      dropped = best > no_model;
      break;
    }
    // Deliberate: [last-order] it is computed and never used.
    // Deliberate: [never-dropped] nor is a model that got so far, even one worse than none.
    if (order >= max_order) break;
    levinson_step(kept, reflection);
    errors.take_out(reflection);
    best = tried;
  }

  if (dropped) return {};
  VORN_ASSERT(coefficients.size() >= kept.size());
  std::copy(kept.begin(), kept.end(), coefficients.begin());
  return {static_cast<int>(kept.size()), 1 - error_variance / variance};
}

// albino2 of a series whose mean is known.
void take_residuals(double mean, std::span<double> series, std::span<const double> coefficients) {
  const std::size_t n = series.size(), m = coefficients.size();

  // The series about its mean, with room for the m years before it. A series shorter than the model is
  // continued by 0, its mean, as far as the back-casting looks.
  std::vector<double> extended(std::max(n + m, 2 * m));
  for (std::size_t j = 0; j < n; ++j) extended[m + j] = series[j] - mean;
  for (std::size_t k = m; k-- > 0;) {
    double foretold = 0;
    for (std::size_t j = 1; j <= m; ++j) foretold += coefficients[j - 1] * extended[k + j];
    extended[k] = foretold;
  }

  for (std::size_t i = m; i < m + n; ++i) {
    double foretold = 0;
    for (std::size_t j = 1; j <= m; ++j) foretold += coefficients[j - 1] * extended[i - j];
    series[i - m] = extended[i] - foretold + mean;
  }
}

}  // namespace

BurgModel memcof2(std::span<const double> series, int max_order, std::span<double> coefficients) {
  return model_about(mean_of(series), series, max_order, coefficients);
}

void albino2(std::span<double> series, std::span<const double> coefficients) {
  take_residuals(mean_of(series), series, coefficients);
}

int armod2(std::span<const double> index, std::span<double> prewhitened, std::span<double> coefficients,
           int max_order) {
  VORN_ASSERT(prewhitened.size() == index.size());
  const double mean = mean_of(index);
  const BurgModel model = model_about(mean, index, max_order, coefficients);
  std::copy(index.begin(), index.end(), prewhitened.begin());
  take_residuals(mean, prewhitened, coefficients.first(static_cast<std::size_t>(model.order)));
  for (double& value : prewhitened) {
    const double raised = 1 + value;
    // Deliberate: [constant-series] 0 also where it is not a number.
    value = raised > 0 ? raised : 0;
  }
  return model.order;
}

}  // namespace vorn
