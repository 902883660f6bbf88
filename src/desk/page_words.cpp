#include "desk/page_words.h"

#include <utility>

#include "desk/status_line.h"

namespace vorn {
namespace {

// What the cursor marks: a button's label or a year.
std::string marked(const Situation& now, const PageCursor& cursor) {
  const auto click = cursor.click(now);
  if (!click) return {};
  const auto year = year_at(now, {click->x, click->y});
  if (now.wait == Wait::year && year) return std::to_string(*year);
  const ShownButton* button = now.at(click->x, click->y);
  return button ? button->label : std::string();
}

}  // namespace

std::string page_in_words(const Standing& standing, const PageCursor& cursor) {
  const std::string waits = status_line(standing, {}).waits_for;
  const std::string mark = standing.situation ? marked(*standing.situation, cursor) : std::string();
  std::string words = waits.empty() ? "" : "Waits for " + waits;
  if (!mark.empty()) words += (words.empty() ? "marked: " : "; marked: ") + mark;
  return words;
}

std::vector<std::string> all_notices(std::vector<std::string> told, const Standing& standing) {
  if (!standing.journal_trouble.empty())
    told.push_back("What is done here cannot be taken up later: " + standing.journal_trouble);
  return told;
}

}  // namespace vorn
