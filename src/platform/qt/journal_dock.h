// The decisions of the session, beside the page.
#pragma once

#include <QDockWidget>
#include <QPushButton>
#include <QTreeView>
#include <functional>

#include "platform/qt/journal_model.h"

namespace vorn {

// The list of decisions. A double click or Return goes to where the session stood then; the notes are edited
// in place. Escape goes back to the page.
class JournalDock : public QDockWidget {
 public:
  // `act` hands in what the user does, `show_methods` shows the text for a paper, `leave` takes the keyboard
  // back.
  JournalDock(std::function<void(const Deed&)> act, std::function<void()> show_methods,
              std::function<void()> leave);

  void show_standing(const SharedStanding& standing);
  // Takes the keyboard.
  void enter();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void go_to(const QModelIndex& index);
  void share_width();

  std::function<void(const Deed&)> act_;
  std::function<void()> leave_;
  JournalModel* model_;
  QTreeView* list_;
  QPushButton *undo_, *redo_, *methods_;
  SharedStanding shown_;
};

}  // namespace vorn
