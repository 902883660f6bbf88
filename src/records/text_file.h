// Sequential text files, record by record, each operation answering with a status (see edit_format.h).
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "records/edit_format.h"

namespace vorn {

// Whether something of that name exists, a directory included. Trailing blanks are no part of a name, leading ones
// are; a blank name names nothing.
bool file_exists(std::string_view name);

// A file read from its start to its end.
//
// A record ends at LF, at a run of CRs followed by LF, or at a lone CR; the last one counts without an end, unless
// it holds nothing but Ctrl-Z. Only the first mebibyte of a record is kept, far more than any format can look at, so
// that a file of one endless line costs no memory.
class TextInput {
 public:
  TextInput();
  ~TextInput();
  TextInput(TextInput&&) noexcept;
  TextInput& operator=(TextInput&&) noexcept;

  // Opens an existing file. A directory gives 21, a missing file 2. Every read of a file that could not be opened
  // answers status::end_of_file.
  int open(std::string_view name);

  // Reads as many records as the items need (one, when there are none) and stores the items in order.
  // Short records are padded with blanks. A bad field leaves its item and those after it as they were and uses up
  // its record. At the end of the file the items not yet read stay as they were.
  template <class... Items>
  int read(const EditFormat& format, Items&&... items);

  int close();
};

// A file written from its start, or added to at its end.
//
// Nothing that was there before is ever lost: what is written goes to a neighbour, which takes the file's place when
// it is closed; a file in which any write failed is dropped and the older one stays. Links are followed; what is no
// regular file (a device, a pipe) is written directly.
class TextOutput {
 public:
  int create(std::string_view name);  // whether or not it exists; 13 when it may not be written
  int append(std::string_view name);  // must exist; a last line without an end is given one first
  template <class... Items>
  int write(const EditFormat& format, Items&&... items);
  int close();
};

}  // namespace vorn
