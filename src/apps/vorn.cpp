// vorn: the command line. Files in, rows of values out.

#include <algorithm>
#include <cerrno>
#include <iostream>
#include <memory>
#include <optional>
#include <set>

#ifdef __GLIBC__
#include <malloc.h>
#endif

#include "apps/cache_place.h"
#include "apps/copies.h"
#include "apps/output.h"
#include "apps/progress.h"
#include "apps/vorn_request.h"
#include "apps/vorn_work.h"
#include "base/parallel_for.h"
#include "batch/collection.h"
#include "batch/files_below.h"
#include "batch/reference_folder.h"
#include "batch/workbook_table.h"
#include "records/os_file.h"

namespace {

void take_reference(vorn::Request& request, vorn::Collection& collection, bool& is_one) {
  if (request.verb->form.verb == "corr") {
    const auto other = std::make_shared<const vorn::OtherChronology>(collection);
    is_one = !other->empty();
    request.switches.beside = other;
    return;
  }
  const auto reference = std::make_shared<const vorn::DatingReference>(collection);
  is_one = !reference->series().compared.values.empty();
  request.switches.references.push_back(reference);
}

struct ReadReferences {
  bool are_some = true;  // each has values
  bool are_whole = true;
};

// Reads what the cores are compared with.
ReadReferences read_references(vorn::Request& request) {
  vorn::InputFiles files(request.references);
  ReadReferences read;
  for (const std::string& name : request.references) {
    vorn::Collection collection(files, name, request.settings);
    const auto words = collection.words();
    if (!request.quiet) {
      vorn::say(words);
      vorn::say(collection.doubts());
    }
    read.are_whole = read.are_whole && words.empty();
    bool is_one = false;
    take_reference(request, collection, is_one);
    if (is_one) continue;
    vorn::say(name + ": no chronology to compare with");
    read.are_some = false;
  }
  return read;
}

// Reads the folder that is searched, where there is one; whether it can be.
bool read_reference_folder(vorn::Request& request, vorn::Files& files) {
  if (request.reference_folder.empty()) return true;
  const std::string recipe = recipe_of(request) + ", version " VORN_VERSION;
  const std::string cache =
      request.keeps_references ? vorn::reference_cache(request.reference_folder, recipe) : "";
  std::optional<vorn::Progress> progress;
  try {
    const auto folder = std::make_shared<const vorn::ReferenceFolder>(
        files,
        vorn::FolderToSearch{
            .folder = request.reference_folder,
            .settings = request.settings,
            .recipe = recipe,
            .cache = cache,
            .threads = std::max(vorn::threads_here(), static_cast<std::size_t>(request.threads)),
            .most_places = request.most_places},
        [&](std::size_t done, std::size_t of) {
          if (!progress) progress.emplace(request.quiet ? 0 : of, request.output.empty());
          progress->at(done);
        });
    progress.reset();
    if (!request.quiet) vorn::say(folder->words());
    if (!request.quiet && request.keeps_references && cache.empty())
      vorn::say(request.reference_folder +
                ": the references cannot be kept: the user has no folder for caches");
    if (folder->size() > 0) {
      request.switches.folder = folder;
      return true;
    }
    vorn::say(request.reference_folder + ": no chronology to compare with");
  } catch (const std::runtime_error& failure) {
    progress.reset();
    vorn::say(failure.what());
  }
  return false;
}

bool is_grave(const vorn::Request& request, const vorn::Row& row) {
  return request.fail_on && request.verb->severity(row, request.switches) >= *request.fail_on;
}

// Whether an answer holds something as grave as --fail-on. What could not be read is an error.
bool is_grave(const vorn::Request& request, const vorn::Answer& answer) {
  if (!request.fail_on) return false;
  // To check what could not be read is a row as any other, and no loss where that says so.
  if (answer.has_failed || (!answer.words.empty() && request.verb->form.verb != "check")) return true;
  return std::ranges::any_of(answer.rows, [&](const vorn::Row& row) { return is_grave(request, row); });
}

struct Written {
  bool grave = false;
  bool any_was_read = false;
  std::set<std::string> series = {};  // of all files, where only some are asked for
  int failed = 0;                     // the error number of the first write that failed
  bool copies_lack = false;           // a copy was wanted and is not there
};

// Works on all files, until one is not taken any more.
Written write_rows(const vorn::Request& request, vorn::TableWriter& writer, const std::ostream& out) {
  vorn::InputFiles files(request.files);
  vorn::Progress progress(request.quiet ? 0 : request.files.size(), request.output.empty());
  vorn::Copies copies(request.repair_folder, request.quiet);
  std::size_t files_done = 0;
  Written written;
  for (const vorn::Row& row : request.list_rows) {
    writer.add(row);
    written.grave = written.grave || is_grave(request, row);
  }
  vorn::Work(request, files).run([&](const vorn::Answer& answer) {
    if (!request.quiet && !(answer.words.empty() && answer.doubts.empty())) {
      progress.wipe();
      vorn::say(answer.words);
      vorn::say(answer.doubts);
    }
    written.series.insert(answer.series.begin(), answer.series.end());
    written.any_was_read = written.any_was_read || answer.was_read;
    for (const vorn::Row& row : answer.rows) {
      writer.add(row);
      if (out) continue;
      written.failed = errno;
      return false;
    }
    written.grave = written.grave || is_grave(request, answer);
    written.copies_lack = !copies.take(request.files[files_done], answer.repair) || written.copies_lack;
    progress.at(++files_done);
    return true;
  });
  const bool has_list_of_copies = !request.repair_folder.empty() && !request.list.empty();
  if (has_list_of_copies && written.failed == 0)
    written.copies_lack = !copies.take_list(request.list) || written.copies_lack;
  return written;
}

// Names that nothing has. Where no file could be read there is more to say.
void say_what_is_not_there(const vorn::Request& request, const Written& written) {
  if (request.quiet || !written.any_was_read || written.failed != 0) return;
  for (const std::string& name : request.series) {
    if (!written.series.contains(name)) vorn::say("no series " + name);
  }
}

// `grave`: something is as grave as --fail-on before any file is looked at.
int run(const vorn::Request& request, bool grave) {
  vorn::Output out(request.output);
  const auto writer =
      vorn::table_writer(out.stream(), request.format, request.verb->form, VORN_VERSION, recipe_of(request));
  const Written written = write_rows(request, *writer, out.stream());
  writer->end();
  say_what_is_not_there(request, written);
  if (written.copies_lack) return out.end(vorn::cannot_go_on, written.failed);
  const int status = grave || written.grave ? vorn::found : vorn::done;
  return out.end(written.any_was_read ? status : vorn::cannot_go_on, written.failed);
}

// Memory that one file gave back serves the next: taken from the system anew, it costs more than most files.
void keep_memory() {
#ifdef __GLIBC__
  constexpr int most_bytes = 1 << 25;
  mallopt(M_MMAP_THRESHOLD, most_bytes);
  mallopt(M_TRIM_THRESHOLD, most_bytes);
#endif
}

int answer(int argc, char** argv) {
  keep_memory();
  vorn::os::let_writes_fail();
  std::ios::sync_with_stdio(false);
  vorn::Request request;
  if (const auto status = read_command_line(argc, argv, request)) return *status;
  if (request.command) return request.command();
  if (const auto status = take_list(request)) return *status;
  const ReadReferences references = read_references(request);
  if (!references.are_some) return vorn::cannot_go_on;
  vorn::DiskOfFolders disk;  // lives as long as the references
  if (!read_reference_folder(request, disk)) return vorn::cannot_go_on;
  return run(request, request.fail_on && !references.are_whole);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return answer(argc, argv);
  } catch (const std::exception& failure) {
    std::cerr << "vorn: cannot go on: " << failure.what() << '\n';
    return vorn::cannot_go_on;
  }
}
