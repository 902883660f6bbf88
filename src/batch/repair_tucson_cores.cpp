#include "batch/repair_tucson_cores.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "batch/repair_parts.h"

namespace vorn {
namespace {

// Of lines that were put right in one way.
class LinesTold {
 public:
  void add(std::int64_t line) {
    if (count_++ == 0) first_ = line;
    last_ = line;
  }
  void tell(const std::string& words, std::vector<std::string>& done) const {
    if (count_ == 1) done.push_back(at_line(first_) + words);
    if (count_ > 1)
      done.push_back(std::to_string(count_) + " of the lines " + std::to_string(first_) + " to " +
                     std::to_string(last_) + words);
  }

 private:
  std::int64_t first_ = 0, last_ = 0, count_ = 0;
};

// --- Order

bool is_before(const DecadeLine& one, const DecadeLine& other) {
  return one.year < other.year;
}

bool says_the_same(const DecadeLine& one, const DecadeLine& other) {
  const auto number = [](const DecadeField& field) { return std::pair(field.kind, field.number); };
  return one.year == other.year && std::ranges::equal(one.fields, other.fields, {}, number, number);
}

bool all_follow(std::span<const DecadeLine> decades) {
  return std::ranges::adjacent_find(decades, [](const DecadeLine& one, const DecadeLine& next) {
           return next.year != one.next_year();
         }) == decades.end();
}

using Parts = std::vector<const CoreLines*>;

bool has_mark(const CoreLines* part) {
  return part->mark.has_value();
}

// The parts of one name, with one end mark among them, as one core; nothing where they are none.
std::optional<CoreLines> one_core(const Parts& parts, OrderedCores& ordered) {
  const CoreLines* marked = *std::ranges::find_if(parts, has_mark);
  CoreLines core{marked->name, {}, marked->mark, marked->unit};
  for (const CoreLines* part : parts)
    core.decades.insert(core.decades.end(), part->decades.begin(), part->decades.end());
  std::ranges::stable_sort(core.decades, is_before);
  std::vector<std::int64_t> twice;
  for (std::size_t k = core.decades.size(); k-- > 1;) {
    if (!says_the_same(core.decades[k - 1], core.decades[k])) continue;
    twice.push_back(core.decades[k].line);
    core.decades.erase(core.decades.begin() + static_cast<std::ptrdiff_t>(k));
  }
  if (!all_follow(core.decades) || core.decades.back().line != marked->decades.back().line)
    return std::nullopt;
  for (const std::int64_t line : twice) ordered.done.push_back(at_line(line) + ", there twice, left out");
  ordered.twice.insert(ordered.twice.end(), twice.begin(), twice.end());
  const auto by_line = [](const DecadeLine& one, const DecadeLine& other) { return one.line < other.line; };
  if (parts.size() > 1 || !std::ranges::is_sorted(core.decades, by_line))
    ordered.done.push_back(core.name + ", its lines put in the order of their years");
  return core;
}

// Whether they are to be put in order: as they stand they are not, and one end mark is that of them all.
bool is_one_out_of_order(const Parts& parts) {
  return std::ranges::count_if(parts, has_mark) == 1 &&
         (parts.size() > 1 || !all_follow(parts.front()->decades));
}

}  // namespace

TucsonText::TucsonText(std::span<const FileLine> original) : lines(original.begin(), original.end()) {
  LinesTold foreign, shifted;
  texts_.reserve(original.size());  // the lines view what is in it
  for (std::size_t k = 0; k < lines.size(); ++k) {
    const auto number = static_cast<std::int64_t>(k) + 1;
    std::string_view text = lines[k].text;
    const std::size_t start = length_of_foreign_start(text);
    if (start > 0) foreign.add(number);
    text.remove_prefix(start);
    const auto decade = decade_of(text, number);
    if (decade && decade->is_shifted) {
      shifted.add(number);
      text = texts_.emplace_back(in_its_columns(text));
    }
    lines[k].text = text;
  }
  foreign.tell(", what stood before the first character left out", done);
  shifted.tell(", to the left of the columns, moved into them", done);
}

OrderedCores ordered_cores(std::vector<CoreLines> cores) {
  std::map<std::string_view, Parts> named;
  for (const CoreLines& core : cores) named[core.name].push_back(&core);
  OrderedCores ordered;
  std::map<const CoreLines*, CoreLines> anew;  // in the place of the first of its parts
  std::set<const CoreLines*> taken;            // the others
  for (const auto& [name, parts] : named) {
    if (!is_one_out_of_order(parts)) continue;
    auto one = one_core(parts, ordered);
    if (!one) continue;
    anew.emplace(parts.front(), std::move(*one));
    taken.insert(parts.begin() + 1, parts.end());
  }
  for (CoreLines& core : cores) {
    if (taken.contains(&core)) continue;
    const auto one = anew.find(&core);
    ordered.cores.push_back(std::move(one == anew.end() ? core : one->second));
  }
  return ordered;
}

}  // namespace vorn
