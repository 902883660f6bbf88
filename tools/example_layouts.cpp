#include "example_layouts.h"

#include <cstddef>
#include <cstdlib>
#include <iostream>

namespace vorn::examples {
namespace {

std::string padded(std::string text, std::size_t columns) {
  text.resize(columns, ' ');
  return text;
}

// The first year of the decade after the one that holds `year`.
int next_decade(int year) {
  return year + 10 - ((year % 10) + 10) % 10;
}

// Columns 1 to 12 of a Tucson line.
std::string name_and_year(const std::string& name, int year) {
  if (year < -999) return padded(name, 7) + field(year, 5);
  return padded(name, 8) + field(year, 4);
}

int tucson_width(int width, TucsonUnit unit) {
  if (width == missing_ring) return unit == TucsonUnit::thousandths ? -9990 : -1;
  return unit == TucsonUnit::thousandths ? width : (width + 5) / 10;
}

// Lines of `per_line` fields; the last is completed with zeros when `fill` says so.
std::string block(const std::vector<int>& values, std::size_t per_line, int columns, bool fill) {
  std::string text;
  for (std::size_t i = 0; i < values.size(); i += per_line) {
    for (std::size_t j = i; j < i + per_line; ++j) {
      if (j < values.size()) text += field(values[j], columns);
      if (j >= values.size() && fill) text += field(0, columns);
    }
    text += '\n';
  }
  return text;
}

std::vector<int> with_missing_as(int mark, std::vector<int> widths) {
  for (int& width : widths) width = width == missing_ring ? mark : width;
  return widths;
}

}  // namespace

std::string field(int value, int columns) {
  const std::string digits = std::to_string(value);
  if (digits.size() > static_cast<std::size_t>(columns)) {
    std::cerr << digits << " does not fit into " << columns << " columns\n";
    std::abort();
  }
  return std::string(static_cast<std::size_t>(columns) - digits.size(), ' ') + digits;
}

std::string tucson_raw(const std::vector<Series>& all, TucsonUnit unit) {
  std::string text;
  for (const Series& series : all) {
    std::vector<int> values;
    for (const int width : series.widths) values.push_back(tucson_width(width, unit));
    values.push_back(unit == TucsonUnit::thousandths ? -9999 : 999);
    const int end = series.first + static_cast<int>(values.size());
    for (int year = series.first; year < end; year = next_decade(year)) {
      text += name_and_year(series.name, year);
      for (int y = year; y < next_decade(year) && y < end; ++y) {
        text += field(values[static_cast<std::size_t>(y - series.first)], 6);
      }
      text += '\n';
    }
  }
  return text;
}

std::string heidelberg(const std::vector<Series>& all, const std::string& location) {
  std::string text;
  for (const Series& series : all) {
    text += "HEADER:\nKeyCode=" + series.name + "\nLocation=" + location + "\nUnit=1/1000 mm\n";
    text += "DateBegin=" + std::to_string(series.first) + "\nDateEnd=" + std::to_string(series.last()) + "\n";
    text += "Length=" + std::to_string(series.widths.size()) + "\nDATA:Tree\n";
    text += block(with_missing_as(-9990, series.widths), 10, 6, true);
  }
  return text;
}

std::string compact(const std::vector<Series>& all) {
  std::string text;
  for (const Series& series : all) {
    text += field(static_cast<int>(series.widths.size()), 8) + "=N" + field(series.first, 8) + "=I ";
    text += padded(series.name, 8) + std::string(42, ' ') + "(19F4.0)\n";
    text += block(with_missing_as(-999, series.widths), 19, 4, false);
  }
  return text;
}

std::string tucson_index(const std::string& site, int first, const std::vector<IndexYear>& years) {
  const int end = first + static_cast<int>(years.size());
  std::string text;
  for (int year = first; year < end; year = next_decade(year)) {
    text += padded(site, 6) + field(year, 4);
    for (int y = next_decade(year) - 10; y < next_decade(year); ++y) {
      const bool inside = y >= first && y < end;
      const IndexYear value = inside ? years[static_cast<std::size_t>(y - first)] : IndexYear{9990, 0};
      text += field(value.index, 4) + field(value.depth, 3);
    }
    text += "  STD\n";
  }
  return text;
}

std::string two_column(const Series& series) {
  std::string text;
  int year = series.first;
  for (const int width : series.widths) {
    std::string digits = std::to_string(width < 0 ? 9990 : width);
    while (digits.size() < 4) digits.insert(0, 1, '0');
    std::string number = (width < 0 ? "-" : "") + digits;
    number.insert(number.size() - 3, 1, '.');
    text += padded(series.name, 14) + field(year++, 6) + std::string(7 - number.size(), ' ') + number + '\n';
  }
  return text;
}

}  // namespace vorn::examples
