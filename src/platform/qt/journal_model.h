// The decisions of a session as the rows of a list.
#pragma once

#include <QAbstractTableModel>
#include <functional>

#include "sessions/standing.h"

namespace vorn {

// Row 0 is the beginning, row k the decision k, counted from 1; one column says what was decided, the other
// holds the user's note. Nothing is copied: the rows are read from the standing.
class JournalModel : public QAbstractTableModel {
  // Without Q_OBJECT: it adds no signal.
 public:
  enum Column { decision_column, note_column, columns };
  using QAbstractTableModel::QAbstractTableModel;

  void show(const SharedStanding& standing);
  // The row that the session stands at.
  int current() const;
  // Called with a decision, counted from 0, and the user's note on it.
  std::function<void(std::size_t, const QString&)> noted = [](std::size_t, const QString&) {};

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 private:
  const Decision* decision(const QModelIndex& index) const;
  QString text(const QModelIndex& index) const;
  QString tip(const QModelIndex& index) const;

  SharedStanding standing_;
};

}  // namespace vorn
