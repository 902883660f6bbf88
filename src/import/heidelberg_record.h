// One record of a Heidelberg file, read by its words: keys in letters of any size, blanks around "=", values
// wherever they stand on their lines.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "import/table_rows.h"
#include "study/file_lines.h"

namespace vorn {

// What stands behind "DATA:", and of how many numbers each year has there the first is its width.
struct HeidelbergData {
  std::string_view word;  // in small letters
  int numbers = 1;        // a year
  std::string_view content;
};

inline constexpr std::array heidelberg_data = {
    HeidelbergData{"tree", 1, "a width"},
    HeidelbergData{"single", 1, "a width"},
    HeidelbergData{"halfchrono", 2, "a width and the number of samples"},
    HeidelbergData{"double", 2, "a width and a second number"},
    HeidelbergData{"chrono", 4, "a width, the number of samples, and of how many it rises and falls"},
    HeidelbergData{"quadro", 4, "a width, the number of samples, and of how many it rises and falls"}};

// More values of one record than these are not looked at.
inline constexpr std::size_t most_record_values = 400'000;

// Other words for a key, by their letters and digits, small.
struct KeyInOtherWords {
  std::string_view key, words;
};

inline constexpr std::array other_keys = {
    KeyInOtherWords{"keycode", "schluessel"},    KeyInOtherWords{"keycode", "schl\xc3\xbcssel"},
    KeyInOtherWords{"keycode", "schl\xfcssel"},  KeyInOtherWords{"datebegin", "datumanfang"},
    KeyInOtherWords{"datebegin", "anfangsjahr"}, KeyInOtherWords{"datebegin", "firstyear"},
    KeyInOtherWords{"datebegin", "startyear"},   KeyInOtherWords{"dateend", "datumende"},
    KeyInOtherWords{"dateend", "endjahr"},       KeyInOtherWords{"dateend", "lastyear"},
    KeyInOtherWords{"dateend", "endyear"},       KeyInOtherWords{"length", "laenge"},
    KeyInOtherWords{"length", "l\xc3\xa4nge"},   KeyInOtherWords{"length", "l\xe4nge"},
    KeyInOtherWords{"unit", "einheit"}};

struct HeidelbergRecord {
  std::map<std::string, TableField> keys =
      {};  // by their letters and digits, small; the first of each counts
  std::int64_t first_line = 0, data_line = 0, last_line = 0;  // from 1; no data: 0
  std::string data = {};                                      // the word behind "DATA:"
  std::vector<TableField> values = {};
  bool is_cut = false;  // there are more values

  // Of a key, or else of other words for it; an empty one where there is none.
  TableField of(std::string_view key) const;
};

// Whether the line begins a record.
bool is_header_line(std::string_view text);

// Goes through the records of a file.
class HeidelbergRecords {
 public:
  explicit HeidelbergRecords(std::span<const FileLine> lines) : lines_(lines) {}
  // False: there is none. One without data ends where the next begins.
  bool next(HeidelbergRecord& record);

 private:
  void read_key(HeidelbergRecord& record);
  void read_values(HeidelbergRecord& record);
  std::string_view text() const { return lines_[at_].text; }

  std::span<const FileLine> lines_;
  std::size_t at_ = 0;
};

}  // namespace vorn
