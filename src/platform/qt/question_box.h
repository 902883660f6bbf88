// Questions of the program's side to the user, one at a time.
#pragma once

#include <QMessageBox>
#include <QPointer>
#include <functional>

#include "sessions/standing.h"

namespace vorn {

// Shows the question of a session for as long as it stands; the program goes on to wait meanwhile. The last
// answer stays, and is Escape's.
class QuestionBox {
 public:
  // `chosen` gets the place of the answer, and whether it is the last one.
  QuestionBox(QWidget& window, std::function<void(std::size_t, bool)> chosen);

  void show(const SharedStanding& standing);
  bool is_open() const { return box_ != nullptr; }

 private:
  void open(const Question& question);
  void close();

  QWidget& window_;
  std::function<void(std::size_t, bool)> chosen_;
  QPointer<QMessageBox> box_;
  SharedStanding asked_at_;     // the question that the box shows stood then
  SharedStanding answered_at_;  // how the session stood when the user answered
};

// Asks something of the window's own; the last answer is Escape's. `chosen` gets the place of the answer. The
// box belongs to the window and keeps nothing waiting.
QMessageBox* ask_beside(QWidget& window, const QString& text, const QString& more, const QStringList& answers,
                        std::function<void(int)> chosen);

}  // namespace vorn
