#include "chronology/index_pipeline.h"

#include <cmath>
#include <cstddef>
#include <vector>

#include "chronology/burg_model.h"
#include "chronology/spline.h"
#include "chronology/standard_chronology.h"
#include "plot/long_work.h"

namespace vorn {
namespace {

constexpr int cores_between_reports = 64;
constexpr double lowest_curve = 0.1;  // a spline below this would blow the ratio up

// The bridge to the kernels. It copies, because a working entry may begin before the pool does.
std::vector<double> values_of(const SeriesStore& w, const Pool<double>& pool, int i) {
  std::vector<double> values(static_cast<std::size_t>(w.yr(i)));
  int p = w.ad(i);
  for (double& value : values) value = pool.at(p++);
  return values;
}

void put_values(const SeriesStore& w, Pool<double>& pool, int i, const std::vector<double>& values) {
  int p = w.ad(i);
  for (const double value : values) pool.put(p++, value);
}

// Also where the curve is not a number. Deliberate: [raised-curve] of the curve alone, no index ever is.
double at_least_lowest(double curve) {
  return curve >= lowest_curve ? curve : lowest_curve;
}

// Deliberate: [estimates-detrended] whether a ring is missing is not asked; its estimate counts like any
// width.
void detrend(SeriesStore& w, const Settings& settings, int i, SplineFactor& factor) {
  std::vector<double> values = values_of(w, w.x, i);
  if (settings.splineon) {
    std::vector<double> curve(values.size());
    spline(values, factor, curve);
    for (std::size_t k = 0; k < values.size(); ++k) values[k] = values[k] / at_least_lowest(curve[k]);
  }
  put_values(w, w.tx, i, values);
}

void prewhiten(SeriesStore& w, const Settings& settings, WorkVectors& work, int i) {
  std::vector<double> values = values_of(w, w.tx, i);
  if (settings.aron) {
    const std::vector<double> index = values;
    armod2(index, values, work.ar_coefficients.column(i, work.ar_coefficients.rows()), settings.jpr);
  }
  put_values(w, w.ax, i, values);
}

// The offset keeps years that prewhitening left at zero finite. Deliberate: [one-sixth] of the mean, whatever
// the series.
void take_logarithms(SeriesStore& w, int i) {
  std::vector<double> values = values_of(w, w.ax, i);
  double sum = 0;
  for (const double value : values) sum += value;
  const double offset = sum / (6.0 * w.yr(i));
  for (double& value : values) value = std::log(value + offset);
  put_values(w, w.ax, i, values);
}

void derive(SeriesStore& w, const Settings& settings, WorkVectors& work, int i, SplineFactor& factor) {
  if (w.yr(i) < 1) return;
  detrend(w, settings, i, factor);
  prewhiten(w, settings, work, i);
  if (settings.logon) take_logarithms(w, i);
}

}  // namespace

void data_man(SeriesStore& w, const Settings& settings, WorkVectors& work, int i) {
  SplineFactor factor(settings.ss);
  derive(w, settings, work, i, factor);
}

void data_man_cores(Workspace& w) {
  LongWork work(w.plot, "Indices");
  SplineFactor factor(w.ss);
  for (int i = 1; i <= w.nc; ++i) {
    derive(w, w, w, i, factor);
    if (i % cores_between_reports == 0) work.at(static_cast<double>(i) / w.nc);
  }
}

void data_man2(Workspace& w) {
  data_man_cores(w);
  std_crn(w);
}

}  // namespace vorn
