// Files in memory, for tests and replays.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "records/files.h"

namespace vorn {

// A folder of files that lie nowhere else. A file that is being read keeps the contents it had when it was
// opened, whatever is written meanwhile. One thread at a time may use it.
class MemoryFiles : public Files {
 public:
  // Puts a file there, with the folders that it lies in, in place of one of that name.
  void put(const std::string& name, std::string contents);
  void make_folder(const std::string& name);
  // From now on whatever is asked of the file of that name, beside its contents, gives `failure`.
  void refuse(const std::string& name, Status failure);

  // The file's contents; nothing when there is none.
  std::optional<std::string_view> contents(const std::string& name) const;

  Status look_at(const std::string& name, FileKind& kind) override;
  Status open(const std::string& name, std::unique_ptr<ByteSource>& source) override;
  Status make(const std::string& name, std::unique_ptr<ByteSink>& sink) override;
  Status extend(const std::string& name, std::unique_ptr<ByteSource>& older,
                std::unique_ptr<ByteSink>& sink) override;

 private:
  class Source;
  class Sink;
  using Contents =
      std::shared_ptr<const std::string>;  // never changed, so that they tell one state from another

  // What stands under a path, a failure when it is refused.
  Status find(const std::string& path, FileKind& kind) const;

  // By paths as plain() gives them.
  std::map<std::string, Contents> files_;
  std::set<std::string> folders_;
  std::map<std::string, Status> refused_;
};

}  // namespace vorn
