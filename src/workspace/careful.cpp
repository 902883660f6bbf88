#include "workspace/careful.h"

#include <algorithm>
#include <array>

namespace vorn {
namespace {

constexpr bool reads = true;

constexpr std::array table = {
    MendRow{Mend::blank_line, "blank-line", "a blank line ends no file of ring widths and is no decade",
            reads},
    MendRow{Mend::end_mark, "end-mark", "a series without an end mark keeps its last rings", reads},
    MendRow{Mend::statistics_line, "statistics-line", "a line of statistics behind indices is no decade",
            reads},
    MendRow{Mend::early_years, "early-years", "years of 0 and before are read and written as they are",
            reads},
    MendRow{Mend::heidelberg_names, "heidelberg-names", "names in Heidelberg files come back whole"},
    MendRow{Mend::compact_widths, "compact-widths", "compact files keep widths of 10 mm and more"},
    MendRow{Mend::read_trw, "read-trw", "Read TRW goes on without its list and writes all it read"},
    MendRow{Mend::constant_series, "constant-series",
            "constant series and what a report left spoil no other figure"},
    MendRow{Mend::last_core, "last-core", "the last core can be saved like any other"},
    MendRow{Mend::reference_end, "reference-end", "the last entry as reference keeps its last value"},
    MendRow{Mend::shift_lasts, "shift-lasts", "a saved shift of a chronology lasts"},
    MendRow{Mend::prompts, "prompts", "Backspace rubs out, and what is abandoned changes nothing"},
    MendRow{Mend::escape, "escape", "Escape leaves a pick, a prompt and the help"},
    MendRow{Mend::editor, "editor", "the editor works in thousandths, and its Quit and Reset undo"},
    MendRow{Mend::delete_unmarked, "delete-unmarked", "Delete begins with nothing marked"},
    MendRow{Mend::settings_shown, "settings-shown", "changed settings show on the start menu at once"},
    MendRow{Mend::pass_limits, "pass-limits", "no menu ends by itself after many clicks"},
    MendRow{Mend::help, "help", "help stands in its box and belongs to what is pointed at"},
    MendRow{Mend::skeleton, "skeleton", "Skeleton shows a skeleton plot"},
    MendRow{Mend::short_samples, "short-samples", "samples shorter than a segment get a best fit too"},
    MendRow{Mend::bar_year, "bar-year", "the bar says its year"},
    MendRow{Mend::thin_labels, "thin-labels", "wide displays thin out their labels"},
};

constexpr bool stands_in_order() {
  for (std::size_t k = 0; k < table.size(); ++k) {
    if (static_cast<std::size_t>(table[k].mend) != k) return false;
  }
  return table.size() < 32;
}
static_assert(stands_in_order());

}  // namespace

std::span<const MendRow> mends() {
  return table;
}

const MendRow& row_of(Mend mend) {
  return table[static_cast<std::size_t>(mend)];
}

const MendRow* mend_named(std::string_view name) {
  const auto* const row = std::ranges::find(table, name, &MendRow::name);
  return row == table.end() ? nullptr : row;
}

Careful Careful::of_bits(std::uint32_t bits) {
  Careful careful;
  careful.bits_ = bits & everything().bits_;
  return careful;
}

Careful Careful::everything() {
  Careful all;
  for (const MendRow& row : table) all.set(row.mend, true);
  return all;
}

Careful reading_of(const Careful& careful) {
  Careful reading;
  for (const MendRow& row : table) reading.set(row.mend, row.reads && careful.has(row.mend));
  return reading;
}

Careful both(const Careful& a, const Careful& b) {
  return Careful::of_bits(a.bits() | b.bits());
}

std::string names_of(const Careful& careful) {
  if (careful == Careful::everything()) return std::string(every_mend);
  std::string names;
  for (const MendRow& row : table) {
    if (careful.has(row.mend)) names += (names.empty() ? "" : ",") + std::string(row.name);
  }
  return names;
}

std::optional<Careful> careful_of(std::string_view names, std::string& wrong) {
  Careful careful;
  while (!names.empty()) {
    const std::string_view name = names.substr(0, names.find(','));
    names.remove_prefix(std::min(name.size() + 1, names.size()));
    const MendRow* const row = mend_named(name);
    if (!row && name != every_mend) {
      wrong = name;
      return {};
    }
    CarefulSwitch{.mend = row ? std::optional(row->mend) : std::nullopt}.apply(careful);
  }
  return careful;
}

void CarefulSwitch::apply(Careful& careful) const {
  if (mend) {
    careful.set(*mend, on);
  } else {
    careful = on ? Careful::everything() : Careful();
  }
}

std::string CarefulSwitch::text() const {
  return std::string(mend ? row_of(*mend).name : every_mend) + (on ? " on" : " off");
}

std::optional<CarefulSwitch> careful_switch(std::string_view text) {
  const std::size_t blank = text.find(' ');
  if (blank == std::string_view::npos) return {};
  const std::string_view name = text.substr(0, blank), is = text.substr(blank + 1);
  const MendRow* const row = mend_named(name);
  if ((!row && name != every_mend) || (is != "on" && is != "off")) return {};
  return CarefulSwitch{.mend = row ? std::optional(row->mend) : std::nullopt, .on = is == "on"};
}

}  // namespace vorn
