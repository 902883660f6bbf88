// Where and when: samples at every position of every reference in a folder, an archive of thousands of files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "batch/collection.h"
#include "batch/dating.h"
#include "batch/reference_cache.h"
#include "batch/table.h"
#include "records/files.h"

namespace vorn {

struct FolderToSearch {
  std::string folder;
  Settings settings = {};
  std::string recipe = {};       // what the values are made by, with the version of the program
  std::string cache = {};        // the file that references are kept in; none where empty
  std::size_t threads = 1;       // that read what is not kept
  std::size_t most_places = 10;  // of each core, on as many references
};

class ReferenceFolder {
 public:
  // Reads the folder and those below it, in the order of their names: files that `cache` has, unchanged, are
  // not read again. Names that begin with a point, and links to folders, are left out. `read` is told how
  // many files of those that have to be read were read. Throws std::runtime_error where the folder cannot be
  // read.
  ReferenceFolder(Files& files, FolderToSearch what,
                  const std::function<void(std::size_t done, std::size_t of)>& read = {});

  // How many files give a reference.
  std::size_t size() const { return size_; }
  // What is to be said: of files that were read just now and were not taken whole, each; of all, a sentence.
  const std::vector<std::string>& words() const { return words_; }

  // For each wanted core of the sample the references that it fits best, the best first, each with its best
  // position: rows of `date`. The p of each accounts for every position of every reference of the folder. A
  // reference made of the sample's own file, or of a copy of it, is left out. Answers what is to be said: how
  // many positions were tried, and what was left out.
  //
  // Safe from several threads at once.
  std::vector<std::string> date(Collection& sample,
                                const std::function<bool(const std::string& name)>& is_wanted,
                                const std::function<void(const Row&)>& add) const;

 private:
  struct Place;

  void take_kept(std::vector<KeptReference>&& kept);
  void read_others(const std::function<void(std::size_t, std::size_t)>& read);
  void read_one(KeptReference& one, std::vector<std::string>& said) const;
  void keep(std::int64_t begun);
  void sum_up();
  std::string path_to(const KeptReference& one) const;
  std::vector<bool> references_of(const Collection& sample) const;
  std::vector<Place> places(const SeriesView& core, const std::vector<bool>& is_own,
                            std::size_t& positions) const;
  std::vector<Place> best_of(std::vector<Place> places) const;
  void date_core(const SeriesToDate& core, const std::vector<Place>& best, std::size_t positions,
                 const std::function<void(const std::string& reference, const Dates& found)>& use) const;
  std::shared_ptr<const DatingReference> reference(std::size_t number) const;

  Files& files_;
  FolderToSearch what_;
  std::vector<KeptReference> all_;
  std::vector<bool> is_read_;
  std::size_t size_ = 0;
  std::vector<std::string> words_;
  mutable std::mutex mutex_;  // of what follows: the references that were wanted whole
  mutable std::map<std::size_t, std::shared_ptr<const DatingReference>> wanted_;
};

}  // namespace vorn
