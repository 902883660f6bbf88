#include "batch/same_figures.h"

#include <sys/wait.h>

#include <cstdlib>
#include <memory>
#include <utility>

#include "batch/collection.h"
#include "batch/figures_of_lags.h"
#include "batch/figures_of_reports.h"
#include "batch/figures_session.h"
#include "formats/layouts.h"
#include "records/disk_files.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

constexpr const char* copy_name = "copy.txt";
constexpr const char* reference_name = "reference.txt";

// A collection is changed by the verbs that work in its tables: one for each.
template <class Compare>
void on_a_fresh_one(const Settings& settings, Compare compare) {
  DiskFiles files;
  Collection collection(files, copy_name, settings);
  compare(collection);
}

// `messages` are told while the files are loaded.
int play(std::string script, const std::string& list, std::size_t messages) {
  for (std::size_t k = 0; k < messages; ++k) script.insert(0, "key 27\n");
  ScratchFolder::write("session.vrs", script);
  ScratchFolder::write("Vorn.fil", list);
  const int status = std::system("\"" VORN_REPLAY "\" session.vrs >played.out 2>played.err");
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// What the program is given to read, and is told of meanwhile.
struct Given {
  std::string list = std::string(copy_name) + "\n";
  std::size_t messages = 0;
  std::int32_t first = 0;                            // year of the chronology that cores are compared with
  std::unique_ptr<OtherChronology> other = nullptr;  // where that is another file's
};

Given given(const Collection& collection, const std::filesystem::path& reference, const Settings& settings) {
  Given all;
  all.messages = collection.troubles().size();
  all.first = collection.state().cfy(1);
  if (reference.empty()) return all;
  std::filesystem::copy_file(reference, reference_name);
  DiskFiles files;
  const Collection second(files, reference_name, settings);
  all.list += std::string(reference_name) + "\n";
  all.messages += second.troubles().size();
  all.first = second.state().cfy(1);
  all.other = std::make_unique<OtherChronology>(second);
  return all;
}

void compare_reports(const Settings& settings, bool has_cores, SameFigures& all) {
  on_a_fresh_one(settings, [&](Collection& c) { compare_chron(c, ScratchFolder::read("Column.prn"), all); });
  if (!has_cores) return;
  on_a_fresh_one(settings, [&](Collection& c) { compare_stats(c, ScratchFolder::read("Stats.prn"), all); });
  on_a_fresh_one(settings, [&](Collection& c) { compare_report(c, ScratchFolder::read("Corr.prn"), all); });
}

}  // namespace

void SameFigures::add(const SameFigures& other) {
  stats += other.stats;
  report += other.report;
  lags += other.lags;
  chron += other.chron;
  differences.insert(differences.end(), other.differences.begin(), other.differences.end());
}

SameFigures compare_figures(const std::filesystem::path& file, const Settings& settings, int most_tables,
                            const std::filesystem::path& reference) {
  SameFigures all;
  const auto whole_path = std::filesystem::absolute(file);
  const ScratchFolder folder;
  std::filesystem::copy_file(whole_path, copy_name);
  DiskFiles files;
  Collection collection(files, copy_name, settings);
  if (!row_of(collection.state().rftype(1))) return all;
  all.was_read = true;
  const Given input = given(collection, reference, settings);
  std::vector<CoreTables> tables;
  on_a_fresh_one(settings, [&](Collection& c) { tables = tables_of(c, most_tables, input.other.get()); });
  const int cores = collection.has_cores() ? collection.state().nc : 0;
  const int status = play(session(cores, input.other ? 2 : 1, settings, tables), input.list, input.messages);
  if (status != 0) {
    all.differences.push_back("the session ends with " + std::to_string(status) + ": " +
                              ScratchFolder::read("played.err"));
    return all;
  }
  compare_reports(settings, cores > 0, all);
  compare_tables(collection.state(), tables, input.first, all);
  return all;
}

}  // namespace vorn
