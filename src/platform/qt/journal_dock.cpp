#include "platform/qt/journal_dock.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "platform/qt/typefaces.h"

namespace vorn {
namespace {

constexpr int least_width = 200, margin = 4;

QPushButton* button_in(const QString& text, const QString& what, QHBoxLayout& row) {
  auto* made = new QPushButton(text);
  made->setAccessibleDescription(what);
  made->setEnabled(false);
  made->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  made->setMinimumWidth(made->fontMetrics().horizontalAdvance(text) + 4 * margin);
  row.addWidget(made);
  return made;
}

}  // namespace

JournalDock::JournalDock(std::function<void(const Deed&)> act, std::function<void()> show_methods,
                         std::function<void()> leave)
    : QDockWidget("Journal"),
      act_(std::move(act)),
      leave_(std::move(leave)),
      model_(new JournalModel(this)),
      list_(new QTreeView) {
  setObjectName("journal");  // by which its place is remembered
  setAccessibleName("Journal");
  auto* inside = new QWidget;
  auto* column = new QVBoxLayout(inside);
  column->setContentsMargins(margin, margin, margin, margin);
  column->addWidget(list_);
  auto* row = new QHBoxLayout;
  column->addLayout(row);
  undo_ = button_in("Undo", "Takes the last decision back", *row);
  redo_ = button_in("Redo", "Takes again what was taken back last", *row);
  methods_ = button_in("Methods...", "The text for the methods section of a paper", *row);
  inside->setMinimumWidth(least_width);
  setWidget(inside);

  list_->setModel(model_);
  list_->setAccessibleName("Decisions");
  list_->setRootIsDecorated(false);
  list_->setUniformRowHeights(true);
  list_->setAllColumnsShowFocus(true);
  list_->setAlternatingRowColors(true);
  list_->setEditTriggers(QAbstractItemView::SelectedClicked | QAbstractItemView::EditKeyPressed);
  list_->header()->setStretchLastSection(true);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);  // the columns share what there is
  list_->installEventFilter(this);
  connect(list_, &QTreeView::doubleClicked, this, &JournalDock::go_to);
  connect(undo_, &QPushButton::clicked, this, [this] { act_(Undo{}); });
  connect(redo_, &QPushButton::clicked, this, [this] { act_(Redo{}); });
  connect(methods_, &QPushButton::clicked, this, std::move(show_methods));
  model_->noted = [this](std::size_t decision, const QString& note) {
    act_(TakeNote{decision, note.toStdString()});
  };
}

void JournalDock::show_standing(const SharedStanding& standing) {
  if (standing == shown_) return;
  const bool moved = !shown_ || !standing || standing->taken != shown_->taken;
  shown_ = standing;
  model_->show(standing);
  undo_->setEnabled(standing && standing->can_undo);
  redo_->setEnabled(standing && standing->can_redo);
  methods_->setEnabled(standing && standing->situation);
  undo_->setToolTip(standing ? shown_characters(standing->undo_says) : QString());
  if (standing && moved) {
    const QModelIndex here = model_->index(model_->current(), 0);
    list_->setCurrentIndex(here);
    list_->scrollTo(here);
  }
}

void JournalDock::enter() {
  show();
  raise();
  list_->setFocus(Qt::ShortcutFocusReason);
}

// In the notes a double click begins to edit, as it does in lists elsewhere.
void JournalDock::go_to(const QModelIndex& index) {
  if (!index.isValid()) return;
  if (index.column() == JournalModel::note_column && index.row() > 0) return list_->edit(index);
  if (index.row() != model_->current()) act_(GoTo{static_cast<std::size_t>(index.row())});
}

bool JournalDock::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize) share_width();
  // What ends a note comes here too, from its field.
  const bool is_key = event->type() == QEvent::KeyPress && list_->hasFocus();
  if (!is_key) return QDockWidget::eventFilter(watched, event);
  switch (static_cast<QKeyEvent&>(*event).key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      go_to(list_->currentIndex().siblingAtColumn(JournalModel::decision_column));
      return true;
    case Qt::Key_Escape:
      leave_();
      return true;
    default:
      return QDockWidget::eventFilter(watched, event);
  }
}

// What was decided says more than most notes.
void JournalDock::share_width() {
  const int whole = list_->contentsRect().width();
  list_->setColumnWidth(JournalModel::decision_column, 2 * whole / 3);
}

}  // namespace vorn
