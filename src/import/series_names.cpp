#include "import/series_names.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>

#include "import/fields.h"
#include "import/source_text.h"
#include "import/width_unit.h"

namespace vorn {
namespace {

// A "-" in the last column of a name would be the sign of its years.
std::string without_sign_at_end(std::string name, std::size_t longest) {
  if (name.size() >= longest && name.back() == '-') name.back() = '_';
  return name;
}

// Without what says a unit in brackets at the end.
std::string_view without_unit(std::string_view name) {
  const std::size_t open = name.find_last_of("([{");
  if (open == std::string_view::npos || open == 0 || !unit_said(name.substr(open))) return name;
  return bare(name.substr(0, open));
}

std::string in_columns(const std::string& name, std::size_t longest) {
  constexpr std::size_t kept_of_beginning = 2;
  std::string all = as_ascii(without_unit(name));
  if (all.size() > longest)
    std::erase_if(all, [](char c) { return std::string_view("_-.+/()").find(c) < 7; });
  if (all.empty()) all = "S";
  if (all.size() > longest) {
    const std::string end = all.substr(all.size() - (longest - kept_of_beginning));
    all.resize(kept_of_beginning);
    all += end;
  }
  return without_sign_at_end(std::move(all), longest);
}

class TakenNames {
 public:
  explicit TakenNames(std::size_t longest) : longest_(longest) {}
  bool take(const std::string& name) { return taken_.insert(name).second; }
  std::string numbered(const std::string& name) {
    std::string one = name;
    for (int& number = last_.try_emplace(name, 1).first->second; !take(one);) {
      const std::string end = "_" + std::to_string(++number);
      one = name.substr(0, longest_ - end.size()) + end;
    }
    return one;
  }

 private:
  std::size_t longest_;
  std::set<std::string> taken_;
  std::map<std::string, int> last_;
};

}  // namespace

std::vector<std::string> names_for_columns(std::span<const std::string> names, std::size_t longest) {
  std::vector<std::string> all(names.size());
  TakenNames taken(longest);
  for (std::size_t k = 0; k < names.size(); ++k) {
    std::string name = in_columns(names[k], longest);
    if (name == names[k] && taken.take(name)) all[k] = std::move(name);
  }
  for (std::size_t k = 0; k < names.size(); ++k) {
    if (all[k].empty()) all[k] = taken.numbered(in_columns(names[k], longest));
  }
  return all;
}

}  // namespace vorn
