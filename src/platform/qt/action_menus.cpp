#include "platform/qt/action_menus.h"

#include <QKeySequence>
#include <QMenu>
#include <array>
#include <utility>

#include "platform/qt/typefaces.h"

namespace vorn {
namespace {

constexpr std::array<std::pair<Menu, const char*>, 6> titles{{{Menu::file, "&File"},
                                                              {Menu::edit, "&Edit"},
                                                              {Menu::view, "&View"},
                                                              {Menu::cores, "&Cores"},
                                                              {Menu::careful, "C&areful"},
                                                              {Menu::help, "&Help"}}};

QString text_of(std::string_view text) {
  return shown_characters(text).replace('&', "&&");  // an ampersand of its own would mark a key
}

// Whether a key is pressed without Control and its like, and is none of the function keys.
bool is_plain(const QKeySequence& keys) {
  if (keys.isEmpty()) return false;
  const QKeyCombination first = keys[0];
  const bool is_function_key = first.key() >= Qt::Key_F1 && first.key() <= Qt::Key_F35;
  return !is_function_key && (first.keyboardModifiers() & ~Qt::ShiftModifier) == Qt::NoModifier;
}

void set_tips(QAction& action, const QString& text, const QString& why_not) {
  QString plain = text;
  plain.remove(QChar(0x2026));  // the dots
  const QString tip = why_not.isEmpty() ? plain : plain + ": " + why_not;
  action.setToolTip(tip);
  action.setStatusTip(tip);
}

}  // namespace

ActionMenus::ActionMenus(QMenuBar& bar, QWidget& page, Chosen chosen) : chosen_(std::move(chosen)) {
  for (const auto& [menu, title] : titles) {
    menus_[menu] = bar.addMenu(title);
    menus_[menu]->setToolTipsVisible(true);
  }
  for (const ActionRow& row : action_rows()) {
    QMenu* menu = menus_[row.menu];
    if (row.starts_group && !menu->isEmpty()) menu->addSeparator();
    menu->addAction(make(row, page));
  }
}

QAction* ActionMenus::make(const ActionRow& row, QWidget& page) {
  const QString id = shown_characters(row.id);
  auto* action = new QAction(text_of(row.text), &page);
  action->setObjectName(id);
  action->setMenuRole(id == "about" ? QAction::AboutRole : QAction::NoRole);
  const QKeySequence keys(shown_characters(row.key), QKeySequence::PortableText);
  action->setCheckable(row.switches);
  action->setShortcuts(
      QList{keys, QKeySequence(shown_characters(row.other_key), QKeySequence::PortableText)});
  if (is_plain(keys)) {
    action->setShortcutContext(Qt::WidgetShortcut);
    page.addAction(action);
  }
  QObject::connect(action, &QAction::triggered, action, [this, id] { chosen_(id); });
  actions_[id] = action;
  return action;
}

void ActionMenus::show(const Standing& standing) {
  for (const ActionRow& row : action_rows()) {
    QAction& action = *actions_[shown_characters(row.id)];
    const ActionState state = state_of(row.id, standing);
    const std::string_view text = state.now.empty() ? row.text : std::string_view(state.now);
    action.setText(text_of(text));
    action.setEnabled(state.can_be_done);
    if (row.switches && !row.window_does_it) action.setChecked(state.is_chosen);
    set_tips(action, shown_characters(text), shown_characters(state.why_not));
  }
}

}  // namespace vorn
