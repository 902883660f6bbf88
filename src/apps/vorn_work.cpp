#include "apps/vorn_work.h"

#include <algorithm>
#include <cerrno>
#include <iostream>
#include <iterator>
#include <thread>
#include <utility>

#include "batch/collection.h"
#include "batch/reference_folder.h"

namespace vorn {
namespace {

const std::string standard_input = "-";

bool is_wanted(const Request& request, const std::string& name) {
  return request.series.empty() ||
         std::ranges::find(request.series, without_blanks(name)) != request.series.end();
}

bool is_wanted(const Request& request, const Row& row) {
  if (request.series.empty()) return true;
  const auto& columns = request.verb->form.columns;
  const auto place = static_cast<std::size_t>(std::ranges::find(columns, "series") - columns.begin());
  const auto* name = std::get_if<std::string>(&row.at(place));
  return name && is_wanted(request, *name);
}

Answer answer_of(const Request& request, Files& files, const std::string& file) {
  Answer answer;
  try {
    Collection collection(files, file, request.settings);
    answer.words = collection.words();
    answer.doubts = collection.doubts(request.switches.wishes);
    answer.was_read = collection.was_read();
    if (!request.series.empty()) answer.series = collection.series();
    if (!answer.was_read && answer.words.empty())
      answer.words.push_back(file + ": no ring widths and no chronology");
    const auto add = [&](const Row& row) {
      if (is_wanted(request, row)) answer.rows.push_back(row);
    };
    if (request.switches.folder) {
      const auto said = request.switches.folder->date(
          collection, [&](const std::string& name) { return is_wanted(request, name); }, add);
      answer.doubts.insert(answer.doubts.end(), said.begin(), said.end());
    } else {
      request.verb->rows(collection, request.switches, add);
    }
    if (!request.repair_folder.empty()) {
      if (const auto bytes = collection.bytes())
        answer.repair = repaired(collection, *bytes, request.repair_choices);
    }
  } catch (const std::exception& failure) {
    answer.words.push_back(file + ": " + failure.what());
    answer.has_failed = true;
  }
  answer.is_ready = true;
  return answer;
}

}  // namespace

InputFiles::InputFiles(const std::vector<std::string>& names) {
  if (std::ranges::find(names, standard_input) == names.end()) return;
  input_.put(standard_input, {std::istreambuf_iterator<char>(std::cin), {}});
}

Status InputFiles::look_at(const std::string& name, FileKind& kind) {
  return of(name).look_at(name, kind);
}

Status InputFiles::open(const std::string& name, std::unique_ptr<ByteSource>& source) {
  return of(name).open(name, source);
}

Status InputFiles::make(const std::string&, std::unique_ptr<ByteSink>&) {
  return Status(EACCES);
}

Status InputFiles::extend(const std::string&, std::unique_ptr<ByteSource>&, std::unique_ptr<ByteSink>&) {
  return Status(EACCES);
}

Files& InputFiles::of(const std::string& name) {
  if (name != standard_input) return disk_;
  return input_;
}

// Threads that wait for their turn are told that it will not come, however the work ends.
class Work::Stopping {
 public:
  explicit Stopping(Work& work) : work_(work) {}
  ~Stopping() {
    const std::lock_guard lock(work_.mutex_);
    work_.stop_ = true;
    work_.came_.notify_all();
  }
  Stopping(const Stopping&) = delete;
  Stopping& operator=(const Stopping&) = delete;

 private:
  Work& work_;
};

void Work::run(const std::function<bool(const Answer&)>& use) {
  if (request_.threads > 1) return share(use);
  for (const std::string& file : request_.files) {
    if (!use(answer_of(request_, files_, file))) return;
  }
}

void Work::share(const std::function<bool(const Answer&)>& use) {
  std::vector<std::jthread> threads;
  const Stopping stopping(*this);  // goes before the threads, which are waited for
  threads.reserve(static_cast<std::size_t>(request_.threads));
  for (int k = 0; k < request_.threads; ++k) threads.emplace_back([this] { work(); });
  for (std::size_t k = 0; k < answers_.size(); ++k) {
    std::unique_lock lock(mutex_);
    came_.wait(lock, [&] { return answers_[k].is_ready; });
    const Answer answer = std::move(answers_[k]);
    used_ = k + 1;
    lock.unlock();
    came_.notify_all();
    if (!use(answer)) return;
  }
}

// Not far ahead of what was used, so that the answers of thousands of files need no room.
void Work::work() {
  constexpr std::size_t ahead = 64;
  for (std::size_t k = next_++; k < answers_.size(); k = next_++) {
    {
      std::unique_lock lock(mutex_);
      came_.wait(lock, [&] { return stop_ || k < used_ + ahead; });
      if (stop_) return;
    }
    Answer answer = answer_of(request_, files_, request_.files[k]);
    const std::lock_guard lock(mutex_);
    answers_[k] = std::move(answer);
    came_.notify_all();
  }
}

}  // namespace vorn
