#include "sessions/file_answers.h"

#include <algorithm>
#include <array>
#include <cerrno>

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

// All that a source has, up to its end or a failure.
std::string read_all(ByteSource& source, FileAnswer& answer) {
  std::string bytes;
  std::vector<char> buffer(std::size_t{1} << 18);
  std::size_t count = 1;
  while (answer.read_status == status::ok && count > 0) {
    answer.read_status = source.read(buffer, count);
    if (answer.read_status == status::ok) bytes.append(buffer.data(), count);
  }
  answer.close_status = source.close();
  return bytes;
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

// Files are read again and again: what was the same before is kept once.
Contents AnsweredFiles::shared(const std::string& name, std::string bytes) const {
  const auto same = std::find_if(answers_.rbegin(), answers_.rend(), [&](const FileAnswer& answer) {
    return answer.contents && answer.name == name && *answer.contents == bytes;
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
    answer.contents = shared(name, read_all(*real, answer));
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
    answer.contents = shared(name, read_all(*real_older, answer));
    older = std::make_unique<Source>(answer);
  }
  const std::size_t place = keep(std::move(answer));
  if (status == status::ok) sink = std::make_unique<LiveSink>(*this, place, std::move(real_sink));
  return status;
}

}  // namespace vorn
