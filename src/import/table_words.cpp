#include "import/table_words.h"

#include <algorithm>
#include <array>

#include "import/fields.h"

namespace vorn {
namespace {

struct KnownName {
  std::string_view letters;  // as letters_of gives them
  ColumnMeaning meaning;
};

using enum ColumnMeaning;
constexpr std::array names = {KnownName{"year", year},
                              KnownName{"years", year},
                              KnownName{"yr", year},
                              KnownName{"date", year},
                              KnownName{"age", year},
                              KnownName{"agece", year},
                              KnownName{"agead", year},
                              KnownName{"yearce", year},
                              KnownName{"yearad", year},
                              KnownName{"calendaryear", year},
                              KnownName{"ringyear", year},
                              KnownName{"jahr", year},
                              KnownName{"ann\xc3\xa9\x65", year},
                              KnownName{"annee", year},
                              KnownName{"time", year},
                              KnownName{"agebp", year_bp},
                              KnownName{"agecalbp", year_bp},
                              KnownName{"yearbp", year_bp},
                              KnownName{"yearsbp", year_bp},
                              KnownName{"calbp", year_bp},
                              KnownName{"bp", year_bp},
                              KnownName{"yearcalbp", year_bp},
                              KnownName{"series", series},
                              KnownName{"seriesid", series},
                              KnownName{"seriesname", series},
                              KnownName{"id", series},
                              KnownName{"coreid", series},
                              KnownName{"corename", series},
                              KnownName{"corecode", series},
                              KnownName{"sample", series},
                              KnownName{"sampleid", series},
                              KnownName{"samplename", series},
                              KnownName{"name", series},
                              KnownName{"keycode", series},
                              KnownName{"code", series},
                              KnownName{"label", series},
                              KnownName{"specimen", series},
                              KnownName{"variable", series},
                              KnownName{"tree", tree},
                              KnownName{"treeid", tree},
                              KnownName{"treename", tree},
                              KnownName{"baum", tree},
                              KnownName{"core", core},
                              KnownName{"radius", core},
                              KnownName{"kern", core},
                              KnownName{"width", width},
                              KnownName{"widths", width},
                              KnownName{"rw", width},
                              KnownName{"trw", width},
                              KnownName{"value", width},
                              KnownName{"values", width},
                              KnownName{"ringwidth", width},
                              KnownName{"ringwidths", width},
                              KnownName{"treeringwidth", width},
                              KnownName{"totalringwidth", width},
                              KnownName{"measurement", width},
                              KnownName{"increment", width},
                              KnownName{"growth", width},
                              KnownName{"ring", width},
                              KnownName{"breite", width},
                              KnownName{"jahrringbreite", width},
                              KnownName{"depth", other},
                              KnownName{"sampledepth", other},
                              KnownName{"sampdepth", other},
                              KnownName{"num", other},
                              KnownName{"count", other},
                              KnownName{"samples", other},
                              KnownName{"ncores", other},
                              KnownName{"ntrees", other},
                              KnownName{"numberofcores", other},
                              KnownName{"index", other},
                              KnownName{"chronology", other},
                              KnownName{"crn", other},
                              KnownName{"std", other},
                              KnownName{"trsgi", other},
                              KnownName{"res", other},
                              KnownName{"ars", other},
                              KnownName{"eps", other},
                              KnownName{"rbar", other},
                              KnownName{"rownames", other},
                              KnownName{"species", other},
                              KnownName{"site", other}};

// Without what says the unit: in brackets, or behind the last separator.
std::string_view without_unit(std::string_view name) {
  if (const std::size_t open = name.find_first_of("([{"); open != std::string_view::npos && open > 0)
    return name.substr(0, open);
  constexpr std::array<std::string_view, 4> units = {"mm", "um", "micron", "microns"};
  const std::size_t separator = name.find_last_of(" _.-");
  if (separator == std::string_view::npos || separator == 0) return name;
  const bool is_unit = std::ranges::find(units, letters_of(name.substr(separator + 1))) != units.end();
  return is_unit ? name.substr(0, separator) : name;
}

}  // namespace

ColumnMeaning meaning_of(std::string_view name) {
  constexpr std::size_t longest = 60;
  const std::string letters = letters_of(without_unit(bare(name.substr(0, longest))));
  const auto known = std::ranges::find(names, letters, &KnownName::letters);
  return known == names.end() ? unknown : known->meaning;
}

}  // namespace vorn
