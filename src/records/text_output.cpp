#include <cerrno>
#include <optional>
#include <utility>

#include "records/file_name.h"
#include "records/line_copy.h"
#include "records/os_file.h"
#include "records/text_file.h"

namespace vorn {
namespace {

// Behind the name of a file, that of the neighbour in which it is made. Nobody would give a file such a name,
// so that one that stands there was left behind when a program was killed, and is removed. Where it cannot
// be, another number is taken.
constexpr const char* neighbour_ending = ".vorn-part";
constexpr int most_neighbours = 9;

// Records are brought to the file when so much has gathered.
constexpr std::size_t enough_to_write = std::size_t{1} << 16;

}  // namespace

// A file that is being made. One that goes before it is finished takes its neighbour with it.
struct TextOutput::State {
  ~State() { drop(); }

  int open(std::string_view name, os::Kind& about);
  int make_neighbour();
  int copy_older();
  int add();
  int bring_to_file();
  int finish();
  int take_place();
  int check_copied() const;
  void drop();

  os::File file;
  std::string target;
  std::string neighbour;            // of the target; nothing for a device
  std::optional<os::Stamp> copied;  // the target that is added to, as it was when it was copied
  std::string gathered;             // and not yet brought to the file
  std::string records;              // of the last write
};

// Opens what `name` leads to; `about` is set to what stood there before.
int TextOutput::State::open(std::string_view name, os::Kind& about) {
  auto path = path_of(name);
  if (!path) return ENOENT;
  if (const int failed = os::follow_links(*path)) return failed;
  if (const int failed = os::kind_of(*path, about)) return failed;
  switch (about) {
    case os::Kind::folder:
      return EISDIR;
    case os::Kind::other:
      return file.open_device(*path);
    case os::Kind::regular:
      if (const int failed = os::may_write(*path)) return failed;
      break;
    case os::Kind::missing:
      break;
  }
  target = *path;
  return 0;
}

int TextOutput::State::make_neighbour() {
  int failed = EEXIST;
  for (int number = 1; number <= most_neighbours && failed == EEXIST; ++number) {
    const auto part = target + neighbour_ending + (number == 1 ? "" : std::to_string(number));
    os::remove(part);  // there mostly is none; where one cannot be removed, the next line fails
    failed = file.make(part);
    if (!failed) neighbour = part;
  }
  return failed;
}

int TextOutput::State::copy_older() {
  os::File older;
  if (const int failed = older.open_to_read(target)) return failed;
  if (const int failed = older.stamp(copied.emplace())) return failed;
  if (const int failed = copy_lines(older, file)) return failed;
  return older.close();
}

// Adds what was written last.
int TextOutput::State::add() {
  gathered += records;
  gathered += '\n';
  return gathered.size() < enough_to_write ? 0 : bring_to_file();
}

int TextOutput::State::bring_to_file() {
  const int failed = file.write(gathered);
  gathered.clear();
  return failed;
}

int TextOutput::State::finish() {
  if (const int failed = bring_to_file()) return failed;
  return neighbour.empty() ? file.close() : take_place();
}

int TextOutput::State::take_place() {
  auto about = os::Kind::missing;
  if (const int failed = os::kind_of(target, about)) return failed;
  if (about == os::Kind::regular)
    if (const int failed = os::copy_permissions(target, neighbour)) return failed;
  if (const int failed = file.sync()) return failed;
  if (!file.stands_at(neighbour)) return EBUSY;  // another program has begun to write the same file
  if (const int failed = file.close()) return failed;
  if (const int failed = check_copied()) return failed;
  if (const int failed = os::rename(neighbour, target)) return failed;
  neighbour.clear();
  return 0;
}

// Deliberate: [changed-meanwhile] what somebody else has done to a file since it was copied must not be lost.
int TextOutput::State::check_copied() const {
  if (!copied) return 0;
  os::Stamp now;
  if (const int failed = os::stamp_of(target, now)) return failed;
  return now == *copied ? 0 : EBUSY;
}

void TextOutput::State::drop() {
  const bool taken_over = file.is_open() && !file.stands_at(neighbour);
  file.close();
  if (!neighbour.empty() && !taken_over) os::remove(neighbour);
}

TextOutput::TextOutput() = default;
TextOutput::~TextOutput() = default;
TextOutput::TextOutput(TextOutput&&) noexcept = default;
TextOutput& TextOutput::operator=(TextOutput&&) noexcept = default;

int TextOutput::create(std::string_view name) {
  state_.reset();
  auto state = std::make_unique<State>();
  auto about = os::Kind::missing;
  if (const int failed = state->open(name, about)) return failed;
  if (about != os::Kind::other)
    if (const int failed = state->make_neighbour()) return failed;
  state_ = std::move(state);
  return status::ok;
}

int TextOutput::append(std::string_view name) {
  state_.reset();
  auto state = std::make_unique<State>();
  auto about = os::Kind::missing;
  if (const int failed = state->open(name, about)) return failed;
  if (about == os::Kind::missing) return ENOENT;
  if (about == os::Kind::regular) {
    if (const int failed = state->make_neighbour()) return failed;
    if (const int failed = state->copy_older()) return failed;
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
