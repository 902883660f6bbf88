#include "sessions/file_answers.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <utility>
#include <vector>

#include "base/zero_memory.h"

namespace vorn {

// Contents that were kept, ending as they did.
class AnsweredFiles::Source : public ByteSource {
 public:
  explicit Source(const FileAnswer& answer)
      : contents_(answer.contents), status_(answer.read_status), close_status_(answer.close_status) {}

  Status read(std::span<char> buffer, std::size_t& count) override {
    count = std::min(buffer.size(), contents_->size() - at_);
    std::copy_n(contents_->data() + at_, count, buffer.data());
    at_ += count;
    return count == 0 && !buffer.empty() ? status_ : Status{};
  }
  Status close() override { return close_status_; }

 private:
  Contents contents_;
  Status status_, close_status_;
  std::size_t at_ = 0;
};

namespace {

// What a source has, up to its end or a failure. Files are read again and again, and the largest take
// longest: while one goes on as the contents that are known of it, these stand for it.
class WholeRead {
 public:
  explicit WholeRead(Contents known) : known_(std::move(known)) {}

  void read(ByteSource& source, FileAnswer& answer) {
    expected_ = static_cast<std::size_t>(std::min<std::uint64_t>(source.expected_size(), most_expected));
    // One byte more, to meet the end with the first call.
    std::vector<char> buffer(expected_ > 0 ? std::min(expected_ + 1, piece_size) : piece_size);
    std::size_t count = 1;
    while (answer.read_status == status::ok && count > 0) {
      answer.read_status = source.read(buffer, count);
      if (answer.read_status == status::ok) take({buffer.data(), count});
    }
    answer.close_status = source.close();
  }

  // Whether it was all as it is known.
  bool is_known() const { return known_ && !differs_ && as_known_ == known_->size(); }
  std::string bytes() && { return differs_ ? std::move(bytes_) : known_start(); }

 private:
  static constexpr std::size_t piece_size = std::size_t{1} << 18;
  static constexpr std::size_t most_expected = std::size_t{1} << 26;

  void take(std::string_view piece) {
    if (piece.empty()) return;
    if (known_ && !differs_ && std::string_view(*known_).substr(as_known_).starts_with(piece)) {
      as_known_ += piece.size();
      return;
    }
    if (!differs_) begin_bytes();
    bytes_ += piece;
  }

  void begin_bytes() {
    differs_ = true;
    bytes_.reserve(expected_);
    expect_use(bytes_.data(), expected_);
    bytes_ += known_start();
  }

  std::string known_start() const { return known_ ? known_->substr(0, as_known_) : std::string(); }

  Contents known_;
  std::size_t as_known_ = 0;  // so many bytes of its start
  std::size_t expected_ = 0;  // in all
  bool differs_ = false;
  std::string bytes_;  // where it differs
};

// What a file of that name had when it was last read; nothing where it was not.
Contents last_contents(const std::vector<FileAnswer>& answers, const std::string& name) {
  const auto last = std::find_if(answers.rbegin(), answers.rend(), [&](const FileAnswer& answer) {
    return answer.contents && answer.name == name;
  });
  return last != answers.rend() ? last->contents : nullptr;
}

}  // namespace

// A file that is really made; what becomes of it is kept.
class AnsweredFiles::LiveSink : public ByteSink {
 public:
  LiveSink(AnsweredFiles& files, std::size_t answer, std::unique_ptr<ByteSink> sink)
      : files_(files), answer_(answer), sink_(std::move(sink)) {}

  Status write(std::string_view bytes) override {
    FileAnswer& answer = files_.answers_[answer_];
    const Status failed = sink_->write(bytes);
    if (failed == status::ok) ++answer.pieces;
    if (failed != status::ok && answer.write_status == status::ok) {
      answer.write_status = failed;
      files_.kept(answer_);
    }
    return failed;
  }
  Status commit() override {
    FileAnswer& answer = files_.answers_[answer_];
    answer.commit_status = sink_->commit();
    answer.is_committed = true;
    files_.kept(answer_);
    return answer.commit_status;
  }

 private:
  AnsweredFiles& files_;
  std::size_t answer_;
  std::unique_ptr<ByteSink> sink_;
};

// A file that was made once.
class AnsweredFiles::ReplayedSink : public ByteSink {
 public:
  ReplayedSink(FileAnswer answer, std::unique_ptr<ByteSink> copy)
      : answer_(std::move(answer)), copy_(std::move(copy)) {}

  Status write(std::string_view bytes) override {
    if (taken_ == answer_.pieces && answer_.write_status != status::ok) return answer_.write_status;
    ++taken_;
    return copy_ ? copy_->write(bytes) : Status{};
  }
  Status commit() override {
    if (copy_ && answer_.is_committed && answer_.commit_status == status::ok) copy_->commit();
    return answer_.commit_status;
  }

