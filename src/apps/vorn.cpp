// vorn: the command line. Files in, rows of values out.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <sstream>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "batch/collection.h"
#include "batch/table.h"
#include "batch/verbs.h"
#include "records/disk_files.h"
#include "records/memory_files.h"
#include "records/os_file.h"

namespace {

constexpr int done = 0, found = 1, wrong_use = 2, cannot_go_on = 4;
const std::string standard_input = "-";

struct Wanted {
  const vorn::Verb* verb = nullptr;
  std::vector<std::string> files;
  vorn::TableFormat format = vorn::TableFormat::table;
  std::string output;  // empty: standard output
  vorn::Settings settings;
  vorn::VerbSwitches switches;
  std::vector<std::string> references;  // files
  std::vector<std::string> series;      // only these; all when empty
  int threads = 1;
  bool quiet = false;
  std::optional<vorn::Severity> fail_on;
};

// What one file gave, in memory until its turn comes.
struct Answer {
  std::vector<vorn::Row> rows;
  std::vector<std::string> words;
  bool is_ready = false;
};

// Standard input under its own name; all else is on the disk.
class InputFiles : public vorn::Files {
 public:
  explicit InputFiles(const std::vector<std::string>& names) {
    if (std::ranges::find(names, standard_input) == names.end()) return;
    input_.put(standard_input, {std::istreambuf_iterator<char>(std::cin), {}});
  }
  vorn::Status look_at(const std::string& name, vorn::FileKind& kind) override {
    return of(name).look_at(name, kind);
  }
  vorn::Status open(const std::string& name, std::unique_ptr<vorn::ByteSource>& source) override {
    return of(name).open(name, source);
  }
  vorn::Status make(const std::string&, std::unique_ptr<vorn::ByteSink>&) override {
    return vorn::Status(EACCES);
  }
  vorn::Status extend(const std::string&, std::unique_ptr<vorn::ByteSource>&,
                      std::unique_ptr<vorn::ByteSink>&) override {
    return vorn::Status(EACCES);
  }

 private:
  vorn::Files& of(const std::string& name) {
    if (name != standard_input) return disk_;
    return input_;
  }
  vorn::DiskFiles disk_;
  vorn::MemoryFiles input_;
};

bool is_wanted(const Wanted& wanted, const vorn::Row& row) {
  if (wanted.series.empty()) return true;
  const auto& columns = wanted.verb->form.columns;
  const auto place = static_cast<std::size_t>(std::ranges::find(columns, "series") - columns.begin());
  if (place == columns.size()) return true;
  const auto* name = std::get_if<std::string>(&row[place]);
  return name && std::ranges::find(wanted.series, *name) != wanted.series.end();
}

Answer answer_of(const Wanted& wanted, vorn::Files& files, const std::string& file) {
  Answer answer;
  try {
    vorn::Collection collection(files, file, wanted.settings);
    answer.words = collection.words();
    wanted.verb->rows(collection, wanted.switches, [&](const vorn::Row& row) {
      if (is_wanted(wanted, row)) answer.rows.push_back(row);
    });
  } catch (const std::exception& failure) {
    answer.words.push_back(file + ": " + failure.what());
  }
  answer.is_ready = true;
  return answer;
}

// Works on the files on several threads; what they gave comes out in the order of the files.
class Work {
 public:
  Work(const Wanted& wanted, vorn::Files& files)
      : wanted_(wanted), files_(files), answers_(wanted.files.size()) {}

  template <class Use>
  void run(Use use) {
    std::vector<std::jthread> threads;
    threads.reserve(static_cast<std::size_t>(wanted_.threads));
    for (int k = 0; k < wanted_.threads; ++k) threads.emplace_back([this] { work(); });
    for (std::size_t k = 0; k < answers_.size(); ++k) {
      std::unique_lock lock(mutex_);
      came_.wait(lock, [&] { return answers_[k].is_ready; });
      const Answer answer = std::move(answers_[k]);
      used_ = k + 1;
      lock.unlock();
      came_.notify_all();
      if (!use(answer)) {
        stop_ = true;
        came_.notify_all();
        return;
      }
    }
  }

 private:
  // Not far ahead of what was used, so that the answers of thousands of files need no room.
  void work() {
    constexpr std::size_t ahead = 64;
    for (std::size_t k = next_++; k < answers_.size(); k = next_++) {
      {
        std::unique_lock lock(mutex_);
        came_.wait(lock, [&] { return stop_ || k < used_ + ahead; });
      }
      if (stop_) return;
      Answer answer = answer_of(wanted_, files_, wanted_.files[k]);
      const std::lock_guard lock(mutex_);
      answers_[k] = std::move(answer);
      came_.notify_all();
    }
  }

