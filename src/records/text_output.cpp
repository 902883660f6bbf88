#include <cerrno>
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
  int add();
  int bring_to_file();
  int finish();

  std::unique_ptr<ByteSink> file;
  std::string gathered;  // and not yet brought to the file
  std::string records;   // of the last write
};

// Adds what was written last.
int TextOutput::State::add() {
  gathered += records;
  gathered += '\n';
  return gathered.size() < enough_to_write ? 0 : bring_to_file();
}

int TextOutput::State::bring_to_file() {
  const int failed = file->write(gathered);
  gathered.clear();
  return failed;
}

int TextOutput::State::finish() {
  if (const int failed = bring_to_file()) return failed;
  return file->commit();
}

TextOutput::TextOutput() = default;
TextOutput::~TextOutput() = default;
TextOutput::TextOutput(TextOutput&&) noexcept = default;
TextOutput& TextOutput::operator=(TextOutput&&) noexcept = default;

int TextOutput::create(Files& files, std::string_view name) {
  state_.reset();
  const auto path = path_of(name);
  if (!path) return ENOENT;
  auto state = std::make_unique<State>();
  if (const int failed = files.make(*path, state->file)) return failed;
  state_ = std::move(state);
  return status::ok;
}

int TextOutput::append(Files& files, std::string_view name) {
  state_.reset();
  const auto path = path_of(name);
  if (!path) return ENOENT;
  auto state = std::make_unique<State>();
  std::unique_ptr<ByteSource> older;
  if (const int failed = files.extend(*path, older, state->file)) return failed;
  if (older) {
    if (const int failed = copy_lines(*older, *state->file)) return failed;
    if (const int failed = older->close()) return failed;
  }
  state_ = std::move(state);
  return status::ok;
}

// Deliberate: [told-once] after the first failure everything answers 0, the closing included.
int TextOutput::write_list(const EditFormat& format, std::span<const WriteItem> items) {
  if (!state_) return status::ok;
  if (const int unsuitable = write_items(state_->records, format, items)) return unsuitable;
  const int failed = state_->add();
  if (failed) state_.reset();
  return failed;
}

int TextOutput::close() {
  if (!state_) return status::ok;
  const int failed = state_->finish();
  state_.reset();
  return failed;
}

}  // namespace vorn
