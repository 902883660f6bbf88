#include "batch/move_rows.h"

#include <algorithm>

namespace vorn {
namespace {

Cell known(const std::optional<double>& value) {
  return value ? number(*value) : Cell();
}

Cell count_of(const FileAgreement& agreement) {
  return static_cast<std::int64_t>(agreement.cores);
}

}  // namespace

AgreeingCollection::AgreeingCollection(std::span<const SeriesView> widths, const Settings& settings)
    : studied_(widths, settings),
      compared_(those_that_count(widths, studied_.compared(), settings.careful)),
      file_(compared_) {}

const TableForm& move_form() {
  static const TableForm form{
      "move", {"file", "cores", "cores_after", "r", "r_after", "rbar", "rbar_after", "eps", "eps_after"}};
  return form;
}

Row move_row(const MovedFile& file) {
  const auto& [name, now, after] = file;
  return {name,
          count_of(now),
          count_of(after),
          known(now.r),
          known(after.r),
          known(now.rbar),
          known(after.rbar),
          known(now.eps),
          known(after.eps)};
}

std::vector<std::size_t> cores_named(const Collection& collection, const std::vector<std::string>& names,
                                     std::vector<std::string>& missing) {
  const SeriesStore& w = collection.state();
  std::vector<std::string> all;
  for (int i = 1; i <= w.nc; ++i) all.emplace_back(without_blanks(w.nam(i).view()));
  std::vector<std::size_t> found;
  for (std::size_t k = 0; k < all.size(); ++k) {
    if (std::ranges::find(names, all[k]) != names.end()) found.push_back(k);
  }
  for (const std::string& name : names) {
    if (std::ranges::find(all, name) == all.end()) missing.push_back(name);
  }
  return found;
}

std::vector<MovedFile> moved(const Collection& from, const Collection& to,
                             std::span<const std::size_t> cores) {
  const AgreeingCollection left(from.cores(), from.state()), joined(to.cores(), to.state());
  std::vector<SeriesView> moving;
  for (const std::size_t k : cores) moving.push_back(left.compared()[k]);
  return {{from.path(), left.file().now(), left.file().without(cores)},
          {to.path(), joined.file().now(), joined.file().with(moving)}};
}

}  // namespace vorn
