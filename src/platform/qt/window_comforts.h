// What the window offers around the page, as any desktop program does. Nothing here reaches the program or
// changes the page.
#pragma once

#include <QKeyEvent>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>

#include "platform/qt/picture_painter.h"
#include "platform/qt/typefaces.h"
#include "plot/page.h"
#include "records/disk_files.h"

namespace vorn {

enum class Comfort {
  full_screen,  // F11
  save,         // Ctrl+S
  print,        // Ctrl+P
  copy,         // Ctrl+C
  guide,        // Ctrl+H
};

// What a key asks for; nothing for all keys that are the program's. On macOS both Command and Control count.
std::optional<Comfort> comfort_of(const QKeyEvent& event);

// Serves a window. Its dialogs belong to the window and go with it; they do not keep the program waiting, and
// nobody waits for them.
class WindowComforts {
 public:
  // `typefaces` must live as long; `folder` is where the first page is to be saved, `program_folder` where
  // the program lies, for finding the guide.
  WindowComforts(QWidget& window, const Typefaces& typefaces, QString folder, QString program_folder);
  ~WindowComforts();
  WindowComforts(const WindowComforts&) = delete;
  WindowComforts& operator=(const WindowComforts&) = delete;

  // From now on pages are saved in this folder, unless the user says otherwise.
  void begin_in(const QString& folder) { folder_ = folder; }
  // What the user asks for, of the page that he sees. `subject` names the file worked on, empty for none.
  void start(Comfort comfort, std::shared_ptr<const Page> page, const QString& subject);

 private:
  using SharedPage = std::shared_ptr<const Page>;
  void toggle_full_screen();
  void save(const SharedPage& page, const QString& subject);
  void print(const SharedPage& page, const QString& subject);
  void copy(const Page& page);
  void show_guide();
  void tell(const QString& failure);

  QWidget& window_;
  QString program_folder_;
  QString folder_;  // where a page is saved next, unless the user says otherwise
  const Typefaces& typefaces_;
  PicturePainter pictures_;
  DiskFiles files_;          // where pictures go
  QPointer<QWidget> guide_;  // a window of its own, while it is open
};

}  // namespace vorn
