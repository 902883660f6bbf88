#include "platform/qt/plain_labels.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QTest>
#include <QToolTip>
#include <memory>

#include "platform/qt/window_system_for_tests.h"

namespace vorn {
namespace {

struct Labels : testing::Test {
  Labels() { plain.reset(new PlainLabels(&application_for_tests())); }
  static QLabel* label_with(const QString& text) {
    for (QWidget* widget : QApplication::allWidgets()) {
      auto* label = qobject_cast<QLabel*>(widget);
      if (label && label->isVisible() && label->text() == text) return label;
    }
    return nullptr;
  }
  std::unique_ptr<PlainLabels> plain;
};

TEST_F(Labels, OfAMessageShowTheNameOfAFileAsItIs) {
  QMessageBox box(QMessageBox::Warning, "Vorn", "<b>oak</b>.rwl");
  box.setInformativeText("<img src=oak.png>");
  box.open();
  for (const char* text : {"<b>oak</b>.rwl", "<img src=oak.png>"}) {
    const QLabel* label = label_with(text);
    ASSERT_NE(label, nullptr) << text;
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
  }
}

TEST_F(Labels, OfToolTipsToo) {
  QWidget window;
  window.show();
  QToolTip::showText(QPoint(10, 10), "<i>oak</i>.rwl", &window);
  const QLabel* label = label_with("<i>oak</i>.rwl");
  ASSERT_NE(label, nullptr);
  EXPECT_EQ(label->textFormat(), Qt::PlainText);
  QToolTip::hideText();
}

}  // namespace
}  // namespace vorn
