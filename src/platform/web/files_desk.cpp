#include "platform/web/files_desk.h"

#include <exception>
#include <vector>

#include "platform/web/shown_text.h"

namespace vorn {
namespace {

using Fields = nlohmann::ordered_json;

constexpr const char* other_by_now = "What was offered is another one by now: ask for it once more";

Fields shown_texts(const std::vector<std::string>& all) {
  Fields texts = Fields::array();
  for (const std::string& one : all) texts.push_back(shown_text(one));
  return texts;
}

}  // namespace

// --- Looking.

void FilesDesk::look() {
  look_ ? look_->look() : void(look_.emplace(files_, this_year_));
  if (!is_done()) return;
  if (const std::string words = words_on_loss(*reports()); !words.empty())
    port_.tell({{"is", "notice"}, {"text", shown_text(words)}});
}

// --- What the page asks for.

bool FilesDesk::serve(const WebRequest& request, const SharedSituation& now) {
  const std::string what = request.what();
  if (what == "use_clean_copy") return use_copy(request), true;
  if (what == "save_over") return save_over(request), true;
  if (what != "changes" && what != "corrected") return false;
  if (!now) {
    port_.tell({{"is", "mention"}, {"text", "The panels are just beginning: ask once more"}});
    return true;
  }
  or_told(now->cores_file, [&] { what == "changes" ? tell_changes(*now) : offer_save(*now); });
  return true;
}

void FilesDesk::or_told(const std::string& file, const std::function<void()>& work) {
  try {
    work();
  } catch (const std::exception& failure) {
    port_.tell({{"is", "notice"}, {"text", shown_text(file + ": " + failure.what())}});
  }
}

// --- Clean copies.

void FilesDesk::offer_copy(const std::string& file, std::optional<double> unit) {
  or_told(file, [&] {
    copy_ = {++number_, file, clean_copy(files_, file, unit)};
    const CleanCopy& copy = copy_.copy;
    port_.tell({{"is", "clean_copy"},
                {"number", number_},
                {"file", shown_text(file)},
                {"name", shown_text(copy.name)},
                {"words", shown_texts(copy.words)},
                {"can", !copy.bytes.empty()}});
  });
}

void FilesDesk::use_copy(const WebRequest& request) {
  const bool is_offered = copy_.number == request.place("number") && !copy_.copy.bytes.empty();
  const auto failure = is_offered ? use_clean_copy(files_, copy_.file, copy_.copy) : other_by_now;
  port_.tell({{"is", "used_clean_copy"}, {"trouble", shown_text(failure.value_or(std::string()))}});
}

// --- Corrected files.

void FilesDesk::tell_changes(const Situation& now) {
  const CorrectedFile corrected = corrected_file(files_, now);
  port_.tell({{"is", "changes"}, {"lines", shown_texts(changes_page(corrected))}});
}

void FilesDesk::offer_save(const Situation& now) {
  save_ = {++number_, corrected_file(files_, now)};
  const CorrectedFile& corrected = save_.corrected;
  const bool can = corrected.made.refused.empty() && corrected.made.is_changed;
  port_.tell({{"is", "corrected"},
              {"number", number_},
              {"file", shown_text(corrected.file)},
              {"refused", shown_texts(corrected.made.refused)},
              {"is_changed", corrected.made.is_changed},
              {"changes", shown_texts(corrected.changes)},
              {"done", shown_texts(corrected.made.done)},
              {"not_yet", shown_texts(corrected.not_yet)},
              {"oldest", shown_text(corrected.oldest)}},
             "bytes", can ? corrected.made.bytes : std::string());
}

void FilesDesk::save_over(const WebRequest& request) {
  const bool is_offered = save_.number == request.place("number");
  const auto failure = is_offered ? save_over_original(files_, save_.corrected) : other_by_now;
  port_.tell({{"is", "saved_over"},
              {"file", shown_text(save_.corrected.file)},
              {"trouble", shown_text(failure.value_or(std::string()))}});
}

}  // namespace vorn
