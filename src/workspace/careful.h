// What the program does carefully, where its usual way costs people their work: a switch for each such place.
//
// All are off at first, and then nothing differs from the usual way. docs/careful.md says of each what is
// done in either way.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vorn {

// One place that is mended, in the order of the list.
enum class Mend : std::uint8_t {
  blank_line,
  end_mark,
  statistics_line,
  early_years,
  heidelberg_names,
  compact_widths,
  read_trw,
  constant_series,
  last_core,
  reference_end,
  shift_lasts,
  prompts,
  escape,
  editor,
  delete_unmarked,
  settings_shown,
  pass_limits,
  help,
  skeleton,
  short_samples,
  bar_year,
  thin_labels,
};

// How a mend is called, and what it does in half a sentence: "a blank line ends no file".
struct MendRow {
  Mend mend;
  std::string_view name;
  std::string_view does;
  // It changes how files are read: what is loaded stays as it is until it is read again.
  bool reads = false;
};

std::span<const MendRow> mends();
const MendRow& row_of(Mend mend);
// Null where no mend has this name.
const MendRow* mend_named(std::string_view name);

// Which of them are on.
class Careful {
 public:
  bool has(Mend mend) const { return (bits_ & bit(mend)) != 0; }
  bool any() const { return bits_ != 0; }
  void set(Mend mend, bool on) { bits_ = on ? bits_ | bit(mend) : bits_ & ~bit(mend); }
  // Bit k is mend k of the list; those of no mend are dropped.
  std::uint32_t bits() const { return bits_; }
  static Careful of_bits(std::uint32_t bits);
  static Careful everything();
  bool operator==(const Careful&) const = default;

 private:
  static std::uint32_t bit(Mend mend) { return std::uint32_t{1} << static_cast<unsigned>(mend); }
  std::uint32_t bits_ = 0;
};

// Those that change how files are read.
Careful reading_of(const Careful& careful);

// What one or the other has.
Careful both(const Careful& a, const Careful& b);

// The word that stands for all mends, where one is named.
inline constexpr std::string_view every_mend = "all";

// Their names with commas in between, "all" for all of them; empty for none.
std::string names_of(const Careful& careful);
// Reads such a list. Where a name is none nothing is returned, and `wrong` is that name.
std::optional<Careful> careful_of(std::string_view names, std::string& wrong);

// One switch, of one mend or of all.
struct CarefulSwitch {
  std::optional<Mend> mend = {};  // none: all
  bool on = true;

  void apply(Careful& careful) const;
  // "blank-line on"
  std::string text() const;
  bool operator==(const CarefulSwitch&) const = default;
};
// Reads such a text; nothing where it is none.
std::optional<CarefulSwitch> careful_switch(std::string_view text);

}  // namespace vorn