  const Wanted& wanted_;
  vorn::Files& files_;
  std::vector<Answer> answers_;
  std::atomic<std::size_t> next_ = 0;
  std::size_t used_ = 0;
  std::atomic<bool> stop_ = false;
  std::mutex mutex_;
  std::condition_variable came_;
};

// Reads what the cores are dated by. Answers false where one of them is none.
bool read_references(Wanted& wanted) {
  vorn::DiskFiles files;
  bool all = true;
  for (const std::string& name : wanted.references) {
    vorn::Collection collection(files, name, wanted.settings);
    for (const std::string& words : collection.words())
      std::cerr << "vorn: " << vorn::plain_text(words) << '\n';
    auto reference = std::make_shared<const vorn::DatingReference>(collection);
    if (reference->series().compared.values.empty()) {
      std::cerr << "vorn: " << vorn::plain_text(name) << ": no chronology to date by\n";
      all = false;
    }
    wanted.switches.references.push_back(std::move(reference));
  }
  return all;
}

// Brings what was written to the file that was asked for: as a whole, or not at all.
bool write_output(const std::string& name, const std::string& text) {
  vorn::DiskFiles files;
  const vorn::Status failed = vorn::write_whole(files, name, text);
  if (failed) {
    std::cerr << "vorn: " << vorn::plain_text(name) << ": "
              << std::generic_category().message(failed.number()) << '\n';
  }
  return !failed;
}

int run(const Wanted& wanted) {
  std::ostringstream file;
  std::ostream& out = wanted.output.empty() ? std::cout : file;
  InputFiles files(wanted.files);
  vorn::TableWriter writer(out, wanted.format, wanted.verb->form, VORN_VERSION,
                           vorn::recipe_of(wanted.settings));
  bool grave = false;
  Work(wanted, files).run([&](const Answer& answer) {
    for (const std::string& words : answer.words) {
      if (!wanted.quiet) std::cerr << "vorn: " << vorn::plain_text(words) << '\n';
    }
    for (const vorn::Row& row : answer.rows) {
      writer.add(row);
      if (wanted.fail_on && wanted.verb->form.verb == "check" && vorn::severity_of(row) >= *wanted.fail_on)
        grave = true;
    }
    return static_cast<bool>(out);
  });
  if (!writer.end()) {
    // Who reads no more, as "head" does, has all that he wanted.
    if (errno == EPIPE) return grave ? found : done;
    std::cerr << "vorn: standard output cannot be written\n";
    return cannot_go_on;
  }
  if (!wanted.output.empty() && !write_output(wanted.output, file.str())) return cannot_go_on;
  return grave ? found : done;
}

int answer(int argc, char** argv) {
  vorn::os::let_writes_fail();
  std::ios::sync_with_stdio(false);
  CLI::App app("Reads tree-ring files and answers in rows: for R, Python and shells.", "vorn");
  app.set_version_flag("--version", std::string("vorn ") + VORN_VERSION);
  app.require_subcommand(1);
  Wanted wanted;
  bool json = false, no_spline = false, no_ar = false, no_log = false;
  std::string fail_on, format = "table";
  const std::map<std::string, vorn::TableFormat> formats = {{"table", vorn::TableFormat::table},
                                                            {"csv", vorn::TableFormat::csv},
                                                            {"json", vorn::TableFormat::json}};
  for (const vorn::Verb& verb : vorn::verbs()) {
    CLI::App* sub = app.add_subcommand(std::string(verb.form.verb), std::string(verb.does));
    sub->add_option("FILE", wanted.files, "files to read; - is standard input")->required();
    sub->add_option("--format", format, "table, csv or json")->check(CLI::IsMember({"table", "csv", "json"}));
    sub->add_flag("--json", json, "the same as --format json");
    sub->add_option("-o", wanted.output, "writes to this file");
    sub->add_option("--spline", wanted.settings.ss, "years of the spline")->check(CLI::Range(3, 999));
    sub->add_flag("--no-spline", no_spline, "no detrending");
    sub->add_option("--ar", wanted.settings.jpr, "highest order of the AR model")->check(CLI::Range(1, 11));
    sub->add_flag("--no-ar", no_ar, "no prewhitening");
    sub->add_flag("--no-log", no_log, "no logarithms");
    // One value each time, so that the files may follow.
    sub->add_option("--series", wanted.series, "only these series; A,B or again for each")
        ->delimiter(',')
        ->allow_extra_args(false);
    sub->add_option("-j", wanted.threads, "so many files at a time")->check(CLI::Range(1, 64));
    sub->add_flag("-q", wanted.quiet, "says nothing of what was not read");
    if (verb.form.verb == "date")
      sub->add_option("--reference", wanted.references,
                      "a file that the cores are dated by, again for each; without, the others of their file")
          ->allow_extra_args(false);
    if (verb.form.verb == "site") {
      sub->add_option("--segment", wanted.settings.seg, "years of a segment")->check(CLI::Range(4, 12'000));
      sub->add_option("--overlap", wanted.settings.olap, "years by which segments overlap")
          ->check(CLI::Range(1, 11'999));
    }
    if (verb.form.verb == "locate") {
      sub->add_option("--gain", wanted.switches.least_gain,
                      "least gain of an error that is given, 7 at first; 0 gives the best of each core");
      sub->add_flag("!--no-narrow", wanted.switches.narrow_years,
                    "missing rings are as likely in wide years");
    }
    if (verb.form.verb == "check")
      sub->add_option("--fail-on", fail_on, "ends with 1 where there is a finding so grave")
          ->check(CLI::IsMember({"warning", "error"}));
    sub->callback([&wanted, &verb] { wanted.verb = &verb; });
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? done : wrong_use;
  }
  wanted.format = json ? vorn::TableFormat::json : formats.at(format);
  wanted.settings.splineon = !no_spline;
  wanted.settings.aron = !no_ar;
  wanted.settings.logon = !no_log;
  if (!fail_on.empty()) wanted.fail_on = fail_on == "error" ? vorn::Severity::error : vorn::Severity::warning;
  if (!read_references(wanted)) return cannot_go_on;
  return run(wanted);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return answer(argc, argv);
  } catch (const std::exception& failure) {
    std::cerr << "vorn: cannot go on: " << failure.what() << '\n';
    return cannot_go_on;
  }
}
