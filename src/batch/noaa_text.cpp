#include "batch/noaa_text.h"

#include <algorithm>
#include <cmath>

#include "records/number_text.h"
#include "study/file_lines.h"

namespace vorn {
namespace {

constexpr int decimals = 3;

// On one line.
std::string plain(std::string_view name) {
  std::string all(name);
  std::ranges::replace_if(
      all, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return std::string(without_blanks(all));
}

std::string number(double value, std::string_view missing) {
  constexpr std::size_t widest = 40;
  if (!std::isfinite(value)) return std::string(missing);
  std::string text;
  append_real(text, value, widest, decimals, false);
  return std::string(without_blanks(text));
}

std::string header(std::string_view site, const YearSpan& years, std::string_view what) {
  return "# " + plain(site) + " - " + std::string(what) +
         "\n# Template of the NOAA/WDS paleoclimatology archive\n"
         "# Site_Name: " +
         plain(site) + "\n# First_Year: " + std::to_string(years.first) +
         "\n# Last_Year: " + std::to_string(years.last) +
         "\n# Time_Unit: year Common Era, with a year 0\n# Missing_Values: NaN\n# Variables\n"
         "##age_CE\tage,,,year Common Era,,tree ring,,,N\n";
}

YearSpan years_of(std::span<const NamedSeries> all) {
  YearSpan years;
  bool any = false;
  for (const NamedSeries& one : all) {
    if (one.series.values.empty()) continue;
    const YearSpan own = one.series.years();
    years = any ? YearSpan{std::min(years.first, own.first), std::max(years.last, own.last)} : own;
    any = true;
  }
  return any ? years : YearSpan{0, -1};
}

}  // namespace

std::string noaa_text(const ChronologyText& chronology) {
  const bool counted = !chronology.depths.empty();
  const YearSpan years{chronology.first, chronology.first + std::ssize(chronology.indices) - 1};
  std::string text = header(chronology.site, years, "Tree Ring Chronology") +
                     "##trsgi\ttree ring standardized growth index,,,dimensionless,,tree ring,,,N\n" +
                     (counted ? "##num\tsample depth,,,count,,tree ring,,,N\n" : "") +
                     "# Data\nage_CE\ttrsgi" + (counted ? "\tnum\n" : "\n");
  for (std::size_t k = 0; k < chronology.indices.size(); ++k) {
    text += std::to_string(chronology.first + static_cast<std::int64_t>(k)) + "\t" +
            number(chronology.indices[k], "NaN");
    if (counted) text += "\t" + std::to_string(chronology.depths[k]);
    text += "\n";
  }
  return text;
}

std::string csv_text(const ChronologyText& chronology) {
  const bool counted = !chronology.depths.empty();
  std::string text = counted ? "year,index,depth\n" : "year,index\n";
  for (std::size_t k = 0; k < chronology.indices.size(); ++k) {
    text += std::to_string(chronology.first + static_cast<std::int64_t>(k)) + "," +
            number(chronology.indices[k], "");
    if (counted) text += "," + std::to_string(chronology.depths[k]);
    text += "\n";
  }
  return text;
}

std::string noaa_text(std::string_view site, std::span<const NamedSeries> series) {
  const YearSpan years = years_of(series);
  std::string text = header(site, years, "Tree Ring Widths"), names = "age_CE";
  for (const NamedSeries& one : series) {
    text += "##" + plain(one.name) + "\ttree ring width,wood,,mm,,tree ring,raw,,N\n";
    names += "\t" + plain(one.name);
  }
  text += "# Data\n" + names + "\n";
  for (std::int64_t year = years.first; year <= years.last; ++year) {
    text += std::to_string(year);
    for (const NamedSeries& one : series)
      text += "\t" + (one.series.has(year) ? number(one.series.at(year), "NaN") : "NaN");
    text += "\n";
  }
  return text;
}

}  // namespace vorn
