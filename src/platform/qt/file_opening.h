// Opening folders and files that are named, dropped or picked.
#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

#include "panels/clean_copy.h"

namespace vorn {

// Asks what must be asked, beside the window and without keeping anything waiting, and says at last which
// folder is to be worked in. A list of files that stands there is replaced only after a yes, and kept.
class FileOpening {
 public:
  FileOpening(QWidget& window, std::function<void(const QString& folder)> opened)
      : window_(window), opened_(std::move(opened)) {}

  void ask_for_folder(const QString& start);
  void ask_for_files(const QString& start);
  // A folder with a list, or with files that one can be made of.
  void open_folder(const QString& folder);
  // A list is made of these files, in their own folder, or of copies where they lie in several.
  void open_files(const QStringList& paths);
  // Folders or files, as they are dropped on the window.
  void open_any(const QStringList& paths);

 private:
  void ask_for_copies(const QStringList& paths);
  void copy_to(const QString& folder, const QStringList& paths);
  void confirm(const QString& folder, const QStringList& picked);
  // What a list is made of: names, with copies in the place of files that the program does not read.
  struct Listed {
    QStringList names = {};
    std::vector<CleanCopy> copies = {};
    QString words = {};  // a line for each of them
  };
  static Listed listed(const QString& folder, const QStringList& names);
  void make_list(const QString& folder, const Listed& list);
  void tell(const QString& trouble);

  QWidget& window_;
  std::function<void(const QString&)> opened_;
};

// The names in the order of a list: ring widths first, chronologies behind them.
QStringList in_order_of_list(QStringList names);
// Why these names cannot stand in a list; empty where they can.
QString trouble_with_names(const QStringList& names);
// Keeps the list that stands in a folder under the first free name Vorn.fil.1, Vorn.fil.2 and so on, and
// writes these names in its place. Returns what went wrong; the list is as it was then.
std::optional<QString> replace_list(const QString& folder, const QStringList& names);

}  // namespace vorn
