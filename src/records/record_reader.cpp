#include "records/record_reader.h"

#include <algorithm>
#include <utility>

namespace vorn {
namespace {

constexpr std::size_t buffer_size = std::size_t{1} << 18;
constexpr std::size_t longest_kept = std::size_t{1} << 20;

bool only_ctrl_z(std::string_view text) {
  return text.find_first_not_of('\x1a') == std::string_view::npos;
}

// Characters before the first CR or LF. Both are looked for in a short piece at a time, so that a file that
// has only one of them is not looked through for the other again and again.
std::size_t length_of_line(std::string_view text) {
  constexpr std::size_t piece_size = 256;
  for (std::size_t from = 0; from < text.size(); from += piece_size) {
    std::string_view piece = text.substr(from, piece_size);
    piece = piece.substr(0, piece.find('\n'));
    const std::size_t length = std::min(piece.find('\r'), piece.size());
    if (length < std::min(piece_size, text.size() - from)) return from + length;
  }
  return text.size();
}

}  // namespace

RecordReader::RecordReader(std::unique_ptr<ByteSource> source)
    : source_(std::move(source)), buffer_(std::make_unique_for_overwrite<char[]>(buffer_size)) {}

Status RecordReader::next(std::string_view& record) {
  const Status answer = find_next(record);
  if (answer == status::ok) ++records_;
  record_ = answer == status::ok ? record : std::string_view();
  return answer;
}

Status RecordReader::find_next(std::string_view& record) {
  record = {};
  if (empty_records_ > 0) {
    --empty_records_;
    return status::ok;
  }
  carried_.clear();
  cut_text_ = false;
  while (more()) {
    const auto text = unread();
    const auto length = length_of_line(text);
    at_ += length;
    record = text.substr(0, length);
    if (length < text.size()) return end_record(record);
    carry(record);
  }
  if (failure_) return std::exchange(failure_, status::ok);
  record = carried_;
  return only_ctrl_z(record) && !cut_text_ ? status::end_of_file : status::ok;
}

bool RecordReader::more() {
  if (at_ == end_ && !ended_) {
    at_ = 0;
    failure_ = source_->read({buffer_.get(), buffer_size}, end_);
    ended_ = end_ == 0;
  }
  return at_ < end_;
}

// Completes `record`, the end of which comes next in the buffer.
Status RecordReader::end_record(std::string_view& record) {
  if (!carried_.empty()) {
    carry(record);
    record = carried_;
  }
  pass_end(record);
  if (record.empty() || !only_ctrl_z(record) || cut_text_ || empty_records_ > 0) return status::ok;
  keep(record);
  return more() || failure_ ? status::ok : status::end_of_file;
}

// A run of CRs is one end when LF follows it; otherwise each of them is the end of a record.
void RecordReader::pass_end(std::string_view& record) {
  std::uint64_t returns = 0;
  while (more() && buffer_[at_] == '\r') {
    ++returns;
    ++at_;
    if (at_ == end_) keep(record);
  }
  if (at_ < end_ && buffer_[at_] == '\n')
    ++at_;
  else
    empty_records_ = returns - 1;
}

// Adds to the record that is carried over as much as is kept of one.
void RecordReader::carry(std::string_view piece) {
  const auto kept = piece.substr(0, longest_kept - carried_.size());
  carried_ += kept;
  cut_text_ = cut_text_ || !only_ctrl_z(piece.substr(kept.size()));
}

// Makes `record` outlast what the buffer holds.
void RecordReader::keep(std::string_view& record) {
  if (record.data() != carried_.data()) carried_ = record;
  record = carried_;
}

}  // namespace vorn
