// What the files of a folder answered, call by call, so that a session can be gone through again on the very
// same answers, whatever became of the files meanwhile.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "records/files.h"

namespace vorn {

// The contents of a file, shared by all who keep them.
using Contents = std::shared_ptr<const std::string>;

struct FileAnswer {
  enum class Kind : std::uint8_t { look, open, make, extend };
  Kind kind = Kind::look;
  std::string name = {};
  Status status = {};                  // of the call
  FileKind found = FileKind::missing;  // look
  Contents contents = {};              // open, extend: what was read, up to a failure
  Status read_status = {};             // the failure behind the contents; 0 for none
  Status close_status = {};            // of what was read
  // make, extend: what became of the file that was begun. So many pieces were taken, then one was refused
  // (write_status) or all were; `commit_status` counts where it was committed.
  std::size_t pieces = 0;
  Status write_status = {};
  Status commit_status = {};
  bool is_committed = false;
};

// Files whose answers are kept, or given again.
//
// While there are answers to be given again, every call is answered with the next one and nothing is touched;
// what is written then goes to `replayed`, where one is given, or nowhere. Behind them the calls go to the
// real files, and each answer is kept; but a file is written only when all has been gone through (go_live).
// A call that does not fit the next answer (another name, another kind), or would write too early, is a
// replay gone astray: it and all that follow are answered 5 (EIO), and `is_astray` says so.
class AnsweredFiles : public Files {
 public:
  explicit AnsweredFiles(Files& files) : files_(files) {}

  // Gives these answers again, from the first on.
  void begin_again(std::vector<FileAnswer> answers, Files* replayed = nullptr);
  // All has been gone through: answers that were not asked for are dropped, and files are written.
  void go_live();
  // Whether the next call is answered by one that was kept.
  bool is_replaying() const { return next_ < answers_.size(); }
  bool is_astray() const { return is_astray_; }
  // All answers, kept and given so far.
  const std::vector<FileAnswer>& answers() const { return answers_; }
  std::size_t given() const { return next_; }

  // Called when an answer was kept that is new, and again when what became of a file is known: its place.
  std::function<void(std::size_t)> kept = [](std::size_t) {};

  Status look_at(const std::string& name, FileKind& kind) override;
  Status open(const std::string& name, std::unique_ptr<ByteSource>& source) override;
  Status make(const std::string& name, std::unique_ptr<ByteSink>& sink) override;
  Status extend(const std::string& name, std::unique_ptr<ByteSource>& older,
                std::unique_ptr<ByteSink>& sink) override;

 private:
  class Source;
  class LiveSink;
  class ReplayedSink;
  const FileAnswer* next_answer(FileAnswer::Kind kind, const std::string& name);
  const FileAnswer* go_astray();
  std::size_t keep(FileAnswer answer);
  Contents read(const std::string& name, ByteSource& source, FileAnswer& answer) const;

  Files& files_;
  Files* replayed_ = nullptr;
  std::vector<FileAnswer> answers_;
  std::size_t next_ = 0;  // of the answers, the one to be given next; behind the last: calls are live
  bool is_live_ = true, is_astray_ = false;
};

}  // namespace vorn
