// What a reader of one of the other layouts finds, value by value, and what becomes of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "import/fields.h"
#include "import/imported.h"
#include "import/table_rows.h"
#include "study/file_findings_parts.h"

namespace vorn {

// Years that the copy has columns for; its end mark takes one more.
inline constexpr std::int64_t earliest_year = -9999, latest_year = 9998;
// Years without a ring, one behind the other, that are still written as missing rings. Behind more of them
// the core goes on as a series of its own.
inline constexpr std::int64_t longest_gap = 100;
// A longer series is cut; the reader of the copy would cut it, too.
inline constexpr std::size_t most_years_of_a_series = 10'000;

// Findings about single fields, rows and rings: further ones are counted.
inline constexpr std::size_t most_told_each = most_findings / 4;

struct FoundRing {
  std::int64_t year = 0;
  double value = 0;  // as the file has it
  std::int64_t line = 0;
  int column = 0;
};

struct FoundSeries {
  std::string name = {};  // as the file has it
  std::int64_t line = 0;
  int column = 0;
  std::optional<double> unit = {};  // values a millimetre, where the file says them
  bool unit_is_guess = false;       // or of what was computed, which was said where it was made
  bool has_points = false;          // a value is written with a point
  std::vector<FoundRing> rings = {};
  std::vector<FoundRing> negative = {};  // years marked as missing by a negative number
};

// Numbers that mean no ring in this file, beside what says_missing knows.
struct MissingMarks {
  std::vector<double> numbers = {};
  std::vector<std::string> words = {};  // in small letters
  bool are_said_by(std::string_view text) const;
};

struct WordsSeen {
  std::int64_t count = 0, line = 0;  // the first line
};

// Numbers whose point or comma may part thousands, "1,234" among "987".
struct ThousandsSeen {
  std::int64_t parted = 0;     // with three digits behind it, and one to three before it
  std::int64_t other = 0;      // with a point that can be none but the decimal one
  std::int64_t hundreds = 0;   // without one, of 100 to 999
  std::int64_t thousands = 0;  // without one, and larger
  std::int64_t line = 0;       // of the first of them that is parted
  double first = 0;
};

// Gathers what a file holds. Whatever it does not take becomes a finding.
class FoundFile {
 public:
  explicit FoundFile(const ImportWishes& wishes) : wishes_(wishes) {}
  const ImportWishes& wishes() const { return wishes_; }

  FindingList findings;
  MissingMarks marks;
  bool commas = false;  // whether one may stand for the decimal point

  // Tells of one field, row or ring among many: only so many that there is room for what is told of the
  // whole.
  void tell_each(FileFinding finding);

  // A further series, of which the name is in any characters; its number from 0. Where there are as many as
  // the program takes that is said once, and there is none.
  std::optional<std::size_t> add_series(std::string_view name, std::int64_t line, int column);
  FoundSeries& series(std::size_t k) { return series_[k]; }
  std::size_t count() const { return series_.size(); }

  // The value of a year, as its field has it: a ring, a mark for a missing one, or neither, which is said.
  void take(std::size_t series, std::int64_t year, const TableField& field);
  // Whether the copy can hold a ring of that year; where not, it is said that `numbers` numbers are lost.
  bool can_hold(std::int64_t year, const TableField& at, std::int64_t numbers);
  // How many of the fields hold numbers.
  std::int64_t numbers_among(std::span<const TableField> fields) const;

  // The series in millimetres with their findings, and the copy. `look` may add findings before they are
  // put in order.
  Imported finished(OtherLayout layout, std::string layout_name, std::string why,
                    const std::function<void(const Imported&)>& look = {});

 private:
  void take_number(std::size_t series, const FoundRing& ring, const FieldNumber& number);
  void tell_decimals();
  void look_at_thousands(const FoundRing& ring, const FieldNumber& number);
  void tell_missing_words();
  void doubt_thousands();
  void doubt_year_0();
  void put_in_order(FoundSeries& series);
  void look_at_order(const FoundSeries& series);
  void drop_repeated(FoundSeries& series);
  void find_units();
  void tell_units();
  void doubt_units();
  void tell_negative(const FoundSeries& series);
  static void cut(const FoundSeries& series, std::vector<ImportedSeries>& all);
  void tell_values(const std::vector<ImportedSeries>& all);

  ImportWishes wishes_;
  std::vector<FoundSeries> series_;
  std::size_t rings_ = 0;
  bool has_year_0_ = false, told_room_ = false, told_series_ = false, told_descent_ = false;
  std::set<std::int64_t> told_order_;  // lines
  std::size_t told_each_ = 0, untold_each_ = 0;
  std::int64_t comma_line_ = 0, point_line_ = 0;
  std::map<std::string, WordsSeen, std::less<>> missing_words_;  // that stand where no value is
  ThousandsSeen thousands_;
};

}  // namespace vorn
