// Sequential text files, record by record, each operation answering with a status.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "records/edit_format.h"
#include "records/files.h"

namespace vorn {

// Whether something of that name exists, a directory included. What cannot be looked at counts as existing:
// the opening tells why it cannot. Trailing blanks are no part of a name, leading ones are; a blank name
// names nothing.
bool file_exists(Files& files, std::string_view name);

// A file read from its start to its end.
//
// A record ends at LF, at a run of CRs followed by LF, or at a lone CR; the last one counts without an end,
// unless it holds nothing but Ctrl-Z. Only the first mebibyte of a record is kept, far more than any format
// can look at, so that a file of one endless line costs no memory.
class TextInput {
 public:
  TextInput();
  ~TextInput();
  TextInput(TextInput&&) noexcept;
  TextInput& operator=(TextInput&&) noexcept;

  // Opens an existing file. A directory gives 21, a missing file or a blank name 2; a device, a pipe or a
  // socket, which might never end or let wait for ever, 19. Every read of a file that could not be opened
  // answers status::end_of_file.
  Status open(Files& files, std::string_view name);

  // Reads as many records as the items need (one, when there are none) and stores the items in order, see
  // read_items(). Past the end every read answers status::end_of_file. A failure of the operating system is
  // answered once with its number; after it the file is at its end.
  template <class... Items>
  Status read(const EditFormat& format, Items&&... items) {
    const std::array<ReadItem, sizeof...(Items)> list{as_read_item(items)...};
    return read_list(format, list);
  }

  // The number, from 1, of the record that was read last; 0 before the first and while no file is open.
  std::int64_t line() const;
  // That record as it stands in the file, without its end, until the next call; empty where there is none.
  std::string_view record() const;
  // The column, from 1, in which the field begins that the last read could not take; 0 when there was none.
  int bad_column() const;

  // Closes the file; without one, or a second time, does nothing.
  Status close();

 private:
  struct State;
  Status read_list(const EditFormat& format, std::span<const ReadItem> items);
  std::unique_ptr<State> state_;  // nothing while no file is open
};

// A file written from its start, or added to at its end. Records end with LF.
//
// Nothing that was there before is ever lost: what is written takes the file's place when it is closed; a
// file in which any write failed is dropped and the older one stays. An output that goes without close()
// drops what was written.
//
// One failure is told once: after a failed open, or the first failed write, all that follows does nothing and
// answers ok, close() included.
class TextOutput {
 public:
  TextOutput();
  ~TextOutput();
  TextOutput(TextOutput&&) noexcept;
  TextOutput& operator=(TextOutput&&) noexcept;

  // Opens a file to be written anew, whether or not it exists. 2 for a blank name or a missing folder, 13
  // when it exists and may not be written, 21 for a directory.
  Status create(Files& files, std::string_view name);

  // Opens an existing file to be added to. A Ctrl-Z at its end is taken away and a last line without an end
  // is given one. 2 when it does not exist, otherwise as create(). Where somebody else changes the file
  // before the closing, that gives 16, and the file stays as they left it.
  Status append(Files& files, std::string_view name);

  // Writes as many records as the items need (one, when there are none), see write_items(). Items that do not
  // suit the format write nothing and answer status::format_unusable; the file is good all the same.
  template <class... Items>
  Status write(const EditFormat& format, Items&&... items) {
    const std::array<WriteItem, sizeof...(Items)> list{as_write_item(items)...};
    return write_list(format, list);
  }

  // Whether a file is open in which nothing has failed yet.
  bool is_open() const { return state_ != nullptr; }

  // Makes what was written last and puts it in its place.
  Status close();

 private:
  struct State;
  Status write_list(const EditFormat& format, std::span<const WriteItem> items);
  std::unique_ptr<State> state_;  // nothing while no file is open, and after a failure
};

}  // namespace vorn
