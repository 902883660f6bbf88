// Edit formats such as "(A8,I4,10I6)": how a record of text is cut into items and how items make a record.
//
// One interpreter serves every layout of the program, so that code shows the same format strings as the
// descriptions of the files do. Known descriptors: Aw, A, Iw, Fw.d, nX, literals in single or double quotes,
// SP and SS, repeat counts and groups. Blanks in a format mean nothing; letters may be of either case; what
// follows the closing parenthesis is no part of it.
//
// Items left over at the end of a format start a new record and the format's last group (or, where it has
// none, the whole format) once more. What comes out, field by field, is laid down in edit_descriptors.txt.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "records/edit_items.h"
#include "records/status.h"

namespace vorn {

// One entry of a parsed format.
struct EditStep {
  enum class Kind : std::uint8_t {
    text,
    integer,
    real,
    blanks,
    literal,
    signs_shown,
    signs_hidden,
    open,
    close
  };
  Kind kind = Kind::blanks;
  int repeat = 1;            // times in a row; for `open`, times that the group is gone through
  int width = 0;             // columns; 0 for an A without a width: as many as the item has
  int decimals = 0;          // of an F
  std::size_t partner = 0;   // for `close`, where its `open` stands
  std::string literal = {};  // the characters of a literal

  bool moves_data() const { return kind <= Kind::real; }
};

class EditFormat {
 public:
  // Parses `text`, from its opening to its closing parenthesis. A text that is no format gives an object
  // whose every use answers status::format_unusable and touches neither items nor records.
  explicit EditFormat(std::string_view text);

  bool usable() const { return usable_; }

  // The parsed form, for those that read and write by it: all steps inside the outer parentheses, and the
  // first one of the part that is gone through again for items left over.
  std::span<const EditStep> steps() const { return steps_; }
  std::size_t repeated_from() const { return repeated_from_; }
  // Whether that part has descriptors that move data; without any, no left-over item would ever be moved.
  bool moves_left_over_items() const { return moves_left_over_items_; }

 private:
  std::vector<EditStep> steps_;
  std::size_t repeated_from_ = 0;
  bool moves_left_over_items_ = false;
  bool usable_ = false;
};

// Where the records of a read come from.
class RecordSource {
 public:
  virtual ~RecordSource() = default;
  // Gives the next record, without its end, valid until the next call.
  virtual Status next(std::string_view& record) = 0;
};

// Deliberate: [commas] whether a comma in a number's field ends the field there, so that the next one begins
// behind the comma: in files it does, in texts it is a bad character.
enum class Commas { end_a_field, are_no_digits };

// Reads as many records as `items` need (one, when there are none) and stores the items in order.
//
// Short records are padded with blanks. A bad field, or a descriptor that does not suit its item, leaves its
// item and those after it as they were and uses up its record. At the end of the records the items not yet
// read stay as they were. `bad_column`, where wanted, becomes the column, from 1, in which the bad field
// begins, or 0 if there is none.
Status read_items(RecordSource& source, const EditFormat& format, std::span<const ReadItem> items,
                  Commas commas, int* bad_column = nullptr);

// Reads from the one record `text`, the blanks at the end of which are no part of it.
Status read_items(std::string_view text, const EditFormat& format, std::span<const ReadItem> items,
                  int* bad_column = nullptr);

// Makes as many records as `items` need (one, when there are none), joined by line feeds without one at the
// end, and puts them into `records` in place of what it held. A failure leaves `records` empty.
Status write_items(std::string& records, const EditFormat& format, std::span<const WriteItem> items);

// Reads `items` from the one record `text`: `edit_read("CF1     1953", format, name, year)`. Answers a
// status, status::end_of_file when the items need more than the one record.
template <class... Items>
Status edit_read(std::string_view text, const EditFormat& format, Items&&... items) {
  const std::array<ReadItem, sizeof...(Items)> list{as_read_item(items)...};
  return read_items(text, format, list);
}

// The record that `items` make, `edit(format, name, year)`; records joined by line feeds if they make more
// than one. Items that do not suit the format make an empty text.
template <class... Items>
std::string edit(const EditFormat& format, Items&&... items) {
  const std::array<WriteItem, sizeof...(Items)> list{as_write_item(items)...};
  std::string records;
  write_items(records, format, list);
  return records;
}

}  // namespace vorn
