// The menus of the window, made from the table of actions.
#pragma once

#include <QAction>
#include <QMap>
#include <QMenuBar>
#include <functional>

#include "desk/actions.h"

namespace vorn {

// An entry for each row of the table, in its order, which shows how the row stands.
class ActionMenus {
 public:
  // Called when the user asks for the action of that name.
  using Chosen = std::function<void(const QString& id)>;

  // Keys without Control and its like act while the keyboard is in `page` alone: elsewhere they are letters.
  ActionMenus(QMenuBar& bar, QWidget& page, Chosen chosen);

  void show(const Standing& standing);
  // Null where no row has this name.
  QAction* action(const QString& id) const { return actions_.value(id); }
  QMenu* menu(Menu menu) const { return menus_.value(menu); }

 private:
  QAction* make(const ActionRow& row, QWidget& page);

  QMap<Menu, QMenu*> menus_;
  QMap<QString, QAction*> actions_;
  Chosen chosen_;
};

}  // namespace vorn
