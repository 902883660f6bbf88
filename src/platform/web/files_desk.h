// What the studies' side of the browser edition does with the files of the folder: it looks at each of the
// list, offers clean copies, and puts corrected cores back into their file. Nothing is written before the
// page has answered to what was offered.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "batch/folder_look.h"
#include "panels/clean_copy.h"
#include "panels/corrected_file.h"
#include "platform/web/web_port.h"
#include "records/files.h"

namespace vorn {

class FilesDesk {
 public:
  // Both must live as long; `this_year` as in FolderLook.
  FilesDesk(WebPort& port, Files& files, int this_year) : port_(port), files_(files), this_year_(this_year) {}

  Files& folder() { return files_; }
  // The list, or the next file of it, is looked at. What is lost is told when all were.
  void look();
  // The files are looked at as they are read so.
  void read_as(const Careful& careful);
  bool is_done() const { return look_ && look_->is_done(); }
  SharedReports reports() const { return look_ ? look_->reports() : nullptr; }
  std::string working() const { return look_ ? look_->working() : std::string(); }

  // Tells the page what a clean copy of a file would be; `unit` as in clean_copy().
  void offer_copy(const std::string& file, std::optional<double> unit);
  // Whether the request was about files. `now` is null where nothing is known of the cores yet.
  bool serve(const WebRequest& request, const SharedSituation& now);

 private:
  void use_copy(const WebRequest& request);
  void tell_changes(const Situation& now);
  void offer_save(const Situation& now);
  void save_over(const WebRequest& request);
  // What cannot be done with a file is told instead.
  void or_told(const std::string& file, const std::function<void()>& work);

  WebPort& port_;
  Files& files_;
  int this_year_;
  Careful careful_;
  std::optional<FolderLook> look_;
  // What was offered last, by its number: an answer is meant for what was seen.
  std::size_t number_ = 0;
  struct OfferedCopy {
    std::size_t number = 0;
    std::string file;
    CleanCopy copy;
  };
  struct OfferedSave {
    std::size_t number = 0;
    CorrectedFile corrected;
  };
  OfferedCopy copy_;
  OfferedSave save_;
};

}  // namespace vorn
