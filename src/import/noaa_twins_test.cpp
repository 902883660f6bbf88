// Random series as template text, in the ways in which archives and people write it, come back as they were.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "import/fields.h"
#include "support/imported_specimens.h"

namespace vorn {
namespace {

class Noise {
 public:
  explicit Noise(std::uint32_t seed) : state_(seed * 2654435761U + 1U) {}
  int below(int end) {
    state_ = state_ * 1664525U + 1013904223U;
    return static_cast<int>((state_ >> 8U) % static_cast<std::uint32_t>(end));
  }
  bool once_in(int times) { return below(times) == 0; }
  std::string one_of(const std::vector<std::string>& all) {
    return all[static_cast<std::size_t>(below(static_cast<int>(all.size())))];
  }

 private:
  std::uint32_t state_;
};

constexpr int no_ring = -1;

struct Core {
  std::string name;
  int first = 0;
  std::vector<int> hundredths;  // no_ring inside
  int last() const { return first + static_cast<int>(hundredths.size()) - 1; }
  int of(int year) const {
    return year < first || year > last() ? no_ring : hundredths[static_cast<std::size_t>(year - first)];
  }
};

std::vector<Core> random_cores(Noise& noise) {
  std::vector<Core> all(1 + static_cast<std::size_t>(noise.below(12)));
  const int start = noise.below(3200) - 1300;
  for (std::size_t k = 0; k < all.size(); ++k) {
    all[k].name = noise.one_of({"TW", "K_", "a.", "9"}) + std::to_string(10 + k);
    all[k].first = start + noise.below(80);
    const int years = 2 + noise.below(90);
    for (int year = 0; year < years; ++year) {
      const bool inner = year > 0 && year + 1 < years;
      const bool is_gap = inner && noise.once_in(15);
      all[k].hundredths.push_back(is_gap ? no_ring : noise.once_in(20) ? 0 : noise.below(600));
    }
  }
  return all;
}

// How one file is written.
struct Manner {
  std::string separator, missing, year_name, units, line_end;
  bool described = true, descends = false, year_last = false, reversed = false;
  bool trailing = false, has_mark = false, has_comments = false;

  explicit Manner(Noise& noise)
      : separator(noise.one_of({"\t", "\t", "\t", ",", " ", "   "})),
        missing(noise.one_of({"-999", "-9999", "NaN", "NA", ""})),
        year_name(noise.one_of({"age_CE", "year", "Year", "age"})),
        units(noise.one_of({"mm", "millimeter", "0.01 mm", "0.001 mm", "micrometers"})),
        line_end(noise.one_of({"\n", "\n", "\r\n", "\r"})),
        described(!noise.once_in(4)),
        descends(noise.once_in(3)),
        year_last(noise.once_in(5)),
        reversed(noise.once_in(3)),
        trailing(separator == "\t" && noise.once_in(4)),
        has_mark(noise.once_in(5)),
        has_comments(noise.once_in(3)) {
    if (missing.empty() && separator[0] == ' ') missing = "NaN";
  }
  bool is_in_mm() const { return units.starts_with('m') && units != "micrometers"; }
};

std::string width_text(int hundredths, const Manner& manner) {
  if (hundredths == no_ring) return manner.missing;
  if (manner.is_in_mm()) return decimal(hundredths / 100.0, 2);
  return std::to_string(manner.units == "0.01 mm" ? hundredths : 10 * hundredths);
}

std::string row_of(std::vector<std::string> widths, const std::string& year, const Manner& manner) {
  if (manner.reversed) std::ranges::reverse(widths);
  widths.insert(manner.year_last ? widths.end() : widths.begin(), year);
  std::string row = widths.front();
  for (std::size_t k = 1; k < widths.size(); ++k) row += manner.separator + widths[k];
  return row + (manner.trailing ? "\t\t\n" : "\n");
}

std::string header_of(const std::vector<Core>& all, const Manner& manner) {
  std::string text =
      "# Made-up site\n#----\n# World Data Service for Paleoclimatology\n#\n# Missing_Values: " +
      (manner.missing.empty() ? "NaN" : manner.missing) + "\n# Units: " + manner.units + "\n";
  if (!manner.described) return text;
  text += "##" + manner.year_name + "\tage,,,year Common Era,,tree ring,,,N\n";
  for (const Core& one : all)
    text += "##" + one.name + "\ttree ring width,wood,," + manner.units + ",,tree ring,raw,,N\n";
  return text;
}

std::string template_of(const std::vector<Core>& all, const Manner& manner) {
  int first = all[0].first, last = all[0].last();
  std::vector<std::string> names;
  for (const Core& one : all) {
    first = std::min(first, one.first);
    last = std::max(last, one.last());
    names.push_back(one.name);
  }
  std::string text = header_of(all, manner) + row_of(names, manner.year_name, manner);
  for (int k = 0; k <= last - first; ++k) {
    const int year = manner.descends ? last - k : first + k;
    std::vector<std::string> widths;
    for (const Core& one : all) widths.push_back(width_text(one.of(year), manner));
    if (manner.has_comments && k % 10 == 5) text += "# a further block\n\n";
    text += row_of(widths, std::to_string(year), manner);
  }
  std::string ended;
  for (const char c : text) ended += c == '\n' ? manner.line_end : std::string{c};
  return (manner.has_mark ? "\xef\xbb\xbf" : "") + ended;
}

// What is not as it was; the first of all.
std::string difference(const std::vector<Core>& meant, const Imported& one) {
  if (one.series.size() != meant.size()) return std::to_string(one.series.size()) + " series";
  for (const Core& core : meant) {
    const auto found = std::ranges::find(one.series, core.name, &ImportedSeries::name);
    if (found == one.series.end()) return core.name + " is not there";
    if (found->first != core.first || found->widths.size() != core.hundredths.size())
      return core.name + " has other years";
    for (std::size_t k = 0; k < found->widths.size(); ++k) {
      const int width = core.hundredths[k];
      if ((width != no_ring) != (found->presence[k] == 1)) return core.name + " has other rings";
      if (width != no_ring && std::abs(found->widths[k] - width / 100.0) > 1e-9)
        return core.name + " has other widths";
    }
  }
  return "";
}

TEST(NoaaTwins, AThousandFilesComeBackAsTheyWere) {
  for (std::uint32_t seed = 1; seed <= 1000; ++seed) {
    Noise noise(seed);
    const std::vector<Core> all = random_cores(noise);
    const Manner manner(noise);
    const std::string text = template_of(all, manner);
    const Imported one = taken(text);
    ASSERT_EQ(one.layout, OtherLayout::noaa_template) << seed;
    ASSERT_EQ(difference(all, one), "") << seed << "\n" << text.substr(0, 3000);
    ASSERT_EQ(doubts(one).find("no-"), std::string::npos) << seed << " " << doubts(one);
  }
}

}  // namespace
}  // namespace vorn
