#include <memory>
#include <utility>

#include "records/file_name.h"
#include "records/line_copy.h"
#include "records/text_file.h"

namespace vorn {
namespace {

// Records are brought to the file when so much has gathered.
constexpr std::size_t enough_to_write = std::size_t{1} << 16;

}  // namespace

// A file that is being made.
struct TextOutput::State {
  Status add();
  Status bring_to_file();
  Status finish();

  std::unique_ptr<ByteSink> file;
  std::string gathered;  // and not yet brought to the file
  std::string records;   // of the last write
};

// Adds what was written last.
Status TextOutput::State::add() {
  gathered += records;
  gathered += '\n';
  return gathered.size() < enough_to_write ? status::ok : bring_to_file();
}

Status TextOutput::State::bring_to_file() {
  const Status failed = file->write(gathered);
  gathered.clear();
  return failed;
}

Status TextOutput::State::finish() {
  if (const Status failed = bring_to_file()) return failed;
  return file->commit();
}

TextOutput::TextOutput() = default;
TextOutput::~TextOutput() = default;
TextOutput::TextOutput(TextOutput&&) noexcept = default;
TextOutput& TextOutput::operator=(TextOutput&&) noexcept = default;

Status TextOutput::create(Files& files, std::string_view name) {
  state_.reset();
  const auto path = path_of(name);
  if (!path) return status::no_such_file;
  auto state = std::make_unique<State>();
  if (const Status failed = files.make(*path, state->file)) return failed;
  state_ = std::move(state);
  return status::ok;
}

Status TextOutput::append(Files& files, std::string_view name) {
  state_.reset();
  const auto path = path_of(name);
  if (!path) return status::no_such_file;
  auto state = std::make_unique<State>();
  std::unique_ptr<ByteSource> older;
  if (const Status failed = files.extend(*path, older, state->file)) return failed;
  if (older) {
    if (const Status failed = copy_lines(*older, *state->file)) return failed;
    if (const Status failed = older->close()) return failed;
  }
  state_ = std::move(state);
  return status::ok;
}

// Deliberate: [told-once] after the first failure everything answers ok, the closing included.
Status TextOutput::write_list(const EditFormat& format, std::span<const WriteItem> items) {
  if (!state_) return status::ok;
  if (const Status unsuitable = write_items(state_->records, format, items)) return unsuitable;
  const Status failed = state_->add();
  if (failed) state_.reset();
  return failed;
}

Status TextOutput::close() {
  if (!state_) return status::ok;
  const Status failed = state_->finish();
  state_.reset();
  return failed;
}

}  // namespace vorn
