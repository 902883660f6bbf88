#include "chronology/index_pipeline.h"

#include <cstddef>
#include <vector>

#include "chronology/compared_series.h"
#include "chronology/spline.h"
#include "chronology/standard_chronology.h"
#include "plot/long_work.h"

namespace vorn {
namespace {

constexpr int cores_between_reports = 64;

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

// Stage by stage through the pool: what falls outside it is nothing at the next stage.
void derive(SeriesStore& w, const Settings& settings, WorkVectors& work, int i, SplineFactor& factor) {
  if (w.yr(i) < 1) return;
  const Treatment treatment = treatment_of(settings);
  std::vector<double> values = values_of(w, w.x, i);
  if (treatment.spline) detrend(values, factor);
  put_values(w, w.tx, i, values);
  values = values_of(w, w.tx, i);
  if (treatment.model)
    prewhiten(values, work.ar_coefficients.column(i, work.ar_coefficients.rows()), treatment.max_order);
  put_values(w, w.ax, i, values);
  if (!treatment.logarithm) return;
  values = values_of(w, w.ax, i);
  take_logarithms(values);
  put_values(w, w.ax, i, values);
}

}  // namespace

Treatment treatment_of(const Settings& settings) {
  return {settings.splineon, settings.aron, settings.jpr, settings.logon};
}

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
