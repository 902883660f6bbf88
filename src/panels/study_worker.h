// Studies on a thread of their own, so that a click never waits for one.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "batch/folder_look.h"
#include "panels/findings.h"

namespace vorn {

class StudyWorker {
 public:
  // `news` is called by the worker's thread when something was found, or is worked on.
  explicit StudyWorker(std::function<void()> news);
  ~StudyWorker();  // waits for the core at hand, not for the whole study

  // From now on this situation is studied; what is at work for an older one is given up.
  void study(const SharedSituation& situation);
  // From now on the files of the list are looked at, whenever no situation is to be studied: once for each
  // way of reading.
  void look_at(std::shared_ptr<Files> files, int this_year, const Careful& careful);
  // The newest findings, null before there are any, and what is being worked on: "core 120 of 9000"; empty
  // where nothing is, or not for long.
  struct State {
    SharedFindings findings;
    std::string working;
    SharedReports files = {};  // null before they were looked at
    std::string files_working = {};
  };
  State state() const;

 private:
  using Clock = std::chrono::steady_clock;
  static constexpr std::chrono::milliseconds worth_telling{80}, between_tellings{100};
  void work();
  void study_now(const SharedSituation& situation);
  void look_now();
  bool go_on(const std::string& working);
  void say(const std::string& working);

  std::function<void()> news_;
  mutable std::mutex mutex_;
  std::condition_variable came_;
  SharedSituation wanted_;
  std::shared_ptr<Files> files_;
  int this_year_ = 0;
  Careful careful_;
  bool has_looked_ = false, looks_anew_ = false;
  std::unique_ptr<FolderLook> look_;  // used by the worker's thread alone
  bool is_new_ = false, stops_ = false;
  State state_;
  Studies studies_;  // used by the worker's thread alone, as are the next two
  Clock::time_point begun_, told_;
  std::jthread thread_;  // the last member: it uses all others
};

}  // namespace vorn
