// A Workspace as a program just started has it, once for every input, at the cost of the memory pages that
// the input before has written.
//
// A Workspace is large: 50 MB, which to set to zeros for each input would take longer than most inputs do. So
// one is made, everything that it allocates lies in one stretch of memory, and a copy of that stretch is kept
// by the operating system; going back to the copy gives up the pages that were written, whatever wrote them.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "plot/plot.h"
#include "plot/screen.h"
#include "records/disk_files.h"
#include "workspace/vorndata.h"

namespace vorn::fuzz {

class FreshWorkspace {
 public:
  // Makes the state that each input starts from: a new Workspace after `prepare`, which may load files. It
  // tells its messages to nobody. A Workspace keeps nothing outside its tables, so what `prepare` leaves in
  // them is all there is.
  explicit FreshWorkspace(void (*prepare)(Workspace&) = nullptr);

  // The Workspace in that state again, with a new page on `screen`, which must live as long as it is used.
  // What an earlier call answered is no longer valid.
  Workspace& start(Screen& screen) { return start(screen, disk_); }
  // The same, on files of the caller's.
  Workspace& start(Screen& screen, Files& files);

 private:
  std::optional<Plot> plot_;  // at the same place each time: the Workspace refers to it
  // The Workspace keeps the files that it was made with: these, which stand for those of the start.
  class Port : public Files {
   public:
    explicit Port(Files& first) : files(&first) {}
    Status look_at(const std::string& name, FileKind& kind) override { return files->look_at(name, kind); }
    Status open(const std::string& name, std::unique_ptr<ByteSource>& source) override {
      return files->open(name, source);
    }
    Status make(const std::string& name, std::unique_ptr<ByteSink>& sink) override {
      return files->make(name, sink);
    }
    Status extend(const std::string& name, std::unique_ptr<ByteSource>& older,
                  std::unique_ptr<ByteSink>& sink) override {
      return files->extend(name, older, sink);
    }
    Files* files;
  };
  DiskFiles disk_;
  Port port_{disk_};
  Workspace* w_ = nullptr;
};

// For `prepare`: a program that has come up to its start menu on the files of the current folder.
void start_program(Workspace& w);

}  // namespace vorn::fuzz
