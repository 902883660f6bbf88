// One file, read without a page.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "formats/layouts.h"
#include "formats/read_decisions.h"
#include "formats/recognition.h"
#include "import/imported.h"
#include "records/files.h"
#include "records/troubles.h"
#include "study/file_lines.h"
#include "workspace/series_view.h"
#include "workspace/vorndata.h"

namespace vorn {

// What a trouble is in words, without its place.
std::string words_of(const Trouble& trouble);

// What the file holds, to its end.
Status read_whole(Files& files, const std::string& name, std::string& bytes);

// Whether a file of these bytes may be written under that name: there is none, or it holds the same.
bool is_free_for(Files& files, const std::string& name, const std::string& bytes);

// Whether the program knows the layout of a file, so that it reads it.
bool is_recognised(Files& files, const std::string& path);

// The file as the program reads it, with all that was told and decided on the way. A file of ring widths
// fills the store and gets its chronology; one of indices fills the first column of the file table.
//
// A file that the program does not recognise is read by the importers, where they can; then the store has
// what the program reads of the copy that they make.
class Collection {
 public:
  // Reads `path` with these settings. Nothing is thrown for what a file holds.
  Collection(Files& files, const std::string& path, const Settings& settings);
  ~Collection();
  Collection(const Collection&) = delete;
  Collection& operator=(const Collection&) = delete;

  const std::string& path() const { return path_; }
  // Whether there are cores to be looked at.
  bool has_cores() const;
  // Whether its cores span more years than a chronology may have.
  bool is_too_long() const { return is_too_long_; }
  // Or a chronology: whether anything was read.
  bool was_read() const;
  // The state of the program with this file as its only one: entry 1 to nc the cores, cf = 1.
  Workspace& state() { return *w_; }
  const Workspace& state() const { return *w_; }
  // Its cores, which live as long as this does.
  std::vector<SeriesView> cores() const;
  const Recognition& recognition() const { return recognition_; }
  // Of the copy where it was imported, as regards its lines.
  const ReadDecisions& decided() const { return decided_; }
  // What the importers made of it; null where the program reads it itself, or nobody can.
  const Imported* imported() const { return imported_ ? &*imported_ : nullptr; }
  // The names of its series, those that were not read as a whole among them, without blanks around them.
  std::vector<std::string> series() const;
  const std::vector<Trouble>& troubles() const { return troubles_; }
  // Whether nothing is lost where this was told.
  bool is_no_loss(const Trouble& trouble) const;
  // What its file holds; nothing where it cannot be read.
  std::optional<std::string> bytes() const;
  // One sentence for whoever reads the words beside the data: why nothing, or not all, was read. Begins with
  // the path.
  std::vector<std::string> words() const;
  // Likewise, what the importers took for something that may not be what is meant, the unit above all.
  std::vector<std::string> doubts(const ImportWishes& of_user = {}) const;
  // What the importers are told of this file beside these wishes: its name.
  ImportWishes wishes(ImportWishes of_user) const;

 private:
  struct Page;
  void read(Files& files, const LayoutRow& row, Troubles& troubles);
  void import(Files& files);
  std::string path_, name_;
  std::unique_ptr<Page> page_;
  std::unique_ptr<Workspace> w_;
  Recognition recognition_;
  std::optional<Imported> imported_;
  ReadDecisions decided_;
  std::vector<Trouble> troubles_;
  bool is_too_long_ = false;
};

// "spline 32, ar 11, log", and what is not done: "no spline".
std::string recipe_of(const Settings& settings);

}  // namespace vorn
