// Ring widths in the text template of the NOAA/WDS paleoclimatology archive: comments, lines that describe
// the variables, and a table with a column a variable.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "import/imported.h"
#include "study/file_lines.h"

namespace vorn {

// What a line "##name<tab>what,material,error,units,seasonality,archive,detail,method,C or N" says.
struct TemplateVariable {
  std::string name = {}, what = {}, units = {}, detail = {};  // all but the name in small letters
  bool is_text = false;                                       // C: its column holds no numbers
};

// Nothing where the line describes none.
std::optional<TemplateVariable> template_variable(std::string_view line);

enum class VariableMeaning { year, year_bp, width, width_of_part, other };

VariableMeaning meaning_of(const TemplateVariable& variable);

// Comments that are looked at, by the letters and digits of their key.
namespace noaa_template {
inline constexpr std::string_view missing_key = "missingvalue";  // and "missingvalues"
inline constexpr std::array<std::string_view, 2> first_year_keys = {"firstyear", "earliestyear"};
inline constexpr std::array<std::string_view, 2> last_year_keys = {"lastyear", "mostrecentyear"};
}  // namespace noaa_template

// Nothing where the lines are none: where no line describes a variable and none names the archive, or no
// table with years follows.
std::optional<Imported> import_noaa_template(std::span<const FileLine> lines, bool is_utf_16,
                                             const ImportWishes& wishes);

}  // namespace vorn
