// Files worked on by several threads, one verb for all.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "apps/vorn_request.h"
#include "batch/files_below.h"
#include "batch/table.h"
#include "records/memory_files.h"

namespace vorn {

// Standard input under the name "-"; all else is on the disk. Nothing can be written.
class InputFiles : public Files {
 public:
  // Reads standard input where it is among these names.
  explicit InputFiles(const std::vector<std::string>& names);
  Status look_at(const std::string& name, FileKind& kind) override;
  Status open(const std::string& name, std::unique_ptr<ByteSource>& source) override;
  Status make(const std::string& name, std::unique_ptr<ByteSink>& sink) override;
  Status extend(const std::string& name, std::unique_ptr<ByteSource>& source,
                std::unique_ptr<ByteSink>& sink) override;

 private:
  Files& of(const std::string& name);
  DiskOfFolders disk_;
  MemoryFiles input_;
};

// What one file gave, in memory until its turn comes.
struct Answer {
  std::vector<Row> rows;
  std::vector<std::string> words;
  std::vector<std::string> doubts;  // no loss, but to be said
  std::vector<std::string> series;  // that the file has, where only some are asked for
  Repair repair;                    // where copies are wanted
  bool was_read = false;            // anything of the file
  bool has_failed = false;          // its rows are not all
  bool is_ready = false;
};

// What the files gave comes out in their order, whatever the number of threads.
class Work {
 public:
  Work(const Request& request, Files& files)
      : request_(request), files_(files), answers_(request.files.size()) {}

  // Once: hands each answer to `use`, on this thread, until one is answered by false, or throws.
  void run(const std::function<bool(const Answer&)>& use);

 private:
  class Stopping;
  void share(const std::function<bool(const Answer&)>& use);  // among threads
  void work();

  const Request& request_;
  Files& files_;
  std::vector<Answer> answers_;
  std::atomic<std::size_t> next_ = 0;
  std::size_t used_ = 0;
  bool stop_ = false;
  std::mutex mutex_;  // of all but next_
  std::condition_variable came_;
};

}  // namespace vorn
