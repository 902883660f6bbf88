#include "platform/qt/journal_model.h"

#include <QFont>
#include <QGuiApplication>
#include <QPalette>
#include <QStringList>

#include "platform/qt/typefaces.h"

namespace vorn {
namespace {

// Letters that step back, but can be read: two thirds of the way from the ground to the usual ones.
QColor faint(const QPalette& palette) {
  const QColor letters = palette.color(QPalette::Text), ground = palette.color(QPalette::Base);
  const auto between = [](int a, int b) { return (2 * a + b) / 3; };
  return {between(letters.red(), ground.red()), between(letters.green(), ground.green()),
          between(letters.blue(), ground.blue())};
}

int rows_of(const SharedStanding& standing) {
  return standing ? static_cast<int>(standing->decisions.size()) + 1 : 0;
}

}  // namespace

void JournalModel::show(const SharedStanding& standing) {
  if (standing == standing_) return;
  const int before = rows_of(standing_), after = rows_of(standing);
  if (after > before) beginInsertRows({}, before, after - 1);
  if (after < before) beginRemoveRows({}, after, before - 1);
  standing_ = standing;
  if (after > before) endInsertRows();
  if (after < before) endRemoveRows();
  if (after > 0) emit dataChanged(index(0, 0), index(after - 1, columns - 1));
}

int JournalModel::current() const {
  return standing_ ? static_cast<int>(standing_->taken) : 0;
}

int JournalModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_of(standing_);
}

int JournalModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : columns;
}

const Decision* JournalModel::decision(const QModelIndex& index) const {
  return index.row() < 1 ? nullptr : &standing_->decisions.at(static_cast<std::size_t>(index.row()) - 1);
}

QString JournalModel::text(const QModelIndex& index) const {
  const Decision* made = decision(index);
  if (index.column() == note_column) return made ? shown_characters(made->note) : QString();
  const QString here = index.row() == current() ? QString::fromUtf8("\u25B6 ") : QString();
  return here + (made ? shown_characters(made->what) : QString("The beginning"));
}

QString JournalModel::tip(const QModelIndex& index) const {
  const Decision* made = decision(index);
  if (made == nullptr) return "As it was before the first decision";
  QStringList lines{shown_characters(made->what)};
  if (!made->before.empty() || !made->after.empty()) {
    lines << shown_characters(made->before) + QString::fromUtf8(" \u2192 ") + shown_characters(made->after);
  }
  if (!made->note.empty()) lines << "Note: " + shown_characters(made->note);
  if (!made->wrote.empty()) lines << shown_characters(made->wrote) + " was written, and stays";
  if (made->is_final) lines << "Cannot be taken back";
  if (index.row() > current()) lines << "Taken back";
  return lines.join('\n');
}

QVariant JournalModel::data(const QModelIndex& index, int role) const {
  switch (role) {
    case Qt::DisplayRole:
      return text(index);
    case Qt::EditRole:
      return index.column() == note_column ? text(index) : QVariant();
    case Qt::ToolTipRole:
      return tip(index);
    case Qt::AccessibleTextRole:
      return text(index) + (index.row() > current() ? ", taken back" : "") +
             (index.row() == current() ? ", now here" : "");
    case Qt::FontRole: {
      QFont font = QGuiApplication::font();
      font.setItalic(index.row() > current());
      return font;
    }
    case Qt::ForegroundRole:
      return index.row() > current() ? faint(QGuiApplication::palette()) : QVariant();
    default:
      return {};
  }
}

QVariant JournalModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return section == note_column ? "Note" : "Decision";
}

Qt::ItemFlags JournalModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags plain = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  return index.column() == note_column && index.row() > 0 ? plain | Qt::ItemIsEditable : plain;
}

bool JournalModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || decision(index) == nullptr) return false;
  const QString note = value.toString().simplified();
  if (note != text(index)) noted(static_cast<std::size_t>(index.row()) - 1, note);
  return true;
}

}  // namespace vorn
