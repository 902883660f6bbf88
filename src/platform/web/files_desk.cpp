#include "platform/web/files_desk.h"

#include <exception>
#include <utility>
#include <vector>

#include "platform/web/shown_text.h"

namespace vorn {
namespace {

using Fields = nlohmann::ordered_json;

constexpr const char* other_by_now = "What was offered is another one by now: ask for it once more";

// What is told, field by field: a list of all of them at once takes a browser several times the code. Texts
// are made ready to be shown.
class Told {
 public:
  explicit Told(const char* is) { fields_["is"] = is; }
  Told& text(const char* name, const std::string& text) { return put(name, shown_text(text)); }
  Told& texts(const char* name, const std::vector<std::string>& all) {
    Fields shown = Fields::array();
    for (const std::string& one : all) shown.push_back(shown_text(one));
    return put(name, std::move(shown));
  }
  Told& yes(const char* name, bool value) { return put(name, value); }
  Told& number(const char* name, std::size_t value) { return put(name, value); }
  const Fields& fields() const { return fields_; }

 private:
  Told& put(const char* name, Fields value) {
    fields_[name] = std::move(value);
    return *this;
  }
  Fields fields_;
};

// What went wrong, "" where nothing did.
Told answer(const char* is, const std::optional<std::string>& failure) {
  return Told(is).text("trouble", failure.value_or(std::string()));
}

}  // namespace

// --- Looking.

void FilesDesk::read_as(const Careful& careful) {
  if (careful_ == reading_of(careful)) return;
  careful_ = reading_of(careful);
  look_.reset();
}

void FilesDesk::look() {
  look_ ? look_->look() : void(look_.emplace(files_, this_year_, careful_));
  if (!is_done()) return;
  if (const std::string words = words_on_loss(*reports()); !words.empty())
    port_.tell(Told("notice").text("text", words).fields());
}

// --- What the page asks for.

bool FilesDesk::serve(const WebRequest& request, const SharedSituation& now) {
  const std::string what = request.what();
  if (what == "use_clean_copy") return use_copy(request), true;
  if (what == "save_over") return save_over(request), true;
  if (what != "changes" && what != "corrected") return false;
  if (!now) {
    port_.tell(Told("mention").text("text", "The panels are just beginning: ask once more").fields());
    return true;
  }
  or_told(now->cores_file, [&] { what == "changes" ? tell_changes(*now) : offer_save(*now); });
  return true;
}

void FilesDesk::or_told(const std::string& file, const std::function<void()>& work) {
  try {
    work();
  } catch (const std::exception& failure) {
    port_.tell(Told("notice").text("text", file + ": " + failure.what()).fields());
  }
}

// --- Clean copies.

void FilesDesk::offer_copy(const std::string& file, std::optional<double> unit) {
  or_told(file, [&] {
    copy_ = {++number_, file, clean_copy(files_, file, unit, careful_)};
    const CleanCopy& copy = copy_.copy;
    port_.tell(Told("clean_copy")
                   .number("number", number_)
                   .text("file", file)
                   .text("name", copy.name)
                   .texts("words", copy.words)
                   .yes("can", !copy.bytes.empty())
                   .fields());
  });
}

void FilesDesk::use_copy(const WebRequest& request) {
  const bool is_offered = copy_.number == request.place("number") && !copy_.copy.bytes.empty();
  const auto failure = is_offered ? use_clean_copy(files_, copy_.file, copy_.copy) : other_by_now;
  port_.tell(answer("used_clean_copy", failure).fields());
}

// --- Corrected files.

void FilesDesk::tell_changes(const Situation& now) {
  const CorrectedFile corrected = corrected_file(files_, now);
  port_.tell(Told("changes").texts("lines", changes_page(corrected)).fields());
}

void FilesDesk::offer_save(const Situation& now) {
  save_ = {++number_, corrected_file(files_, now)};
  const CorrectedFile& corrected = save_.corrected;
  const bool can = corrected.made.refused.empty() && corrected.made.is_changed;
  port_.tell(Told("corrected")
                 .number("number", number_)
                 .text("file", corrected.file)
                 .texts("refused", corrected.made.refused)
                 .yes("is_changed", corrected.made.is_changed)
                 .texts("changes", corrected.changes)
                 .texts("done", corrected.made.done)
                 .texts("not_yet", corrected.not_yet)
                 .text("oldest", corrected.oldest)
                 .fields(),
             "bytes", can ? corrected.made.bytes : std::string());
}

void FilesDesk::save_over(const WebRequest& request) {
  const bool is_offered = save_.number == request.place("number");
  const auto failure = is_offered ? save_over_original(files_, save_.corrected) : other_by_now;
  port_.tell(answer("saved_over", failure).text("file", save_.corrected.file).fields());
}

}  // namespace vorn