 private:
  FileAnswer answer_;
  std::unique_ptr<ByteSink> copy_;
  std::size_t taken_ = 0;
};

void AnsweredFiles::begin_again(std::vector<FileAnswer> answers, Files* replayed) {
  answers_ = std::move(answers);
  replayed_ = replayed;
  next_ = 0;
  is_live_ = is_astray_ = false;
}

void AnsweredFiles::go_live() {
  answers_.resize(next_);
  replayed_ = nullptr;
  is_live_ = true;
  is_astray_ = false;
}

const FileAnswer* AnsweredFiles::go_astray() {
  static const FileAnswer astray = {.status = Status(EIO)};
  is_astray_ = true;
  return &astray;
}

// Null where the real files are to answer.
const FileAnswer* AnsweredFiles::next_answer(FileAnswer::Kind kind, const std::string& name) {
  if (is_astray_) return go_astray();
  const bool writes = kind == FileAnswer::Kind::make || kind == FileAnswer::Kind::extend;
  if (!is_replaying()) return writes && !is_live_ ? go_astray() : nullptr;
  if (answers_[next_].kind != kind || answers_[next_].name != name) return go_astray();
  return &answers_[next_++];
}

std::size_t AnsweredFiles::keep(FileAnswer answer) {
  answers_.push_back(std::move(answer));
  next_ = answers_.size();
  kept(answers_.size() - 1);
  return answers_.size() - 1;
}

// What was the same before is kept once.
Contents AnsweredFiles::read(const std::string& name, ByteSource& source, FileAnswer& answer) const {
  Contents last = last_contents(answers_, name);
  WholeRead whole(last);
  whole.read(source, answer);
  if (whole.is_known()) return last;
  std::string bytes = std::move(whole).bytes();
  const auto same = std::find_if(answers_.rbegin(), answers_.rend(), [&](const FileAnswer& one) {
    return one.contents && one.name == name && *one.contents == bytes;
  });
  return same != answers_.rend() ? same->contents : std::make_shared<const std::string>(std::move(bytes));
}

Status AnsweredFiles::look_at(const std::string& name, FileKind& kind) {
  if (const FileAnswer* answer = next_answer(FileAnswer::Kind::look, name)) {
    kind = answer->found;
    return answer->status;
  }
  const Status status = files_.look_at(name, kind);
  keep({.kind = FileAnswer::Kind::look, .name = name, .status = status, .found = kind});
  return status;
}

Status AnsweredFiles::open(const std::string& name, std::unique_ptr<ByteSource>& source) {
  if (const FileAnswer* answer = next_answer(FileAnswer::Kind::open, name)) {
    if (answer->status == status::ok) source = std::make_unique<Source>(*answer);
    return answer->status;
  }
  FileAnswer answer{.kind = FileAnswer::Kind::open, .name = name};
  std::unique_ptr<ByteSource> real;
  answer.status = files_.open(name, real);
  if (answer.status == status::ok) {
    answer.contents = read(name, *real, answer);
    source = std::make_unique<Source>(answer);
  }
  const Status status = answer.status;
  keep(std::move(answer));
  return status;
}

Status AnsweredFiles::make(const std::string& name, std::unique_ptr<ByteSink>& sink) {
  if (const FileAnswer* answer = next_answer(FileAnswer::Kind::make, name)) {
    std::unique_ptr<ByteSink> copy;
    if (replayed_ && answer->status == status::ok) replayed_->make(name, copy);
    if (answer->status == status::ok) sink = std::make_unique<ReplayedSink>(*answer, std::move(copy));
    return answer->status;
  }
  std::unique_ptr<ByteSink> real;
  const Status status = files_.make(name, real);
  const std::size_t place = keep({.kind = FileAnswer::Kind::make, .name = name, .status = status});
  if (status == status::ok) sink = std::make_unique<LiveSink>(*this, place, std::move(real));
  return status;
}

Status AnsweredFiles::extend(const std::string& name, std::unique_ptr<ByteSource>& older,
                             std::unique_ptr<ByteSink>& sink) {
  if (const FileAnswer* answer = next_answer(FileAnswer::Kind::extend, name)) {
    if (answer->status != status::ok) return answer->status;
    std::unique_ptr<ByteSink> copy;
    if (replayed_) replayed_->make(name, copy);
    if (answer->contents) older = std::make_unique<Source>(*answer);
    sink = std::make_unique<ReplayedSink>(*answer, std::move(copy));
    return {};
  }
  FileAnswer answer{.kind = FileAnswer::Kind::extend, .name = name};
  std::unique_ptr<ByteSource> real_older;
  std::unique_ptr<ByteSink> real_sink;
  const Status status = answer.status = files_.extend(name, real_older, real_sink);
  if (status == status::ok && real_older) {
    answer.contents = read(name, *real_older, answer);
    older = std::make_unique<Source>(answer);
  }
  const std::size_t place = keep(std::move(answer));
  if (status == status::ok) sink = std::make_unique<LiveSink>(*this, place, std::move(real_sink));
  return status;
}

}  // namespace vorn
