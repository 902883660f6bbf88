#include "formats/read_decisions.h"

#include <algorithm>

#include "workspace/capacity.h"

namespace vorn {

void ReadDecisions::leave_out(std::int64_t first, std::int64_t last, NotTaken why) {
  if (!not_taken.empty() && not_taken.back().why == why && not_taken.back().last == first - 1) {
    not_taken.back().last = last;
  } else if (not_taken.size() < max_series) {
    not_taken.push_back({first, last, why});
  } else {
    ++more_not_taken;
  }
}

bool ReadDecisions::left_out(NotTaken why) const {
  return std::ranges::any_of(not_taken, [why](const LinesNotTaken& lines) { return lines.why == why; });
}

std::string the_nth(std::size_t number) {
  std::string digits = std::to_string(number);
  for (std::size_t k = digits.size(); k > 3; k -= 3) digits.insert(k - 3, ",");
  return "the " + digits + "th";
}

std::vector<std::string> limits_passed(const ReadDecisions& decided, std::string_view file) {
  std::vector<std::string> all;
  const auto add = [&](const std::string& words) {
    all.push_back(std::string(trimmed(file)) + ": " + words);
  };
  for (const SeriesRead& series : decided.series) {
    if (series.split) add(std::string(series.name.trimmed()) + " is too long for one series and was split");
  }
  if (decided.left_out(NotTaken::long_header))
    add("a header of more than 200 lines leaves its values unread");
  if (const auto unnamed = std::ranges::find(decided.not_taken, NotTaken::no_name, &LinesNotTaken::why);
      unnamed != decided.not_taken.end())
    add("lines without a name were not read, the first of them line " + std::to_string(unnamed->first));
  if (decided.left_out(NotTaken::series_limit))
    add("series behind " + the_nth(decided.series.size()) + " were not read");
  if (decided.left_out(NotTaken::year_limit)) add("years behind " + the_nth(max_years) + " were not read");
  return all;
}

}  // namespace vorn
