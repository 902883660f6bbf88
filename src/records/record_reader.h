// Cutting a file into records.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "records/edit_format.h"
#include "records/files.h"

namespace vorn {

// The records of an open file, one after the other. TextInput says what ends a record and how much of it is
// kept.
class RecordReader : public RecordSource {
 public:
  explicit RecordReader(std::unique_ptr<ByteSource> source);

  // Gives the next record. A failure to read is answered once, after it the file is at its end.
  Status next(std::string_view& record) override;

  // How many records it has given.
  std::int64_t records() const { return records_; }
  // The one it gave last, until the next call; empty before the first and behind the last.
  std::string_view record() const { return record_; }

  Status close() { return source_->close(); }

 private:
  std::string_view unread() const { return {buffer_.get() + at_, end_ - at_}; }
  // Whether anything is left to be read; sees to it that some of it lies in the buffer.
  bool more();
  Status find_next(std::string_view& record);
  Status end_record(std::string_view& record);
  void pass_end(std::string_view& record);
  void carry(std::string_view piece);
  void keep(std::string_view& record);

  std::unique_ptr<ByteSource> source_;
  std::unique_ptr<char[]> buffer_;
  std::size_t at_ = 0;  // the part of the buffer that is still unread
  std::size_t end_ = 0;
  std::string carried_;    // a record, or the start of one, that the buffer does not hold as a whole
  bool cut_text_ = false;  // whether something besides Ctrl-Z was cut off its end
  std::uint64_t empty_records_ = 0;  // that come next, from a run of lone CRs
  Status failure_;                   // still to be answered
  std::int64_t records_ = 0;         // given so far
  std::string_view record_;          // the last of them
  bool ended_ = false;               // by the file's end or by a failure
};

}  // namespace vorn
