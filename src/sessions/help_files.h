// The files of a folder that may have no help texts of its own.
#pragma once

#include <string>
#include <utility>

#include "records/files.h"

namespace vorn {

// The same files as another port has. But Help.prn, where there is none, is read from the place where the
// program is installed; it is never written there.
class HelpFiles : public Files {
 public:
  // `files` must live as long. `installed` is the name of the other Help.prn there; empty when there is none.
  HelpFiles(Files& files, std::string installed) : files_(files), installed_(std::move(installed)) {}

  Status look_at(const std::string& name, FileKind& kind) override;
  Status open(const std::string& name, std::unique_ptr<ByteSource>& source) override;
  Status make(const std::string& name, std::unique_ptr<ByteSink>& sink) override;
  Status extend(const std::string& name, std::unique_ptr<ByteSource>& older,
                std::unique_ptr<ByteSink>& sink) override;

 private:
  bool is_elsewhere(const std::string& name) const;

  Files& files_;
  std::string installed_;
};

}  // namespace vorn
