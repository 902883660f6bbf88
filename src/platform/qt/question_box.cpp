#include "platform/qt/question_box.h"

#include <QPushButton>
#include <algorithm>

#include "platform/qt/typefaces.h"

namespace vorn {
namespace {

bool is_same(const Question& a, const Question& b) {
  return a.text == b.text && a.more == b.more &&
         std::ranges::equal(a.answers, b.answers, {}, &Question::Answer::text, &Question::Answer::text);
}

}  // namespace

QMessageBox* ask_beside(QWidget& window, const QString& text, const QString& more, const QStringList& answers,
                        std::function<void(int)> chosen) {
  auto* box = new QMessageBox(QMessageBox::Question, "Vorn", text, QMessageBox::NoButton, &window);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setInformativeText(more);
  QList<QAbstractButton*> buttons;
  for (const QString& answer : answers) {
    const bool stays = buttons.size() + 1 == answers.size();
    buttons << box->addButton(QString(answer).replace('&', "&&"),
                              stays ? QMessageBox::RejectRole : QMessageBox::ActionRole);
  }
  box->setDefaultButton(static_cast<QPushButton*>(buttons.first()));
  box->setEscapeButton(buttons.last());
  QObject::connect(box, &QMessageBox::finished, &window, [box, buttons, chosen = std::move(chosen)](int) {
    const auto at = buttons.indexOf(box->clickedButton());
    chosen(static_cast<int>(at < 0 ? buttons.size() - 1 : at));
  });
  box->open();
  return box;
}

QuestionBox::QuestionBox(QWidget& window, std::function<void(std::size_t, bool)> chosen)
    : window_(window), chosen_(std::move(chosen)) {}

void QuestionBox::show(const SharedStanding& standing) {
  const bool stands = standing && standing->question && standing != answered_at_;
  if (!stands) return close();
  if (box_ && is_same(*asked_at_->question, *standing->question)) {
    asked_at_ = standing;
    return;
  }
  close();
  asked_at_ = standing;
  open(*standing->question);
}

void QuestionBox::open(const Question& question) {
  QStringList answers;
  for (const Question::Answer& answer : question.answers) answers << shown_characters(answer.text);
  if (answers.isEmpty()) return;
  box_ = ask_beside(window_, shown_characters(question.text), shown_characters(question.more), answers,
                    [this, last = answers.size() - 1](int answer) {
                      answered_at_ = asked_at_;
                      box_ = nullptr;
                      chosen_(static_cast<std::size_t>(answer), answer == last);
                    });
}

// The question went without an answer.
void QuestionBox::close() {
  if (!box_) return;
  box_->disconnect(&window_);
  box_->close();
  box_ = nullptr;
}

}  // namespace vorn
