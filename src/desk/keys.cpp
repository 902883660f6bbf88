// The page of keys.
#include <algorithm>
#include <string>

#include "desk/actions.h"

namespace vorn {
namespace {

constexpr std::size_t key_columns = 28;

std::string_view heading(Menu menu) {
  switch (menu) {
    case Menu::file:
      return "File";
    case Menu::edit:
      return "Edit";
    case Menu::view:
      return "View";
    case Menu::cores:
      return "Cores";
    case Menu::careful:
      return "Careful";
    case Menu::help:
      break;
  }
  return "Help";
}

std::string row(std::string key, std::string_view what) {
  key.resize(std::max(key.size() + 2, key_columns), ' ');
  return key + std::string(what) + "\n";
}

std::string keys_of(const ActionRow& action) {
  return std::string(action.key) + (action.other_key.empty() ? "" : " or ") + std::string(action.other_key);
}

}  // namespace

std::string keys_page() {
  std::string text;
  const Menu* menu = nullptr;
  for (const ActionRow& action : action_rows()) {
    if (action.key.empty()) continue;
    if (!menu || *menu != action.menu) text += (menu ? "\n" : "") + std::string(heading(action.menu)) + "\n";
    menu = &action.menu;
    text += row(keys_of(action), action.text);
  }
  text += "\nOn the page\n";
  text += row("Tab, Shift+Tab", "To the next button, to the one before");
  text += row("Arrows, PgUp, PgDown",
              "In lists to a name; where a year is asked for to a year, or to the other curve");
  text += row("Return", "A click there; it ends what is typed");
  text += row("Escape",
              "Passes over messages; leaves a graph that shows no year to pick, carefully whatever it was");
  text += "\nIn a panel\n";
  text += row("Tab, arrows, Home, End", "To another place to click on");
  text += row("PgUp, PgDown", "Scroll it");
  text += row("Return, Space", "A click there");
  text += row("N, P", "The next core by need, the one before");
  text += row("Ctrl+Shift+C", "Copies its table as CSV");
  text += row("Escape", "Back to the page");
  return text;
}

}  // namespace vorn
