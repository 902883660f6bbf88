#include <memory>
#include <utility>

#include "records/file_name.h"
#include "records/record_reader.h"
#include "records/text_file.h"

namespace vorn {

struct TextInput::State {
  RecordReader records;
  int bad_column = 0;  // of the last read
};

TextInput::TextInput() = default;
TextInput::~TextInput() = default;
TextInput::TextInput(TextInput&&) noexcept = default;
TextInput& TextInput::operator=(TextInput&&) noexcept = default;

Status TextInput::open(Files& files, std::string_view name) {
  state_.reset();
  const auto path = path_of(name);
  if (!path) return status::no_such_file;
  std::unique_ptr<ByteSource> source;
  if (const Status failed = files.open(*path, source)) return failed;
  state_ = std::make_unique<State>(State{RecordReader(std::move(source)), 0});
  return status::ok;
}

Status TextInput::read_list(const EditFormat& format, std::span<const ReadItem> items) {
  if (!state_) return status::end_of_file;
  return read_items(state_->records, format, items, Commas::end_a_field, &state_->bad_column);
}

std::int64_t TextInput::line() const {
  return state_ ? state_->records.records() : 0;
}

std::string_view TextInput::record() const {
  return state_ ? state_->records.record() : std::string_view();
}

int TextInput::bad_column() const {
  return state_ ? state_->bad_column : 0;
}

Status TextInput::close() {
  if (!state_) return status::ok;
  const Status failed = state_->records.close();
  state_.reset();
  return failed;
}

}  // namespace vorn
