// What became of each file of a list: for those who look at a folder as a whole.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "batch/repair.h"
#include "batch/table.h"
#include "records/files.h"
#include "study/file_findings.h"
#include "workspace/careful.h"

namespace vorn {

// A copy that the program takes whole, with what is a guess chosen so.
struct CopyOnOffer {
  RepairChoices choices = {};
  std::vector<std::string> done = {};  // see Repair
};

struct FileReport {
  std::string file;         // as the list names it; the list itself where the findings are about its lines
  std::string layout = {};  // "Tuscon Raw"; empty for the list
  std::size_t cores = 0;
  int first_year = 0, last_year = 0;       // of the cores or the chronology; 0 where nothing was read
  bool was_read = false;                   // at least in part
  bool is_whole = false;                   // everything that it says was taken
  std::vector<FileFinding> findings = {};  // the gravest first, each kind in the order of the lines
  std::vector<CopyOnOffer> copies = {};    // none where nothing is lost, or nothing can be done about it
  std::vector<std::string> no_copy = {};   // why, where something is lost

  std::size_t count(Severity severity) const;
  // Whether nothing of it is read, but a copy of it would be, whole.
  bool can_be_copied() const { return !was_read && !copies.empty(); }
};
// Each stays the same while others come behind it.
using SharedReport = std::shared_ptr<const FileReport>;
using SharedReports = std::shared_ptr<const std::vector<SharedReport>>;

// Reads the files of a list once more, beside the program, which is not touched: as it read them at its
// start. File by file, so that others can be served meanwhile.
class FolderLook {
 public:
  // `files` must live as long; `this_year` as in FileTaken; they are read as carefully as the program does.
  FolderLook(Files& files, int this_year, const Careful& careful = {});

  bool is_done() const { return next_ >= names_.size(); }
  // "file 3 of 24: site.rwl".
  std::string working() const;
  // Looks at the next one. Nothing is thrown for what a file holds.
  void look();
  // Of those that were looked at so far, the list first where there is something to be said of it.
  SharedReports reports() const { return reports_; }

 private:
  Files& files_;
  int this_year_;
  Careful careful_;
  std::vector<std::string> names_;
  std::size_t next_ = 0;
  SharedReports reports_;
};

// One sentence, which names what is not read whole; empty where all is.
std::string words_on_loss(const std::vector<SharedReport>& reports);

// The year by the clock of the machine: the one thing that is not the same on every day.
int year_of_today();

}  // namespace vorn
