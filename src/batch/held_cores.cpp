#include "batch/held_cores.h"

#include "study/file_lines.h"

namespace vorn {
namespace {

constexpr std::size_t column_of_sign = 8;
constexpr double unit_of_a_store = 1e6;  // no two widths of any file are so near each other

}  // namespace

std::string plain_name(std::string_view name, std::int64_t first) {
  if (first < 0 && name.size() == column_of_sign && name.back() == '-') name.remove_suffix(1);
  return std::string(without_blanks(name));
}

void HeldCores::add(std::string_view name, const SeriesView& widths) {
  names_.push_back(plain_name(name, widths.first));
  widths_.emplace_back(widths);
  cores_.push_back({names_.back(), widths_.back().view(), unit_of_a_store});
}

void HeldCores::add(std::string_view name, std::int64_t first, std::span<const double> mm,
                    std::span<const std::uint8_t> present) {
  OwnedSeries widths(first, static_cast<std::int64_t>(mm.size()));
  for (std::size_t k = 0; k < mm.size(); ++k)
    widths.put(first + static_cast<std::int64_t>(k), mm[k], k < present.size() && present[k] != 0);
  add(name, widths.view());
}

std::vector<NamedCore> compared_exactly(std::span<const NamedCore> cores) {
  std::vector<NamedCore> all(cores.begin(), cores.end());
  for (NamedCore& core : all) core.unit = unit_of_a_store;
  return all;
}

}  // namespace vorn
