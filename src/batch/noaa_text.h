// Chronologies and ring widths as text: in the template of the NOAA/WDS paleoclimatology archive, and as CSV.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "workspace/series_view.h"

namespace vorn {

// A chronology: the index and the depth, in cores, of each year from `first` on. As many depths as indices,
// or none where nobody counted.
struct ChronologyText {
  std::string_view site;
  std::int64_t first = 0;
  std::span<const double> indices = {};  // without unit; not a number where there is none
  std::span<const std::int32_t> depths = {};
};

struct NamedSeries {
  std::string name;
  SeriesView series;  // mm
};

// Years are counted with a year 0. Indices have three decimals; where there is none stands NaN, or in the CSV
// nothing.
std::string noaa_text(const ChronologyText& chronology);
std::string csv_text(const ChronologyText& chronology);

// Widths in mm with three decimals, years down the side; where a core has no ring stands NaN. Tabs and ends
// of lines in names become blanks.
std::string noaa_text(std::string_view site, std::span<const NamedSeries> series);

}  // namespace vorn
